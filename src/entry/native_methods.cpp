#include "entry/native_methods.h"

#include "binding/class_table.h"
#include "binding/packed_texts.h"
#include "commands/natives.h"
#include "entry/trace.h"
#include "records/messages.h"

#include <android_runtime/AndroidRuntime.h>

#include <cstddef>
#include <string_view>

using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

// ---- What a native method answers is what its message says: the result, or the class that a
// synchronous command's reply becomes.

#define COMMAND(id, name, record, reply_event)                                                     \
    constexpr std::string_view kAnswerOf##name = "BG_TE_DTVSVLIB_RESULT";
#define EXCHANGE(id, name, record, reply, java_class)                                              \
    constexpr std::string_view kAnswerOf##name = #java_class;
#include "records/message_table.def"

#define NATIVE(command, function, parameters, result)                                              \
    static_assert(kAnswerOf##command == #result, #command " answers what its message says");
#include "commands/native_table.def"

/// One name for each native method: none is given twice.
enum {
#define NATIVE(command, function, parameters, result) kNativeOf##command,
#include "commands/native_table.def"
    kNativeMethodCount
};
static_assert(kNativeMethodCount == sizeof(kCommandRows) / sizeof(kCommandRows[0]),
              "every command has its native method");

constexpr const char* kNames[] = {
#define NATIVE(command, function, parameters, result) "DtvSvLib_" #command,
#include "commands/native_table.def"
};
constexpr const char* kSignatures[] = {
#define INT "I"
#define OBJECT(java_class) VALUE_TYPE(java_class)
#define NATIVE(command, function, parameters, result) "(" parameters ")" VALUE_TYPE(result),
#include "commands/native_table.def"
};
struct NativeNames {
    static constexpr int kCount = kNativeMethodCount;
    static constexpr const char* at(int index) { return kNames[index]; }
};
struct NativeSignatures {
    static constexpr int kCount = kNativeMethodCount;
    static constexpr const char* at(int index) { return kSignatures[index]; }
};
constexpr PackedTexts<NativeNames> kNativeNames;
constexpr PackedTexts<NativeSignatures> kNativeSignatures;

void* const kNativeFunctions[kNativeMethodCount] = {
#define NATIVE(command, function, parameters, result) reinterpret_cast<void*>(function),
#include "commands/native_table.def"
};

} // namespace

int registerNatives(JNIEnv* env) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    // The VM keeps none of the texts.
    char texts[packed_text::unpackedBytes<NativeNames>() +
               packed_text::unpackedBytes<NativeSignatures>()];
    char* end = texts;
    JNINativeMethod methods[kNativeMethodCount];
    for (int i = 0; i < kNativeMethodCount; ++i) {
        methods[i].name = end;
        end = kNativeNames.read(i, end);
        methods[i].signature = end;
        end = kNativeSignatures.read(i, end);
        methods[i].fnPtr = kNativeFunctions[i];
    }
    const int ret = android::AndroidRuntime::registerNativeMethods(env, kNativeClassName, methods,
                                                                   kNativeMethodCount);
    if (ret < 0) {
        // A VM binds the rows before the one that it refuses. The library is unloaded after this:
        // a row that stayed bound would be called in memory that is gone.
        unregisterNatives(env);
        TRACE_NATIVE(kDebug, __func__, "registerNatives, failed for '%s'", kNativeClassName);
        return 0;
    }
    TRACE_NATIVE(kFuncEnd, __func__, "ret = %d", ret);
    return 1;
}

void unregisterNatives(JNIEnv* env) {
    const jthrowable pending = env->ExceptionOccurred();
    if (pending != nullptr) {
        env->ExceptionClear();
    }
    const jclass clazz = env->FindClass(kNativeClassName);
    if (clazz != nullptr) {
        env->UnregisterNatives(clazz);
        env->DeleteLocalRef(clazz);
    }
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
    }
    if (pending != nullptr) {
        env->Throw(pending);
        env->DeleteLocalRef(pending);
    }
}
