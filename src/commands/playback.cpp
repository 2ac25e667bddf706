// The commands that play a recording and end one.
#include "commands/argument.h"
#include "commands/natives.h"
#include "records/field_text.h"

using trace::kDebug;

namespace {

namespace skip_play = field::BG_TS_DTVSVLIB_SKIP_PLAY;
namespace special_play = field::BG_TS_DTVSVLIB_SPECIAL_PLAY;
namespace start_play = field::BG_TS_DTVSVLIB_START_PLAY;
namespace terminate_rec = field::BG_TS_DTVSVLIB_TERMINATE_REC_REQ;

/// The speed that a ratio divides out to, or 0 when it does not divide out.
jint playSpeed(jint numerator, jint denominator) {
    return denominator != 0 && numerator % denominator == 0 ? numerator / denominator : 0;
}

bool isPlaySpeed(jint speed) {
    return speed == 2 || speed == 10 || speed == 30 || speed == 120;
}

/// Ends a recording: the command and its synchronous variant.
jobject terminateRec(Command<TS_TERMINATE_REC_REQ>& command, jobject object) {
    Argument request(command, object, OBJECT_LINES("terminate_rec"));
    TS_TERMINATE_REC_REQ& record = command.record;
    record.save_data = request.readEnum(terminate_rec::save_data);
    // The size field must exist, but what is sent is the size of the text itself.
    request.requireField(terminate_rec::title_size);
    const jsize length = request.readText(terminate_rec::title_name, record.title_name);
    if (command.refused()) {
        return command.answer();
    }
    record.title_size = static_cast<uint16_t>(length);
    TRACE_NATIVE(kDebug, command.function(), "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, command.function(),
                 "SEND, TERMINATE_REC : save_data = %d, title_size = %d, title_name = %s",
                 record.save_data, record.title_size, FieldText(record.title_name).text);
    return command.send();
}

} // namespace

jobject dtvSvLibStartPlay(JNIEnv* env, jobject, jint handle, jobject start_object) {
    Command command(env, __func__, command_row::kStartPlay, handle);
    Argument start(command, start_object, OBJECT_LINES("start_play"));
    TS_START_PLAY_REQ& record = command.record;
    record.medium = start.readEnum(start_play::medium);
    record.resume = start.readEnum(start_play::resume);
    record.pause = start.readEnum(start_play::pause);
    record.program_number = start.readInt(start_play::program_number);
    record.interval = start.readInt(start_play::interval);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, START_PLAY : medium = %d, program_number = %d, resume = %d, "
                 "interval = %d, pause = %d",
                 record.medium, record.program_number, record.resume, record.interval,
                 record.pause);
    return command.send();
}

jobject dtvSvLibChangePlaySpeed(JNIEnv* env, jobject, jint handle, jobject special_object) {
    Command command(env, __func__, command_row::kChangePlaySpeed, handle);
    Argument special(command, special_object, OBJECT_LINES("special_play"));
    TS_SPECIAL_PLAY_REQ& record = command.record;
    record.direction = special.readEnum(special_play::direction);
    const jint numerator = special.readInt(special_play::numerator);
    const jint denominator = special.readInt(special_play::denominator);
    if (command.refused()) {
        return command.answer();
    }
    if (numerator < 0 || denominator < 0) {
        return command.refuse(
            TWO_INTS_LINE("numerator or denominator is Negative, numerator = %d, denominator = %d"),
            numerator, denominator);
    }
    const jint ans = playSpeed(numerator, denominator);
    if (!isPlaySpeed(ans)) {
        return command.refuse(
            THREE_INTS_LINE("PlaySpeed Err, ans = %d, numerator = %d, denominator = %d"), ans,
            numerator, denominator);
    }
    record.denominator = static_cast<uint16_t>(denominator);
    record.numerator = static_cast<uint16_t>(numerator);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, SPECIAL_PLAY : direction = %d, numerator = %d, denominator = %d",
                 record.direction, record.numerator, record.denominator);
    return command.send();
}

jobject dtvSvLibSkipPlay(JNIEnv* env, jobject, jint handle, jobject skip_object) {
    Command command(env, __func__, command_row::kSkipPlay, handle);
    Argument skip(command, skip_object, OBJECT_LINES("skip_play"));
    TS_SKIP_PLAY_REQ& record = command.record;
    record.direction = skip.readEnum(skip_play::direction);
    record.skipsec = skip.readInt(skip_play::skipsec);
    if (command.refused()) {
        return command.answer();
    }
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d", record.handle);
    TRACE_NATIVE(kDebug, __func__, "SEND, SKIP_PLAY : direction = %d, skipsec = %ld",
                 record.direction, trace::asLong(record.skipsec));
    return command.send();
}

jobject dtvSvLibTerminateRec(JNIEnv* env, jobject, jint handle, jobject request) {
    Command command(env, __func__, command_row::kTerminateRec, handle);
    return terminateRec(command, request);
}

jobject dtvSvLibTerminateRec_Sync(JNIEnv* env, jobject, jint handle, jobject request) {
    Command command(env, __func__, command_row::kTerminateRec_Sync, handle);
    return terminateRec(command, request);
}
