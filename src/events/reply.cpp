// The replies to asynchronous commands.
#include "events/event.h"
#include "records/reply_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

int JNIDtvSvLibListener::dtvsv_msgid_lib_common_reply(JNIEnv* env, int handle, int result,
                                                      TE_DTVSV_METHODID constructor,
                                                      TE_DTVSV_METHODID callback) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    TRACE_LISTENER(kDebug, __func__, "dtvsv_handle = %d, result = %d", handle, result);
    jobject event = nullptr;
    int ret = CallMethod(env, constructor, &event, handle, result);
    if (ret == 0) {
        ret = CallMethod(env, callback, nullptr, event);
    }
    if (ret != 0) {
        TRACE_LISTENER(kDebug, __func__, "CallMethod NG, ret = %d", ret);
        return 1;
    }
    env->DeleteLocalRef(event);
    TRACE_LISTENER(kFuncEnd, __func__, "ret = %d", 0);
    return 0;
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_scan_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_START_SCAN_REPLY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, channnel_num = %d", record.handle,
                   asLong(record.result), record.channel_num);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_START_SCAN_REPLY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_START_SCAN_REPLY, kCall_onEvDtvsvStartScanReply>(
        record.handle, record.result, record.channel_num);
}

namespace {

/// The three replies that name a service. They log nothing of their records.
template <TE_DTVSV_METHODID Constructor, TE_DTVSV_METHODID Callback>
int deliverServiceReply(EventBuilder& event, const void* data, int size) {
    if (!event.hasSizeOf<TS_SERVICE_REPLY>(size)) {
        return 1;
    }
    const auto record = viewRecord<TS_SERVICE_REPLY>(data, size);
    return event.deliver<Constructor, Callback>(
        record.handle, record.result, zeroExtended(record.physical_channel), record.service_no);
}

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_broadcast_receiving_reply(JNIEnv* env, void* data,
                                                                         int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    EventBuilder event(*this, env, __func__);
    return deliverServiceReply<kNew_BG_EV_DTVSV_START_BROADCAST_REPLY,
                               kCall_onEvDtvsvStartBroadcastReply>(event, data, size);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_select_channel_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    EventBuilder event(*this, env, __func__);
    return deliverServiceReply<kNew_BG_EV_DTVSV_SELECT_CHANNEL_REPLY,
                               kCall_onEvDtvsvSelectChannelReply>(event, data, size);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_rec_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    EventBuilder event(*this, env, __func__);
    return deliverServiceReply<kNew_BG_EV_DTVSV_START_REC_REPLY, kCall_onEvDtvsvStartRecReply>(
        event, data, size);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_release_display_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_RELEASE_DISPLAY_REPLY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "dtvsv_handle = %d, result = %ld, drawing_destination = %d",
                   record.handle, asLong(record.result), record.drawing_destination);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_RELEASE_DISPLAY_REPLY>(size)) {
        return 1;
    }
    return event
        .deliver<kNew_BG_EV_DTVSV_RELEASE_DISPLAY_REPLY, kCall_onEvDtvsvReleaseDisplayReply>(
            record.handle, record.result, record.drawing_destination);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_Tuner_log_status_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_TUNER_LOG_STATUS_REPLY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, log_status = %d", record.handle,
                   asLong(record.result), record.log_status);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_TUNER_LOG_STATUS_REPLY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY,
                         kCall_onEvDtvsvGetTunerLogStatusReply>(record.handle, record.result,
                                                                record.log_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_rec_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_TERMINATE_REC_REPLY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld", record.handle,
                   asLong(record.result));
    TRACE_LISTENER(kDebug, __func__, "TERMINATE_REC_REPLY : program_no = %d, object_no = %d",
                   record.program_no, record.object_no);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_TERMINATE_REC_REPLY>(size)) {
        return 1;
    }
    const jobject terminate_rec =
        event.build<kNew_BG_TS_DTVSVLIB_TERMINATE_REC_REPLY>(record.program_no, record.object_no);
    return event.deliver<kNew_BG_EV_DTVSV_TERMINATE_REC_REPLY, kCall_onEvDtvsvTerminateRecReply>(
        record.handle, record.result, terminate_rec);
}
