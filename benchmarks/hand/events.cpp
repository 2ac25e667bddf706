// The events of the hand-written bridge.
#include "hand/builder.h"
#include "hand/listener.h"
#include "records/messages.h"

#include <unistd.h>

using trace::asLong;
using trace::kDebug;
using trace::kFuncEnd;
using trace::kFuncStart;
using trace::kInfo;

namespace hand {

JavaVM* vm = nullptr;

namespace {

/// What a thread is known by: its environment, and its number among the threads.
struct Thread {
    JNIEnv* env = nullptr;
    int index = 0;
};
thread_local Thread this_thread __attribute__((tls_model("initial-exec")));

/// The process id of the lines, which does not change.
const int process_id = static_cast<int>(getpid());

template <class Policy>
JNIEnv* environment() {
    LISTENER_LINE(kFuncStart, "getJNIEnv", "");
    if (this_thread.env == nullptr) {
        static int threads = 0;
        this_thread.index = threads++;
        vm->AttachCurrentThread(reinterpret_cast<void**>(&this_thread.env), nullptr);
    }
    LISTENER_LINE(kInfo, "getJNIEnv", "JNIEnv already got! index=%d threadid=%x env=%p ",
                  this_thread.index, trace::threadId(), static_cast<void*>(this_thread.env));
    return this_thread.env;
}

template <class Policy>
int commonReply(JNIEnv* env, const void* data) {
    const auto& reply = *static_cast<const TS_COMMON_REPLY*>(data);
    constexpr const char* kHandler = "dtvsv_msgid_lib_common_reply";
    LISTENER_LINE(kFuncStart, kHandler, "");
    LISTENER_LINE(kDebug, kHandler, "dtvsv_handle = %d, result = %d", reply.handle, reply.result);
    Builder<Policy> builder(env);
    const jobject event = builder.make(kNew_BG_EV_DTVSV_CREATE_REPLY, jint{reply.handle},
                                       static_cast<jint>(reply.result));
    return builder.deliver(kHandler, kCall_BG_EV_DTVSV_CREATE_REPLY, event);
}

template <class Policy>
int networkInfo(JNIEnv* env, const void* data, int size) {
    const auto& record = *static_cast<const TS_NETWORK_INFO_NOTIFY*>(data);
    const NETWORK_INFO& network = record.network;
    constexpr const char* kHandler = "dtvsv_msgid_lib_network_info_notify";
    constexpr int kMostServices = 7;
    LISTENER_LINE(kFuncStart, kHandler, "recv_size = %d", size);
    if (size != static_cast<int>(sizeof(record)) || network.partialsvc_cnt > kMostServices) {
        return 1;
    }
    const Text ts_text(network.ts_name);
    const Text nw_text(network.nw_name);
    LISTENER_LINE(kDebug, kHandler, "handle = %d", record.handle);
    LISTENER_LINE(kDebug, kHandler,
                  "NETWORK_INFO : ts_id = %d, ts_name_size = %d, ts_name = |%s|, nw_id = %d, "
                  "nw_name_size = %d, nw_name = |%s|, remocon_id = %d, partialsvc_cnt = %d",
                  network.ts_id, network.ts_name_size, ts_text.get(), network.nw_id,
                  network.nw_name_size, nw_text.get(), network.remocon_id, network.partialsvc_cnt);
    Builder<Policy> builder(env);
    const jstring ts_name = builder.text(network.ts_name_size != 0 ? ts_text.get() : "");
    const jstring nw_name = builder.text(network.nw_name_size != 0 ? nw_text.get() : "");
    const jint ts_name_length = builder.lengthOf(ts_name);
    const jint nw_name_length = builder.lengthOf(nw_name);
    jint services[kMostServices];
    for (int i = 0; i < network.partialsvc_cnt; ++i) {
        services[i] = network.partialsvc[i];
    }
    const jobject object =
        builder.make(kNew_BG_TS_DTVSVLIB_NETWORK_INFO, jint{network.ts_id}, ts_name_length, ts_name,
                     jint{network.nw_id}, nw_name_length, nw_name, jint{network.remocon_id},
                     jint{network.partialsvc_cnt}, builder.ints(services, network.partialsvc_cnt));
    const jobject event = builder.make(kNew_BG_EV_DTVSV_NETWORK_INFO_NOTIFY, jint{record.handle},
                                       object, jlong{record.physical_channel});
    return builder.deliver(kHandler, kCall_BG_EV_DTVSV_NETWORK_INFO_NOTIFY, event);
}

template <class Policy>
int serviceInfo(JNIEnv* env, const void* data, int size) {
    constexpr const char* kHandler = "dtvsv_msgid_lib_service_info_notify";
    constexpr int kMostServices = 8;
    LISTENER_LINE(kFuncStart, kHandler, "recv_size = %d", size);
    TS_SERVICE_INFO_NOTIFY copy;
    if (size < static_cast<int>(sizeof(copy))) {
        std::memset(&copy, 0, sizeof(copy));
        std::memcpy(&copy, data, size > 0 ? static_cast<size_t>(size) : 0);
        data = &copy;
    }
    const auto& record = *static_cast<const TS_SERVICE_INFO_NOTIFY*>(data);
    LISTENER_LINE(kDebug, kHandler, "handle = %d", record.handle);
    LISTENER_LINE(kDebug, kHandler, "STREAM_INFO ts_id = %ld, svc_cnt = %d", asLong(record.ts_id),
                  record.svc_cnt);
    if (record.svc_cnt > kMostServices) {
        return 1;
    }
    Builder<Policy> builder(env);
    const jobjectArray services =
        builder.array(class_id::kBG_TS_DTVSVLIB_SERVICE_INFO, record.svc_cnt);
    for (int i = 0; i < record.svc_cnt; ++i) {
        const SERVICE_INFO& service = record.service[i];
        const jstring name = builder.text(service.name_size != 0 ? Text(service.name).get() : "");
        const jint length = builder.lengthOf(name);
        builder.put(services, i,
                    builder.make(kNew_BG_TS_DTVSVLIB_SERVICE_INFO,
                                 static_cast<jint>(service.service_id), length, name));
    }
    const jobject stream =
        builder.make(kNew_BG_TS_DTVSVLIB_STREAM_INFO, static_cast<jint>(record.ts_id),
                     jint{record.svc_cnt}, services);
    const jobject event =
        builder.make(kNew_BG_EV_DTVSV_SERVICE_INFO_NOTIFY, jint{record.handle}, stream,
                     jlong{record.physical_channel}, jint{record.service_no});
    return builder.deliver(kHandler, kCall_BG_EV_DTVSV_SERVICE_INFO_NOTIFY, event);
}

// ---- The programme guide.

template <class Policy>
void traceDateAndTimes(const char* handler, const PRG_INFO& programme, bool is_next) {
    const DATE& date = programme.start_date;
    const TIME& start = programme.start_time;
    const TIME& duration = programme.duration;
    if (is_next) {
        LISTENER_LINE(kDebug, handler, "NEXT START DATE : year = %d, month = %d, day = %d",
                      date.year, date.month, date.day);
        LISTENER_LINE(kDebug, handler,
                      "NEXT START TIME : hour = %d, min = %d, sec = %d, mil_sec = %d", start.hour,
                      start.min, start.sec, start.mil_sec);
        LISTENER_LINE(kDebug, handler,
                      "NEXTDURATION TIME : hour = %d, min = %d, sec = %d, mil_sec = %d",
                      duration.hour, duration.min, duration.sec, duration.mil_sec);
        return;
    }
    LISTENER_LINE(kDebug, handler, "CUR START DATE : year = %d, month = %d, day = %d", date.year,
                  date.month, date.day);
    LISTENER_LINE(kDebug, handler, "CUR START TIME : hour = %d, min = %d, sec = %d, mil_sec = %d",
                  start.hour, start.min, start.sec, start.mil_sec);
    LISTENER_LINE(kDebug, handler,
                  "CUR DURATION TIME : hour = %d, min = %d, sec = %d, mil_sec = %d", duration.hour,
                  duration.min, duration.sec, duration.mil_sec);
}

template <class Policy>
jobject makeTime(Builder<Policy>& builder, const TIME& time) {
    return builder.make(kNew_BG_TS_DTVSVLIB_TIME, jint{time.hour}, jint{time.min}, jint{time.sec},
                        jint{time.mil_sec});
}

template <class Policy>
jobject makeProgramme(Builder<Policy>& builder, const PRG_INFO& programme) {
    constexpr jint kMostNibbles = 7;
    const DATE& day = programme.start_date;
    const jobject date =
        builder.make(kNew_BG_TS_DTVSVLIB_DATE, jint{day.year}, jint{day.month}, jint{day.day});
    const jobject time = makeTime(builder, programme.start_time);
    const jobject start = builder.make(kNew_BG_TS_DTVSVLIB_DATE_TIME, date, time);
    const jobject duration = makeTime(builder, programme.duration);
    const jstring name = builder.units(programme.name, programme.name_size);
    const jstring text = builder.units(programme.text, programme.text_size);
    const jint name_length = builder.lengthOf(name);
    const jint text_length = builder.lengthOf(text);
    const jint nibbles =
        programme.nibble_cnt < kMostNibbles ? jint{programme.nibble_cnt} : kMostNibbles;
    const jbyteArray content_nibble = builder.bytes(programme.content_nibble, nibbles);
    const jbyteArray user_nibble = builder.bytes(programme.user_nibble, nibbles);
    return builder.make(kNew_BG_TS_DTVSVLIB_PRG_INFO, static_cast<jint>(programme.evtId), start,
                        jint{programme.start_day_of_week}, duration, jint{programme.freeca},
                        nibbles, content_nibble, user_nibble, name_length, name, text_length, text);
}

template <class Policy>
int guide(JNIEnv* env, const void* data, int size) {
    const auto& record = *static_cast<const TS_RECEIVE_EPG_INFO_NOTIFY*>(data);
    constexpr const char* kHandler = "dtvsv_msgid_lib_receive_epg_info_notify";
    constexpr int kMostFollowing = 8;
    LISTENER_LINE(kFuncStart, kHandler, "");
    if (size != static_cast<int>(sizeof(record)) || record.after_prg_infoCnt > kMostFollowing) {
        return 1;
    }
    LISTENER_LINE(kDebug, kHandler, "handle = %d", record.handle);
    LISTENER_LINE(kDebug, kHandler, "EPG_INFO : svc_id = %d, after_prg_infoCnt = %d", record.svc_id,
                  record.after_prg_infoCnt);
    traceDateAndTimes<Policy>(kHandler, record.current, false);
    traceDateAndTimes<Policy>(kHandler, record.next, true);
    [[maybe_unused]] const PRG_INFO& sent = record.next;
    LISTENER_LINE(kDebug, kHandler,
                  "NEXT PRG_INFO : evtId = %ld, start_day_of_week = %d, freeca = %d, "
                  "nibble_cnt = %d, content_nibble = %d, user_nibble = %d, name_size = %ld, "
                  "name = |%s|, text_size = %ld, text = |%s|",
                  asLong(sent.evtId), sent.start_day_of_week, sent.freeca, sent.nibble_cnt,
                  sent.content_nibble[0], sent.user_nibble[0], asLong(sent.name_size),
                  Text(sent.name).get(), asLong(sent.text_size), Text(sent.text).get());
    Builder<Policy> builder(env);
    const jobject current = makeProgramme(builder, record.current);
    const jobject next = makeProgramme(builder, record.next);
    const int count = record.after_prg_infoCnt;
    jobject following[kMostFollowing];
    for (int i = 0; i < count; ++i) {
        following[i] = makeProgramme(builder, record.after[i]);
    }
    const jobjectArray after = builder.array(class_id::kBG_TS_DTVSVLIB_PRG_INFO, count);
    for (int i = 0; i < count; ++i) {
        builder.put(after, i, following[i]);
    }
    const jobject programmes = builder.make(kNew_BG_TS_DTVSVLIB_EPG_INFO, jint{record.svc_id},
                                            current, next, jint{count}, after);
    const jobject event =
        builder.make(kNew_BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY, jint{record.handle}, programmes,
                     jlong{record.physical_channel}, jint{record.service_no});
    return builder.deliver(kHandler, kCall_BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY, event);
}

template <class Policy>
int mailRequest(JNIEnv* env, const void* data, int size) {
    const auto& record = *static_cast<const TS_MAIL_REQ*>(data);
    constexpr const char* kHandler = "dtvsv_msgid_lib_bml_mail_req";
    LISTENER_LINE(kFuncStart, kHandler, "recv_size = %d", size);
    if (size != static_cast<int>(sizeof(record))) {
        return 1;
    }
    const Text title_text(record.title);
    const Text address_text(record.send_address);
    const Text data_text(record.data);
    LISTENER_LINE(kDebug, kHandler, "handle = %d", record.handle);
    LISTENER_LINE(kDebug, kHandler, "MAIL_REQ : title = |%s|, send_address = |%s|, data = |%s|",
                  title_text.get(), address_text.get(), data_text.get());
    Builder<Policy> builder(env);
    const jstring title = builder.text(title_text.get());
    const jstring address = builder.text(address_text.get());
    const jstring text = builder.text(data_text.get());
    const jobject mail = builder.make(kNew_BG_TS_DTVSVLIB_MAIL_REQ, title, address, text);
    const jobject event = builder.make(kNew_BG_EV_DTVSV_BML_MAIL_REQ, jint{record.handle}, mail);
    return builder.deliver(kHandler, kCall_BG_EV_DTVSV_BML_MAIL_REQ, event);
}

template <class Policy>
int handle(JNIEnv* env, int id, const void* data, int size) {
    LISTENER_LINE(kFuncStart, "DoListenerEvent", "");
    if (data == nullptr) {
        return 1;
    }
    int ret = 1;
    switch (id) {
    case event_id::kCreateReply:
        ret = commonReply<Policy>(env, data);
        break;
    case event_id::kNetworkInfoNotify:
        ret = networkInfo<Policy>(env, data, size);
        break;
    case event_id::kServiceInfoNotify:
        ret = serviceInfo<Policy>(env, data, size);
        break;
    case event_id::kReceiveEpgInfoNotify:
        ret = guide<Policy>(env, data, size);
        break;
    case event_id::kBmlMailReq:
        ret = mailRequest<Policy>(env, data, size);
        break;
    default:
        break;
    }
    if (ret == 0) {
        LISTENER_LINE(kFuncEnd, "DoListenerEvent", "");
    }
    return ret;
}

} // namespace

template <class Policy>
int Listener<Policy>::recvEventFromServer(int id, void* data, int size) {
    constexpr jint kFrame = 128;
    LISTENER_LINE(kFuncStart, "recvEventFromServer",
                  "pid = %d, threadid = %x, event_id = %x, recv_size = %d", process_id,
                  trace::threadId(), static_cast<unsigned>(id), size);
    JNIEnv* const env = environment<Policy>();
    if (env == nullptr) {
        return -1;
    }
    if (env->PushLocalFrame(kFrame) != JNI_OK) {
        env->ExceptionClear();
        return 1;
    }
    const int ret = handle<Policy>(env, id, data, size);
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();
        env->ExceptionClear();
    }
    env->PopLocalFrame(nullptr);
    LISTENER_LINE(kFuncEnd, "recvEventFromServer", "");
    return ret;
}

template class Listener<Kept>;
template class Listener<KeptWithLines>;
template class Listener<LooksUp>;
template class Listener<LooksUpWithLines>;

} // namespace hand
