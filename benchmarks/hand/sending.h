// How a command of the hand-written bridge ends.
#pragma once

#include "hand/arguments.h"
#include "hand/listener.h"
#include "records/messages.h"

#include <jni.h>

namespace hand {

/// The last value of what is off or on.
constexpr jint kLastOnOff = 1;

/// The results that the commands answer with.
enum Code : int {
    kOk = 0,
    kNg = 1,
    kParamNg = 5
};

/// A constant of the result enumeration, and the lines about it.
template <class Policy>
jobject resultConstant(JNIEnv* env, Code code) {
    using trace::kFuncEnd;
    using trace::kFuncStart;
    constexpr const char* kFunction = "getRetCode";
    NATIVE_LINE(kFuncStart, kFunction, "(param)ret = %d", code);
    const jobject constant = arguments.result[code].get<Policy>(env);
    NATIVE_LINE(kFuncEnd, kFunction, "");
    return constant;
}

/// Sends a record and answers. Writes the FUNCEND line.
template <class Policy>
jobject send(JNIEnv* env, [[maybe_unused]] const char* function, const CommandRow& row,
             void* record, int size, TS_DTVSV_SP* surfaces = nullptr) {
    auto& listener = listenerOf<Policy>();
    const int ret =
        surfaces != nullptr
            ? listener.sendEventToServer(row.id, record, size, surfaces, nullptr, nullptr)
            : listener.sendEventToServer(row.id, record, size, nullptr, nullptr);
    const jobject constant = resultConstant<Policy>(env, ret == 0 ? kOk : kNg);
    NATIVE_LINE(trace::kFuncEnd, function, "ret = %d", ret);
    return constant;
}

} // namespace hand
