// Compiled without sibling calls, so that also the last call of an operation returns into this
// library and counts as a call of the bridge.
#include "binding/probe.h"

#include "events/event.h"

namespace {

using Listener = JNIDtvSvLibListener;

template <auto Operation>
struct Of;
template <typename Result, typename... Arguments, Result (Listener::*Operation)(Arguments...)>
struct Of<Operation> {
    static Result call(Listener* listener, Arguments... arguments) {
        return (listener->*Operation)(arguments...);
    }
};
template <typename Result, typename... Arguments, Result (Listener::*Operation)(Arguments...) const>
struct Of<Operation> {
    static Result call(Listener* listener, Arguments... arguments) {
        return (listener->*Operation)(arguments...);
    }
};

constexpr int (Listener::*setJavaClass)(JNIEnv*, int, const char*) = &Listener::setJavaClass;
constexpr int (Listener::*setJavaClassOf)(JNIEnv*, int, jobject) = &Listener::setJavaClass;
constexpr int (Listener::*setJavaMethod)(JNIEnv*, int, int, int, int, const char*,
                                         const char*) = &Listener::setJavaMethod;
constexpr void (Listener::*storeJavaMethod)(int, TS_DTVSV_METHODINFO&) = &Listener::setJavaMethod;

/// Gives access to a private member: an explicit instantiation may name it.
template <auto Member>
struct PrivateMember {
    friend auto fieldRegistry() { return Member; }
};
auto fieldRegistry();
template struct PrivateMember<&Listener::field_info_>;

void storeJavaField(Listener* listener, int field_id, const TS_DTVSV_FIELDINFO& info) {
    (listener->*fieldRegistry())[field_id] = info;
}

jfieldID findField(JNIEnv* env, jclass of, const char* name, const char* signature) {
    const jfieldID found = env->GetFieldID(of, name, signature);
    return found;
}

android::sp<Listener> make() {
    return new Listener;
}

Listener* loaded() {
    return g_listener.get();
}

jobject adopt(JNIEnv* env, jobject object) {
    return env->PushLocalFrame(1) == JNI_OK ? env->PopLocalFrame(object) : nullptr;
}

int madeOfWrongSize(Listener* listener, JNIEnv* env) {
    EventBuilder event(*listener, env, "handler", false, 3, Reports::kDebug);
    const jint value = 1;
    const uint8_t byte = 1;
    event.openFrame();
    int made = 0;
    made += event.text("a") != nullptr;
    made += event.utf16("a\0", 1) != nullptr;
    made += event.bytes(&byte, 1) != nullptr;
    made += event.ints(&value, 1) != nullptr;
    made += event.array<class_id::kBG_TS_DTVSVLIB_SERVICE_INFO>(1).reference != nullptr;
    made += event.build<class_id::kBG_TS_DTVSVLIB_VIEW_FATAL_ERROR>().reference != nullptr;
    return made;
}

bool makesArrayOfMissingClass(Listener* listener, JNIEnv* env) {
    EventBuilder event(*listener, env, "handler", true, 3, Reports::kDebug);
    return event.array<class_id::kBG_TS_DTVSVLIB_SERVICE_INFO>(1).reference != nullptr ||
           event.accepts(true, [](const char*) {});
}

bool makeStrings(Listener* listener, JNIEnv* env, int count) {
    EventBuilder event(*listener, env, "handler", true, 3, Reports::kDebug);
    bool made = true;
    for (int i = 0; i < count; ++i) {
        made = event.text("a") != nullptr && made;
    }
    return made;
}

} // namespace

const BindingProbe& bindingProbe() {
    static const BindingProbe probe = {
        &make,
        &loaded,
        &adopt,
        &Of<setJavaClass>::call,
        &Of<setJavaClassOf>::call,
        &Of<setJavaMethod>::call,
        &Of<storeJavaMethod>::call,
        &storeJavaField,
        &findField,
        &Of<&Listener::getJavaClass>::call,
        &Of<&Listener::getJavaClassObject>::call,
        &Of<&Listener::getJavaClassInfo>::call,
        &Of<&Listener::getJavaMethodID>::call,
        &Of<&Listener::getJavaClassForMethodid>::call,
        &Of<&Listener::getJavaMethodInfo>::call,
        &Of<&Listener::getJavaFieldInfo>::call,
        &Of<&Listener::setVM>::call,
        &Of<&Listener::getJNIEnv>::call,
        &Of<&Listener::freeJNIEnv>::call,
        &Of<&Listener::detachJNIEnv>::call,
        &Listener::CallMethod,
        &Of<&Listener::NewFieldObject>::call,
        &Of<&Listener::SetObjectField>::call,
        &Of<&Listener::SetIntField>::call,
        &Of<&Listener::OrgNewString>::call,
        &Of<&Listener::OrgNewStringUTF>::call,
        &Of<&Listener::convJStringToChar>::call,
        &Of<&Listener::convJStringToUTF16>::call,
        &madeOfWrongSize,
        &makesArrayOfMissingClass,
        &makeStrings,
    };
    return probe;
}
