// What the BML browser asks for itself: permission, authentication, text, its broadcaster's memory,
// another browser, TV links.
//
// Texts are fields of fixed length that end at their first zero byte. A text that cannot be made
// into a string ends the handler, each in its own words.
#include "events/event.h"
#include "records/bml_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

namespace {

/// The bytes of the expire date's fields run from the second to the year; Java gets them so.
constexpr int kExpireSec = 0;
constexpr int kExpireMin = 1;
constexpr int kExpireHour = 2;
constexpr int kExpireDow = 3;
constexpr int kExpireDay = 4;
constexpr int kExpireMonth = 5;
constexpr int kExpireYear = 6;

} // namespace

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_browser_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_BROWSER_REQ>(data, size);
    const FieldText return_text(record.return_uri);
    const FieldText combrowser_text(record.combrowser_uri);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "BROWSER_REQ : app_id = %d, permit_av = %d, browser_info = %d, "
                   "full_screen = %d, return_uri = |%s|, combrowser_uri = |%s|",
                   record.app_id, record.permit_av, record.browser_info, record.full_screen,
                   return_text.text, combrowser_text.text);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_BROWSER_REQ>(size)) {
        return 1;
    }
    const jstring return_uri = event.text(return_text.text);
    REQUIRE_OR_SAY(return_uri, "return_uri is NULL");
    const jstring combrowser_uri = event.text(combrowser_text.text);
    REQUIRE_OR_SAY(combrowser_uri, "combrowser_uri is NULL");
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_BROWSER_REQ>(
        record.app_id, record.permit_av, record.browser_info, record.full_screen, return_uri,
        combrowser_uri);
    return event.deliver<kNew_BG_EV_DTVSV_BML_BROWSER_REQ, kCall_onEvDtvsvBmlBrowserReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_start_tvlink_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_BROWSER_REQ>(data, size);
    const FieldText return_text(record.return_uri);
    const FieldText combrowser_text(record.combrowser_uri);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "START_TVLINK_REQ : app_id = %d, permit_av = %d, browser_info = %d, "
                   "full_screen = %d, return_uri = |%s|, combrowser_uri = |%s|",
                   record.app_id, record.permit_av, record.browser_info, record.full_screen,
                   return_text.text, combrowser_text.text);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_BROWSER_REQ>(size)) {
        return 1;
    }
    const jstring return_uri = event.text(return_text.text);
    REQUIRE_STRING(return_uri);
    const jstring combrowser_uri = event.text(combrowser_text.text);
    REQUIRE_STRING(combrowser_uri);
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_START_TVLINK_REQ>(
        record.app_id, record.permit_av, record.browser_info, record.full_screen, return_uri,
        combrowser_uri);
    return event.deliver<kNew_BG_EV_DTVSV_BML_START_TVLINK_REQ, kCall_onEvDtvsvBmlStartTvlinkReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_start_fep_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_START_FEP_REQ>(data, size);
    const FieldText data_text(record.data);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(
        kDebug, __func__,
        "START_FEP_REQ : input_type = %d, input_max = %ld, password_flg = %d, data = |%s|",
        record.input_type, asLong(record.input_max), record.password_flg, data_text.text);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_START_FEP_REQ>(size)) {
        return 1;
    }
    const jstring text = event.text(data_text.text);
    REQUIRE_STRING(text);
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_START_FEP_REQ>(
        record.input_type, asJint(record.input_max), record.password_flg, text);
    return event.deliver<kNew_BG_EV_DTVSV_BML_START_FEP_REQ, kCall_onEvDtvsvBmlStartFepReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_write_nvram_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_WRITE_NVRAM_REQ>(data, size);
    const FieldText name_text(record.ts_name);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "WRITE_NVRAM_REQ : affiliation_id = %d, network_id = %d, ts_name = |%s|, "
                   "block_no = %d",
                   record.affiliation_id, record.network_id, name_text.text, record.block_no);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_WRITE_NVRAM_REQ>(size)) {
        return 1;
    }
    const jstring ts_name = event.text(name_text.text);
    REQUIRE_STRING(ts_name);
    const jbyteArray block = event.bytes(record.data, sizeof(record.data));
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_WRITE_NVRAM_REQ>(
        record.affiliation_id, record.network_id, ts_name, record.block_no, block);
    return event.deliver<kNew_BG_EV_DTVSV_BML_WRITE_NVRAM_REQ, kCall_onEvDtvsvBmlWriteNvramReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_read_nvram_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_READ_NVRAM_REQ>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "READ_NVRAM_REQ : affiliation_id = %d, network_id = %d, block_no = %d",
                   record.affiliation_id, record.network_id, record.block_no);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_READ_NVRAM_REQ>(size)) {
        return 1;
    }
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_READ_NVRAM_REQ>(
        record.affiliation_id, record.network_id, record.block_no);
    return event.deliver<kNew_BG_EV_DTVSV_BML_READ_NVRAM_REQ, kCall_onEvDtvsvBmlReadNvramReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_permission_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_PERMISSION_REQ>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__, "PERMISSION_REQ : permit_type = %d, task_id = %ld",
                   record.permit_type, asLong(record.task_id));
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_PERMISSION_REQ>(size)) {
        return 1;
    }
    const jobject request =
        event.build<kNew_BG_TS_DTVSVLIB_PERMISSION_REQ>(record.permit_type, asJint(record.task_id));
    return event.deliver<kNew_BG_EV_DTVSV_BML_PERMISSION_REQ, kCall_onEvDtvsvBmlPermissionReq>(
        record.handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_auth_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_AUTH_REQ>(data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, task_id = %ld", record.handle,
                   asLong(record.task_id));
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_AUTH_REQ>(size)) {
        return 1;
    }
    const jobject request =
        event.build<kNew_BG_EV_DTVSV_BML_AUTH_REQ>(record.handle, asJint(record.task_id));
    if (request == nullptr) {
        return 1;
    }
    // This one has its own words for a callback that fails.
    if (CallMethod(env, kCall_onEvDtvsvBmlAuthReq, nullptr, request) != 0) {
        TRACE_LISTENER(kDebug, __func__, "ERROR CallMethod");
        return 1;
    }
    return event.finish();
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_enrol_tvlink_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_ENROL_TVLINK_REQ>(data, size);
    const FieldText title_text(record.title);
    const FieldText uri_text(record.uri);
    const FieldText description_text(record.description);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "ENROL_TVLINK_REQ : title = |%s|, uri = |%s|, description = |%s|, "
                   "cpro_bmtype = %d, network_id = %d, service_id = %d",
                   title_text.text, uri_text.text, description_text.text, record.cpro_bmtype,
                   record.network_id, record.service_id);
    TRACE_LISTENER(kDebug, __func__,
                   "EXPIRE_DATE : date_year = %d, date_month = %d, date_day = %d, "
                   "date_dow = %d, date_hour = %d, date_min = %d, date_sec = %d",
                   record.expire_date[kExpireYear], record.expire_date[kExpireMonth],
                   record.expire_date[kExpireDay], record.expire_date[kExpireDow],
                   record.expire_date[kExpireHour], record.expire_date[kExpireMin],
                   record.expire_date[kExpireSec]);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_ENROL_TVLINK_REQ>(size)) {
        return 1;
    }
    const jstring title = event.text(title_text.text);
    REQUIRE_OR_SAY(title, "title is NULL");
    const jstring uri = event.text(uri_text.text);
    REQUIRE_OR_SAY(uri, "uri is NULL");
    const jstring description = event.text(description_text.text);
    REQUIRE_OR_SAY(description, "description is NULL");
    const jbyteArray affiliation_id =
        event.bytes(record.affiliation_id, sizeof(record.affiliation_id));
    REQUIRE_OR_SAY(affiliation_id, "affiliation_id is NULL");
    // Java gets the date in the order of the record, the year last.
    const jobject expire_date = event.build<kNew_BG_TS_DTVSVLIB_BML_TIME>(
        record.expire_date[0], record.expire_date[1], record.expire_date[2], record.expire_date[3],
        record.expire_date[4], record.expire_date[5], record.expire_date[6]);
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_ENROL_TVLINK_REQ>(
        title, uri, description, record.cpro_bmtype, expire_date, record.network_id,
        record.service_id, affiliation_id);
    return event.deliver<kNew_BG_EV_DTVSV_BML_ENROL_TVLINK_REQ, kCall_onEvDtvsvBmlEnrolTvlinkReq>(
        record.handle, request);
}
