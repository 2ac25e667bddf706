// What happens when Java loads the library, and what the library keeps.
#include "binding/JNIDtvSvLibListener.h"
#include "binding/packed_texts.h"
#include "entry/native_methods.h"
#include "entry/trace.h"

#include <cstdint>
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

// ---- The class and method tables, as the load reads them.

struct ClassNames {
    static constexpr int kCount = kClassCount;
    static constexpr const char* at(int id) { return kClassTable[id].name; }
};
struct MethodNames {
    static constexpr int kCount = kMethodCount;
    static constexpr const char* at(int id) { return kMethodTable[id].name; }
};
struct MethodSignatures {
    static constexpr int kCount = kMethodCount;
    static constexpr const char* at(int id) { return kMethodTable[id].signature; }
};
constexpr PackedTexts<ClassNames> kClassNames;
constexpr PackedTexts<MethodNames> kMethodNames;
constexpr PackedTexts<MethodSignatures> kMethodSignatures;

/// What a row of the method table says besides its texts.
struct MethodKinds {
    uint8_t class_id[kMethodCount] = {};
    uint8_t attr_id[kMethodCount] = {};

    constexpr MethodKinds() {
        for (int id = 0; id < kMethodCount; ++id) {
            class_id[id] = static_cast<uint8_t>(kMethodTable[id].class_id);
            attr_id[id] = static_cast<uint8_t>(kMethodTable[id].attr_id);
        }
    }
};
static_assert(kClassCount <= 256);
constexpr MethodKinds kMethodKinds;

/// Resolves every class. One that is missing stays unresolved.
void resolveClasses(JNIEnv* env) {
    char name[kClassNames.kLongest + 1];
    for (int id = 0; id < kClassCount; ++id) {
        kClassNames.read(id, name);
        if (g_listener->setJavaClass(env, id, name) != 0) {
            env->ExceptionClear();
        }
    }
}

/// Resolves every method of the classes that were resolved.
void resolveMethods(JNIEnv* env) {
    char name[kMethodNames.kLongest + 1];
    char signature[kMethodSignatures.kLongest + 1];
    for (int id = 0; id < kMethodCount; ++id) {
        kMethodNames.read(id, name);
        kMethodSignatures.read(id, signature);
        g_listener->setJavaMethod(env, kMethodKinds.class_id[id], id, kMethodKinds.attr_id[id],
                                  kReturnsVoid, name, signature);
    }
}

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
    resolveClasses(env);
    resolveMethods(env);
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
    trace::keepProcessId();
    return JNI_VERSION_1_4;
}

} // namespace

extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void* /*reserved*/) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    TRACE_NATIVE(kDebug, __func__, "pid = %d, threadid = %x", trace::processId(),
                 trace::threadId());
    const jint result = load(vm);
    TRACE_NATIVE(kFuncEnd, __func__, "");
    return result;
}
