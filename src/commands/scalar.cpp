// The commands that take their session handle and at most two plain values: one row each.
#include "commands/command.h"
#include "commands/natives.h"

using trace::kDebug;

namespace {

// ---- What a row states: which values are accepted, the line of a refusal, the SEND line.

/// Values up to a limit are accepted, negative ones too.
template <jint Limit>
bool atMost(jint value) {
    return value <= Limit;
}

bool anyValue(jint) {
    return true;
}

bool isLnaMode(jint mode) {
    return mode == 0 || mode == 16 || mode == 17;
}

/// Negative values are not accepted, unlike elsewhere.
bool isTunerLogMode(jint mode) {
    return mode == 1 || mode == 2;
}

/// What is written when the record is sent: a line that shows the handle, and the value after it
/// when it has a place for it, then one that shows the value.
struct SendLines {
    constexpr SendLines(Line<1> handle_line) : with_handle(handle_line.format) {}
    constexpr SendLines(Line<2> handle_and_value_line)
        : with_handle(handle_and_value_line.format) {}
    constexpr SendLines(Line<1> handle_line, Line<1> value_line)
        : with_handle(handle_line.format), with_value(value_line.format) {}

    const char* with_handle;
    const char* with_value = nullptr; ///< null: there is no such line
};

/// An answer to the BML browser: the handle in a line of its own, then the value after a label.
#define BML_REPLY_LINES(label)                                                                     \
    (SendLines{INT_LINE("SEND, dtvsv_handle = %d"),                                                \
               INT_LINE("SEND, " label " : bml_end_type = %d")})

// ---- The mechanism.

/// What a row states comes as arguments: a table of it would be addresses for the loader to adjust.
jobject sendOneValue(JNIEnv* env, const char* function,
                     const CommandRowOf<TS_ONE_VALUE_REQ>& command_row, jint handle, jint value,
                     bool (*accepts)(jint), ValueLine refusal, SendLines send_lines,
                     int source_line = __builtin_LINE()) {
    Command command(env, function, command_row, handle);
    if (!accepts(value)) {
        return command.refuseFor(function, refusal.format, source_line, value, kResultParamNg);
    }
    TS_ONE_VALUE_REQ& record = command.record;
    record.value = static_cast<uint8_t>(value);
    writeLine(send_lines.with_handle, function, source_line, record.handle, record.value);
    writeLine(send_lines.with_value, function, source_line, record.value);
    return command.send();
}

} // namespace

/// ONE_VALUE(function, command, which values are accepted, line of a refusal, line when it is sent)
#define ONE_VALUE(function, command, accepts, refusal, sending)                                    \
    jobject function(JNIEnv* env, jobject, jint handle, jint value) {                              \
        return sendOneValue(env, __func__, command_row::command, handle, value, accepts, refusal,  \
                            sending);                                                              \
    }

/// NO_VALUE(function, command, line when it is sent)
#define NO_VALUE(function, command, sending)                                                       \
    jobject function(JNIEnv* env, jobject, jint handle) {                                          \
        return sendHandle(env, __func__, command_row::command, handle, sending);                   \
    }

// clang-format off

// Planes, decoding and sound.

ONE_VALUE(dtvSvLibReleaseDisplay, kReleaseDisplay, atMost<2>,
          TWO_INTS_LINE("drawing_destination is too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, drawing_destination = %d"))
// The label is that of another command, and the value is not shown.
ONE_VALUE(dtvSvLibControlScreenDisplay, kControlScreenDisplay, atMost<1>,
          TWO_INTS_LINE("onoff too large : %d, ret = %d"),
          INT_LINE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibControlDecodeScreen, kControlDecodeScreen, atMost<1>,
          TWO_INTS_LINE("onoff too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, CONTROL_DECODE_SCREEN : dtvsv_handle = %d, onoff = %d"))
ONE_VALUE(dtvSvLibChangeAudioComponent, kChangeAudioComponent, atMost<1>,
          TWO_INTS_LINE("audio_component is too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, audio_component = %d"))
ONE_VALUE(dtvSvLibChangeSoundDualMono, kChangeSoundDualMono, atMost<4>,
          TWO_INTS_LINE("dualmono is too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, dualmono = %d"))
ONE_VALUE(dtvSvLibControlDecodeAudio, kControlDecodeAudio, atMost<1>,
          TWO_INTS_LINE("onoff too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, CONTROL_DECODE_AUDIO : dtvsv_handle = %d, onoff = %d"))
ONE_VALUE(dtvSvLibChangeCapLang, kChangeCapLang, atMost<8>,
          TWO_INTS_LINE("cap_lang is too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, cap_lang = %d"))

// The tuner.

ONE_VALUE(dtvSvLibControlLNA, kControlLNA, isLnaMode,
          INT_LINE("lna_mode is over, lna_mode = %d"),
          TWO_INTS_LINE("SEND, LNA_MODE : dtvsv_handle = %d, lna_mode = %d"))
ONE_VALUE(dtvSvLibSetTunerLog, kSetTunerLog, isTunerLogMode,
          INT_LINE("set_log is over, set_log = %d"),
          TWO_INTS_LINE("SEND, TUNER_LOG : dtvsv_handle = %d, set_log = %d"))
NO_VALUE(dtvSvLibGetTunerLogStatus, kGetTunerLogStatus,
         INT_LINE("SEND, TUNER_LOG_STATUS : dtvsv_handle = %d"))

// The BML browser, and answers to it.

NO_VALUE(dtvSvLibBMLEndTvLinkReq, kBMLEndTvLinkReq, INT_LINE("SEND, dtvsv_handle = %d"))
NO_VALUE(dtvSvLibBMLRebootBrowserReq, kBMLRebootBrowserReq,
         INT_LINE("SEND, BML_REBOOT_BROWSER_REQ : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibBMLWriteNvramReply, kBMLWriteNvramReply, anyValue,
          nullptr,
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, bml_end_type = %d"))
ONE_VALUE(dtvSvLibBMLMailReply, kBMLMailReply, atMost<1>,
          TWO_INTS_LINE("mail_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_MAIL_REPLY"))
ONE_VALUE(dtvSvLibBMLPhonebookReply, kBMLPhonebookReply, atMost<1>,
          TWO_INTS_LINE("phonebook_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_PHONEBOOK_REPLY"))
ONE_VALUE(dtvSvLibBMLCallReply, kBMLCallReply, atMost<1>,
          TWO_INTS_LINE("call_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_CALL_REPLY"))
ONE_VALUE(dtvSvLibBMLScheduleReply, kBMLScheduleReply, atMost<1>,
          TWO_INTS_LINE("schedule_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_SCHEDULE_REPLY"))
ONE_VALUE(dtvSvLibBMLBrowserReply, kBMLBrowserReply, atMost<1>,
          TWO_INTS_LINE("browser_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_BROWSER_REPLY"))
ONE_VALUE(dtvSvLibBMLStartTvLinkReply, kBMLStartTvlinkReply, atMost<1>,
          TWO_INTS_LINE("tvlink_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_START_TVLINK_REPLY"))
ONE_VALUE(dtvSvLibBMLEnrolTvlinkReply, kBMLEnrolTvlinkReply, atMost<1>,
          TWO_INTS_LINE("tvlink_reply is too large : %d, ret = %d"),
          BML_REPLY_LINES("BML_ENROL_TVLINK_REPLY"))

// Recording and playback.

ONE_VALUE(dtvSvLibStartRec, kStartRec, atMost<1>,
          TWO_INTS_LINE("medium is too large : %d, ret = %d"),
          TWO_INTS_LINE("SEND, dtvsv_handle = %d, medium = %d"))
NO_VALUE(dtvSvLibPausePlay, kPausePlay, INT_LINE("SEND, PAUSE_PLAY : dtvsv_handle = %d"))
NO_VALUE(dtvSvLibReStartPlay, kReStartPlay, INT_LINE("SEND, RESTART_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibFrameSlidePlay, kFrameSlidePlay, atMost<1>,
          INT_LINE("direction is over, direction = %d"),
          TWO_INTS_LINE("SEND, FRAME_SLIDE_PLAY : dtvsv_handle = %d, direction = %d"))
NO_VALUE(dtvSvLibTerminatePlay, kTerminatePlay,
         INT_LINE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibMovePausePosition, kMovePausePosition, atMost<1>,
          INT_LINE("move_pos is over, move_pos = %d"),
          TWO_INTS_LINE("SEND, MOVE_PAUSE_POSITION : dtvsv_handle = %d, move_pos = %d"))

// clang-format on

// ---- The two that take two values.

jobject dtvSvLibControlDisplayModeReq(JNIEnv* env, jobject, jint handle, jint screen_mode,
                                      jint screen_rotate) {
    Command command(env, __func__, command_row::kControlDisplayModeReq, handle);
    if (!atMost<3>(screen_mode)) {
        return command.refuse(TWO_INTS_LINE("screen_mode is too large : %d, ret = %d"), screen_mode,
                              kResultParamNg);
    }
    if (!atMost<3>(screen_rotate)) {
        return command.refuse(TWO_INTS_LINE("screen_rotate is too large : %d, ret = %d"),
                              screen_rotate, kResultParamNg);
    }
    TS_DISPLAY_MODE_REQ& record = command.record;
    record.screen_mode = static_cast<uint8_t>(screen_mode);
    record.screen_rotate = static_cast<uint8_t>(screen_rotate);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, screen_mode = %d", record.handle,
                 record.screen_mode);
    return command.send();
}

// The delay of the video is checked whole. That of the sound is a 16-bit value: the upper half of
// the Java int does not count.
jobject dtvSvLibSetSoundVideoDelay(JNIEnv* env, jobject, jint handle, jint video_viltime,
                                   jint audio_viltime_int) {
    Command command(env, __func__, command_row::kSetSoundVideoDelay, handle);
    const int longest = g_max_delay_time;
    if (video_viltime > longest) {
        return command.refuse(
            THREE_INTS_LINE("video_viltime is too large : %d, max_delat_time = %d, ret = %d"),
            video_viltime, longest, kResultParamNg);
    }
    const auto audio_viltime = static_cast<int16_t>(audio_viltime_int);
    if (audio_viltime > longest) {
        return command.refuse(
            THREE_INTS_LINE("audio_viltime is too large : %d, max_delat_time = %d, ret = %d"),
            audio_viltime, longest, kResultParamNg);
    }
    TS_SOUND_VIDEO_DELAY_REQ& record = command.record;
    record.video_viltime = static_cast<uint16_t>(video_viltime);
    record.audio_viltime = audio_viltime;
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, dtvsv_handle = %d, video_viltime = %d, audio_viltime = %d, "
                 "max_delay_time = %d",
                 record.handle, record.video_viltime, record.audio_viltime, g_max_delay_time);
    return command.send();
}
