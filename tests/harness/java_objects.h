// Java objects, made, changed and rendered from C++.
#pragma once

#include <jni.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace harness {

/// One argument of a Java method. Its Java type is the one that the method declares.
class Value {
public:
    Value(int value) : number(value) {}
    Value(long value) : number(value) {}
    Value(long long value) : number(value) {}
    Value(unsigned value) : number(value) {}
    Value(bool value) : number(value ? 1 : 0) {}
    Value(std::nullptr_t) {}
    Value(jobject value) : reference(value) {}
    /// A Java string of this modified UTF-8.
    Value(const char* text);

    jvalue as(char type_letter) const;

private:
    jlong number = 0;
    jobject reference = nullptr;
};

/// Names of classes may be short: "BG_TS_DTVSVLIB_DATE" is looked up in the package of the value
/// types, and a path of less than the whole below "tenrik/service/dtvserver/", as "type/...". In
/// descriptors too "Ltype/X;" is short for the whole name. The functions below return local
/// references. On an error they fail the test and return null.
jclass findClass(const std::string& name);

/// By the constructor with this descriptor; without one, by the record's canonical constructor.
jobject newObject(const std::string& class_name, const std::string& descriptor,
                  const std::vector<Value>& arguments);
jobject newObject(const std::string& class_name, const std::vector<Value>& arguments);

/// The constant of a Java enumeration.
jobject constant(const std::string& class_name, const std::string& name);

jbyteArray newBytes(const std::vector<int>& bytes);

/// Sets any field, final ones too.
void setField(jobject object, const std::string& name, const Value& value);

/// While it lives, a constant's `value` is another number, which no constant need have.
class EnumValue {
public:
    EnumValue(const std::string& class_name, const std::string& name, int value);
    ~EnumValue();
    EnumValue(const EnumValue&) = delete;
    EnumValue& operator=(const EnumValue&) = delete;

    jobject object() const { return held; }

private:
    jobject held;
    int before = 0;
};

/// Calls a native method of a DtvServerProxy. Null when it returned null or threw, which lastThrown
/// distinguishes. The descriptor may be left out.
jobject callNative(const std::string& name, const std::vector<Value>& arguments);
jobject callNative(const std::string& name, const std::string& descriptor,
                   const std::vector<Value>& arguments);

/// What callNative's last call on this thread threw ("java.lang.IllegalStateException: why"), or
/// "".
std::string lastThrown();

/// The object as one line: `BG_TS_DTVSVLIB_TIME(1, 2, 3, 4294967295L, "text", null, bytes[1, -2],
/// ints[3], [BG_X(1), null], BG_TE_Y.CONSTANT)`. Characters but printable ASCII as \uXXXX.
std::string tree(jobject object);

/// callNative's answer as a tree, or "throws " and the exception's text.
std::string call(const std::string& name, const std::vector<Value>& arguments);

std::string toText(jstring text);

} // namespace harness
