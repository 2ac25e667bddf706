#include "simulator/commands.h"

#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/reply_records.h"
#include "simulator/browser.h"
#include "simulator/captions.h"
#include "simulator/player.h"
#include "simulator/presentation.h"
#include "simulator/recorder.h"
#include "simulator/tuner.h"

#include <cstring>

namespace simulator {
namespace {

using Form = ReplyForm;
namespace command = command_id;
namespace event = event_id;

template <class Record>
constexpr int sizeOf() {
    return static_cast<int>(sizeof(Record));
}

constexpr int kHandleOnly = sizeOf<TS_HANDLE_REQ>();
constexpr int kOneValue = sizeOf<TS_ONE_VALUE_REQ>();
constexpr int kBroadcastInfo = sizeOf<TS_BROADCAST_INFO_REQ>();

// A scan or a search ends with a notification, by itself or when it is cancelled: that is the
// answer to the command that cancels it. The notification about the sound stream is the answer to
// the setting of the first components. These records are laid out as a reply's.
constexpr CommandRow kCommands[] = {
    {command::kCreate, 0, sizeOf<TS_CREATE_REQ>(), event::kCreateReply, Form::kCommon, nullptr},
    {command::kRelease, command::kRelease_Sync, kHandleOnly, event::kReleaseReply, Form::kCommon,
     release},
    {command::kStartScan, 0, kHandleOnly, event::kStartScanReply, Form::kScan, startScan},
    {command::kCancelScan, command::kCancelScan_Sync, kHandleOnly, event::kTerminateScanNotify,
     Form::kCommon, cancelScan},
    {command::kStartBroadcastReceiving, 0, kBroadcastInfo, event::kStartBroadcastReceivingReply,
     Form::kService, startReceiving},
    {command::kTerminateBroadcastReceiving, command::kTerminateBroadcastReceiving_Sync, kHandleOnly,
     event::kTerminateBroadcastReceivingReply, Form::kCommon, terminateReceiving},
    {command::kSelectChannel, 0, kBroadcastInfo, event::kSelectChannelReply, Form::kService,
     selectChannel},
    {command::kStartSearchChannel, 0, sizeOf<TS_SEARCH_CHANNEL_REQ>(),
     event::kStartSearchChannelReply, Form::kCommon, startSearch},
    {command::kCancelSearchChannel, 0, kHandleOnly, event::kTerminateSearchChannelNotify,
     Form::kService, cancelSearch},

    {command::kSetFirstComponent, 0, sizeOf<TS_COMPONENT_SETTING_REQ>(),
     event::kSelectAudioComponentNotify, Form::kCommon, setFirstComponent},
    {command::kSetDisplayAll, 0, sizeOf<TS_DISPLAY_ALL_REQ>(), event::kSetDisplayAllReply,
     Form::kCommon, setDisplayAll},
    {command::kSetScreenDisplay, 0, sizeOf<TS_SCREEN_DISPLAY_REQ>(), event::kSetScreenDisplayReply,
     Form::kCommon, setScreenDisplay},
    {command::kSetCapDisplay, 0, sizeOf<TS_CAP_DISPLAY_REQ>(), event::kSetCapDisplayReply,
     Form::kCommon, setCapDisplay},
    {command::kSetBMLDisplay, 0, sizeOf<TS_BML_DISPLAY_REQ>(), event::kSetBmlDisplayReply,
     Form::kCommon, setBmlDisplay},
    {command::kReleaseDisplay, 0, kOneValue, event::kReleaseDisplayReply, Form::kDisplay,
     releaseDisplay},
    {command::kControlDisplayModeReq, 0, sizeOf<TS_DISPLAY_MODE_REQ>(),
     event::kControlDisplayModeReply, Form::kCommon, controlDisplayMode},
    {command::kControlScreenDisplay, 0, kOneValue, event::kControlScreenDisplayReply, Form::kCommon,
     controlScreenDisplay},
    {command::kControlDecodeScreen, command::kControlDecodeScreen_Sync, kOneValue,
     event::kControlDecodeScreenReply, Form::kCommon, controlDecode},
    {command::kChangeAudioComponent, 0, kOneValue, event::kChangeAudioComponentReply, Form::kCommon,
     changeAudioComponent},
    {command::kChangeSoundDualMono, 0, kOneValue, event::kChangeSoundDualMonoReply, Form::kCommon,
     changeSoundDualMono},
    {command::kSetSoundVideoDelay, 0, sizeOf<TS_SOUND_VIDEO_DELAY_REQ>(),
     event::kSetSoundVideoDelayReply, Form::kCommon, setSoundVideoDelay},
    {command::kControlDecodeAudio, command::kControlDecodeAudio_Sync, kOneValue,
     event::kControlDecodeAudioReply, Form::kCommon, controlDecode},
    {command::kControlCap, command::kControlCap_Sync, sizeOf<TS_CONTROL_CAP_REQ>(),
     event::kControlCapReply, Form::kCommon, controlCaptions},
    {command::kChangeCapLang, 0, kOneValue, event::kChangeCapLangReply, Form::kCommon,
     changeCaptionLanguage},
    {command::kControlLNA, 0, kOneValue, event::kControlLNAReply, Form::kCommon, controlLna},
    {command::kSetTunerLog, 0, kOneValue, event::kSetTunerLogReply, Form::kCommon, setTunerLog},
    {command::kGetTunerLogStatus, 0, kHandleOnly, event::kTunerLogStatusReply, Form::kTunerLog,
     getTunerLogStatus},

    {command::kControlBML, command::kControlBML_Sync, sizeOf<TS_CONTROL_BML_REQ>(),
     event::kControlBmlReply, Form::kCommon, controlBrowser},
    {command::kBMLStartTvLinkReq, 0, sizeOf<TS_START_TV_LINK_REQ>(), event::kBmlStartTvlinkReply,
     Form::kTvLink, startTvLink},
    {command::kBMLEndTvLinkReq, command::kBMLEndTvLink_Sync, kHandleOnly, event::kBmlEndTvlinkReply,
     Form::kCommon, endTvLink},
    {command::kBMLRebootBrowserReq, 0, kHandleOnly, event::kBmlRebootBrowserReply, Form::kCommon,
     rebootBrowser},
    {command::kBMLKeyEventNotify, 0, sizeOf<TS_KEY_EVENT_REQ>(), 0, Form::kNone, keyEvent},
    {command::kBMLPermissionReply, 0, sizeOf<TS_PERMISSION_REPLY_REQ>(), 0, Form::kNone,
     answerPermission},
    {command::kBMLAuthReply, 0, sizeOf<TS_AUTH_REPLY_REQ>(), 0, Form::kNone, answerAuth},
    {command::kBMLWriteNvramReply, 0, kOneValue, 0, Form::kNone, answerWriteNvram},
    {command::kBMLReadNvramReply, 0, sizeOf<TS_READ_NVRAM_REPLY_REQ>(), 0, Form::kNone,
     answerReadNvram},
    {command::kBMLFepReply, 0, sizeOf<TS_FEP_REPLY_REQ>(), 0, Form::kNone, answerFep},
    {command::kBMLMailReply, 0, kOneValue, 0, Form::kNone, answerMail},
    {command::kBMLPhonebookReply, 0, kOneValue, 0, Form::kNone, answerPhonebook},
    {command::kBMLCallReply, 0, kOneValue, 0, Form::kNone, answerCall},
    {command::kBMLScheduleReply, 0, kOneValue, 0, Form::kNone, answerSchedule},
    {command::kBMLBrowserReply, 0, kOneValue, 0, Form::kNone, answerBrowser},
    {command::kBMLSavePictureReply, 0, sizeOf<TS_SAVE_PICTURE_REPLY_REQ>(), 0, Form::kNone,
     answerSavePicture},
    {command::kBMLStartTvlinkReply, 0, kOneValue, 0, Form::kNone, answerStartTvLink},
    {command::kBMLEnrolTvlinkReply, 0, kOneValue, 0, Form::kNone, answerEnrolTvLink},

    {command::kStartRec, 0, kOneValue, event::kStartRecReply, Form::kService, startRecording},
    {command::kTerminateRec, command::kTerminateRec_Sync, sizeOf<TS_TERMINATE_REC_REQ>(),
     event::kTerminateRecReply, Form::kRecording, terminateRecording},
    {command::kStartPlay, 0, sizeOf<TS_START_PLAY_REQ>(), event::kStartPlayReply, Form::kCommon,
     startPlay},
    {command::kChangePlaySpeed, 0, sizeOf<TS_SPECIAL_PLAY_REQ>(), event::kChangePlaySpeedReply,
     Form::kCommon, changePlaySpeed},
    {command::kPausePlay, 0, kHandleOnly, event::kPausePlayReply, Form::kCommon, pausePlay},
    {command::kReStartPlay, 0, kHandleOnly, event::kRestartPlayReply, Form::kCommon, restartPlay},
    {command::kSkipPlay, 0, sizeOf<TS_SKIP_PLAY_REQ>(), event::kSkipPlayReply, Form::kCommon,
     skipPlay},
    {command::kFrameSlidePlay, 0, kOneValue, event::kFrameSlidePlayReply, Form::kCommon,
     frameSlidePlay},
    {command::kTerminatePlay, command::kTerminatePlay_Sync, kHandleOnly, event::kTerminatePlayReply,
     Form::kCommon, terminatePlay},
    {command::kMovePausePosition, 0, kOneValue, event::kMovePausePositionReply, Form::kCommon,
     movePausePosition},
};

template <class Record>
std::vector<uint8_t> bytesOf(const Record& record) {
    std::vector<uint8_t> bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

} // namespace

const CommandRow* findCommand(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.command_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

const CommandRow* findExchange(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.sync_id != 0 && row.sync_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

std::vector<uint8_t> replyRecord(ReplyForm form, uint16_t handle, const Answer& answer) {
    switch (form) {
    case Form::kNone:
        break;
    case Form::kCommon: {
        TS_COMMON_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        return bytesOf(record);
    }
    case Form::kScan: {
        TS_START_SCAN_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.channel_num = static_cast<uint16_t>(answer.first);
        return bytesOf(record);
    }
    case Form::kService: {
        TS_SERVICE_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.physical_channel = answer.first;
        record.service_no = answer.second;
        return bytesOf(record);
    }
    case Form::kDisplay: {
        TS_RELEASE_DISPLAY_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.drawing_destination = static_cast<uint8_t>(answer.first);
        return bytesOf(record);
    }
    case Form::kTunerLog: {
        TS_TUNER_LOG_STATUS_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.log_status = static_cast<uint8_t>(answer.first);
        return bytesOf(record);
    }
    case Form::kTvLink: {
        TS_BML_START_TVLINK_REPLY record{};
        record.handle = handle;
        record.result = static_cast<uint8_t>(answer.result);
        return bytesOf(record);
    }
    case Form::kRecording: {
        TS_TERMINATE_REC_REPLY record{};
        record.handle = handle;
        record.result = answer.result;
        record.program_no = static_cast<uint16_t>(answer.first);
        record.object_no = answer.second;
        return bytesOf(record);
    }
    }
    return {};
}

} // namespace simulator
