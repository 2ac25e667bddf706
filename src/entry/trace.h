// The trace: every function writes its lines through these macros, in one fixed layout.
//
//     ,TENRIK,<task>,<level word>,<function>(),<source line>,<message>
//
// A message is a literal, so that the compiler holds its conversions against its values. An ERROR
// line has a second copy on standard output.
#pragma once

#include "entry/process_id.h"

#include <DtvSvCom.h>
#include <pthread.h>

#include <cstdint>
#include <cstdio>

namespace trace {

/// How a line is marked: its kind, the bit that the log filters by, and its word, 9 characters
/// wide.
struct Level {
    short kind;
    unsigned long mask;
    const char* word;
};

constexpr Level kError = {6, 2, "ERROR    "};
constexpr Level kFuncStart = {5, 128, "FUNCSTART"};
constexpr Level kFuncEnd = {5, 256, "FUNCEND  "};
constexpr Level kInfo = {5, 512, "INFO     "};
constexpr Level kDebug = {5, 1024, "DEBUG    "};

/// Who writes: the native methods and what serves them, or a member function of the listener.
constexpr const char* kNative = "Dtv_jni";
constexpr const char* kListener = "JNIDtvSvLibListener";

/// A 32-bit value for "%ld", printed as the receiver's 32-bit long prints it on every machine.
constexpr long asLong(int32_t value) {
    return value;
}
constexpr long asLong(uint32_t value) {
    return static_cast<int32_t>(value);
}

/// A thread's id for "%x": its low 32 bits.
inline unsigned int threadId(pthread_t thread) {
    return static_cast<unsigned int>(static_cast<uintptr_t>(thread));
}
inline unsigned int threadId() {
    return threadId(pthread_self());
}

} // namespace trace

#define TRACE_PREFIX ",TENRIK,%-8s,%s,%s(),%4d,"
#define TRACE_COPY_PREFIX "%s(%5d):<%-8s>%s [%s():%4d] "

// A line without values needs a call of its own shape, as ISO C++17 has no empty variadic
// arguments.
#define TRACE_TEXT(level, module, line, function, text)                                            \
    DtvSvCom_Log(2, (level).kind, module, (level).mask, TRACE_PREFIX text,                         \
                 DtvSvCom_GetMyTaskName(), (level).word, function, line)
#define TRACE_VALUES(level, module, line, function, text, ...)                                     \
    DtvSvCom_Log(2, (level).kind, module, (level).mask, TRACE_PREFIX text,                         \
                 DtvSvCom_GetMyTaskName(), (level).word, function, line, __VA_ARGS__)
#define TRACE_SHAPE(text, v1, v2, v3, v4, v5, v6, v7, v8, v9, v10, shape, ...) shape
#define TRACE(level, module, line, function, ...)                                                  \
    TRACE_SHAPE(__VA_ARGS__, TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, \
                TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, TRACE_VALUES, TRACE_TEXT,  \
                0)                                                                                 \
    (level, module, line, function, __VA_ARGS__)

/// TRACE_NATIVE(level, function, text, values...): a line of the native methods and their helpers.
#define TRACE_NATIVE(level, ...) TRACE(level, trace::kNative, __LINE__, __VA_ARGS__)

/// The same for a helper that writes on behalf of another source line.
#define TRACE_NATIVE_AT(line, level, ...) TRACE(level, trace::kNative, line, __VA_ARGS__)

/// TRACE_LISTENER(level, function, text, values...): a line of the listener.
#define TRACE_LISTENER(level, ...) TRACE(level, trace::kListener, __LINE__, __VA_ARGS__)

#define TRACE_COPY_TEXT(module, function, text)                                                    \
    std::printf(TRACE_COPY_PREFIX text "\n", module, trace::processId(), DtvSvCom_GetMyTaskName(), \
                trace::kError.word, function, __LINE__)
#define TRACE_COPY_VALUE(module, function, text, value)                                            \
    std::printf(TRACE_COPY_PREFIX text "\n", module, trace::processId(), DtvSvCom_GetMyTaskName(), \
                trace::kError.word, function, __LINE__, value)

/// An ERROR line of the listener without values, and its copy on standard output.
#define TRACE_LISTENER_ERROR(function, text)                                                       \
    do {                                                                                           \
        TRACE_TEXT(trace::kError, trace::kListener, __LINE__, function, text);                     \
        TRACE_COPY_TEXT(trace::kListener, function, text);                                         \
    } while (false)

/// An ERROR line of the listener with one value, and its copy on standard output.
#define TRACE_LISTENER_ERROR_VALUE(function, text, value)                                          \
    do {                                                                                           \
        TRACE_VALUES(trace::kError, trace::kListener, __LINE__, function, text, value);            \
        TRACE_COPY_VALUE(trace::kListener, function, text, value);                                 \
    } while (false)
