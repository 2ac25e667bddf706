// One command's way: from the native method that Java called to the object that it answers.
//
//     FUNCSTART -> checks, each of which may REFUSE -> record -> SEND lines -> send() -> answer
//
// A refused argument answers PARAM_NG and sends nothing. When Java code throws while an argument is
// read, the native answers null and leaves the exception to its caller.
#pragma once

#include "binding/JNIDtvSvLibListener.h"
#include "entry/trace.h"

#include <jni.h>

#include <cstdint>
#include <optional>

/// What a command came to, as getRetCode maps it to the Java enumeration.
enum ResultCode : int {
    kResultOk = 0,
    kResultNg = 1,
    kResultParamNg = 5,
    kResultAbortNg = 16, ///< synchronous commands: taken, but the answer was empty
};

/// The upper bound of the delays of sound and video. 0 until a session has been created with valid
/// arguments; the value of the last such creation afterwards.
extern int g_max_delay_time;

/// A local reference to the constant of BG_TE_DTVSVLIB_RESULT for a code from 0 to 5, or null.
jobject getRetCode(JNIEnv* env, int ret);

/// Reads the enum-typed field `name` (descriptor `type`) of `holder` as an int, through the static
/// method `getter` of the enumeration. 0 and the value, or 1 and `value` untouched. When the getter
/// throws, the answer is 0 and the exception is pending.
int getEnumValue(JNIEnv* env, jobject holder, const char* name, const char* type,
                 const char* getter, int* value);

/// One call of a native method: who called, what it is called in the trace, what will be sent.
struct Command {
    JNIEnv* env;
    const char* function;
    int message_id;
    jint session; ///< the session handle as Java gave it

    /// The handle as it travels.
    uint16_t handle() const { return static_cast<uint16_t>(session); }
};

/// Begins a command that carries a session handle: writes its FUNCSTART line.
Command beginCommand(JNIEnv* env, const char* function, int message_id, jint session);

/// The object that answers a refused argument: the PARAM_NG constant, or the reply object of the
/// three synchronous commands that read Java objects.
jobject answerRefusal(const Command& command);

/// Sends the record and answers: OK or NG, or the reply object of a synchronous command. Writes the
/// FUNCEND line. `carrier` is null for a command without surfaces.
jobject sendRecord(const Command& command, void* record, int size, TS_DTVSV_SP* carrier);

template <typename Record>
jobject send(const Command& command, Record& record, TS_DTVSV_SP* carrier = nullptr) {
    return sendRecord(command, &record, static_cast<int>(sizeof(Record)), carrier);
}

/// How a command of nothing but its session handle is traced.
using TraceHandle = void (*)(const char* function, int handle);
#define SENDS_HANDLE(text)                                                                         \
    [](const char* function, int handle) { TRACE_NATIVE(trace::kDebug, function, text, handle); }

/// The whole way of a command of nothing but its session handle.
jobject sendHandle(JNIEnv* env, const char* function, int message_id, jint session,
                   TraceHandle trace_send = SENDS_HANDLE("SEND, dtvsv_handle = %d"));

/// What a group of checks came to: nothing, and the native goes on, or the object it answers with.
using Ended = std::optional<jobject>;
constexpr std::nullopt_t kGoOn = std::nullopt;

/// REFUSE(command, text, values...): answers a refused argument, from a native method or a
/// group of its checks, with one line that says why.
#define REFUSE(command, ...)                                                                       \
    do {                                                                                           \
        const jobject refused = answerRefusal(command);                                            \
        if (!(command).env->ExceptionCheck()) {                                                    \
            TRACE_NATIVE(trace::kDebug, (command).function, __VA_ARGS__);                          \
        }                                                                                          \
        return refused;                                                                            \
    } while (false)
