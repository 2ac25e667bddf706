// The commands that open and close a session, and start and cancel scans and searches.
#include "commands/command.h"
#include "commands/natives.h"

using trace::kDebug;
using trace::kFuncStart;

int g_max_delay_time = 0;

namespace {

constexpr jint kLastStartType = 4;
constexpr jint kLongestDelay = 999;

} // namespace

// The service makes the session's handle and announces it in its reply.
jobject dtvSvLibCreate(JNIEnv* env, jobject, jint start_type, jint max_delay_time) {
    TRACE_NATIVE(kFuncStart, __func__, "");
    Command command(env, __func__, command_row::kCreate);
    if (start_type > kLastStartType) {
        return command.refuse(TWO_INTS_LINE("start_type is too large : %d, ret = %d"), start_type,
                              kResultParamNg);
    }
    if (max_delay_time > kLongestDelay) {
        return command.refuse(TWO_INTS_LINE("max_delay_time is too large : %d, ret = %d"),
                              max_delay_time, kResultParamNg);
    }
    TS_CREATE_REQ& record = command.record;
    record.start_type = static_cast<uint8_t>(start_type);
    record.max_delay_time = static_cast<uint16_t>(max_delay_time);
    g_max_delay_time = max_delay_time;
    TRACE_NATIVE(kDebug, __func__, "SEND, start_type = %d max_delay_time = %d", record.start_type,
                 record.max_delay_time);
    return command.send();
}

jobject dtvSvLibRelease(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kRelease, handle);
}

jobject dtvSvLibStartScan(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kStartScan, handle);
}

jobject dtvSvLibCancelScan(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kCancelScan, handle);
}

jobject dtvSvLibTerminateBroadcastReceiving(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kTerminateBroadcastReceiving, handle);
}

jobject dtvSvLibCancelSearchChannel(JNIEnv* env, jobject, jint handle) {
    return sendHandle(env, __func__, command_row::kCancelSearchChannel, handle);
}
