#include "commands/every_command.h"

namespace commands {

using namespace harness;

namespace {

void addPlanes(std::vector<EveryCommand>& all, jobject video, jobject caption, jobject bml) {
    jobject screen_place = screenInfo(video, 320, 180, 1, 2);
    jobject caption_place = capInfo(caption, 320, 60, 0, usualLayout());
    jobject bml_place = bmlInfo(bml, 240, 427, 2);
    jobject setting = newObject(
        "BG_TS_DTVSVLIB_COMPONENT_SETTING",
        "(IIIIILtype/BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO;Ltype/BG_TS_DTVSVLIB_CAP_DRAWING_INFO;"
        "Ltype/BG_TS_DTVSVLIB_BML_DRAWING_INFO;)V",
        {0, 0, 0, 0, 0, screen_place, caption_place, bml_place});
    jobject link = newObject("BG_TS_DTVSVLIB_BML_START_INFO",
                             {1, 2, newBytes({1, 2, 3, 4, 5, 6}), "http://x", bml_place});
    all.push_back({"SetFirstComponent", {3, setting}});
    all.push_back({"SetDisplayAll", {3, screen_place, caption_place, bml_place}});
    all.push_back({"SetScreenDisplay", {3, screen_place}});
    all.push_back({"SetCapDisplay", {3, caption_place}});
    all.push_back({"SetBMLDisplay", {3, bml_place}});
    for (const char* waits : {"", "_Sync"}) {
        all.push_back({std::string("ControlCap") + waits, {3, 0, 0, caption_place}});
        all.push_back({std::string("ControlBML") + waits, {3, 0, bml_place}});
    }
    all.push_back({"BMLStartTvLinkReq", {3, 0, link}});
}

void addStructured(std::vector<EveryCommand>& all) {
    jobject channel = newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2});
    all.push_back({"StartBroadcastReceiving", {3, channel}});
    all.push_back({"SelectChannel", {3, channel}});
    all.push_back({"StartSearchChannel", {3, channel, 1}});
    const char* on_off = "BG_TE_DTVSVLIB_ONOFF";
    jobject on = constant(on_off, "ON");
    jobject medium = constant("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD");
    jobject forward = constant("BG_TE_DTVSVLIB_PLAY_DIRECTION", "FORWARD");
    all.push_back({"BMLKeyEventNotify",
                   {3, newObject("BG_TS_DTVSVLIB_KEY_CODE_NOTIFY", "(IIII)V", {1, 0, 0, 0})}});
    all.push_back(
        {"BMLPermissionReply", {3, newObject("BG_TS_DTVSVLIB_PERMISSION_REPLY", "(II)V", {1, 7})}});
    all.push_back(
        {"BMLAuthReply",
         {3, newObject("BG_TS_DTVSVLIB_AUTH_REPLY", "(ILjava/lang/String;Ljava/lang/String;I)V",
                       {1, "pw", "me", 7})}});
    all.push_back({"BMLReadNvramReply",
                   {3, newObject("BG_TS_DTVSVLIB_READ_NVRAM_REPLY", "(ILjava/lang/String;[B)V",
                                 {0, "ts", newBytes({1, 2})})}});
    all.push_back({"BMLFepReply",
                   {3, newObject("BG_TS_DTVSVLIB_START_FEP_REPLY", "(IILjava/lang/String;)V",
                                 {0, 5, "hello"})}});
    all.push_back({"BMLSavePictureReply",
                   {3, newObject("BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY", {on, medium, on, "a.jpg"})}});
    jobject recording = newObject("BG_TS_DTVSVLIB_TERMINATE_REC_REQ", {on, 4, "News"});
    all.push_back({"TerminateRec", {3, recording}});
    all.push_back({"TerminateRec_Sync", {3, recording}});
    all.push_back(
        {"StartPlay", {3, newObject("BG_TS_DTVSVLIB_START_PLAY", {medium, 1, on, 2, on})}});
    all.push_back(
        {"ChangePlaySpeed", {3, newObject("BG_TS_DTVSVLIB_SPECIAL_PLAY", {forward, 2, 1})}});
    all.push_back({"SkipPlay", {3, newObject("BG_TS_DTVSVLIB_SKIP_PLAY", {forward, 15})}});
}

} // namespace

std::vector<EveryCommand> everyCommand(jobject video, jobject caption, jobject bml) {
    std::vector<EveryCommand> all;
    all.push_back({"Create", {0, 999}});
    all.push_back({"SetSoundVideoDelay", {3, 0, 0}});
    all.push_back({"ControlDisplayModeReq", {3, 0, 0}});
    all.push_back({"SetTunerLog", {3, 1}});
    for (const char* of_handle :
         {"Release", "StartScan", "CancelScan", "TerminateBroadcastReceiving",
          "CancelSearchChannel", "BMLEndTvLinkReq", "BMLRebootBrowserReq", "PausePlay",
          "ReStartPlay", "TerminatePlay", "GetTunerLogStatus", "Release_Sync", "CancelScan_Sync",
          "TerminateBroadcastReceiving_Sync", "BMLEndTvLink_Sync", "TerminatePlay_Sync"}) {
        all.push_back({of_handle, {3}});
    }
    for (const char* of_number : {"ReleaseDisplay",
                                  "ControlScreenDisplay",
                                  "ControlDecodeScreen",
                                  "ChangeAudioComponent",
                                  "ChangeSoundDualMono",
                                  "ControlDecodeAudio",
                                  "ChangeCapLang",
                                  "BMLWriteNvramReply",
                                  "BMLMailReply",
                                  "BMLPhonebookReply",
                                  "BMLCallReply",
                                  "BMLScheduleReply",
                                  "BMLBrowserReply",
                                  "BMLStartTvlinkReply",
                                  "BMLEnrolTvlinkReply",
                                  "StartRec",
                                  "FrameSlidePlay",
                                  "MovePausePosition",
                                  "ControlLNA",

                                  "ControlDecodeScreen_Sync",
                                  "ControlDecodeAudio_Sync"}) {
        all.push_back({of_number, {3, 0}});
    }
    addPlanes(all, video, caption, bml);
    addStructured(all);
    return all;
}

} // namespace commands
