// The requests of the BML browser: those for itself (permission, authentication, text, the memory
// of its broadcaster, another browser, TV links), and those to the application (mail, the phone
// book, a call, a date, a picture).
//
// Texts are fields of fixed length that end at their first zero byte.
#include "events/event.h"

#include <cstring>

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

namespace {

/// The seven values of the expire date run from the second to the year; Java gets them in that
/// order.
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
    Event<event_id::kBmlBrowserReq> event(*this, env, __func__, data, size);
    const FieldText return_text(event->return_uri);
    const FieldText combrowser_text(event->combrowser_uri);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "BROWSER_REQ : app_id = %d, permit_av = %d, browser_info = %d, "
                   "full_screen = %d, return_uri = |%s|, combrowser_uri = |%s|",
                   event->app_id, event->permit_av, event->browser_info, event->full_screen,
                   return_text.text, combrowser_text.text);
    const jstring return_uri = event.text(return_text.text, FAILURE_LINE("return_uri is NULL"));
    const jstring combrowser_uri =
        event.text(combrowser_text.text, FAILURE_LINE("combrowser_uri is NULL"));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_BROWSER_REQ>(
        event->app_id, event->permit_av, event->browser_info, event->full_screen, return_uri,
        combrowser_uri);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_start_tvlink_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlStartTvlinkReq> event(*this, env, __func__, data, size,
                                              Reports::kFailedAsError);
    const FieldText return_text(event->return_uri);
    const FieldText combrowser_text(event->combrowser_uri);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "START_TVLINK_REQ : app_id = %d, permit_av = %d, browser_info = %d, "
                   "full_screen = %d, return_uri = |%s|, combrowser_uri = |%s|",
                   event->app_id, event->permit_av, event->browser_info, event->full_screen,
                   return_text.text, combrowser_text.text);
    const jstring return_uri = event.text(return_text.text);
    const jstring combrowser_uri = event.text(combrowser_text.text);
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_START_TVLINK_REQ>(
        event->app_id, event->permit_av, event->browser_info, event->full_screen, return_uri,
        combrowser_uri);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_start_fep_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlStartFepReq> event(*this, env, __func__, data, size,
                                           Reports::kFailedAsError);
    const FieldText data_text(event->data);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(
        kDebug, __func__,
        "START_FEP_REQ : input_type = %d, input_max = %ld, password_flg = %d, data = |%s|",
        event->input_type, asLong(event->input_max), event->password_flg, data_text.text);
    const jstring text = event.text(data_text.text);
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_START_FEP_REQ>(
        event->input_type, asJint(event->input_max), event->password_flg, text);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_write_nvram_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlWriteNvramReq> event(*this, env, __func__, data, size,
                                             Reports::kFailedAsError);
    const FieldText name_text(event->ts_name);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "WRITE_NVRAM_REQ : affiliation_id = %d, network_id = %d, ts_name = |%s|, "
                   "block_no = %d",
                   event->affiliation_id, event->network_id, name_text.text, event->block_no);
    const jstring ts_name = event.text(name_text.text);
    const jbyteArray block = event.bytes(event->data, sizeof(event->data));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_WRITE_NVRAM_REQ>(
        event->affiliation_id, event->network_id, ts_name, event->block_no, block);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_read_nvram_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlReadNvramReq> event(*this, env, __func__, data, size,
                                            Reports::kFailedAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "READ_NVRAM_REQ : affiliation_id = %d, network_id = %d, block_no = %d",
                   event->affiliation_id, event->network_id, event->block_no);
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_READ_NVRAM_REQ>(
        event->affiliation_id, event->network_id, event->block_no);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_permission_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlPermissionReq> event(*this, env, __func__, data, size,
                                             Reports::kFailedAsError);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__, "PERMISSION_REQ : permit_type = %d, task_id = %ld",
                   event->permit_type, asLong(event->task_id));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_PERMISSION_REQ>(
        event->permit_type, asJint(event->task_id));
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_auth_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlAuthReq> event(*this, env, __func__, data, size);
    TRACE_LISTENER(kDebug, __func__, "handle = %d, task_id = %ld", event->handle,
                   asLong(event->task_id));
    return event.deliverOr(FAILURE_LINE("ERROR CallMethod"), event->handle, asJint(event->task_id));
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_enrol_tvlink_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlEnrolTvlinkReq> event(*this, env, __func__, data, size);
    const FieldText title_text(event->title);
    const FieldText uri_text(event->uri);
    const FieldText description_text(event->description);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "ENROL_TVLINK_REQ : title = |%s|, uri = |%s|, description = |%s|, "
                   "cpro_bmtype = %d, network_id = %d, service_id = %d",
                   title_text.text, uri_text.text, description_text.text, event->cpro_bmtype,
                   event->network_id, event->service_id);
    TRACE_LISTENER(kDebug, __func__,
                   "EXPIRE_DATE : date_year = %d, date_month = %d, date_day = %d, "
                   "date_dow = %d, date_hour = %d, date_min = %d, date_sec = %d",
                   event->expire_date[kExpireYear], event->expire_date[kExpireMonth],
                   event->expire_date[kExpireDay], event->expire_date[kExpireDow],
                   event->expire_date[kExpireHour], event->expire_date[kExpireMin],
                   event->expire_date[kExpireSec]);
    const jstring title = event.text(title_text.text, FAILURE_LINE("title is NULL"));
    const jstring uri = event.text(uri_text.text, FAILURE_LINE("uri is NULL"));
    const jstring description =
        event.text(description_text.text, FAILURE_LINE("description is NULL"));
    const jbyteArray affiliation_id =
        event.bytes(event->affiliation_id, sizeof(event->affiliation_id),
                    FAILURE_LINE("affiliation_id is NULL"));
    // Java gets the date in the order of the record, the year last.
    const auto expire_date = event.build<class_id::kBG_TS_DTVSVLIB_BML_TIME>(
        event->expire_date[0], event->expire_date[1], event->expire_date[2], event->expire_date[3],
        event->expire_date[4], event->expire_date[5], event->expire_date[6]);
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_ENROL_TVLINK_REQ>(
        title, uri, description, event->cpro_bmtype, expire_date, event->network_id,
        event->service_id, affiliation_id);
    return event.deliver(event->handle, request);
}

// ---- What the application does for the viewer.

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_mail_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "recv_size = %d", size);
    Event<event_id::kBmlMailReq> event(*this, env, __func__, data, size, Reports::kFailedAsError);
    const FieldText title_text(event->title);
    const FieldText address_text(event->send_address);
    const FieldText data_text(event->data);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__, "MAIL_REQ : title = |%s|, send_address = |%s|, data = |%s|",
                   title_text.text, address_text.text, data_text.text);
    const jstring title = event.text(title_text.text);
    const jstring send_address = event.text(address_text.text);
    const jstring text = event.text(data_text.text);
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_MAIL_REQ>(title, send_address, text);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_phonebook_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlPhonebookReq> event(*this, env, __func__, data, size);
    const FieldText name_text(event->name);
    const FieldText kana_text(event->name_kana);
    const FieldText number_text(event->phone_number);
    const FieldText address_text(event->mail_address);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "PHONEBOOK_REQ : name = |%s|, name_kana = |%s|, phone_number = |%s|, "
                   "mail_address = |%s|",
                   name_text.text, kana_text.text, number_text.text, address_text.text);
    const jstring name = event.text(name_text.text, FAILURE_LINE("name is NULL"));
    const jstring name_kana = event.text(kana_text.text, FAILURE_LINE("name_kana is NULL"));
    const jstring phone_number = event.text(number_text.text, FAILURE_LINE("phone_number is NULL"));
    const jstring mail_address =
        event.text(address_text.text, FAILURE_LINE("mail_address is NULL"));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_PHONEBOOK_REQ>(
        name, name_kana, phone_number, mail_address);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_call_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlCallReq> event(*this, env, __func__, data, size);
    const FieldText number_text(event->phone_number);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__, "CALL_REQ : phone_number = |%s|", number_text.text);
    const jstring phone_number =
        event.text(number_text.text, FAILURE_LINE(" phone_number is NULL"));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_CALL_REQ>(phone_number);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_schedule_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlScheduleReq> event(*this, env, __func__, data, size,
                                           Reports::kFailedAsError);
    const BML_TIME& time = event->time;
    const FieldText title_text(event->title);
    const FieldText body_text(event->text);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "BML_TINME : date_year = %d, date_month = %d, date_day = %d, date_dow = %d, "
                   "date_hour = %d, date_min = %d, date_sec = %d",
                   time.date_year, time.date_month, time.date_day, time.date_dow, time.date_hour,
                   time.date_min, time.date_sec);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : length = %d, title = |%s|",
                   static_cast<int>(std::strlen(title_text.text)), title_text.text);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : length = %d, text = |%s|",
                   static_cast<int>(std::strlen(body_text.text)), body_text.text);
    TRACE_LISTENER(kDebug, __func__, "SCHEDULE_REQ : alarm_flag = %d", event->alarm_flag);
    const jstring title = event.text(title_text.text);
    const jstring text = event.text(body_text.text);
    const auto date = event.build<class_id::kBG_TS_DTVSVLIB_BML_TIME>(
        time.date_year, time.date_month, time.date_day, time.date_dow, time.date_hour,
        time.date_min, time.date_sec);
    const auto request =
        event.build<class_id::kBG_TS_DTVSVLIB_SCHEDULE_REQ>(date, title, text, event->alarm_flag);
    return event.deliver(event->handle, request);
}

int JNIDtvSvLibListener::dtvsv_msgid_lib_bml_save_picture_req(JNIEnv* env, void* data, int size) {
    TRACE_LISTENER(kFuncStart, __func__, "");
    Event<event_id::kBmlSavePictureReq> event(*this, env, __func__, data, size);
    const FieldText resource_text(event->src_resource);
    const FieldText filename_text(event->filename);
    TRACE_LISTENER(kDebug, __func__, "handle = %d", event->handle);
    TRACE_LISTENER(kDebug, __func__,
                   "SAVE_PICTURE_REQ : src_resource = |%s|, src_resource_size = %ld, "
                   "filename = |%s|, filename_size = %ld, image_data_size = %ld, overwrite = %d",
                   resource_text.text, asLong(event->src_resource_size), filename_text.text,
                   asLong(event->filename_size), asLong(event->image_data_size), event->overwrite);
    const jstring src_resource =
        event.text(resource_text.text, FAILURE_LINE("src_resource is NULL"));
    const jstring filename = event.text(filename_text.text, FAILURE_LINE("filename is NULL"));
    // The sizes that Java gets are those of the strings, not those of the record.
    const jlong src_resource_size = signExtended(event.lengthOf(src_resource));
    const jlong filename_size = signExtended(event.lengthOf(filename));
    const auto request = event.build<class_id::kBG_TS_DTVSVLIB_SAVE_PICTURE_REQ>(
        src_resource, filename, asJint(event->image_data_size), event->overwrite, src_resource_size,
        filename_size);
    return event.deliver(event->handle, request);
}
