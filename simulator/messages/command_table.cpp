#include "messages/command_table.h"

#include "records/message_ids.h"

namespace simulator {
namespace {

using Form = ReplyForm;
namespace command = command_id;
namespace event = event_id;

// A scan or a search ends with a notification, by itself or when it is cancelled: that is the reply
// to the command that cancels it. The notification about the sound stream is the reply to the
// setting of the first components. These records are laid out as a reply's.
constexpr CommandRow kCommands[] = {
    {command::kCreate, 0, event::kCreateReply, Form::kCommon},
    {command::kRelease, command::kRelease_Sync, event::kReleaseReply, Form::kCommon},
    {command::kStartScan, 0, event::kStartScanReply, Form::kScan},
    {command::kCancelScan, command::kCancelScan_Sync, event::kTerminateScanNotify, Form::kCommon},
    {command::kStartBroadcastReceiving, 0, event::kStartBroadcastReceivingReply, Form::kService},
    {command::kTerminateBroadcastReceiving, command::kTerminateBroadcastReceiving_Sync,
     event::kTerminateBroadcastReceivingReply, Form::kCommon},
    {command::kSelectChannel, 0, event::kSelectChannelReply, Form::kService},
    {command::kStartSearchChannel, 0, event::kStartSearchChannelReply, Form::kCommon},
    {command::kCancelSearchChannel, 0, event::kTerminateSearchChannelNotify, Form::kService},

    {command::kSetFirstComponent, 0, event::kSelectAudioComponentNotify, Form::kCommon},
    {command::kSetDisplayAll, 0, event::kSetDisplayAllReply, Form::kCommon},
    {command::kSetScreenDisplay, 0, event::kSetScreenDisplayReply, Form::kCommon},
    {command::kSetCapDisplay, 0, event::kSetCapDisplayReply, Form::kCommon},
    {command::kSetBMLDisplay, 0, event::kSetBmlDisplayReply, Form::kCommon},
    {command::kReleaseDisplay, 0, event::kReleaseDisplayReply, Form::kDisplay},
    {command::kControlDisplayModeReq, 0, event::kControlDisplayModeReply, Form::kCommon},
    {command::kControlScreenDisplay, 0, event::kControlScreenDisplayReply, Form::kCommon},
    {command::kControlDecodeScreen, command::kControlDecodeScreen_Sync,
     event::kControlDecodeScreenReply, Form::kCommon},
    {command::kChangeAudioComponent, 0, event::kChangeAudioComponentReply, Form::kCommon},
    {command::kChangeSoundDualMono, 0, event::kChangeSoundDualMonoReply, Form::kCommon},
    {command::kSetSoundVideoDelay, 0, event::kSetSoundVideoDelayReply, Form::kCommon},
    {command::kControlDecodeAudio, command::kControlDecodeAudio_Sync,
     event::kControlDecodeAudioReply, Form::kCommon},
    {command::kControlCap, command::kControlCap_Sync, event::kControlCapReply, Form::kCommon},
    {command::kChangeCapLang, 0, event::kChangeCapLangReply, Form::kCommon},
    {command::kControlLNA, 0, event::kControlLNAReply, Form::kCommon},
    {command::kSetTunerLog, 0, event::kSetTunerLogReply, Form::kCommon},
    {command::kGetTunerLogStatus, 0, event::kTunerLogStatusReply, Form::kTunerLog},

    {command::kControlBML, command::kControlBML_Sync, event::kControlBmlReply, Form::kCommon},
    {command::kBMLStartTvLinkReq, 0, event::kBmlStartTvlinkReply, Form::kTvLink},
    {command::kBMLEndTvLinkReq, command::kBMLEndTvLink_Sync, event::kBmlEndTvlinkReply,
     Form::kCommon},
    {command::kBMLRebootBrowserReq, 0, event::kBmlRebootBrowserReply, Form::kCommon},
    {command::kBMLKeyEventNotify, 0, 0, Form::kNone},
    {command::kBMLPermissionReply, 0, 0, Form::kNone},
    {command::kBMLAuthReply, 0, 0, Form::kNone},
    {command::kBMLWriteNvramReply, 0, 0, Form::kNone},
    {command::kBMLReadNvramReply, 0, 0, Form::kNone},
    {command::kBMLFepReply, 0, 0, Form::kNone},
    {command::kBMLMailReply, 0, 0, Form::kNone},
    {command::kBMLPhonebookReply, 0, 0, Form::kNone},
    {command::kBMLCallReply, 0, 0, Form::kNone},
    {command::kBMLScheduleReply, 0, 0, Form::kNone},
    {command::kBMLBrowserReply, 0, 0, Form::kNone},
    {command::kBMLSavePictureReply, 0, 0, Form::kNone},
    {command::kBMLStartTvlinkReply, 0, 0, Form::kNone},
    {command::kBMLEnrolTvlinkReply, 0, 0, Form::kNone},

    {command::kStartRec, 0, event::kStartRecReply, Form::kService},
    {command::kTerminateRec, command::kTerminateRec_Sync, event::kTerminateRecReply,
     Form::kRecording},
    {command::kStartPlay, 0, event::kStartPlayReply, Form::kCommon},
    {command::kChangePlaySpeed, 0, event::kChangePlaySpeedReply, Form::kCommon},
    {command::kPausePlay, 0, event::kPausePlayReply, Form::kCommon},
    {command::kReStartPlay, 0, event::kRestartPlayReply, Form::kCommon},
    {command::kSkipPlay, 0, event::kSkipPlayReply, Form::kCommon},
    {command::kFrameSlidePlay, 0, event::kFrameSlidePlayReply, Form::kCommon},
    {command::kTerminatePlay, command::kTerminatePlay_Sync, event::kTerminatePlayReply,
     Form::kCommon},
    {command::kMovePausePosition, 0, event::kMovePausePositionReply, Form::kCommon},
};

} // namespace

const CommandRow* findCommand(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.command_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

const CommandRow* findSynchronousCommand(int command_id) {
    for (const CommandRow& row : kCommands) {
        if (row.sync_id != 0 && row.sync_id == command_id) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace simulator
