// The commands that play a recording and end one.
#include "commands/enum_fields.h"
#include "commands/fields.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

using trace::kDebug;

namespace {

constexpr jsize kLongestTitle = 196; ///< bytes of modified UTF-8

constexpr EnumField kDirection = {"direction", VALUE_TYPE(BG_TE_DTVSVLIB_PLAY_DIRECTION),
                                  "getDirectionValue"};

/// The speed that a ratio divides out to, or 0 when it does not divide out.
jint playSpeed(jint numerator, jint denominator) {
    return denominator != 0 && numerator % denominator == 0 ? numerator / denominator : 0;
}

bool isPlaySpeed(jint speed) {
    return speed == 2 || speed == 10 || speed == 30 || speed == 120;
}

/// Ends a recording; one way for the command and its synchronous twin.
jobject terminateRec(const Command& command, jobject request) {
    JNIEnv* const env = command.env;
    TAKE_CLASS(command, request, clazz, "terminate_rec_obj is NULL, ret = %d",
               "terminate_rec class is NULL, ret = %d");
    TS_TERMINATE_REC_REQ record = {};
    record.handle = command.handle();
    jint save_data = 0;
    READ_ENUM(command, request, onOffField("save_data"), &save_data,
              "save_data getEnumValue Error, ret = %d");
    record.save_data = static_cast<uint8_t>(save_data);

    // The size field must be there, but what travels is the size of the text itself.
    jfieldID field = nullptr;
    FIND_FIELD(command, clazz, "title_size", "I", &field, "title_size fieldID is NULL, ret = %d");
    FIND_FIELD(command, clazz, "title_name", "Ljava/lang/String;", &field,
               "title_name fieldID is NULL, ret = %d");
    const auto title = static_cast<jstring>(env->GetObjectField(request, field));
    if (title == nullptr) {
        REFUSE(command, "title_name is NULL, ret = %d", kResultParamNg);
    }
    const jsize length = env->GetStringUTFLength(title);
    if (length > kLongestTitle) {
        REFUSE(command, "title_name length = %d, ret = %d", length, kResultParamNg);
    }
    record.title_size = static_cast<uint16_t>(length);
    COPY_TEXT(command, title, record.title_name);

    TRACE_NATIVE(kDebug, command.function, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function,
                 "SEND, TERMINATE_REC : save_data = %d, title_size = %d, title_name = %s",
                 record.save_data, record.title_size, FieldText(record.title_name).text);
    return send(command, record);
}

} // namespace

jobject dtvSvLibStartPlay(JNIEnv* env, jobject, jint handle, jobject start) {
    const Command command = beginCommand(env, __func__, command_id::kStartPlay, handle);
    TAKE_CLASS(command, start, clazz, "start_play_obj is NULL, ret = %d",
               "start_play class is NULL, ret = %d");
    TS_START_PLAY_REQ record = {};
    record.handle = command.handle();
    jint value = 0;
    READ_ENUM(command, start, kMediumField, &value, "start_play getEnumValue Error, ret = %d");
    record.medium = static_cast<uint8_t>(value);
    READ_ENUM(command, start, onOffField("resume"), &value, "resume getEnumValue Error, ret = %d");
    record.resume = static_cast<uint8_t>(value);
    READ_ENUM(command, start, onOffField("pause"), &value, "pause getEnumValue Error, ret = %d");
    record.pause = static_cast<uint8_t>(value);
    READ_INT(command, clazz, start, "program_number", &value);
    record.program_number = static_cast<uint16_t>(value);
    READ_INT(command, clazz, start, "interval", &value);
    record.interval = static_cast<uint16_t>(value);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, START_PLAY : medium = %d, program_number = %d, resume = %d, "
                 "interval = %d, pause = %d",
                 record.medium, record.program_number, record.resume, record.interval,
                 record.pause);
    return send(command, record);
}

jobject dtvSvLibChangePlaySpeed(JNIEnv* env, jobject, jint handle, jobject special) {
    const Command command = beginCommand(env, __func__, command_id::kChangePlaySpeed, handle);
    TAKE_CLASS(command, special, clazz, "special_play_obj is NULL, ret = %d",
               "special_play class is NULL, ret = %d");
    TS_SPECIAL_PLAY_REQ record = {};
    record.handle = command.handle();
    jint direction = 0;
    READ_ENUM(command, special, kDirection, &direction, "direction getEnumValue Error, ret = %d");
    record.direction = static_cast<uint8_t>(direction);
    jint numerator = 0;
    READ_INT(command, clazz, special, "numerator", &numerator);
    jint denominator = 0;
    READ_INT(command, clazz, special, "denominator", &denominator);
    if (numerator < 0 || denominator < 0) {
        REFUSE(command, "numerator or denominator is Negative, numerator = %d, denominator = %d",
               numerator, denominator);
    }
    const jint ans = playSpeed(numerator, denominator);
    if (!isPlaySpeed(ans)) {
        REFUSE(command, "PlaySpeed Err, ans = %d, numerator = %d, denominator = %d", ans, numerator,
               denominator);
    }
    record.denominator = static_cast<uint16_t>(denominator);
    record.numerator = static_cast<uint16_t>(numerator);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, SPECIAL_PLAY : direction = %d, numerator = %d, denominator = %d",
                 record.direction, record.numerator, record.denominator);
    return send(command, record);
}

jobject dtvSvLibSkipPlay(JNIEnv* env, jobject, jint handle, jobject skip) {
    const Command command = beginCommand(env, __func__, command_id::kSkipPlay, handle);
    TAKE_CLASS(command, skip, clazz, "skip_play_obj is NULL, ret = %d",
               "skip_play class is NULL, ret = %d");
    TS_SKIP_PLAY_REQ record = {};
    record.handle = command.handle();
    jint value = 0;
    READ_ENUM(command, skip, kDirection, &value, "direction getEnumValue Error, ret = %d");
    record.direction = static_cast<uint8_t>(value);
    READ_INT(command, clazz, skip, "skipsec", &value);
    record.skipsec = value;
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__, "SEND, SKIP_PLAY : direction = %d, skipsec = %ld",
                 record.direction, trace::asLong(record.skipsec));
    return send(command, record);
}

jobject dtvSvLibTerminateRec(JNIEnv* env, jobject, jint handle, jobject request) {
    return terminateRec(beginCommand(env, __func__, command_id::kTerminateRec, handle), request);
}

jobject dtvSvLibTerminateRec_Sync(JNIEnv* env, jobject, jint handle, jobject request) {
    return terminateRec(beginCommand(env, __func__, command_id::kTerminateRec_Sync, handle),
                        request);
}
