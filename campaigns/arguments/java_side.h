// Makes Java objects of a round's arguments, and calls the native with them.
#pragma once

#include "arguments/class_file.h"
#include "arguments/round.h"

#include <gui/Surface.h>
#include <jni.h>
#include <utils/StrongPointer.h>

#include <map>
#include <string>

namespace hostile {

/// On the thread that made the VM, with the bridge loaded.
class JavaSide {
public:
    JavaSide();
    JavaSide(const JavaSide&) = delete;
    JavaSide& operator=(const JavaSide&) = delete;

    /// Calls the native, and says what it answered: "OK", "NG", "PARAM_NG", "null", "throws CLASS",
    /// or the object with its fields. No exception is left.
    std::string call(const NativeSpec& native, const std::vector<Value>& arguments);

    /// The native surface with this number, from 1.
    const android::Surface* surface(int number) const { return surfaces_[number - 1].get(); }
    /// How many hold it.
    int holders(int number) const { return surfaces_[number - 1]->getStrongCount(); }

private:
    struct Native {
        jmethodID id;
    };
    jclass keep(jclass of) const;
    jclass realClass(const std::string& path);
    jclass defined(const std::string& key, const ClassFile& file);
    jclass objectClass(const ClassSpec& of, const Value& value);
    jobject objectOf(const ClassSpec& of, const Value& value);
    jobject enumOf(const FieldSpec& field, const Value& value);
    jobject referenceOf(const FieldSpec& field, const Value& value);
    void setField(jobject object, jclass of, const FieldSpec& field, const Value& value);
    std::string described(jobject answer);
    void check(const std::string& doing);

    JNIEnv* env_;
    jobject proxy_;
    jobject foreign_; ///< an object of no class of the bridge
    std::map<std::string, jclass> classes_;
    std::map<std::string, jmethodID> natives_;
    std::map<std::pair<jclass, std::string>, jfieldID> fields_;
    std::map<std::string, jobject> results_;
    android::sp<android::Surface> surfaces_[kSurfaces];
    jobject java_surfaces_[kSurfaces + 1]; ///< the first one has no native surface
};

} // namespace hostile
