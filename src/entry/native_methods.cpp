#include "entry/native_methods.h"

#include "binding/class_table.h"
#include "binding/signature.h"
#include "commands/natives.h"
#include "entry/trace.h"

#include <android_runtime/AndroidRuntime.h>

#include <cstddef>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

/// Whether a native function has the parameters that its Java signature says.
template <typename... Arguments>
constexpr bool matches(const char* text, jobject (*)(JNIEnv*, jobject, Arguments...)) {
    return signature::takes<Arguments...>(text);
}

struct NativeMethod {
    const char* name;
    const char* signature;
    void* function;
};

#define NATIVE(name, signature, function)                                                          \
    static_assert(matches(signature, function), #name " takes what its signature says");
#include "entry/native_methods.def"
#undef NATIVE

const NativeMethod kNativeMethods[] = {
#define NATIVE(name, signature, function) {#name, signature, reinterpret_cast<void*>(function)},
#include "entry/native_methods.def"
#undef NATIVE
};
constexpr size_t kNativeMethodCount = sizeof(kNativeMethods) / sizeof(kNativeMethods[0]);
static_assert(kNativeMethodCount == 65, "the proxy has 65 native methods");

} // namespace

int registerNatives(JNIEnv* env) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    // The JDK's JNINativeMethod has names that are not const, the platform's has.
    JNINativeMethod methods[kNativeMethodCount];
    for (size_t i = 0; i < kNativeMethodCount; ++i) {
        methods[i].name = const_cast<char*>(kNativeMethods[i].name);
        methods[i].signature = const_cast<char*>(kNativeMethods[i].signature);
        methods[i].fnPtr = kNativeMethods[i].function;
    }
    const int ret = android::AndroidRuntime::registerNativeMethods(
        env, kNativeClassName, methods, static_cast<int>(kNativeMethodCount));
    if (ret < 0) {
        TRACE_NATIVE(kDebug, __func__, "registerNatives, failed for '%s'", kNativeClassName);
        return 0;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "ret = %d", ret);
    return 1;
}
