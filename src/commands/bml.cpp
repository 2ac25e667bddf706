// The answers to the BML browser's requests, its keys, and the start of a TV link.
#include "commands/drawing_info.h"
#include "commands/enum_fields.h"
#include "commands/fields.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

#include <cstring>

using trace::kDebug;

namespace {

constexpr jsize kNvramBlock = 64; ///< bytes

constexpr EnumField kKeyCode = {"key_code", VALUE_TYPE(BG_TE_DTVSVLIB_KEYCODE), "getKeyValue"};
constexpr EnumField kKeyType = {"key_type", VALUE_TYPE(BG_TE_DTVSVLIB_KEY_EVENT_TYPE),
                                "getKeyEventValue"};
constexpr EnumField kPermissionSelectType = {
    "select_type", VALUE_TYPE(BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE), "getPermissionValue"};
constexpr EnumField kAuthSelectType = {"select_type", VALUE_TYPE(BG_TE_DTVSVLIB_AUTH_SELECT_TYPE),
                                       "getAuthSelectTypeValue"};
constexpr EnumField kFepEndType = {"end_type", VALUE_TYPE(BG_TE_DTVSVLIB_FEP_END_TYPE),
                                   "getFepEndValue"};
constexpr EnumField kBmlEndType = {"bml_end_type", VALUE_TYPE(BG_TE_DTVSVLIB_BML_END_TYPE),
                                   "getBmlEndValue"};

/// Reads a String field of at most `limit` bytes of modified UTF-8 into a field of the record.
#define READ_TEXT(command, clazz, object, name, limit, target, missing_text, null_text, long_text) \
    do {                                                                                           \
        jfieldID text_field = nullptr;                                                             \
        FIND_FIELD(command, clazz, name, "Ljava/lang/String;", &text_field, missing_text);         \
        const auto text = static_cast<jstring>((command).env->GetObjectField(object, text_field)); \
        if (text == nullptr) {                                                                     \
            REFUSE(command, null_text, kResultParamNg);                                            \
        }                                                                                          \
        const jsize length = (command).env->GetStringUTFLength(text);                              \
        if (length > static_cast<jsize>(limit)) {                                                  \
            REFUSE(command, long_text, length, kResultParamNg);                                    \
        }                                                                                          \
        COPY_TEXT(command, text, target);                                                          \
    } while (false)

/// Copies an array of at most `limit` bytes; a longer one is left alone and only measured. False
/// when the VM has no memory for its elements: its exception is then pending.
bool copyBytes(JNIEnv* env, jbyteArray array, jsize limit, uint8_t* target, jsize* length) {
    jbyte* const elements = env->GetByteArrayElements(array, nullptr);
    if (elements == nullptr) {
        return false;
    }
    *length = env->GetArrayLength(array);
    if (*length <= limit) {
        std::memcpy(target, elements, static_cast<size_t>(*length));
    }
    env->ReleaseByteArrayElements(array, elements, 0);
    return true;
}

} // namespace

jobject dtvSvLibBMLKeyEventNotify(JNIEnv* env, jobject, jint handle, jobject key) {
    const Command command = beginCommand(env, __func__, command_id::kBMLKeyEventNotify, handle);
    TAKE_CLASS(command, key, clazz, "key_code_notify_obj is NULL, ret = %d",
               "key_code_notify class is NULL, ret = %d");
    TS_KEY_EVENT_REQ record = {};
    record.handle = command.handle();
    jint value = 0;
    READ_ENUM(command, key, kKeyCode, &value, "key_code getEnumValue Error, ret = %d");
    record.key_code = static_cast<uint8_t>(value);
    READ_ENUM(command, key, kKeyType, &value, "key_type getEnumValue Error, ret = %d");
    record.key_type = static_cast<uint8_t>(value);
    READ_INT(command, clazz, key, "touch_x", &value);
    record.touch_x = static_cast<uint16_t>(value);
    READ_INT(command, clazz, key, "touch_y", &value);
    record.touch_y = static_cast<uint16_t>(value);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, KEY_CODE_NOTIFY : key_code = %d, key_type = %d, touch_x = %d, "
                 "touch_y = %d",
                 record.key_code, record.key_type, record.touch_x, record.touch_y);
    return send(command, record);
}

jobject dtvSvLibBMLPermissionReply(JNIEnv* env, jobject, jint handle, jobject reply) {
    const Command command = beginCommand(env, __func__, command_id::kBMLPermissionReply, handle);
    TAKE_CLASS(command, reply, clazz, "permission_reply_obj is NULL, ret = %d",
               "permission_reply class is NULL, ret = %d");
    TS_PERMISSION_REPLY_REQ record = {};
    record.handle = command.handle();
    jint value = 0;
    READ_INT(command, clazz, reply, "task_id", &value);
    record.task_id = value;
    READ_ENUM(command, reply, kPermissionSelectType, &value,
              "select_type getEnumValue Error, ret = %d");
    record.select_type = static_cast<uint8_t>(value);
    TRACE_NATIVE(kDebug, __func__, "SEND, PERMISSION_REPLY : task_id = %ld, select_type = %d",
                 trace::asLong(record.task_id), record.select_type);
    return send(command, record);
}

jobject dtvSvLibBMLAuthReply(JNIEnv* env, jobject, jint handle, jobject reply) {
    const Command command = beginCommand(env, __func__, command_id::kBMLAuthReply, handle);
    TAKE_CLASS(command, reply, clazz, "auth_reply_obj is NULL, ret = %d",
               "auth_reply class is NULL, ret = %d");
    TS_AUTH_REPLY_REQ record = {};
    record.handle = command.handle();
    READ_TEXT(command, clazz, reply, "pass", sizeof(record.pass), record.pass,
              "pass fieldID is NULL, ret = %d", "pass is NULL, ret = %d",
              "pass length is too long : %d, ret = %d");
    // A user that is too long is blamed on the whole object.
    READ_TEXT(command, clazz, reply, "user", sizeof(record.user), record.user,
              "user fieldID is NULL, ret = %d", "user is NULL, ret = %d",
              "auth_reply_obj length is too long : %d, ret = %d");
    jint value = 0;
    READ_INT(command, clazz, reply, "task_id", &value);
    record.task_id = value;
    READ_ENUM(command, reply, kAuthSelectType, &value, "select_type getEnumValue Error, ret = %d");
    record.select_type = static_cast<uint8_t>(value);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_AUTH_REPLY : select_type = %d, user = |%s|, pass = |%s|, "
                 "task_id = %ld",
                 record.select_type, FieldText(record.user).text, FieldText(record.pass).text,
                 trace::asLong(record.task_id));
    return send(command, record);
}

jobject dtvSvLibBMLSavePictureReply(JNIEnv* env, jobject, jint handle, jobject picture) {
    const Command command = beginCommand(env, __func__, command_id::kBMLSavePictureReply, handle);
    TAKE_CLASS(command, picture, clazz, "picture_info_obj is NULL, ret = %d",
               "picture_info class is NULL, ret = %d");
    TS_SAVE_PICTURE_REPLY_REQ record = {};
    record.handle = command.handle();
    jint value = 0;
    READ_ENUM(command, picture, onOffField("save_flag"), &value,
              "save_flag getEnumValue Error, ret = %d");
    record.save_flag = static_cast<uint8_t>(value);
    READ_ENUM(command, picture, kMediumField, &value, "medium getEnumValue Error, ret = %d");
    record.medium = static_cast<uint8_t>(value);
    READ_ENUM(command, picture, onOffField("change_filename"), &value,
              "change_filename getEnumValue Error, ret = %d");
    record.change_filename = static_cast<uint8_t>(value);
    // Unlike other texts, a file name always keeps its terminator.
    READ_TEXT(command, clazz, picture, "filename", sizeof(record.filename) - 1, record.filename,
              "filename_fid is NULL, ret = %d", "filename is NULL, ret = %d",
              "filename too long : %d, ret = %d");
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_SAVE_PICTURE_REPLY : save_flag = %d, medium = %d, "
                 "change_filename = %d, filename = |%s|",
                 record.save_flag, record.medium, record.change_filename,
                 FieldText(record.filename).text);
    return send(command, record);
}

jobject dtvSvLibBMLFepReply(JNIEnv* env, jobject, jint handle, jobject reply) {
    const Command command = beginCommand(env, __func__, command_id::kBMLFepReply, handle);
    TAKE_CLASS(command, reply, clazz, "start_fep_reply_obj is NULL, ret = %d",
               "start_fep_reply class is NULL, ret = %d");
    TS_FEP_REPLY_REQ record = {};
    record.handle = command.handle();
    READ_TEXT(command, clazz, reply, "data", sizeof(record.data), record.data,
              "data fieldID is NULL, ret = %d", "data is NULL, ret = %d",
              "data length is too long : %d, ret = %d");
    jint value = 0;
    READ_INT(command, clazz, reply, "data_size", &value);
    record.data_size = value;
    // An unreadable end_type is not refused: the low byte of data_size stands in its place.
    getEnumValue(env, reply, kFepEndType, &value);
    if (env->ExceptionCheck()) {
        return nullptr;
    }
    record.end_type = static_cast<uint8_t>(value);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_FEP_REPLY : data = |%s|, data_size = %ld, end_type = %d",
                 FieldText(record.data).text, trace::asLong(record.data_size), record.end_type);
    return send(command, record);
}

jobject dtvSvLibBMLReadNvramReply(JNIEnv* env, jobject, jint handle, jobject reply) {
    const Command command = beginCommand(env, __func__, command_id::kBMLReadNvramReply, handle);
    TS_READ_NVRAM_REPLY_REQ record = {};
    record.handle = command.handle();
    const jclass clazz = classOf(env, reply);
    if (clazz == nullptr) {
        REFUSE(command, "ERROR bml_nvram_clazz is null, ret = %d", kResultParamNg);
    }
    jint bml_end_type = 0;
    READ_ENUM(command, reply, kBmlEndType, &bml_end_type,
              "bml_end_type getEnumValue Error, ret = %d");
    record.bml_end_type = static_cast<uint8_t>(bml_end_type);

    const jfieldID name_field = findField(env, clazz, "ts_name", "Ljava/lang/String;");
    if (name_field == nullptr) {
        REFUSE(command, "ERROR ts_name field ID is null");
    }
    const auto ts_name = static_cast<jstring>(env->GetObjectField(reply, name_field));
    if (ts_name == nullptr) {
        REFUSE(command, "ERROR bml_nvram object is null");
    }
    // The name is not judged by its length: a longer one is cut.
    COPY_TEXT(command, ts_name, record.ts_name);

    const jfieldID data_field = findField(env, clazz, "nvram_data", "[B");
    if (data_field == nullptr) {
        REFUSE(command, "ERROR nvram_data field ID is null");
    }
    const auto nvram_data = static_cast<jbyteArray>(env->GetObjectField(reply, data_field));
    if (nvram_data == nullptr) {
        REFUSE(command, "ERROR nvram_data object is null");
    }
    jsize size = 0;
    if (!copyBytes(env, nvram_data, kNvramBlock, record.nvram_data, &size)) {
        return nullptr;
    }
    if (size > kNvramBlock) {
        REFUSE(command, "ERROR nvram_data size is over, size = %d", size);
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, READ_NVRAM_REPLY : bml_end_type = %d, ts_name = %s",
                 record.bml_end_type, FieldText(record.ts_name).text);
    return send(command, record);
}

jobject dtvSvLibBMLStartTvLinkReq(JNIEnv* env, jobject, jint handle, jint bml_control_type,
                                  jobject start_info) {
    const Command command = beginCommand(env, __func__, command_id::kBMLStartTvLinkReq, handle);
    if (start_info == nullptr) {
        REFUSE(command, "bml_start_info_obj is NULL, ret = %d", kResultParamNg);
    }
    TS_START_TV_LINK_REQ record = {};
    record.handle = command.handle();
    if (!isControlType(bml_control_type)) {
        REFUSE(command, "bml_control_type is too large : %d, ret = %d", bml_control_type,
               kResultParamNg);
    }
    record.bml_control_type = static_cast<uint8_t>(bml_control_type);
    const jclass clazz = classOf(env, start_info);
    if (clazz == nullptr) {
        REFUSE(command, "bml_start_info_clazz class is NULL, ret = %d", kResultParamNg);
    }

    jfieldID field = nullptr;
    FIND_FIELD(command, clazz, "drawing_info", VALUE_TYPE(BG_TS_DTVSVLIB_BML_DRAWING_INFO), &field,
               "BML drawing_info_obj fieldID is NULL, ret = %d");
    const jobject drawing_info = env->GetObjectField(start_info, field);
    TS_DTVSV_SP carrier;
    TAKE_PLANE(command, drawing_info, setBMLDrawingInfo, &record.bml, carrier,
               "bml drawing_info_clazz class is NULL, ret = %d");

    jint value = 0;
    READ_INT(command, clazz, start_info, "network_id", &value);
    record.network_id = static_cast<uint16_t>(value);
    READ_INT(command, clazz, start_info, "service_id", &value);
    record.service_id = static_cast<uint16_t>(value);

    FIND_FIELD(command, clazz, "affiliation_id", "[B", &field,
               "affiliation_id fieldID is NULL, ret = %d");
    const auto affiliation_id = static_cast<jbyteArray>(env->GetObjectField(start_info, field));
    if (affiliation_id == nullptr) {
        REFUSE(command, "affiliation_id_array is NULL, ret = %d", kResultParamNg);
    }
    constexpr auto kAffiliationBytes = static_cast<jsize>(sizeof(record.affiliation_id));
    jsize size = 0;
    if (!copyBytes(env, affiliation_id, kAffiliationBytes, record.affiliation_id, &size)) {
        return nullptr;
    }
    if (size > kAffiliationBytes) {
        REFUSE(command, "affiliation_id_data size is over, size = %d", size);
    }
    READ_TEXT(command, clazz, start_info, "bookmark_url", sizeof(record.bookmark_url),
              record.bookmark_url, "bookmark_url fieldID is NULL, ret = %d",
              "bookmark_url object is NULL, ret = %d", "bookmark_url too long : %d, ret = %d");

    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__, "SEND, bml_control_type = %d", record.bml_control_type);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO : network_id   = %d",
                 record.network_id);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO : service_id   = %d",
                 record.service_id);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO : bookmark_url = %s",
                 FieldText(record.bookmark_url).text);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO: surface_width  = %d",
                 record.bml.surface_width);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO: surface_height = %d",
                 record.bml.surface_height);
    TRACE_NATIVE(kDebug, __func__, "SEND, TS_DTVSVLIB_BML_START_INFO: screen_rotate  = %d",
                 record.bml.screen_rotate);
    return send(command, record, &carrier);
}
