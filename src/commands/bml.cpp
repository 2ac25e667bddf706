// The answers to the BML browser's requests, its keys, and the start of a TV link.
#include "commands/argument.h"
#include "commands/drawing_info.h"
#include "commands/natives.h"
#include "records/field_text.h"

using trace::asLong;
using trace::kDebug;

namespace {

namespace auth_reply = field::BG_TS_DTVSVLIB_AUTH_REPLY;
namespace fep_reply = field::BG_TS_DTVSVLIB_START_FEP_REPLY;
namespace key_code_notify = field::BG_TS_DTVSVLIB_KEY_CODE_NOTIFY;
namespace nvram_reply = field::BG_TS_DTVSVLIB_READ_NVRAM_REPLY;
namespace permission_reply = field::BG_TS_DTVSVLIB_PERMISSION_REPLY;
namespace save_picture_reply = field::BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY;
namespace start_info = field::BG_TS_DTVSVLIB_BML_START_INFO;

constexpr jsize kNvramBlock = 64; ///< bytes

/// A file name always keeps its terminator, unlike other texts.
constexpr jsize kLongestFilename = sizeof(TS_SAVE_PICTURE_REPLY_REQ::filename) - 1;

void traceStartTvLink(const char* function, const TS_START_TV_LINK_REQ& record) {
    TRACE_NATIVE(kDebug, function, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, function, "SEND, bml_control_type = %d", record.bml_control_type);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO : network_id   = %d",
                 record.network_id);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO : service_id   = %d",
                 record.service_id);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO : bookmark_url = %s",
                 FieldText(record.bookmark_url).text);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO: surface_width  = %d",
                 record.bml.surface_width);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO: surface_height = %d",
                 record.bml.surface_height);
    TRACE_NATIVE(kDebug, function, "SEND, TS_DTVSVLIB_BML_START_INFO: screen_rotate  = %d",
                 record.bml.screen_rotate);
}

} // namespace

jobject dtvSvLibBMLKeyEventNotify(JNIEnv* env, jobject, jint handle, jobject key_object) {
    Command command(env, __func__, command_row::kBMLKeyEventNotify, handle);
    Argument key(command, key_object, OBJECT_LINES("key_code_notify"));
    TS_KEY_EVENT_REQ& record = command.record;
    record.key_code = key.readEnum(key_code_notify::key_code);
    record.key_type = key.readEnum(key_code_notify::key_type);
    record.touch_x = key.readInt(key_code_notify::touch_x);
    record.touch_y = key.readInt(key_code_notify::touch_y);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, KEY_CODE_NOTIFY : key_code = %d, key_type = %d, touch_x = %d, "
                 "touch_y = %d",
                 record.key_code, record.key_type, record.touch_x, record.touch_y);
    return command.send();
}

jobject dtvSvLibBMLPermissionReply(JNIEnv* env, jobject, jint handle, jobject reply_object) {
    Command command(env, __func__, command_row::kBMLPermissionReply, handle);
    Argument reply(command, reply_object, OBJECT_LINES("permission_reply"));
    TS_PERMISSION_REPLY_REQ& record = command.record;
    record.task_id = reply.readInt(permission_reply::task_id);
    record.select_type = reply.readEnum(permission_reply::select_type);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, PERMISSION_REPLY : task_id = %ld, select_type = %d",
                 asLong(record.task_id), record.select_type);
    return command.send();
}

jobject dtvSvLibBMLAuthReply(JNIEnv* env, jobject, jint handle, jobject reply_object) {
    Command command(env, __func__, command_row::kBMLAuthReply, handle);
    Argument reply(command, reply_object, OBJECT_LINES("auth_reply"));
    TS_AUTH_REPLY_REQ& record = command.record;
    reply.readText(auth_reply::pass, record.pass);
    reply.readText(auth_reply::user, record.user);
    record.task_id = reply.readInt(auth_reply::task_id);
    record.select_type = reply.readEnum(auth_reply::select_type);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_AUTH_REPLY : select_type = %d, user = |%s|, pass = |%s|, "
                 "task_id = %ld",
                 record.select_type, FieldText(record.user).text, FieldText(record.pass).text,
                 asLong(record.task_id));
    return command.send();
}

jobject dtvSvLibBMLSavePictureReply(JNIEnv* env, jobject, jint handle, jobject picture_object) {
    Command command(env, __func__, command_row::kBMLSavePictureReply, handle);
    Argument picture(command, picture_object, OBJECT_LINES("picture_info"));
    TS_SAVE_PICTURE_REPLY_REQ& record = command.record;
    record.save_flag = picture.readEnum(save_picture_reply::save_flag);
    record.medium = picture.readEnum(save_picture_reply::medium);
    record.change_filename = picture.readEnum(save_picture_reply::change_filename);
    picture.readText(save_picture_reply::filename, record.filename, kLongestFilename);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_SAVE_PICTURE_REPLY : save_flag = %d, medium = %d, "
                 "change_filename = %d, filename = |%s|",
                 record.save_flag, record.medium, record.change_filename,
                 FieldText(record.filename).text);
    return command.send();
}

jobject dtvSvLibBMLFepReply(JNIEnv* env, jobject, jint handle, jobject reply_object) {
    Command command(env, __func__, command_row::kBMLFepReply, handle);
    Argument reply(command, reply_object, OBJECT_LINES("start_fep_reply"));
    TS_FEP_REPLY_REQ& record = command.record;
    reply.readText(fep_reply::data, record.data);
    record.data_size = reply.readInt(fep_reply::data_size);
    // An unreadable end_type is not refused: the low byte of data_size takes its place.
    record.end_type = reply.readEnumIfPossible(fep_reply::end_type, record.data_size);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, BML_FEP_REPLY : data = |%s|, data_size = %ld, end_type = %d",
                 FieldText(record.data).text, asLong(record.data_size), record.end_type);
    return command.send();
}

jobject dtvSvLibBMLReadNvramReply(JNIEnv* env, jobject, jint handle, jobject reply_object) {
    Command command(env, __func__, command_row::kBMLReadNvramReply, handle);
    Argument reply(command, reply_object);
    reply.requireClass(INT_LINE("ERROR bml_nvram_clazz is null, ret = %d"));
    TS_READ_NVRAM_REPLY_REQ& record = command.record;
    record.bml_end_type = reply.readEnum(nvram_reply::bml_end_type);
    reply.readText(nvram_reply::ts_name, record.ts_name);
    reply.readBytes(nvram_reply::nvram_data, record.nvram_data, kNvramBlock);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, READ_NVRAM_REPLY : bml_end_type = %d, ts_name = %s",
                 record.bml_end_type, FieldText(record.ts_name).text);
    return command.send();
}

jobject dtvSvLibBMLStartTvLinkReq(JNIEnv* env, jobject, jint handle, jint bml_control_type,
                                  jobject start_object) {
    Command command(env, __func__, command_row::kBMLStartTvLinkReq, handle);
    Argument start(command, start_object);
    start.requireObject(INT_LINE("bml_start_info_obj is NULL, ret = %d"));
    TS_START_TV_LINK_REQ& record = command.record;
    record.bml_control_type = readControlType(
        command, bml_control_type, TWO_INTS_LINE("bml_control_type is too large : %d, ret = %d"));
    start.requireClass(INT_LINE("bml_start_info_clazz class is NULL, ret = %d"));

    TS_DTVSV_SP surfaces;
    takePlane(command, start.readObject(start_info::drawing_info), setBMLDrawingInfo, &record.bml,
              surfaces, INT_LINE("bml drawing_info_clazz class is NULL, ret = %d"));
    record.network_id = start.readInt(start_info::network_id);
    record.service_id = start.readInt(start_info::service_id);
    start.readBytes(start_info::affiliation_id, record.affiliation_id);
    start.readText(start_info::bookmark_url, record.bookmark_url);
    if (command.refused()) {
        return command.answer();
    }
    traceStartTvLink(__func__, record);
    return command.send(&surfaces);
}
