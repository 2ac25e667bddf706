#include "handlers.h"

#include "receiver/browser.h"
#include "receiver/captions.h"
#include "receiver/player.h"
#include "receiver/presentation.h"
#include "receiver/recorder.h"
#include "receiver/tuner.h"
#include "records/message_ids.h"

namespace simulator {
namespace {

namespace command = command_id;

struct HandlerRow {
    int command_id;
    Handler handler;
};

constexpr HandlerRow kHandlers[] = {
    {command::kRelease, release},
    {command::kStartScan, startScan},
    {command::kCancelScan, cancelScan},
    {command::kStartBroadcastReceiving, startReceiving},
    {command::kTerminateBroadcastReceiving, terminateReceiving},
    {command::kSelectChannel, selectChannel},
    {command::kStartSearchChannel, startSearch},
    {command::kCancelSearchChannel, cancelSearch},

    {command::kSetFirstComponent, setFirstComponent},
    {command::kSetDisplayAll, setDisplayAll},
    {command::kSetScreenDisplay, setScreenDisplay},
    {command::kSetCapDisplay, setCapDisplay},
    {command::kSetBMLDisplay, setBmlDisplay},
    {command::kReleaseDisplay, releaseDisplay},
    {command::kControlDisplayModeReq, controlDisplayMode},
    {command::kControlScreenDisplay, controlScreenDisplay},
    {command::kControlDecodeScreen, controlDecode},
    {command::kChangeAudioComponent, changeAudioComponent},
    {command::kChangeSoundDualMono, changeSoundDualMono},
    {command::kSetSoundVideoDelay, setSoundVideoDelay},
    {command::kControlDecodeAudio, controlDecode},
    {command::kControlCap, controlCaptions},
    {command::kChangeCapLang, changeCaptionLanguage},
    {command::kControlLNA, controlLna},
    {command::kSetTunerLog, setTunerLog},
    {command::kGetTunerLogStatus, getTunerLogStatus},

    {command::kControlBML, controlBrowser},
    {command::kBMLStartTvLinkReq, startTvLink},
    {command::kBMLEndTvLinkReq, endTvLink},
    {command::kBMLRebootBrowserReq, rebootBrowser},
    {command::kBMLKeyEventNotify, keyEvent},
    {command::kBMLPermissionReply, answerPermission},
    {command::kBMLAuthReply, answerAuth},
    {command::kBMLWriteNvramReply, answerWriteNvram},
    {command::kBMLReadNvramReply, answerReadNvram},
    {command::kBMLFepReply, answerFep},
    {command::kBMLMailReply, answerMail},
    {command::kBMLPhonebookReply, answerPhonebook},
    {command::kBMLCallReply, answerCall},
    {command::kBMLScheduleReply, answerSchedule},
    {command::kBMLBrowserReply, answerBrowser},
    {command::kBMLSavePictureReply, answerSavePicture},
    {command::kBMLStartTvlinkReply, answerStartTvLink},
    {command::kBMLEnrolTvlinkReply, answerEnrolTvLink},

    {command::kStartRec, startRecording},
    {command::kTerminateRec, terminateRecording},
    {command::kStartPlay, startPlay},
    {command::kChangePlaySpeed, changePlaySpeed},
    {command::kPausePlay, pausePlay},
    {command::kReStartPlay, restartPlay},
    {command::kSkipPlay, skipPlay},
    {command::kFrameSlidePlay, frameSlidePlay},
    {command::kTerminatePlay, terminatePlay},
    {command::kMovePausePosition, movePausePosition},
};

} // namespace

Handler findHandler(int command_id) {
    for (const HandlerRow& row : kHandlers) {
        if (row.command_id == command_id) {
            return row.handler;
        }
    }
    return nullptr;
}

} // namespace simulator
