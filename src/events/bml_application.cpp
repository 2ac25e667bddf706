// What the BML browser has the application do for the viewer: write mail, keep a telephone number,
// call it, note a date, save a picture.
#include "events/event.h"
#include "records/bml_records.h"

#include <cstring>

using trace::asLong;
using trace::kDebug;
using trace::kFuncStart;

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
    return event.deliver<kNew_BG_EV_DTVSV_BML_MAIL_REQ, kCall_onEvDtvsvBmlMailReq>(record.handle,
                                                                                   request);
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
    return event.deliver<kNew_BG_EV_DTVSV_BML_PHONEBOOK_REQ, kCall_onEvDtvsvBmlPhoneBookReq>(
        record.handle, request);
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
    return event.deliver<kNew_BG_EV_DTVSV_BML_CALL_REQ, kCall_onEvDtvsvBmlCallReq>(record.handle,
                                                                                   request);
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
    return event.deliver<kNew_BG_EV_DTVSV_BML_SCHEDULE_REQ, kCall_onEvDtvsvBmlScheduleReq>(
        record.handle, request);
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
    return event.deliver<kNew_BG_EV_DTVSV_BML_SAVE_PICTURE_REQ, kCall_onEvDtvsvBmlSavePictureReq>(
        record.handle, request);
}
