// The listener as the tests call it: the operations by their own names.
#pragma once

#include "binding/probe.h"

#include "harness/harness.h"

#include <cstdio>
#include <utility>

namespace harness {

/// Loads the library with the bridge's objects as if it were the bridge. Empty when the VM took it.
std::string loadProbe();

/// A reference to the same object that counts as the bridge's own.
template <typename Reference>
Reference adopt(Reference object) {
    return static_cast<Reference>(bindingProbe().adopt(env(), object));
}

/// One listener: that of the load, or a new one, which is empty except for the VM. Operations take
/// the calling thread's environment.
class Listener {
public:
    /// loadProbe comes first.
    static Listener loaded() { return Listener(bindingProbe().loaded(), false); }
    static Listener made() { return Listener(bindingProbe().make(), true); }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    /// On a thread of its own: a listener detaches the thread that destroys it from the VM.
    ~Listener() {
        if (own && held != nullptr) {
            EventThread().run([this] { drop(); });
        }
    }

    /// Drops this reference to it: a listener that was made is destroyed, on the calling thread.
    void drop() { held.clear(); }

    int setJavaClass(int id, const char* name) {
        return probe().setJavaClass(held.get(), env(), id, name);
    }
    int setJavaClassOf(int id, jobject object) {
        return probe().setJavaClassOf(held.get(), env(), id, object);
    }
    int setJavaMethod(int class_id, int method_id, int attr_id, int type_id, const char* name,
                      const char* signature) {
        return probe().setJavaMethod(held.get(), env(), class_id, method_id, attr_id, type_id, name,
                                     signature);
    }
    void storeJavaMethod(int method_id, TS_DTVSV_METHODINFO& info) {
        probe().storeJavaMethod(held.get(), method_id, info);
    }
    void storeJavaField(int id, const TS_DTVSV_FIELDINFO& info) {
        probe().storeJavaField(held.get(), id, info);
    }
    jclass getJavaClass(int id) const { return probe().getJavaClass(held.get(), id); }
    jobject getJavaClassObject(int id) const { return probe().getJavaClassObject(held.get(), id); }
    TS_DTVSV_CLASSINFO getJavaClassInfo(int id) const {
        return probe().getJavaClassInfo(held.get(), id);
    }
    jmethodID getJavaMethodID(int id) const { return probe().getJavaMethodID(held.get(), id); }
    jclass getJavaClassForMethodid(int id) const {
        return probe().getJavaClassForMethodid(held.get(), id);
    }
    TS_DTVSV_METHODINFO getJavaMethodInfo(int id) const {
        return probe().getJavaMethodInfo(held.get(), id);
    }
    TS_DTVSV_FIELDINFO getJavaFieldInfo(int id) const {
        return probe().getJavaFieldInfo(held.get(), id);
    }

    void setVM(JavaVM* vm) { probe().setVM(held.get(), vm); }
    JNIEnv* getJNIEnv() { return probe().getJNIEnv(held.get()); }
    void freeJNIEnv() { probe().freeJNIEnv(held.get()); }
    void detachJNIEnv(JNIEnv* of) { probe().detachJNIEnv(held.get(), of); }

    template <typename... Arguments>
    int CallMethod(int method_id, jobject* out, Arguments... arguments) {
        return (held.get()->*probe().CallMethod)(env(), method_id, out, arguments...);
    }
    int NewFieldObject(int id, jobject& object, jfieldID& field) {
        return probe().NewFieldObject(held.get(), env(), id, object, field);
    }
    int SetObjectField(int id, jobject& object, jobject value) {
        return probe().SetObjectField(held.get(), env(), id, object, value);
    }
    int SetIntField(int id, jobject& object, int value) {
        return probe().SetIntField(held.get(), env(), id, object, value);
    }

    jstring OrgNewString(const char* text, int length) {
        return probe().OrgNewString(held.get(), env(), text, length);
    }
    jstring OrgNewStringUTF(const char* text) {
        return probe().OrgNewStringUTF(held.get(), env(), text);
    }
    bool makesArrayOfMissingClass() { return probe().makesArrayOfMissingClass(held.get(), env()); }
    void convJStringToChar(jstring text, char* buffer, int size) {
        probe().convJStringToChar(held.get(), env(), text, buffer, size);
    }
    void convJStringToUTF16(jstring text, char* buffer, int size) {
        probe().convJStringToUTF16(held.get(), env(), text, buffer, size);
    }

private:
    Listener(android::sp<JNIDtvSvLibListener> listener, bool is_own)
        : held(std::move(listener)), own(is_own) {
        if (own) {
            setVM(VirtualMachine::instance().vm());
        }
    }
    static const BindingProbe& probe() { return bindingProbe(); }

    android::sp<JNIDtvSvLibListener> held;
    bool own; ///< made by this object, which also destroys it
};

/// A pointer as it is logged.
inline std::string pointer(const void* value) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", value);
    return text;
}

} // namespace harness
