// What the service learns about the broadcast: networks and services found, and the streams of the
// service that is received. The programme guide stands in guide.cpp.
#include "events/event.h"
#include "records/programme_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

// ---- Networks.

namespace {

/// How many partial-reception services a network may have in each of its two records: the array has
/// room for 8 in both.
constexpr int kMostServicesOfNetwork = 7;
constexpr int kMostServicesOfScan = 8;

/// The two names of a network as Java strings.
struct NetworkNames {
    jstring ts_name;
    jstring nw_name;

    NetworkNames(EventBuilder& event, const NETWORK_INFO& network)
        : ts_name(event.text(network.ts_name_size != 0 ? FieldText(network.ts_name).text : "")),
          nw_name(event.text(network.nw_name_size != 0 ? FieldText(network.nw_name).text : "")) {}

    bool made() const { return ts_name != nullptr && nw_name != nullptr; }
};

/// The network as a Java object, when its service count has been judged. The lengths are those of
/// the strings, not of the record.
jobject buildNetwork(EventBuilder& event, const NETWORK_INFO& network, const NetworkNames& names) {
    JNIEnv* const env = event.env();
    const jsize count = network.partialsvc_cnt;
    const jint ts_name_length = env->GetStringUTFLength(names.ts_name);
    const jint nw_name_length = env->GetStringUTFLength(names.nw_name);
    const auto services = static_cast<jintArray>(event.keep(env->NewIntArray(count)));
    if (services == nullptr) {
        return nullptr;
    }
    jint ids[kMostServicesOfScan] = {};
    for (jsize i = 0; i < count; ++i) {
        ids[i] = network.partialsvc[i];
    }
    env->SetIntArrayRegion(services, 0, count, ids);
    return event.build<kNew_BG_TS_DTVSVLIB_NETWORK_INFO>(
        network.ts_id, ts_name_length, names.ts_name, network.nw_id, nw_name_length, names.nw_name,
        network.remocon_id, network.partialsvc_cnt, services);
}

#define TRACE_NETWORK(function, network)                                                           \
    TRACE_LISTENER(kDebug, function,                                                               \
                   "NETWORK_INFO : ts_id = %d, ts_name_size = %d, ts_name = |%s|, nw_id = %d, "    \
                   "nw_name_size = %d, nw_name = |%s|, remocon_id = %d, partialsvc_cnt = %d",      \
                   (network).ts_id, (network).ts_name_size, FieldText((network).ts_name).text,     \
                   (network).nw_id, (network).nw_name_size, FieldText((network).nw_name).text,     \
                   (network).remocon_id, (network).partialsvc_cnt)

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_network_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_NETWORK_INFO_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_NETWORK(__func__, record.network);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_NETWORK_INFO_NOTIFY>(size)) {
        return 1;
    }
    const NetworkNames names(event, record.network);
    if (!names.made()) {
        TRACE_LISTENER_ERROR(__func__, "ERROR NewStringUTF");
        return 1;
    }
    if (record.network.partialsvc_cnt > kMostServicesOfNetwork) {
        TRACE_LISTENER(kDebug, __func__, "ERROR partialsvc_cnt is over count");
        return 1;
    }
    const jobject network = buildNetwork(event, record.network, names);
    return event.deliver<kNew_BG_EV_DTVSV_NETWORK_INFO_NOTIFY, kCall_onEvDtvsvNetworkInfoNotify>(
        record.handle, network, zeroExtended(record.physical_channel));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_scan_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SCAN_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, result_channnel_num = %d",
                   record.handle, asLong(record.result), record.result_channnel_num);
    TRACE_LISTENER(kDebug, __func__, "SCAN_RESULT : channnel = %ld", asLong(record.channnel));
    TRACE_NETWORK(__func__, record.network);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_SCAN_NOTIFY>(size)) {
        return 1;
    }
    const NetworkNames names(event, record.network);
    if (!names.made()) {
        TRACE_LISTENER_ERROR(__func__, "ERROR NewStringUTF");
        return 1;
    }
    if (record.network.partialsvc_cnt > kMostServicesOfScan) {
        TRACE_LISTENER(kDebug, __func__, "ERROR partialsvc_cnt is over count : %d",
                       record.network.partialsvc_cnt);
        return 1;
    }
    const jobject network = buildNetwork(event, record.network, names);
    const jobject scan_result =
        event.build<kNew_BG_TS_DTVSVLIB_SCAN_RESULT>(asJint(record.channnel), network);
    return event.deliver<kNew_BG_EV_DTVSV_SCAN_NOTIFY, kCall_onEvDtvsvScanNotify>(
        record.handle, asJint(record.result), scan_result, record.result_channnel_num);
}

// ---- The services of a transport stream.

namespace {

constexpr int kMostServices = 8;

/// Fills the array with the services of the list. False when one could not be made.
bool fillServices(EventBuilder& event, const TS_SERVICE_INFO_NOTIFY& record,
                  jobjectArray services) {
    JNIEnv* const env = event.env();
    for (jsize i = 0; i < record.svc_cnt; ++i) {
        const SERVICE_INFO& entry = record.service[i];
        const jstring name = event.text(entry.name_size != 0 ? FieldText(entry.name).text : "");
        if (name == nullptr) {
            return false;
        }
        const jint name_length = env->GetStringUTFLength(name);
        const jobject service = event.build<kNew_BG_TS_DTVSVLIB_SERVICE_INFO>(
            asJint(entry.service_id), name_length, name);
        if (service == nullptr) {
            return false;
        }
        env->SetObjectArrayElement(services, i, service);
    }
    return true;
}

} // namespace

// The size is not judged: entries that were not sent have id 0 and an empty name.
int JNIDtvSvLibListener::dtvsv_msgid_lib_service_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_SERVICE_INFO_NOTIFY>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__, "STREAM_INFO ts_id = %ld, svc_cnt = %d", asLong(record.ts_id),
                   record.svc_cnt);
    if (record.svc_cnt > kMostServices) {
        TRACE_LISTENER(kDebug, __func__, "ERROR svc_cnt is over count");
        return 1;
    }
    const jclass service_class = getJavaClass(class_id::kBG_TS_DTVSVLIB_SERVICE_INFO);
    if (service_class == nullptr) {
        TRACE_LISTENER(kDebug, __func__, "ERROR find class");
        return 1;
    }
    EventBuilder event(*this, env, __func__);
    const auto services = static_cast<jobjectArray>(
        event.keep(env->NewObjectArray(record.svc_cnt, service_class, nullptr)));
    if (services == nullptr || !fillServices(event, record, services)) {
        return 1;
    }
    const jobject stream = event.build<kNew_BG_TS_DTVSVLIB_STREAM_INFO>(asJint(record.ts_id),
                                                                        record.svc_cnt, services);
    return event.deliver<kNew_BG_EV_DTVSV_SERVICE_INFO_NOTIFY, kCall_onEvDtvsvServiceInfoNotify>(
        record.handle, stream, zeroExtended(record.physical_channel), record.service_no);
}

// ---- The streams of the service, and the ends of scans and searches. These log no field.

int JNIDtvSvLibListener::dtvsv_msgid_lib_component_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_COMPONENT_INFO_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_COMPONENT_INFO_NOTIFY>(size)) {
        return 1;
    }
    const jobject component = event.build<kNew_BG_TS_DTVSVLIB_COMPONENT_INFO>(
        record.cap_exist_flg, record.bml_exist_flg, record.audio_es_num);
    return event
        .deliver<kNew_BG_EV_DTVSV_COMPONENT_INFO_NOTIFY, kCall_onEvDtvsvComponentInfoNotify>(
            record.handle, component, zeroExtended(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_update_video_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_UPDATE_VIDEO_INFO_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_UPDATE_VIDEO_INFO_NOTIFY>(size)) {
        return 1;
    }
    const jobject video = event.build<kNew_BG_TS_DTVSVLIB_VIDEO_INFO>(record.size_h, record.size_v);
    return event
        .deliver<kNew_BG_EV_DTVSV_UPDATE_VIDEO_INFO_NOTIFY, kCall_onEvDtvsvUpdateVideoInfoNotify>(
            record.handle, video, zeroExtended(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_update_audio_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_UPDATE_AUDIO_INFO_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_UPDATE_AUDIO_INFO_NOTIFY>(size)) {
        return 1;
    }
    return event
        .deliver<kNew_BG_EV_DTVSV_UPDATE_AUDIO_INFO_NOTIFY, kCall_onEvDtvsvUpdateAudioInfoNotify>(
            record.handle, record.dualmono, record.audio_mode,
            zeroExtended(record.physical_channel), record.service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_get_caption_data_notify(JNIEnv* env, void* data,
                                                                 int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_GET_CAPTION_DATA_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_GET_CAPTION_DATA_NOTIFY>(size)) {
        return 1;
    }
    const jobject caption = event.build<kNew_BG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY>(
        record.valid_lang_num, record.cap_lang);
    return event
        .deliver<kNew_BG_EV_DTVSV_GET_CAPTION_DATA_NOTIFY, kCall_onEvDtvsvGetCaptionDataNotify>(
            record.handle, caption);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_select_audio_component_notify(JNIEnv* env, void* data,
                                                                       int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SELECT_AUDIO_COMPONENT_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_SELECT_AUDIO_COMPONENT_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_SELECT_AUDIO_COMPONENT_NOTIFY,
                         kCall_onEvDtvsvSelectAudioComponentNotify>(record.handle,
                                                                    asJint(record.result));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_search_channel_notify(JNIEnv* env, void* data,
                                                                     int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_START_SEARCH_CHANNEL_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_START_SEARCH_CHANNEL_NOTIFY>(size)) {
        return 1;
    }
    return event.deliver<kNew_BG_EV_DTVSV_START_SEARCH_CHANNEL_NOTIFY,
                         kCall_onEvDtvsvStartSearchChannelNotify>(record.handle,
                                                                  asJint(record.physical_channel));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_search_channel_notify(JNIEnv* env, void* data,
                                                                         int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_TERMINATE_SEARCH_CHANNEL_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_TERMINATE_SEARCH_CHANNEL_NOTIFY>(size)) {
        return 1;
    }
    const jobject found = event.build<kNew_BG_TS_DTVSVLIB_BROADCAST_INFO>(
        asJint(record.physical_channel), record.service_no);
    return event.deliver<kNew_BG_EV_DTVSV_TERMINATE_SEARCH_CHANNEL_NOTIFY,
                         kCall_onEvDtvsvTerminateSearchChannelNotify>(record.handle,
                                                                      asJint(record.result), found);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_scan_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_TERMINATE_SCAN_NOTIFY>(data, size);
    EventBuilder event(*this, env, __func__, Reports::kSizeAsError);
    if (!event.hasSizeOf<TS_TERMINATE_SCAN_NOTIFY>(size)) {
        return 1;
    }
    return event
        .deliver<kNew_BG_EV_DTVSV_TERMINATE_SCAN_NOTIFY, kCall_onEvDtvsvTerminateScanNotify>(
            record.handle, asJint(record.result));
}
