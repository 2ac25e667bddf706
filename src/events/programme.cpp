// What the service reports about the broadcast: networks and services found, the streams of the
// service that is received, and its programme guide.
#include "events/event.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

// ---- Networks.

namespace {

/// How many partial-reception services a network may have in each of its two records: the array has
/// room for 8 in both.
constexpr int kMostServicesOfNetwork = 7;
constexpr int kMostServicesOfScan = 8;

/// A network on its way to Java: the strings and their lengths come before its count is checked,
/// the array of its services after. The lengths are those of the strings, not of the record.
struct NetworkNames {
    jstring ts_name;
    jstring nw_name;
    jint ts_name_length;
    jint nw_name_length;

    NetworkNames(EventBuilder& event, const NETWORK_INFO& network)
        : ts_name(event.text(network.ts_name_size != 0 ? FieldText(network.ts_name).text : "")),
          nw_name(event.text(network.nw_name_size != 0 ? FieldText(network.nw_name).text : "")),
          ts_name_length(event.lengthOf(ts_name)), nw_name_length(event.lengthOf(nw_name)) {}
};

Object<class_id::kBG_TS_DTVSVLIB_NETWORK_INFO> buildNetwork(EventBuilder& event,
                                                            const NETWORK_INFO& network,
                                                            const NetworkNames& names, int count) {
    jint services[kMostServicesOfScan] = {};
    for (int i = 0; i < count; ++i) {
        services[i] = network.partialsvc[i];
    }
    const jintArray partialsvc = event.ints(services, count);
    return event.build<class_id::kBG_TS_DTVSVLIB_NETWORK_INFO>(
        network.ts_id, names.ts_name_length, names.ts_name, network.nw_id, names.nw_name_length,
        names.nw_name, network.remocon_id, count, partialsvc);
}

void traceNetwork(const char* handler, const NETWORK_INFO& network) {
    TRACE_LISTENER(kDebug, handler,
                   "NETWORK_INFO : ts_id = %d, ts_name_size = %d, ts_name = |%s|, nw_id = %d, "
                   "nw_name_size = %d, nw_name = |%s|, remocon_id = %d, partialsvc_cnt = %d",
                   network.ts_id, network.ts_name_size, FieldText(network.ts_name).text,
                   network.nw_id, network.nw_name_size, FieldText(network.nw_name).text,
                   network.remocon_id, network.partialsvc_cnt);
}

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_network_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kNetworkInfoNotify> event(*this, env, __func__, data, size,
                                              Reports::kSizeAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    traceNetwork(__func__, event->network);
    event.openFrame();
    const NetworkNames names(event, event->network);
    const int count = event->network.partialsvc_cnt;
    if (!event.accepts(count <= kMostServicesOfNetwork,
                       FAILURE_LINE("ERROR partialsvc_cnt is over count"))) {
        return 1;
    }
    const auto network = buildNetwork(event, event->network, names, count);
    return event.deliver(event->handle, network, zeroExtended(event->physical_channel));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_scan_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kScanNotify> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, result = %ld, result_channnel_num = %d",
                   event->handle, asLong(event->result), event->result_channnel_num);
    TRACE_LISTENER(kDebug, __func__, "SCAN_RESULT : channnel = %ld", asLong(event->channnel));
    traceNetwork(__func__, event->network);
    event.openFrame();
    const NetworkNames names(event, event->network);
    const int count = event->network.partialsvc_cnt;
    if (!event.accepts(count <= kMostServicesOfScan, [&](const char* handler) {
            TRACE_LISTENER(kDebug, handler, "ERROR partialsvc_cnt is over count : %d", count);
        })) {
        return 1;
    }
    const auto network = buildNetwork(event, event->network, names, count);
    const auto scan_result =
        event.build<class_id::kBG_TS_DTVSVLIB_SCAN_RESULT>(asJint(event->channnel), network);
    return event.deliver(event->handle, asJint(event->result), scan_result,
                         event->result_channnel_num);
}

// ---- The services of a transport stream.

namespace {

constexpr int kMostServices = 8;

Object<class_id::kBG_TS_DTVSVLIB_SERVICE_INFO> buildService(EventBuilder& event,
                                                            const SERVICE_INFO& service) {
    const jstring name =
        event.text(service.name_size != 0 ? FieldText(service.name).text : "", nullptr);
    return event.build<class_id::kBG_TS_DTVSVLIB_SERVICE_INFO>(asJint(service.service_id),
                                                               event.lengthOf(name), name);
}

} // namespace

// The size is not checked: entries that were not sent have id 0 and an empty name.
int JNIDtvSvLibListener::dtvsv_msgid_lib_service_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kServiceInfoNotify> event(*this, env, __func__, data, size, Reports::kDebug,
                                              Sizes::kAny);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__, "STREAM_INFO ts_id = %ld, svc_cnt = %d", asLong(event->ts_id),
                   event->svc_cnt);
    const int count = event->svc_cnt;
    if (!event.accepts(count <= kMostServices, FAILURE_LINE("ERROR svc_cnt is over count"))) {
        return 1;
    }
    if (!event.accepts(getJavaClass(class_id::kBG_TS_DTVSVLIB_SERVICE_INFO) != nullptr,
                       FAILURE_LINE("ERROR find class"))) {
        return 1;
    }
    event.openFrame();
    const auto services = event.array<class_id::kBG_TS_DTVSVLIB_SERVICE_INFO>(count);
    for (int i = 0; i < count; ++i) {
        event.put(services, i, buildService(event, event->service[i]));
    }
    const auto stream =
        event.build<class_id::kBG_TS_DTVSVLIB_STREAM_INFO>(asJint(event->ts_id), count, services);
    return event.deliver(event->handle, stream, zeroExtended(event->physical_channel),
                         event->service_no);
}

// ---- The programme guide: what is on, what is next, and up to eight programmes that follow.

namespace {

constexpr int kMostFollowing = 8;
constexpr int kMostNibbles = 7;

// What the sizes of a record may claim at most, in UTF-16 units.
constexpr uint32_t kLongestName = 98;
constexpr uint32_t kLongestText = 194;
static_assert(kLongestName * 2 == sizeof(PRG_INFO::name));
static_assert(kLongestText * 2 == sizeof(PRG_INFO::text));

/// A text of the guide: as many units as its size says, up to what its field holds.
jstring buildGuideText(EventBuilder& event, const char* units, uint32_t size, uint32_t longest) {
    return size != 0 ? event.utf16(units, static_cast<int>(size < longest ? size : longest))
                     : event.utf16("", 0);
}

Object<class_id::kBG_TS_DTVSVLIB_TIME> buildTime(EventBuilder& event, const TIME& time) {
    return event.build<class_id::kBG_TS_DTVSVLIB_TIME>(time.hour, time.min, time.sec, time.mil_sec);
}

using Programme = Object<class_id::kBG_TS_DTVSVLIB_PRG_INFO>;

Programme buildProgramme(EventBuilder& event, const PRG_INFO& programme) {
    const auto date = event.build<class_id::kBG_TS_DTVSVLIB_DATE>(
        programme.start_date.year, programme.start_date.month, programme.start_date.day);
    const auto time = buildTime(event, programme.start_time);
    const auto start = event.build<class_id::kBG_TS_DTVSVLIB_DATE_TIME>(date, time);
    const auto duration = buildTime(event, programme.duration);
    const jstring name = buildGuideText(event, programme.name, programme.name_size, kLongestName);
    const jstring text = buildGuideText(event, programme.text, programme.text_size, kLongestText);
    const jint name_length = event.lengthOf(name);
    const jint text_length = event.lengthOf(text);
    const jint sent_nibbles = programme.nibble_cnt;
    const jint nibbles = sent_nibbles < kMostNibbles ? sent_nibbles : kMostNibbles;
    const jbyteArray content_nibble = event.bytes(programme.content_nibble, nibbles);
    const jbyteArray user_nibble = event.bytes(programme.user_nibble, nibbles);
    return event.build<class_id::kBG_TS_DTVSVLIB_PRG_INFO>(
        asJint(programme.evtId), start, programme.start_day_of_week, duration, programme.freeca,
        nibbles, content_nibble, user_nibble, name_length, name, text_length, text);
}

/// All programmes that follow are built before the array that takes them.
ObjectArray<class_id::kBG_TS_DTVSVLIB_PRG_INFO>
buildFollowing(EventBuilder& event, const TS_RECEIVE_EPG_INFO_NOTIFY& record, int count) {
    Programme following[kMostFollowing] = {};
    for (int i = 0; i < count; ++i) {
        following[i] = buildProgramme(event, record.after[i]);
    }
    const auto programmes = event.array<class_id::kBG_TS_DTVSVLIB_PRG_INFO>(count);
    for (int i = 0; i < count; ++i) {
        event.put(programmes, i, following[i]);
    }
    return programmes;
}

#define TRACE_DATE(function, label, date)                                                          \
    TRACE_LISTENER(kDebug, function, label " DATE : year = %d, month = %d, day = %d", (date).year, \
                   (date).month, (date).day)
#define TRACE_TIME(function, label, time)                                                          \
    TRACE_LISTENER(kDebug, function, label " TIME : hour = %d, min = %d, sec = %d, mil_sec = %d",  \
                   (time).hour, (time).min, (time).sec, (time).mil_sec)

void traceGuide(const char* function, const TS_RECEIVE_EPG_INFO_NOTIFY& record) {
    TRACE_LISTENER(kDebug, function, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, function, "EPG_INFO : svc_id = %d, after_prg_infoCnt = %d",
                   record.svc_id, record.after_prg_infoCnt);
    TRACE_DATE(function, "CUR START", record.current.start_date);
    TRACE_TIME(function, "CUR START", record.current.start_time);
    TRACE_TIME(function, "CUR DURATION", record.current.duration);
    TRACE_DATE(function, "NEXT START", record.next.start_date);
    TRACE_TIME(function, "NEXT START", record.next.start_time);
    TRACE_TIME(function, "NEXTDURATION", record.next.duration);
    const PRG_INFO& next = record.next;
    TRACE_LISTENER(kDebug, function,
                   "NEXT PRG_INFO : evtId = %ld, start_day_of_week = %d, freeca = %d, "
                   "nibble_cnt = %d, content_nibble = %d, user_nibble = %d, name_size = %ld, "
                   "name = |%s|, text_size = %ld, text = |%s|",
                   asLong(next.evtId), next.start_day_of_week, next.freeca, next.nibble_cnt,
                   next.content_nibble[0], next.user_nibble[0], asLong(next.name_size),
                   FieldText(next.name).text, asLong(next.text_size), FieldText(next.text).text);
}

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_receive_epg_info_notify(JNIEnv* env, void* data,
                                                                 int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kReceiveEpgInfoNotify> event(*this, env, __func__, data, size);
    traceGuide(__func__, *event);
    const int count = event->after_prg_infoCnt;
    if (!event.accepts(count <= kMostFollowing,
                       FAILURE_LINE("ERROR after_prg_infoCnt is over count"))) {
        return 1;
    }
    event.openFrame();
    const auto current = buildProgramme(event, event->current);
    const auto next = buildProgramme(event, event->next);
    const auto following = buildFollowing(event, *event, count);
    const auto guide = event.build<class_id::kBG_TS_DTVSVLIB_EPG_INFO>(event->svc_id, current, next,
                                                                       count, following);
    return event.deliver(event->handle, guide, zeroExtended(event->physical_channel),
                         event->service_no);
}

// ---- The streams of the service, and the ends of scans and searches. These log no field.

int JNIDtvSvLibListener::dtvsv_msgid_lib_component_info_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kComponentInfoNotify> event(*this, env, __func__, data, size);
    const auto component = event.build<class_id::kBG_TS_DTVSVLIB_COMPONENT_INFO>(
        event->cap_exist_flg, event->bml_exist_flg, event->audio_es_num);
    return event.deliver(event->handle, component, zeroExtended(event->physical_channel),
                         event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_update_video_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kUpdateVideoInfoNotify> event(*this, env, __func__, data, size);
    const auto video =
        event.build<class_id::kBG_TS_DTVSVLIB_VIDEO_INFO>(event->size_h, event->size_v);
    return event.deliver(event->handle, video, zeroExtended(event->physical_channel),
                         event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_update_audio_info_notify(JNIEnv* env, void* data,
                                                                  int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kUpdateAudioInfoNotify> event(*this, env, __func__, data, size);
    return event.deliver(event->handle, event->dualmono, event->audio_mode,
                         zeroExtended(event->physical_channel), event->service_no);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_get_caption_data_notify(JNIEnv* env, void* data,
                                                                 int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kGetCaptionDataNotify> event(*this, env, __func__, data, size);
    const auto caption = event.build<class_id::kBG_TS_DTVSVLIB_GET_CAPTION_DATA_NOTIFY>(
        event->valid_lang_num, event->cap_lang);
    return event.deliver(event->handle, caption);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_select_audio_component_notify(JNIEnv* env, void* data,
                                                                       int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kSelectAudioComponentNotify> event(*this, env, __func__, data, size);
    return event.deliver(event->handle, asJint(event->result));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_start_search_channel_notify(JNIEnv* env, void* data,
                                                                     int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kStartSearchChannelNotify> event(*this, env, __func__, data, size);
    return event.deliver(event->handle, asJint(event->physical_channel));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_search_channel_notify(JNIEnv* env, void* data,
                                                                         int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kTerminateSearchChannelNotify> event(*this, env, __func__, data, size,
                                                         Reports::kSizeAsError);
    const auto found = event.build<class_id::kBG_TS_DTVSVLIB_BROADCAST_INFO>(
        asJint(event->physical_channel), event->service_no);
    return event.deliver(event->handle, asJint(event->result), found);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_terminate_scan_notify(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kTerminateScanNotify> event(*this, env, __func__, data, size,
                                                Reports::kSizeAsError);
    return event.deliver(event->handle, asJint(event->result));
}
