// The replies to asynchronous commands.
#include "events/event.h"

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

// ---- The three replies that name a service. They log nothing of their records.

namespace {

template <int EventId>
int deliverServiceReply(Event<EventId>& event) {
    return event.deliver(event->handle, event->result, zeroExtended(event->physical_channel),
                         event->service_no);
}

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_broadcast_receiving_reply(JNIEnv* env, void* data,
                                                                         int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kStartBroadcastReceivingReply> event(*this, env, __func__, data, size);
    return deliverServiceReply(event);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_select_channel_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kSelectChannelReply> event(*this, env, __func__, data, size);
    return deliverServiceReply(event);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_rec_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kStartRecReply> event(*this, env, __func__, data, size);
    return deliverServiceReply(event);
}

// ---- The other replies that hold more than a handle and a result.

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_scan_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kStartScanReply> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, channnel_num = %d", event->handle,
                   asLong(event->result), event->channel_num);
    return event.deliver(event->handle, event->result, event->channel_num);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_release_display_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kReleaseDisplayReply> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "dtvsv_handle = %d, result = %ld, drawing_destination = %d",
                   event->handle, asLong(event->result), event->drawing_destination);
    return event.deliver(event->handle, event->result, event->drawing_destination);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_Tuner_log_status_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kTunerLogStatusReply> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, log_status = %d", event->handle,
                   asLong(event->result), event->log_status);
    return event.deliver(event->handle, event->result, event->log_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_rec_reply(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kTerminateRecReply> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld", event->handle,
                   asLong(event->result));
    TRACE_LISTENER(kDebug, __func__, "TERMINATE_REC_REPLY : program_no = %d, object_no = %d",
                   event->program_no, event->object_no);
    const auto terminate_rec = event.build<class_id::kBG_TS_DTVSVLIB_TERMINATE_REC_REPLY>(
        event->program_no, event->object_no);
    return event.deliver(event->handle, event->result, terminate_rec);
}
