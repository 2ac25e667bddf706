// What happens when Java loads the library, and what the library keeps.
#include "binding/JNIDtvSvLibListener.h"
#include "entry/native_methods.h"
#include "entry/trace.h"

#include <new>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

android::sp<JNIDtvSvLibListener> g_listener;

namespace {

/// The result of registerNatives.
int registration_result = 0;

/// Room for the local references that the look-up of the classes leaves.
constexpr jint kLoadFrame = kClassCount + 16;

/// Fills the registries. A class or method that is missing is logged and passed over: its events
/// will fail, the others will not.
int DtvSvLibListenerInit(JNIEnv* env) {
    // Logged twice; log readers rely on it.
    TRACE_NATIVE(kDebug, __func__, "env = %p", static_cast<void*>(env));
    TRACE_NATIVE(kDebug, __func__, "env = %p", static_cast<void*>(env));

    const bool framed = env->PushLocalFrame(kLoadFrame) == JNI_OK;
    if (!framed) {
        env->ExceptionClear();
    }
    for (int id = 0; id < kClassCount; ++id) {
        if (g_listener->setJavaClass(env, id, kClassTable[id].name) != 0) {
            env->ExceptionClear();
        }
    }
    for (int id = 0; id < kMethodCount; ++id) {
        const MethodRow& row = kMethodTable[id];
        g_listener->setJavaMethod(env, row.class_id, id, row.attr_id, row.type_id, row.name,
                                  row.signature);
    }
    if (framed) {
        env->PopLocalFrame(nullptr);
    }
    return 0;
}

jint load(JavaVM* vm) {
    JNIEnv* env = nullptr;
    if (vm->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_4) != JNI_OK) {
        TRACE_NATIVE(kDebug, "JNI_OnLoad", "GetEnv failed");
        return -1;
    }
    registration_result = registerNatives(env);
    if (registration_result != 1) {
        TRACE_NATIVE(kDebug, "JNI_OnLoad", "registerNatives failed");
        return -1;
    }
    g_listener = new (std::nothrow) JNIDtvSvLibListener();
    if (g_listener.get() == nullptr) {
        unregisterNatives(env);
        return -1;
    }
    g_listener->setVM(vm);
    DtvSvLibListenerInit(env);
    return JNI_VERSION_1_4;
}

} // namespace

extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void* /*reserved*/) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    TRACE_NATIVE(kDebug, __func__, "pid = %d, threadid = %x", static_cast<int>(getpid()),
                 trace::threadId());
    const jint result = load(vm);
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return result;
}
