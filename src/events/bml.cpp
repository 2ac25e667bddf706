// The requests of the BML browser to the application.
//
// Texts are fields of fixed length that end at their first zero byte. A text that cannot be made
// into a string ends the handler, each in its own words.
#include "events/event.h"
#include "records/bml_records.h"

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

namespace {

/// Ends the handler with its own words for a string or an array that could not be made.
#define REQUIRE_OR_SAY(made, ...)                                                                  \
    do {                                                                                           \
        if ((made) == nullptr) {                                                                   \
            TRACE_LISTENER(kDebug, __func__, __VA_ARGS__);                                         \
            return 1;                                                                              \
        }                                                                                          \
    } while (false)

/// Ends a handler that has no words of its own for a string that could not be made.
#define REQUIRE_STRING(made)                                                                       \
    do {                                                                                           \
        if ((made) == nullptr) {                                                                   \
            TRACE_LISTENER_ERROR(__func__, "ERROR NewStringUTF");                                  \
            return 1;                                                                              \
        }                                                                                          \
    } while (false)

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
    return event.deliver<kCall_onEvDtvsvBmlBrowserReq>(
        event.build<kNew_BG_EV_DTVSV_BML_BROWSER_REQ>(record.handle, request));
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
    return event.deliver<kCall_onEvDtvsvBmlStartTvlinkReq>(
        event.build<kNew_BG_EV_DTVSV_BML_START_TVLINK_REQ>(record.handle, request));
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
    return event.deliver<kCall_onEvDtvsvBmlStartFepReq>(
        event.build<kNew_BG_EV_DTVSV_BML_START_FEP_REQ>(record.handle, request));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_mail_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    const auto record = viewRecord<TS_MAIL_REQ>(data, size);
    const FieldText title_text(record.title);
    const FieldText address_text(record.send_address);
    const FieldText data_text(record.data);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__, "MAIL_REQ : title = |%s|, send_address = |%s|, data = |%s|",
                   title_text.text, address_text.text, data_text.text);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_MAIL_REQ>(size)) {
        return 1;
    }
    const jstring title = event.text(title_text.text);
    REQUIRE_STRING(title);
    const jstring send_address = event.text(address_text.text);
    REQUIRE_STRING(send_address);
    const jstring text = event.text(data_text.text);
    REQUIRE_STRING(text);
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_MAIL_REQ>(title, send_address, text);
    return event.deliver<kCall_onEvDtvsvBmlMailReq>(
        event.build<kNew_BG_EV_DTVSV_BML_MAIL_REQ>(record.handle, request));
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
    return event.deliver<kCall_onEvDtvsvBmlWriteNvramReq>(
        event.build<kNew_BG_EV_DTVSV_BML_WRITE_NVRAM_REQ>(record.handle, request));
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
    return event.deliver<kCall_onEvDtvsvBmlReadNvramReq>(
        event.build<kNew_BG_EV_DTVSV_BML_READ_NVRAM_REQ>(record.handle, request));
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
    return event.deliver<kCall_onEvDtvsvBmlPermissionReq>(
        event.build<kNew_BG_EV_DTVSV_BML_PERMISSION_REQ>(record.handle, request));
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

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_phonebook_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_PHONEBOOK_REQ>(data, size);
    const FieldText name_text(record.name);
    const FieldText kana_text(record.name_kana);
    const FieldText number_text(record.phone_number);
    const FieldText address_text(record.mail_address);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "PHONEBOOK_REQ : name = |%s|, name_kana = |%s|, phone_number = |%s|, "
                   "mail_address = |%s|",
                   name_text.text, kana_text.text, number_text.text, address_text.text);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_PHONEBOOK_REQ>(size)) {
        return 1;
    }
    const jstring name = event.text(name_text.text);
    REQUIRE_OR_SAY(name, "name is NULL");
    const jstring name_kana = event.text(kana_text.text);
    REQUIRE_OR_SAY(name_kana, "name_kana is NULL");
    const jstring phone_number = event.text(number_text.text);
    REQUIRE_OR_SAY(phone_number, "phone_number is NULL");
    const jstring mail_address = event.text(address_text.text);
    REQUIRE_OR_SAY(mail_address, "mail_address is NULL");
    const jobject request =
        event.build<kNew_BG_TS_DTVSVLIB_PHONEBOOK_REQ>(name, name_kana, phone_number, mail_address);
    return event.deliver<kCall_onEvDtvsvBmlPhoneBookReq>(
        event.build<kNew_BG_EV_DTVSV_BML_PHONEBOOK_REQ>(record.handle, request));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_call_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_CALL_REQ>(data, size);
    const FieldText number_text(record.phone_number);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__, "CALL_REQ : phone_number = |%s|", number_text.text);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_CALL_REQ>(size)) {
        return 1;
    }
    const jstring phone_number = event.text(number_text.text);
    REQUIRE_OR_SAY(phone_number, " phone_number is NULL");
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_CALL_REQ>(phone_number);
    return event.deliver<kCall_onEvDtvsvBmlCallReq>(
        event.build<kNew_BG_EV_DTVSV_BML_CALL_REQ>(record.handle, request));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_schedule_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SCHEDULE_REQ>(data, size);
    const BML_TIME& time = record.time;
    const FieldText title_text(record.title);
    const FieldText body_text(record.text);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "BML_TINME : date_year = %d, date_month = %d, date_day = %d, date_dow = %d, "
                   "date_hour = %d, date_min = %d, date_sec = %d",
                   time.date_year, time.date_month, time.date_day, time.date_dow, time.date_hour,
                   time.date_min, time.date_sec);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : length = %d, title = |%s|",
                   static_cast<int>(std::strlen(title_text.text)), title_text.text);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : length = %d, text = |%s|",
                   static_cast<int>(std::strlen(body_text.text)), body_text.text);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : alarm_flag = %d", record.alarm_flag);
    EventBuilder event(*this, env, __func__, Reports::kFailedAsError);
    if (!event.hasSizeOf<TS_SCHEDULE_REQ>(size)) {
        return 1;
    }
    const jstring title = event.text(title_text.text);
    REQUIRE_STRING(title);
    const jstring text = event.text(body_text.text);
    REQUIRE_STRING(text);
    const jobject date = event.build<kNew_BG_TS_DTVSVLIB_BML_TIME>(
        time.date_year, time.date_month, time.date_day, time.date_dow, time.date_hour,
        time.date_min, time.date_sec);
    const jobject request =
        event.build<kNew_BG_TS_DTVSVLIB_SCHEDULE_REQ>(date, title, text, record.alarm_flag);
    return event.deliver<kCall_onEvDtvsvBmlScheduleReq>(
        event.build<kNew_BG_EV_DTVSV_BML_SCHEDULE_REQ>(record.handle, request));
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
        uint16_t{record.expire_date[0]}, uint16_t{record.expire_date[1]},
        uint16_t{record.expire_date[2]}, uint16_t{record.expire_date[3]},
        uint16_t{record.expire_date[4]}, uint16_t{record.expire_date[5]},
        uint16_t{record.expire_date[6]});
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_ENROL_TVLINK_REQ>(
        title, uri, description, record.cpro_bmtype, expire_date, record.network_id,
        record.service_id, affiliation_id);
    return event.deliver<kCall_onEvDtvsvBmlEnrolTvlinkReq>(
        event.build<kNew_BG_EV_DTVSV_BML_ENROL_TVLINK_REQ>(record.handle, request));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_save_picture_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    const auto record = viewRecord<TS_SAVE_PICTURE_REQ>(data, size);
    const FieldText resource_text(record.src_resource);
    const FieldText filename_text(record.filename);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", record.handle);
    TRACE_LISTENER(kDebug, __func__,
                   "SAVE_PICTURE_REQ : src_resource = |%s|, src_resource_size = %ld, "
                   "filename = |%s|, filename_size = %ld, image_data_size = %ld, overwrite = %d",
                   resource_text.text, asLong(record.src_resource_size), filename_text.text,
                   asLong(record.filename_size), asLong(record.image_data_size), record.overwrite);
    EventBuilder event(*this, env, __func__);
    if (!event.hasSizeOf<TS_SAVE_PICTURE_REQ>(size)) {
        return 1;
    }
    const jstring src_resource = event.text(resource_text.text);
    REQUIRE_OR_SAY(src_resource, "src_resource is NULL");
    const jstring filename = event.text(filename_text.text);
    REQUIRE_OR_SAY(filename, "filename is NULL");
    // The sizes that Java gets are those of the strings, not those of the record.
    const jobject request = event.build<kNew_BG_TS_DTVSVLIB_SAVE_PICTURE_REQ>(
        src_resource, filename, asJint(record.image_data_size), record.overwrite,
        signExtended(env->GetStringUTFLength(src_resource)),
        signExtended(env->GetStringUTFLength(filename)));
    return event.deliver<kCall_onEvDtvsvBmlSavePictureReq>(
        event.build<kNew_BG_EV_DTVSV_BML_SAVE_PICTURE_REQ>(record.handle, request));
}
