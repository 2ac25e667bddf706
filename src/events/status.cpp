// The status notifications: reception, playback, recording, captions, BML, sound, video.
#include "events/event.h"
#include "records/status_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;

namespace {

jobject buildPlayStatus(EventBuilder& event, const PLAY_STATUS_INFO& info) {
    return event.build<kNew_BG_TS_DTVSVLIB_PLAY_STATUS_INFO>(
        info.status, zeroExtended(info.current_time), info.eof_flag);
}

#define TRACE_PLAY_STATUS(function, info)                                                          \
    TRACE_LISTENER(kDebug, function,                                                               \
                   "PLAY_STATUS_INFO : status = %d, current_time = %ld, eof_flag = %d",            \
                   (info).status, asLong((info).current_time), (info).eof_flag)

} // namespace

// ---- The fatal errors carry nothing yet: their events are not built and their callbacks not
// called.

#define FATAL_ERROR_HANDLER(event_name)                                                            \
    int JNIDtvSvLibListener::dtvsv_msgid_lib_##event_name(JNIEnv* env, void* data, int size) {     \
        TRACE_LISTENER(kFuncStart, __func__, "");                                                  \
        const auto record = viewRecord<TS_HANDLE_NOTIFY>(data, size);                              \
        TRACE_LISTENER(kDebug, __func__, "handle = %d, fatal_info = T.B.D", record.handle);        \
        if (!EventBuilder(*this, env, __func__).hasSizeOf<TS_HANDLE_NOTIFY>(size)) {               \
            return 1;                                                                              \
        }                                                                                          \
        TRACE_LISTENER(kFuncEnd, __func__, "");                                                    \
        return 0;                                                                                  \
    }

FATAL_ERROR_HANDLER(caption_fatal_error_notify)
FATAL_ERROR_HANDLER(broadcast_fatal_error_notify)

// ---- Those that report a wrong size at DEBUG.

int JNIDtvSvLibListener::dtvsv_msgid_lib_tuner_sensitivity_data_notify(JNIEnv* env, void* data,
                                                                       int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_TUNER_SENSITIVITY_DATA_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, physical_channel = %ld, service_no = %d",
                   record.handle, asLong(record.physical_channel), record.service_no);
    TRACE_LISTENER(kDebug, __func__,
                   "TUNER_SENSITIVITY_DATA_INFO : lna_mode = %ld, cn_value = %ld, ber = %ld, "
                   "ifagc = %d, rfagc = %d, lnag = %d, bpfg = %d",
                   asLong(record.lna_mode), asLong(record.cn_value), asLong(record.ber),
                   record.ifagc, record.rfagc, record.lnag, record.bpfg);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_TUNER_SENSITIVITY_DATA_NOTIFY>(size)) {
        return 1;
    }
    const jobject sensitivity = event.build<kNew_BG_TS_DTVSVLIB_TUNER_SENS_DATA>(
        asJint(record.lna_mode), asJint(record.cn_value), asJint(record.ber), record.ifagc,
        record.rfagc, record.lnag, record.bpfg);
    return event.deliver<kNew_BG_EV_DTVSV_TUNER_SENSITIVITY_DATA_NOTIFY,
                         kCall_onEvDtvsvTunerSensitivityDataNotify>(
        record.handle, zeroExtended(record.physical_channel), record.service_no, sensitivity);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_error_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_PLAY_ERROR_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, play_error = %ld", record.handle,
                   asLong(record.play_error));
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_PLAY_ERROR_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_PLAY_ERROR_NOTIFY, kCall_onEvDtvsvPlayErrorNotify>(
        record.handle, asJint(record.play_error));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_event_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_PLAY_EVENT_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, play_event = %ld, bml_http_flg = %d",
                   record.handle, asLong(record.play_event), record.bml_http_flg);
    TRACE_PLAY_STATUS(__func__, record.play_status);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_PLAY_EVENT_NOTIFY>(size)) {
        return 1;
    }
    const jobject play_status = buildPlayStatus(event, record.play_status);
    // The one 32-bit field that keeps its sign on the way to a Java long.
    return event.deliver<kNew_BG_EV_DTVSV_PLAY_EVENT_NOTIFY, kCall_onEvDtvsvPlayEventNotify>(
        record.handle, play_status, signExtended(record.play_event), record.bml_http_flg);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_play_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_PLAY_STATUS_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_PLAY_STATUS(__func__, record.play_status);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_PLAY_STATUS_NOTIFY>(size)) {
        return 1;
    }
    const jobject play_status = buildPlayStatus(event, record.play_status);
    return event.deliver<kNew_BG_EV_DTVSV_PLAY_STATUS_NOTIFY, kCall_onEvDtvsvPlayStatusNotify>(
        record.handle, play_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_rec_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_REC_INFO_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, rec_time = %ld, rec_cap = %d", record.handle,
                   asLong(record.rec_time), record.rec_cap);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_REC_INFO_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_REC_INFO_NOTIFY, kCall_onEvDtvsvRecInfoNotify>(
        record.handle, zeroExtended(record.rec_time), record.rec_cap,
        zeroExtended(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_rec_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_REC_STATUS_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, rec_status = %ld", record.handle,
                   asLong(record.rec_status));
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_REC_STATUS_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_REC_STATUS_NOTIFY, kCall_onEvDtvsvRecStatusNotify>(
        record.handle, asJint(record.rec_status), zeroExtended(record.physical_channel),
        record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_receive_sensitivity_notify(JNIEnv* env, void* data,
                                                                    int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_RECEIVE_SENSITIVITY_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, ber = %ld, cn = %ld", record.handle,
                   asLong(record.ber), asLong(record.cn));
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_RECEIVE_SENSITIVITY_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_RECEIVE_SENSITIVITY_NOTIFY,
                         kCall_onEvDtvsvReceiveSensitivityNotify>(
        record.handle, zeroExtended(record.ber), zeroExtended(record.cn),
        zeroExtended(record.physical_channel), record.service_no);
}

// Bad reception names its channel as a long and its level; good reception names it as an int.
int JNIDtvSvLibListener::dtvsv_msgid_lib_bad_sens_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SENS_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_SENS_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_BAD_SENS_NOTIFY, kCall_onEvDtvsvBadSensNotify>(
        record.handle, zeroExtended(record.physical_channel), record.service_no,
        record.sensitivity_level);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_good_sens_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SENS_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_SENS_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_GOOD_SENS_NOTIFY, kCall_onEvDtvsvGoodSensNotify>(
        record.handle, asJint(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_ca_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_CA_INFO_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, ca_status = %d", record.handle,
                   record.ca_status);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_CA_INFO_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_CA_INFO_NOTIFY, kCall_onEvDtvsvCaInfoNotify>(
        record.handle, record.ca_status, zeroExtended(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_disp_icon_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_BML_DISP_ICON_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, icon_type = %d, disp_permit = %d", record.handle,
                   record.icon_type, record.disp_permit);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_BML_DISP_ICON_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_BML_DISP_ICON_NOTIFY, kCall_onEvDtvsvBmlDispIconNotify>(
        record.handle, record.icon_type, record.disp_permit);
}

// ---- The later group: the size stands in the FUNCSTART line, and a wrong one is an ERROR.

int JNIDtvSvLibListener::dtvsv_msgid_lib_copy_control_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_COPY_CONTROL_INFO_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, copy_mode = %d", record.handle,
                   record.copy_mode);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_COPY_CONTROL_INFO_NOTIFY>(size)) {
        return 1;
    }
    return event
        .deliver<kNew_BG_EV_DTVSV_COPY_CONTROL_INFO_NOTIFY, kCall_onEvDtvsvCopyControlInfoNotify>(
            record.handle, record.copy_mode, zeroExtended(record.physical_channel),
            record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_change_audio_main_sub_notify(JNIEnv* env, void* data,
                                                                      int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_RESULT_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld", record.handle,
                   asLong(record.result));
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_RESULT_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_CHANGE_AUDIO_MAIN_SUB_NOTIFY,
                         kCall_onEvDtvsvChangeAudioMainSubNotify>(record.handle,
                                                                  asJint(record.result));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_cap_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_CHANGE_STATUS_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, change_status = %d", record.handle,
                   record.change_status);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_CHANGE_STATUS_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_CAP_STATUS_NOTIFY, kCall_onEvDtvsvCapStatusNotify>(
        record.handle, record.change_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_status_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_CHANGE_STATUS_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, change_status = %d", record.handle,
                   record.change_status);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_CHANGE_STATUS_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_BML_STATUS_NOTIFY, kCall_onEvDtvsvBmlStatusNotify>(
        record.handle, record.change_status);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_end_fep_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_HANDLE_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_HANDLE_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_BML_END_FEP_NOTIFY, kCall_onEvDtvsvBmlEndFepNotify>(
        record.handle);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_assign_video_area_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_ASSIGN_VIDEO_AREA_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, drawing_destination = %d, result = %ld",
                   record.handle, record.drawing_destination, asLong(record.result));
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_ASSIGN_VIDEO_AREA_NOTIFY>(size)) {
        return 1;
    }
    return event
        .deliver<kNew_BG_EV_DTVSV_ASSIGN_VIDEO_AREA_NOTIFY, kCall_onEvDtvsvAssignVideoAreaNotify>(
            record.handle, record.drawing_destination, asJint(record.result));
}
