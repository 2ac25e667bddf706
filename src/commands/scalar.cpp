// The commands that take their session handle and at most two plain values: one row each.
#include "commands/command.h"
#include "commands/natives.h"
#include "records/command_records.h"
#include "records/message_ids.h"

using trace::kDebug;

namespace {

// ---- What a row says: which values pass, what a refusal says, what the SEND line says.

/// Values up to a limit pass, negative ones too.
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

/// Unlike elsewhere, negative values do not pass.
bool isTunerLogMode(jint mode) {
    return mode == 1 || mode == 2;
}

using TraceRefusal = void (*)(const char* function, jint value);
using TraceSend = void (*)(const char* function, int handle, int value);

#define SAYS_VALUE_AND_RET(text)                                                                   \
    [](const char* function, jint value) {                                                         \
        TRACE_NATIVE(kDebug, function, text, value, kResultParamNg);                               \
    }
#define SAYS_VALUE(text)                                                                           \
    [](const char* function, jint value) { TRACE_NATIVE(kDebug, function, text, value); }
#define NEVER_REFUSES nullptr

#define SENDS_HANDLE_AND_VALUE(text)                                                               \
    [](const char* function, int handle, int value) {                                              \
        TRACE_NATIVE(kDebug, function, text, handle, value);                                       \
    }
/// The value is not said.
#define SENDS_HANDLE_ALONE(text)                                                                   \
    [](const char* function, int handle, int) { TRACE_NATIVE(kDebug, function, text, handle); }
/// An answer to the BML browser: the handle in a line of its own, then the value behind a label.
#define SENDS_BML_REPLY(label)                                                                     \
    [](const char* function, int handle, int value) {                                              \
        TRACE_NATIVE(kDebug, function, "SEND, dtvsv_handle = %d", handle);                         \
        TRACE_NATIVE(kDebug, function, "SEND, " label " : bml_end_type = %d", value);              \
    }

// ---- The mechanism.

struct OneValueCommand {
    int message_id;
    bool (*accepts)(jint value);
    TraceRefusal trace_refusal;
    TraceSend trace_send;
};

jobject sendOneValue(JNIEnv* env, const char* function, const OneValueCommand& row, jint handle,
                     jint value) {
    const Command command = beginCommand(env, function, row.message_id, handle);
    if (!row.accepts(value)) {
        // The answer is taken before the line that says why, as in REFUSE.
        const jobject refused = answerRefusal(command);
        row.trace_refusal(function, value);
        return refused;
    }
    TS_ONE_VALUE_REQ record = {};
    record.handle = command.handle();
    record.value = static_cast<uint8_t>(value);
    row.trace_send(function, record.handle, record.value);
    return send(command, record);
}

} // namespace

/// ONE_VALUE(function, command, which values pass, what a refusal says, what is said when it is
/// sent)
#define ONE_VALUE(function, command, accepts, refusal, sending)                                    \
    jobject function(JNIEnv* env, jobject, jint handle, jint value) {                              \
        static constexpr OneValueCommand row = {command_id::command, accepts, refusal, sending};   \
        return sendOneValue(env, __func__, row, handle, value);                                    \
    }

/// NO_VALUE(function, command, what is said when it is sent)
#define NO_VALUE(function, command, sending)                                                       \
    jobject function(JNIEnv* env, jobject, jint handle) {                                          \
        return sendHandle(env, __func__, command_id::command, handle, sending);                    \
    }

// clang-format off

// Planes, decoding and sound.

ONE_VALUE(dtvSvLibReleaseDisplay, kReleaseDisplay, atMost<2>,
          SAYS_VALUE_AND_RET("drawing_destination is too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, drawing_destination = %d"))
// The label is that of another command, and the value is not said.
ONE_VALUE(dtvSvLibControlScreenDisplay, kControlScreenDisplay, atMost<1>,
          SAYS_VALUE_AND_RET("onoff too large : %d, ret = %d"),
          SENDS_HANDLE_ALONE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibControlDecodeScreen, kControlDecodeScreen, atMost<1>,
          SAYS_VALUE_AND_RET("onoff too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, CONTROL_DECODE_SCREEN : dtvsv_handle = %d, onoff = %d"))
ONE_VALUE(dtvSvLibChangeAudioComponent, kChangeAudioComponent, atMost<1>,
          SAYS_VALUE_AND_RET("audio_component is too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, audio_component = %d"))
ONE_VALUE(dtvSvLibChangeSoundDualMono, kChangeSoundDualMono, atMost<4>,
          SAYS_VALUE_AND_RET("dualmono is too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, dualmono = %d"))
ONE_VALUE(dtvSvLibControlDecodeAudio, kControlDecodeAudio, atMost<1>,
          SAYS_VALUE_AND_RET("onoff too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, CONTROL_DECODE_AUDIO : dtvsv_handle = %d, onoff = %d"))
ONE_VALUE(dtvSvLibChangeCapLang, kChangeCapLang, atMost<8>,
          SAYS_VALUE_AND_RET("cap_lang is too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, cap_lang = %d"))

// The tuner.

ONE_VALUE(dtvSvLibControlLNA, kControlLNA, isLnaMode,
          SAYS_VALUE("lna_mode is over, lna_mode = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, LNA_MODE : dtvsv_handle = %d, lna_mode = %d"))
ONE_VALUE(dtvSvLibSetTunerLog, kSetTunerLog, isTunerLogMode,
          SAYS_VALUE("set_log is over, set_log = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, TUNER_LOG : dtvsv_handle = %d, set_log = %d"))
NO_VALUE(dtvSvLibGetTunerLogStatus, kGetTunerLogStatus,
         SENDS_HANDLE("SEND, TUNER_LOG_STATUS : dtvsv_handle = %d"))

// The BML browser, and answers to it.

NO_VALUE(dtvSvLibBMLEndTvLinkReq, kBMLEndTvLinkReq, SENDS_HANDLE("SEND, dtvsv_handle = %d"))
NO_VALUE(dtvSvLibBMLRebootBrowserReq, kBMLRebootBrowserReq,
         SENDS_HANDLE("SEND, BML_REBOOT_BROWSER_REQ : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibBMLWriteNvramReply, kBMLWriteNvramReply, anyValue,
          NEVER_REFUSES,
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, bml_end_type = %d"))
ONE_VALUE(dtvSvLibBMLMailReply, kBMLMailReply, atMost<1>,
          SAYS_VALUE_AND_RET("mail_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_MAIL_REPLY"))
ONE_VALUE(dtvSvLibBMLPhonebookReply, kBMLPhonebookReply, atMost<1>,
          SAYS_VALUE_AND_RET("phonebook_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_PHONEBOOK_REPLY"))
ONE_VALUE(dtvSvLibBMLCallReply, kBMLCallReply, atMost<1>,
          SAYS_VALUE_AND_RET("call_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_CALL_REPLY"))
ONE_VALUE(dtvSvLibBMLScheduleReply, kBMLScheduleReply, atMost<1>,
          SAYS_VALUE_AND_RET("schedule_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_SCHEDULE_REPLY"))
ONE_VALUE(dtvSvLibBMLBrowserReply, kBMLBrowserReply, atMost<1>,
          SAYS_VALUE_AND_RET("browser_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_BROWSER_REPLY"))
ONE_VALUE(dtvSvLibBMLStartTvLinkReply, kBMLStartTvlinkReply, atMost<1>,
          SAYS_VALUE_AND_RET("tvlink_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_START_TVLINK_REPLY"))
ONE_VALUE(dtvSvLibBMLEnrolTvlinkReply, kBMLEnrolTvlinkReply, atMost<1>,
          SAYS_VALUE_AND_RET("tvlink_reply is too large : %d, ret = %d"),
          SENDS_BML_REPLY("BML_ENROL_TVLINK_REPLY"))

// Recording and playback.

ONE_VALUE(dtvSvLibStartRec, kStartRec, atMost<1>,
          SAYS_VALUE_AND_RET("medium is too large : %d, ret = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, dtvsv_handle = %d, medium = %d"))
NO_VALUE(dtvSvLibPausePlay, kPausePlay, SENDS_HANDLE("SEND, PAUSE_PLAY : dtvsv_handle = %d"))
NO_VALUE(dtvSvLibReStartPlay, kReStartPlay, SENDS_HANDLE("SEND, RESTART_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibFrameSlidePlay, kFrameSlidePlay, atMost<1>,
          SAYS_VALUE("direction is over, direction = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, FRAME_SLIDE_PLAY : dtvsv_handle = %d, direction = %d"))
NO_VALUE(dtvSvLibTerminatePlay, kTerminatePlay,
         SENDS_HANDLE("SEND, TERMINATE_PLAY : dtvsv_handle = %d"))
ONE_VALUE(dtvSvLibMovePausePosition, kMovePausePosition, atMost<1>,
          SAYS_VALUE("move_pos is over, move_pos = %d"),
          SENDS_HANDLE_AND_VALUE("SEND, MOVE_PAUSE_POSITION : dtvsv_handle = %d, move_pos = %d"))

// clang-format on

// ---- The two that take two values.

jobject dtvSvLibControlDisplayModeReq(JNIEnv* env, jobject, jint handle, jint screen_mode,
                                      jint screen_rotate) {
    const Command command = beginCommand(env, __func__, command_id::kControlDisplayModeReq, handle);
    if (!atMost<3>(screen_mode)) {
        REFUSE(command, "screen_mode is too large : %d, ret = %d", screen_mode, kResultParamNg);
    }
    if (!atMost<3>(screen_rotate)) {
        REFUSE(command, "screen_rotate is too large : %d, ret = %d", screen_rotate, kResultParamNg);
    }
    TS_DISPLAY_MODE_REQ record = {};
    record.handle = command.handle();
    record.screen_mode = static_cast<uint8_t>(screen_mode);
    record.screen_rotate = static_cast<uint8_t>(screen_rotate);
    TRACE_NATIVE(kDebug, __func__, "SEND, dtvsv_handle = %d, screen_mode = %d", record.handle,
                 record.screen_mode);
    return send(command, record);
}

// The delay of the video is judged whole. That of the sound is a 16-bit value: the upper half of
// the Java int does not count.
jobject dtvSvLibSetSoundVideoDelay(JNIEnv* env, jobject, jint handle, jint video_viltime,
                                   jint audio_viltime_int) {
    const Command command = beginCommand(env, __func__, command_id::kSetSoundVideoDelay, handle);
    const int longest = g_max_delay_time;
    if (video_viltime > longest) {
        REFUSE(command, "video_viltime is too large : %d, max_delat_time = %d, ret = %d",
               video_viltime, longest, kResultParamNg);
    }
    const auto audio_viltime = static_cast<int16_t>(audio_viltime_int);
    if (audio_viltime > longest) {
        REFUSE(command, "audio_viltime is too large : %d, max_delat_time = %d, ret = %d",
               audio_viltime, longest, kResultParamNg);
    }
    TS_SOUND_VIDEO_DELAY_REQ record = {};
    record.handle = command.handle();
    record.video_viltime = static_cast<uint16_t>(video_viltime);
    record.audio_viltime = audio_viltime;
    TRACE_NATIVE(kDebug, __func__,
                 "SEND, dtvsv_handle = %d, video_viltime = %d, audio_viltime = %d, "
                 "max_delay_time = %d",
                 record.handle, record.video_viltime, record.audio_viltime, g_max_delay_time);
    return send(command, record);
}
