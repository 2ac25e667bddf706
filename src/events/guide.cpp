// The programme guide of a service: what is on, what is next, and up to eight programmes that
// follow.
#include "events/event.h"
#include "records/programme_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

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

jobject buildTime(EventBuilder& event, const TIME& time) {
    return event.build<kNew_BG_TS_DTVSVLIB_TIME>(time.hour, time.min, time.sec, time.mil_sec);
}

/// A programme as a Java object, or null.
jobject buildProgramme(EventBuilder& event, const PRG_INFO& programme) {
    const jobject date = event.build<kNew_BG_TS_DTVSVLIB_DATE>(
        programme.start_date.year, programme.start_date.month, programme.start_date.day);
    const jobject time = buildTime(event, programme.start_time);
    const jobject start = event.build<kNew_BG_TS_DTVSVLIB_DATE_TIME>(date, time);
    const jobject duration = buildTime(event, programme.duration);
    const jstring name = buildGuideText(event, programme.name, programme.name_size, kLongestName);
    const jstring text = buildGuideText(event, programme.text, programme.text_size, kLongestText);
    if (name == nullptr || text == nullptr) {
        return nullptr;
    }
    const jint name_length = event.env()->GetStringUTFLength(name);
    const jint text_length = event.env()->GetStringUTFLength(text);
    const jint nibbles = programme.nibble_cnt < kMostNibbles ? programme.nibble_cnt : kMostNibbles;
    const jbyteArray content_nibble = event.bytes(programme.content_nibble, nibbles);
    const jbyteArray user_nibble = event.bytes(programme.user_nibble, nibbles);
    return event.build<kNew_BG_TS_DTVSVLIB_PRG_INFO>(
        asJint(programme.evtId), start, programme.start_day_of_week, duration, programme.freeca,
        nibbles, content_nibble, user_nibble, name_length, name, text_length, text);
}

/// The following programmes as a Java array, or null.
jobjectArray buildFollowing(EventBuilder& event, const JNIDtvSvLibListener& listener,
                            const TS_RECEIVE_EPG_INFO_NOTIFY& record) {
    JNIEnv* const env = event.env();
    const jclass programme_class = listener.getJavaClass(class_id::kBG_TS_DTVSVLIB_PRG_INFO);
    if (programme_class == nullptr) {
        return nullptr;
    }
    const jsize count = record.after_prg_infoCnt;
    const auto programmes =
        static_cast<jobjectArray>(event.keep(env->NewObjectArray(count, programme_class, nullptr)));
    if (programmes == nullptr) {
        return nullptr;
    }
    for (jsize i = 0; i < count; ++i) {
        const jobject programme = buildProgramme(event, record.after[i]);
        if (programme == nullptr) {
            return nullptr;
        }
        env->SetObjectArrayElement(programmes, i, programme);
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
    const auto record = viewRecord<TS_RECEIVE_EPG_INFO_NOTIFY>(data, size);
    traceGuide(__func__, record);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_RECEIVE_EPG_INFO_NOTIFY>(size)) {
        return 1;
    }
    if (record.after_prg_infoCnt > kMostFollowing) {
        TRACE_LISTENER(kDebug, __func__, "ERROR after_prg_infoCnt is over count");
        return 1;
    }
    const jobject current = buildProgramme(event, record.current);
    if (current == nullptr) {
        return 1;
    }
    const jobject next = buildProgramme(event, record.next);
    if (next == nullptr) {
        return 1;
    }
    const jobjectArray following = buildFollowing(event, *this, record);
    if (following == nullptr) {
        return 1;
    }
    const jobject guide = event.build<kNew_BG_TS_DTVSVLIB_EPG_INFO>(
        record.svc_id, current, next, record.after_prg_infoCnt, following);
    return event
        .deliver<kNew_BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY, kCall_onEvDtvsvReceiveEpgInfoNotify>(
            record.handle, guide, zeroExtended(record.physical_channel), record.service_no);
}
