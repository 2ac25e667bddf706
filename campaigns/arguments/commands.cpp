// In which order each native reads its arguments, what it refuses, and where it puts them.
#include "arguments/reading.h"

#include <functional>
#include <map>

namespace hostile {
namespace {

using Object = Reading::Object;

// ---- The planes.

void readScreen(Reading& call, const Object& info, size_t at) {
    call.putEnum(info, "screen_rotate", at + 4, 3);
    call.putEnum(info, "screen_mode", at + 5, 3);
    call.putInt(info, "surface_width", at, 2);
    call.putInt(info, "surface_height", at + 2, 2);
    call.takeSurface(info);
}

void readLayout(Reading& call, const Object& info, size_t at) {
    call.putInt(info, "font_size", at, 1);
    call.putInt(info, "characters_num", at + 1, 1);
    call.putInt(info, "lines_num", at + 2, 1);
    call.putInt(info, "separator_size", at + 3, 1);
    call.refuseIf(call.readInt(info, "position_x") < 0);
    call.putInt(info, "position_x", at + 4, 2);
    call.refuseIf(call.readInt(info, "position_y") < 0);
    call.putInt(info, "position_y", at + 6, 2);
    call.putEnum(info, "background_color", at + 8, 8);
    call.putEnum(info, "background_alpha", at + 9, 1);
}

void readCaption(Reading& call, const Object& info, size_t at) {
    call.putEnum(info, "screen_rotate", at + 4, 3);
    call.putInt(info, "surface_width", at, 2);
    call.putInt(info, "surface_height", at + 2, 2);
    readLayout(call, call.inner(info, "cap_info"), at + 6);
    call.takeSurface(info);
}

void readBml(Reading& call, const Object& info, size_t at) {
    call.putEnum(info, "screen_rotate", at + 4, 3);
    call.putInt(info, "surface_width", at, 2);
    call.putInt(info, "surface_height", at + 2, 2);
    call.takeSurface(info);
}

/// 255, or up to 4.
void readControlType(Reading& call, size_t index, size_t at) {
    const int type = call.argument(index).number;
    call.refuseIf(type != 255 && type > 4);
    call.put(at, 1, type);
}

// ---- The commands.

void create(Reading& call) {
    call.begin({0x10000000, 4}, false);
    call.number(0, 0, 1, 4);
    call.number(1, 2, 2, 999);
}

void delay(Reading& call) {
    call.begin({0x10000015, 6});
    call.number(1, 2, 2, call.delayBound());
    const auto audio = static_cast<int16_t>(call.argument(2).number);
    call.refuseIf(audio > call.delayBound());
    call.put(4, 2, audio);
}

void displayMode(Reading& call) {
    call.begin({0x10000010, 4});
    call.number(1, 2, 1, 3);
    call.number(2, 3, 1, 3);
}

void lna(Reading& call) {
    call.begin({0x1000001a, 4});
    const int mode = call.argument(1).number;
    call.refuseIf(mode != 0 && mode != 16 && mode != 17);
    call.put(2, 1, mode);
}

void tunerLog(Reading& call) {
    call.begin({0x1000001b, 4});
    const int log = call.argument(1).number;
    call.refuseIf(log != 1 && log != 2);
    call.put(2, 1, log);
}

void broadcast(Reading& call, MessageOf message) {
    call.begin(message);
    const Object info = call.object(1);
    call.refuseIf(call.readInt(info, "physical_channel") > 62);
    call.putInt(info, "physical_channel", 4, 4);
    call.refuseIf(call.readInt(info, "service_no") > 2);
    call.putInt(info, "service_no", 8, 2);
    if (message.size == 16) {
        call.number(2, 12, 1);
    }
}

void firstComponent(Reading& call) {
    call.begin({0x1000000a, 36});
    const Object setting = call.object(1);
    call.putEnum(setting, "audio_component", 4);
    call.putEnum(setting, "cap_lang", 2);
    call.putEnum(setting, "dualmono", 3);
    call.putEnum(setting, "cap_start_type", 5, 1);
    call.putEnum(setting, "bml_start_type", 6, 1);
    readScreen(call, call.inner(setting, "video_drawing_info"), 8);
    readCaption(call, call.inner(setting, "cap_drawing_info"), 14);
    readBml(call, call.inner(setting, "bml_drawing_info"), 30);
}

void displayAll(Reading& call) {
    call.begin({0x1000000b, 30});
    readScreen(call, call.object(1), 2);
    readCaption(call, call.object(2), 8);
    readBml(call, call.object(3), 24);
}

void controlCap(Reading& call, int id) {
    call.begin({id, 20});
    const Object info = call.object(3);
    readControlType(call, 1, 2);
    call.number(2, 3, 1, 8);
    readCaption(call, info, 4);
}

void controlBml(Reading& call, int id) {
    call.begin({id, 10});
    const Object info = call.object(2);
    readControlType(call, 1, 2);
    readBml(call, info, 4);
}

void startTvLink(Reading& call) {
    call.begin({0x1000001d, 280});
    const Object info = call.object(2);
    readControlType(call, 1, 2);
    readBml(call, call.inner(info, "drawing_info"), 274);
    call.putInt(info, "network_id", 4, 2);
    call.putInt(info, "service_id", 6, 2);
    call.putBytes(info, "affiliation_id", 8, 6);
    call.putText(info, "bookmark_url", 14, 260, 260);
}

void keyEvent(Reading& call) {
    call.begin({0x1000001f, 8});
    const Object key = call.object(1);
    call.putEnum(key, "key_code", 2);
    call.putEnum(key, "key_type", 3);
    call.putInt(key, "touch_x", 4, 2);
    call.putInt(key, "touch_y", 6, 2);
}

void permission(Reading& call) {
    call.begin({0x10000020, 12});
    const Object reply = call.object(1);
    call.putInt(reply, "task_id", 8, 4);
    call.putEnum(reply, "select_type", 4);
}

void authentication(Reading& call) {
    call.begin({0x10000021, 404});
    const Object reply = call.object(1);
    call.putText(reply, "pass", 5, 260, 260);
    call.putText(reply, "user", 265, 132, 132);
    call.putInt(reply, "task_id", 400, 4);
    call.putEnum(reply, "select_type", 4);
}

void readNvram(Reading& call) {
    call.begin({0x10000023, 112});
    const Object reply = call.object(1);
    call.putEnum(reply, "bml_end_type", 2);
    // A longer name is cut.
    call.putText(reply, "ts_name", 3, 44, SIZE_MAX);
    call.putBytes(reply, "nvram_data", 47, 64);
}

void fep(Reading& call) {
    call.begin({0x10000024, 1936});
    const Object reply = call.object(1);
    call.putText(reply, "data", 12, 1924, 1924);
    const int size = call.readInt(reply, "data_size");
    call.put(8, 4, size);
    // What cannot be read is no refusal here.
    call.put(4, 1, size);
    if (!call.stopped() && call.canRead(reply, "end_type")) {
        call.putEnum(reply, "end_type", 4);
    }
}

void savePicture(Reading& call) {
    call.begin({0x1000002a, 786});
    const Object reply = call.object(1);
    call.putEnum(reply, "save_flag", 2);
    call.putEnum(reply, "medium", 3);
    call.putEnum(reply, "change_filename", 4);
    call.putText(reply, "filename", 6, 780, 779);
}

void terminateRec(Reading& call, int id) {
    call.begin({id, 202});
    const Object request = call.object(1);
    call.putEnum(request, "save_data", 2);
    call.requireField(request, "title_size");
    const std::string title = call.readText(request, "title_name");
    call.putText(request, "title_name", 6, 196, 196);
    call.put(4, 2, static_cast<int>(title.size()));
}

void startPlay(Reading& call) {
    call.begin({0x10000030, 12});
    const Object play = call.object(1);
    call.putEnum(play, "medium", 2);
    call.putEnum(play, "resume", 6);
    call.putEnum(play, "pause", 10);
    call.putInt(play, "program_number", 4, 2);
    call.putInt(play, "interval", 8, 2);
}

void playSpeed(Reading& call) {
    call.begin({0x10000031, 8});
    const Object play = call.object(1);
    call.putEnum(play, "direction", 2);
    const int numerator = call.readInt(play, "numerator");
    const int denominator = call.readInt(play, "denominator");
    call.refuseIf(numerator < 0 || denominator <= 0);
    const bool whole = denominator > 0 && numerator % denominator == 0;
    const int speed = whole ? numerator / denominator : 0;
    call.refuseIf(speed != 2 && speed != 10 && speed != 30 && speed != 120);
    call.put(4, 2, numerator);
    call.put(6, 2, denominator);
}

void skipPlay(Reading& call) {
    call.begin({0x10000034, 12});
    const Object play = call.object(1);
    call.putEnum(play, "direction", 4);
    call.putInt(play, "skipsec", 8, 4);
}

using Read = std::function<void(Reading&)>;

Read session(int id) {
    return [id](Reading& call) { call.begin({id, 2}); };
}
/// One more int, as a byte.
Read oneValue(int id, int highest) {
    return [id, highest](Reading& call) {
        call.begin({id, 4});
        call.number(1, 2, 1, highest);
    };
}
template <typename Plane>
Read onePlane(int id, size_t size, Plane plane) {
    return [id, size, plane](Reading& call) {
        call.begin({id, size});
        plane(call, call.object(1), 2);
    };
}

const std::map<std::string, Read>& reads() {
    static const auto& all = *new std::map<std::string, Read>{
        {"Create", create},
        {"Release", session(0x10000001)},
        {"StartScan", session(0x10000002)},
        {"CancelScan", session(0x10000003)},
        {"StartBroadcastReceiving",
         [](Reading& call) {
             broadcast(call, {0x10000004, 12});
         }},
        {"TerminateBroadcastReceiving", session(0x10000005)},
        {"SelectChannel",
         [](Reading& call) {
             broadcast(call, {0x10000006, 12});
         }},
        {"StartSearchChannel",
         [](Reading& call) {
             broadcast(call, {0x10000007, 16});
         }},
        {"CancelSearchChannel", session(0x10000009)},
        {"SetFirstComponent", firstComponent},
        {"SetDisplayAll", displayAll},
        {"SetScreenDisplay", onePlane(0x1000000c, 8, readScreen)},
        {"SetCapDisplay", onePlane(0x1000000d, 18, readCaption)},
        {"SetBMLDisplay", onePlane(0x1000000e, 8, readBml)},
        {"ReleaseDisplay", oneValue(0x1000000f, 2)},
        {"ControlDisplayModeReq", displayMode},
        {"ControlScreenDisplay", oneValue(0x10000011, 1)},
        {"ControlDecodeScreen", oneValue(0x10000012, 1)},
        {"ChangeAudioComponent", oneValue(0x10000013, 1)},
        {"ChangeSoundDualMono", oneValue(0x10000014, 4)},
        {"SetSoundVideoDelay", delay},
        {"ControlDecodeAudio", oneValue(0x10000016, 1)},
        {"ControlCap", [](Reading& call) { controlCap(call, 0x10000017); }},
        {"ControlBML", [](Reading& call) { controlBml(call, 0x10000018); }},
        {"ChangeCapLang", oneValue(0x10000019, 8)},
        {"ControlLNA", lna},
        {"SetTunerLog", tunerLog},
        {"GetTunerLogStatus", session(0x1000001c)},
        {"BMLStartTvLinkReq", startTvLink},
        {"BMLEndTvLinkReq", session(0x1000001e)},
        {"BMLKeyEventNotify", keyEvent},
        {"BMLPermissionReply", permission},
        {"BMLAuthReply", authentication},
        {"BMLWriteNvramReply", oneValue(0x10000022, INT_MAX)},
        {"BMLReadNvramReply", readNvram},
        {"BMLFepReply", fep},
        {"BMLMailReply", oneValue(0x10000025, 1)},
        {"BMLPhonebookReply", oneValue(0x10000026, 1)},
        {"BMLCallReply", oneValue(0x10000027, 1)},
        {"BMLScheduleReply", oneValue(0x10000028, 1)},
        {"BMLBrowserReply", oneValue(0x10000029, 1)},
        {"BMLSavePictureReply", savePicture},
        {"BMLStartTvlinkReply", oneValue(0x1000002b, 1)},
        {"BMLEnrolTvlinkReply", oneValue(0x1000002c, 1)},
        {"BMLRebootBrowserReq", session(0x1000002d)},
        {"StartRec", oneValue(0x1000002e, 1)},
        {"TerminateRec", [](Reading& call) { terminateRec(call, 0x1000002f); }},
        {"StartPlay", startPlay},
        {"ChangePlaySpeed", playSpeed},
        {"PausePlay", session(0x10000032)},
        {"ReStartPlay", session(0x10000033)},
        {"SkipPlay", skipPlay},
        {"FrameSlidePlay", oneValue(0x10000035, 1)},
        {"TerminatePlay", session(0x10000036)},
        {"MovePausePosition", oneValue(0x10000037, 1)},
        {"Release_Sync", session(0x10000038)},
        {"CancelScan_Sync", session(0x10000039)},
        {"TerminateBroadcastReceiving_Sync", session(0x1000003a)},
        {"ControlDecodeScreen_Sync", oneValue(0x1000003b, 1)},
        {"ControlDecodeAudio_Sync", oneValue(0x1000003c, 1)},
        {"ControlCap_Sync", [](Reading& call) { controlCap(call, 0x1000003d); }},
        {"ControlBML_Sync", [](Reading& call) { controlBml(call, 0x1000003e); }},
        {"BMLEndTvLink_Sync", session(0x1000003f)},
        {"TerminateRec_Sync", [](Reading& call) { terminateRec(call, 0x10000040); }},
        {"TerminatePlay_Sync", session(0x10000041)},
    };
    return all;
}

} // namespace

bool readCommand(const std::string& native, Reading& call) {
    const auto found = reads().find(native);
    if (found == reads().end()) {
        return false;
    }
    found->second(call);
    return true;
}

} // namespace hostile
