// The status notifications: reception, playback, recording, captions, BML, sound, video.
#include "events/event.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

namespace {

Object<class_id::kBG_TS_DTVSVLIB_PLAY_STATUS_INFO> buildPlayStatus(EventBuilder& event,
                                                                   const PLAY_STATUS_INFO& info) {
    return event.build<class_id::kBG_TS_DTVSVLIB_PLAY_STATUS_INFO>(
        info.status, zeroExtended(info.current_time), info.eof_flag);
}

void tracePlayStatus(const char* handler, const PLAY_STATUS_INFO& info) {
    TRACE_LISTENER(kDebug, handler,
                   "PLAY_STATUS_INFO : status = %d, current_time = %ld, eof_flag = %d", info.status,
                   asLong(info.current_time), info.eof_flag);
}

} // namespace

// ---- The fatal errors hold a handle alone: no event is built, and no callback is called.

int JNIDtvSvLibListener::dtvsv_msgid_lib_caption_fatal_error_notify(JNIEnv* env, void* data,
                                                                    int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kCaptionFatalErrorNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, fatal_info = T.B.D", event->handle);
    return event.endUndelivered();
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_broadcast_fatal_error_notify(JNIEnv* env, void* data,
                                                                      int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBroadcastFatalErrorNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, fatal_info = T.B.D", event->handle);
    return event.endUndelivered();
}

// ---- Those that report a wrong size at DEBUG.

int JNIDtvSvLibListener::dtvsv_msgid_lib_tuner_sensitivity_data_notify(JNIEnv* env, void* data,
                                                                       int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kTunerSensitivityDataNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, physical_channel = %ld, service_no = %d",
                   event->handle, asLong(event->physical_channel), event->service_no);
    TRACE_LISTENER(kDebug, __func__,
                   "TUNER_SENSITIVITY_DATA_INFO : lna_mode = %ld, cn_value = %ld, ber = %ld, "
                   "ifagc = %d, rfagc = %d, lnag = %d, bpfg = %d",
                   asLong(event->lna_mode), asLong(event->cn_value), asLong(event->ber),
                   event->ifagc, event->rfagc, event->lnag, event->bpfg);
    const auto sensitivity = event.build<class_id::kBG_TS_DTVSVLIB_TUNER_SENS_DATA>(
        asJint(event->lna_mode), asJint(event->cn_value), asJint(event->ber), event->ifagc,
        event->rfagc, event->lnag, event->bpfg);
    return event.deliver(event->handle, zeroExtended(event->physical_channel), event->service_no,
                         sensitivity);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_error_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kPlayErrorNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, play_error = %ld", event->handle,
                   asLong(event->play_error));
    return event.deliver(event->handle, asJint(event->play_error));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_event_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kPlayEventNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, play_event = %ld, bml_http_flg = %d",
                   event->handle, asLong(event->play_event), event->bml_http_flg);
    tracePlayStatus(__func__, event->play_status);
    const auto play_status = buildPlayStatus(event, event->play_status);
    // The one 32-bit field that keeps its sign on the way to a Java long.
    return event.deliver(event->handle, play_status, signExtended(event->play_event),
                         event->bml_http_flg);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kPlayStatusNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    tracePlayStatus(__func__, event->play_status);
    const auto play_status = buildPlayStatus(event, event->play_status);
    return event.deliver(event->handle, play_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_rec_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kRecInfoNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, rec_time = %ld, rec_cap = %d", event->handle,
                   asLong(event->rec_time), event->rec_cap);
    return event.deliver(event->handle, zeroExtended(event->rec_time), event->rec_cap,
                         zeroExtended(event->physical_channel), event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_rec_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kRecStatusNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, rec_status = %ld", event->handle,
                   asLong(event->rec_status));
    return event.deliver(event->handle, asJint(event->rec_status),
                         zeroExtended(event->physical_channel), event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_receive_sensitivity_notify(JNIEnv* env, void* data,
                                                                    int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kReceiveSensitivityNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, ber = %ld, cn = %ld", event->handle,
                   asLong(event->ber), asLong(event->cn));
    return event.deliver(event->handle, zeroExtended(event->ber), zeroExtended(event->cn),
                         zeroExtended(event->physical_channel), event->service_no);
}

// Bad reception names its channel as a long and its level; good reception names it as an int.
int JNIDtvSvLibListener::dtvsv_msgid_lib_bad_sens_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBadSensNotify> event(*this, env, __func__, data, size);
    return event.deliver(event->handle, zeroExtended(event->physical_channel), event->service_no,
                         event->sensitivity_level);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_good_sens_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kGoodSensNotify> event(*this, env, __func__, data, size);
    return event.deliver(event->handle, asJint(event->physical_channel), event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_ca_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kCaInfoNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, ca_status = %d", event->handle,
                   event->ca_status);
    return event.deliver(event->handle, event->ca_status, zeroExtended(event->physical_channel),
                         event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_disp_icon_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlDispIconNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, icon_type = %d, disp_permit = %d", event->handle,
                   event->icon_type, event->disp_permit);
    return event.deliver(event->handle, event->icon_type, event->disp_permit);
}

// ---- Those that log recv_size in FUNCSTART and report a wrong size at ERROR.

int JNIDtvSvLibListener::dtvsv_msgid_lib_copy_control_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kCopyControlInfoNotify> event(*this, env, __func__, data, size,
                                                  Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, copy_mode = %d", event->handle,
                   event->copy_mode);
    return event.deliver(event->handle, event->copy_mode, zeroExtended(event->physical_channel),
                         event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_change_audio_main_sub_notify(JNIEnv* env, void* data,
                                                                      int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kChangeAudioMainSubNotify> event(*this, env, __func__, data, size,
                                                     Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld", event->handle,
                   asLong(event->result));
    return event.deliver(event->handle, asJint(event->result));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_cap_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kCapStatusNotify> event(*this, env, __func__, data, size,
                                            Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, change_status = %d", event->handle,
                   event->change_status);
    return event.deliver(event->handle, event->change_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlStatusNotify> event(*this, env, __func__, data, size,
                                            Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, change_status = %d", event->handle,
                   event->change_status);
    return event.deliver(event->handle, event->change_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_end_fep_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlEndFepNotify> event(*this, env, __func__, data, size,
                                            Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    return event.deliver(event->handle);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_assign_video_area_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kAssignVideoAreaNotify> event(*this, env, __func__, data, size,
                                                  Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, drawing_destination = %d, result = %ld",
                   event->handle, event->drawing_destination, asLong(event->result));
    return event.deliver(event->handle, event->drawing_destination, asJint(event->result));
}
