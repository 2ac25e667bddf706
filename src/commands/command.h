// How a command is sent: from the native method that Java called to the object that it returns.
//
//     FUNCSTART -> arguments are read and checked -> record -> SEND lines -> send() -> answer
//
// A refused argument answers PARAM_NG and sends nothing. When Java code throws while an argument is
// read, the native answers null and leaves the exception to its caller.
#pragma once

#include "binding/JNIDtvSvLibListener.h"
#include "commands/line.h"
#include "entry/trace.h"
#include "records/messages.h"

#include <jni.h>

#include <cstdint>

/// The result of a command, as getRetCode maps it to the Java enumeration.
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

/// One call of a native method: who called, its name in the trace, its message, and whether it has
/// been refused. After a refusal nothing more is read, and the native answers answer().
class NativeCall {
public:
    NativeCall(JNIEnv* env, const char* function, const CommandRow& row, jint session)
        : env_(env), function_(function), row_(row), session_(session) {}
    NativeCall(const NativeCall&) = delete;
    NativeCall& operator=(const NativeCall&) = delete;

    JNIEnv* env() const { return env_; }
    const char* function() const { return function_; }
    const CommandRow& row() const { return row_; }
    /// The session handle as it travels.
    uint16_t handle() const { return static_cast<uint16_t>(session_); }

    bool refused() const { return refused_; }
    /// What a refused native answers: a local reference, or null when an exception is pending.
    jobject answer() const { return answer_; }

    /// Refuses an argument: takes the answer, then writes the line that says why, but not when
    /// making the answer threw. Returns the answer.
    jobject refuse(Line<1> line, int value, int source_line = __builtin_LINE()) {
        return refuseFor(function_, line.format, source_line, value);
    }
    jobject refuse(Line<2> line, int first, int second, int source_line = __builtin_LINE()) {
        return refuseFor(function_, line.format, source_line, first, second);
    }
    jobject refuse(Line<3> line, int first, int second, int third,
                   int source_line = __builtin_LINE()) {
        return refuseFor(function_, line.format, source_line, first, second, third);
    }

    /// The same with a line in the name of `function`, whose format has been checked.
    jobject refuseFor(const char* function, const char* format, int source_line, int first = 0,
                      int second = 0, int third = 0);

    /// Refuses an argument that has had its line. When Java code threw, the answer is null.
    void refuseWithoutLine();

    /// Ends the command with the exception that is pending.
    void abandon() { refused_ = true; }

protected:
    void traceStart(int line) const;

    /// Sends a record and answers: OK or NG, or the reply object of a synchronous command. Writes
    /// the FUNCEND line. `surfaces` is null for a command without surfaces.
    jobject sendRecord(void* record, int size, TS_DTVSV_SP* surfaces) const;

private:
    /// The synchronous half of sendRecord. (exchange.cpp)
    jobject exchangeRecord(void* record, int size, TS_DTVSV_SP* surfaces) const;

    JNIEnv* const env_;
    const char* const function_;
    const CommandRow& row_;
    const jint session_;
    bool refused_ = false;
    jobject answer_ = nullptr;
};

/// One call of a native method whose message carries a Record. The record begins with the session
/// handle, but for the one that opens a session, and is zero otherwise.
template <class Record>
class Command : public NativeCall {
public:
    /// Writes the FUNCSTART line, for the source line `line`.
    Command(JNIEnv* env, const char* function, const CommandRowOf<Record>& row, jint session,
            int line = __builtin_LINE())
        : NativeCall(env, function, row, session) {
        record.handle = handle();
        traceStart(line);
    }

    /// The command that opens a session: it has no handle yet.
    Command(JNIEnv* env, const char* function, const CommandRowOf<Record>& row)
        : NativeCall(env, function, row, 0) {}

    /// Sends the record and returns what the native answers. Writes the FUNCEND line.
    jobject send(TS_DTVSV_SP* surfaces = nullptr) {
        return sendRecord(&record, static_cast<int>(sizeof(Record)), surfaces);
    }

    Record record = {};
};

/// Sends a command that carries its session handle alone, and returns what the native answers. The
/// SEND line shows the handle.
jobject sendHandle(JNIEnv* env, const char* function, const CommandRowOf<TS_HANDLE_REQ>& row,
                   jint session, Line<1> send_line = INT_LINE("SEND, dtvsv_handle = %d"),
                   int source_line = __builtin_LINE());
