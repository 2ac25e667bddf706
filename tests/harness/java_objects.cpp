#include "harness/java_objects.h"

#include "harness/product.h"
#include "harness/virtual_machine.h"

#include <gtest/gtest.h>

namespace harness {
namespace {

const std::string root = "tenrik/service/dtvserver/";
thread_local std::string last_thrown;

/// True, and the test has failed, when a Java exception was pending: it is cleared.
bool failed(const std::string& doing) {
    std::string thrown = takeException();
    if (thrown.empty()) {
        return false;
    }
    ADD_FAILURE() << doing << ": " << thrown;
    return true;
}

std::string wholeName(const std::string& name) {
    for (const char* other : {"tenrik/", "java/", "android/", "harness/", "["}) {
        if (name.rfind(other, 0) == 0) {
            return name;
        }
    }
    if (name.find('/') == std::string::npos && name.rfind("BG_", 0) == 0) {
        return root + "type/" + name;
    }
    return root + name;
}

std::string wholeDescriptor(std::string descriptor) {
    for (const char* part : {"Ltype/", "Levents/"}) {
        for (size_t at = 0; (at = descriptor.find(part, at)) != std::string::npos; ++at) {
            descriptor.insert(at + 1, root);
        }
    }
    return descriptor;
}

std::vector<jvalue> convert(const std::string& descriptor, const std::vector<Value>& arguments) {
    std::vector<jvalue> values;
    for (size_t at = 1; at < descriptor.size() && descriptor[at] != ')'; ++at) {
        char letter = descriptor[at];
        while (descriptor[at] == '[') {
            ++at;
        }
        if (descriptor[at] == 'L') {
            at = descriptor.find(';', at);
        }
        if (values.size() == arguments.size()) {
            ADD_FAILURE() << "too few arguments for " << descriptor;
            return {};
        }
        values.push_back(arguments[values.size()].as(letter));
    }
    if (values.size() != arguments.size()) {
        ADD_FAILURE() << "too many arguments for " << descriptor;
    }
    return values;
}

/// Calls a static method of the harness's Java side that takes a class, perhaps a name, and gives
/// text.
std::string describe(const char* method, jclass of, const std::string& name) {
    JNIEnv* jni = env();
    LocalFrame frame;
    bool named = !name.empty();
    jclass reflect = findClass("harness/Reflect");
    jmethodID id = jni->GetStaticMethodID(reflect, method,
                                          named ? "(Ljava/lang/Class;Ljava/lang/String;)"
                                                  "Ljava/lang/String;"
                                                : "(Ljava/lang/Class;)Ljava/lang/String;");
    jstring text = nullptr;
    if (id != nullptr) {
        jstring java_name = named ? jni->NewStringUTF(name.c_str()) : nullptr;
        text = static_cast<jstring>(jni->CallStaticObjectMethod(reflect, id, of, java_name));
    }
    return failed(std::string(method) + " " + name) ? "" : toText(text);
}

} // namespace

Value::Value(const char* text) : reference(env()->NewStringUTF(text)) {}

jvalue Value::as(char type_letter) const {
    jvalue value;
    value.j = 0;
    switch (type_letter) {
    case 'Z':
        value.z = number != 0 ? JNI_TRUE : JNI_FALSE;
        break;
    case 'B':
        value.b = static_cast<jbyte>(number);
        break;
    case 'C':
        value.c = static_cast<jchar>(number);
        break;
    case 'S':
        value.s = static_cast<jshort>(number);
        break;
    case 'I':
        value.i = static_cast<jint>(number);
        break;
    case 'J':
        value.j = number;
        break;
    case 'L':
    case '[':
        value.l = reference;
        break;
    default:
        ADD_FAILURE() << "no argument can be of type " << type_letter;
    }
    return value;
}

std::string toText(jstring text) {
    if (text == nullptr) {
        return "";
    }
    const char* characters = env()->GetStringUTFChars(text, nullptr);
    std::string copy = characters;
    env()->ReleaseStringUTFChars(text, characters);
    return copy;
}

jclass findClass(const std::string& name) {
    LocalFrame frame;
    jclass found = Product::findClass(wholeName(name));
    return frame.keep(failed("class " + name) ? nullptr : found);
}

jobject newObject(const std::string& class_name, const std::string& descriptor,
                  const std::vector<Value>& arguments) {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass(class_name);
    if (of == nullptr) {
        return nullptr;
    }
    std::string whole = descriptor.empty() ? describe("constructorDescriptor", of, "")
                                           : wholeDescriptor(descriptor);
    jmethodID constructor = jni->GetMethodID(of, "<init>", whole.c_str());
    if (failed(class_name + whole)) {
        return nullptr;
    }
    std::vector<jvalue> values = convert(whole, arguments);
    jobject made = values.size() == arguments.size()
                       ? jni->NewObjectA(of, constructor, values.data())
                       : nullptr;
    return frame.keep(failed("new " + class_name) ? nullptr : made);
}

jobject newObject(const std::string& class_name, const std::vector<Value>& arguments) {
    return newObject(class_name, "", arguments);
}

jobject constant(const std::string& class_name, const std::string& name) {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass(class_name);
    if (of == nullptr) {
        return nullptr;
    }
    std::string type = "L" + wholeName(class_name) + ";";
    jfieldID id = jni->GetStaticFieldID(of, name.c_str(), type.c_str());
    if (failed(class_name + "." + name)) {
        return nullptr;
    }
    return frame.keep(jni->GetStaticObjectField(of, id));
}

jbyteArray newBytes(const std::vector<int>& bytes) {
    std::vector<jbyte> narrow;
    for (int byte : bytes) {
        narrow.push_back(static_cast<jbyte>(byte));
    }
    auto size = static_cast<jsize>(narrow.size());
    jbyteArray array = env()->NewByteArray(size);
    env()->SetByteArrayRegion(array, 0, size, narrow.data());
    return failed("a byte array") ? nullptr : array;
}

void setField(jobject object, const std::string& name, const Value& value) {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = jni->GetObjectClass(object);
    std::string type = describe("fieldDescriptor", of, name);
    if (type.empty()) {
        return;
    }
    jfieldID id = jni->GetFieldID(of, name.c_str(), type.c_str());
    if (failed("field " + name)) {
        return;
    }
    switch (type[0]) {
    case 'I':
        jni->SetIntField(object, id, value.as('I').i);
        break;
    case 'J':
        jni->SetLongField(object, id, value.as('J').j);
        break;
    case 'Z':
        jni->SetBooleanField(object, id, value.as('Z').z);
        break;
    case 'L':
    case '[':
        jni->SetObjectField(object, id, value.as('L').l);
        break;
    default:
        ADD_FAILURE() << "fields of type " << type << " cannot be set";
    }
}

EnumValue::EnumValue(const std::string& class_name, const std::string& name, int value)
    : held(constant(class_name, name)) {
    if (held != nullptr) {
        JNIEnv* jni = env();
        LocalFrame frame;
        jfieldID id = jni->GetFieldID(jni->GetObjectClass(held), "value", "I");
        if (!failed(class_name + ".value")) {
            before = jni->GetIntField(held, id);
            jni->SetIntField(held, id, value);
        }
    }
}

EnumValue::~EnumValue() {
    if (held != nullptr) {
        setField(held, "value", before);
    }
}

jobject callNative(const std::string& name, const std::vector<Value>& arguments) {
    return callNative(name, "", arguments);
}

jobject callNative(const std::string& name, const std::string& descriptor,
                   const std::vector<Value>& arguments) {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass of = findClass("DtvServerProxy");
    if (of == nullptr) {
        return nullptr;
    }
    std::string whole =
        descriptor.empty() ? describe("methodDescriptor", of, name) : wholeDescriptor(descriptor);
    jobject proxy = newObject("DtvServerProxy", "()V", {});
    jmethodID id = jni->GetMethodID(of, name.c_str(), whole.c_str());
    if (failed(name + whole) || proxy == nullptr) {
        return nullptr;
    }
    std::vector<jvalue> values = convert(whole, arguments);
    if (values.size() != arguments.size()) {
        return nullptr;
    }
    jobject answer = jni->CallObjectMethodA(proxy, id, values.data());
    last_thrown = takeException();
    return frame.keep(last_thrown.empty() ? answer : nullptr);
}

std::string lastThrown() {
    return last_thrown;
}

std::string tree(jobject object) {
    JNIEnv* jni = env();
    LocalFrame frame;
    jclass renderer = findClass("harness/Tree");
    jmethodID id = jni->GetStaticMethodID(renderer, "of", "(Ljava/lang/Object;)Ljava/lang/String;");
    if (failed("harness/Tree")) {
        return "";
    }
    auto text = static_cast<jstring>(jni->CallStaticObjectMethod(renderer, id, object));
    return failed("an object's tree") ? "" : toText(text);
}

std::string call(const std::string& name, const std::vector<Value>& arguments) {
    LocalFrame frame;
    jobject answer = callNative(name, arguments);
    return last_thrown.empty() ? tree(answer) : "throws " + last_thrown;
}

} // namespace harness
