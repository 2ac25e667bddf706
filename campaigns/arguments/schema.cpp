#include "arguments/schema.h"

#include <cstdio>
#include <cstdlib>

namespace hostile {
namespace {

FieldSpec anInt(const char* name, int usual) {
    return {name, Kind::kInt, usual, "", "", 0, nullptr};
}
FieldSpec anEnum(const char* name, const char* type, const char* getter) {
    return {name, Kind::kEnum, 1, type, getter, 0, nullptr};
}
FieldSpec aText(const char* name, int limit) {
    return {name, Kind::kText, 0, "", "", limit, nullptr};
}
FieldSpec someBytes(const char* name, int limit) {
    return {name, Kind::kBytes, 0, "", "", limit, nullptr};
}
FieldSpec aSurface() {
    return {"surface_handle", Kind::kSurface, 0, "", "", 0, nullptr};
}
FieldSpec anObject(const char* name, const ClassSpec& of) {
    return {name, Kind::kObject, 0, "", "", 0, &of};
}
FieldSpec aRotation() {
    return anEnum("screen_rotate", "SCREEN_ROTATE", "getScreenRotateValue");
}
FieldSpec aSwitch(const char* name) {
    return anEnum(name, "ONOFF", "getOnOffValue");
}

const ClassSpec kBroadcast = {"BROADCAST_INFO",
                              {anInt("physical_channel", 13), anInt("service_no", 1)}};
const ClassSpec kScreen = {"SCREEN_DRAWING_INFO",
                           {aSurface(), anInt("surface_width", 320), anInt("surface_height", 180),
                            aRotation(),
                            anEnum("screen_mode", "SCREEN_MODE", "getScreenModeValue")}};
const ClassSpec kLayout = {
    "CAP_DISPLAY_INFO",
    {anInt("font_size", 20), anInt("characters_num", 12), anInt("lines_num", 4),
     anInt("separator_size", 2), anInt("position_x", 33), anInt("position_y", 44),
     anEnum("background_color", "BACKGROUND_COLOR", "getBackgroundColorValue"),
     aSwitch("background_alpha")}};
const ClassSpec kCaption = {"CAP_DRAWING_INFO",
                            {aSurface(), anInt("surface_width", 320), anInt("surface_height", 60),
                             aRotation(), anObject("cap_info", kLayout)}};
const ClassSpec kBml = {
    "BML_DRAWING_INFO",
    {aSurface(), anInt("surface_width", 240), anInt("surface_height", 427), aRotation()}};
const ClassSpec kComponents = {
    "COMPONENT_SETTING",
    {anEnum("audio_component", "AUDIO_COMPONENT", "getAudioComponentValue"),
     anEnum("cap_lang", "CAP_LANG", "getCapLangValue"),
     anEnum("dualmono", "DUALMONO", "getDualMonoValue"),
     anEnum("cap_start_type", "CONTROL_TYPE", "getControlTypeValue"),
     anEnum("bml_start_type", "CONTROL_TYPE", "getControlTypeValue"),
     anObject("video_drawing_info", kScreen), anObject("cap_drawing_info", kCaption),
     anObject("bml_drawing_info", kBml)}};
const ClassSpec kStartPlay = {"START_PLAY",
                              {anEnum("medium", "RECORDING_MEDIUM", "getMediumValue"),
                               anInt("program_number", 7), aSwitch("resume"), anInt("interval", 5),
                               aSwitch("pause")}};
const FieldSpec kDirection = anEnum("direction", "PLAY_DIRECTION", "getDirectionValue");
const ClassSpec kSpecialPlay = {"SPECIAL_PLAY",
                                {kDirection, anInt("numerator", 20), anInt("denominator", 2)}};
const ClassSpec kSkipPlay = {"SKIP_PLAY", {kDirection, anInt("skipsec", 15)}};
const ClassSpec kTerminateRec = {
    "TERMINATE_REC_REQ", {aSwitch("save_data"), anInt("title_size", 4), aText("title_name", 196)}};
const ClassSpec kKey = {"KEY_CODE_NOTIFY",
                        {anEnum("key_code", "KEYCODE", "getKeyValue"),
                         anEnum("key_type", "KEY_EVENT_TYPE", "getKeyEventValue"),
                         anInt("touch_x", 10), anInt("touch_y", 20)}};
const ClassSpec kPermission = {
    "PERMISSION_REPLY",
    {anEnum("select_type", "PERMISSION_SELECT_TYPE", "getPermissionValue"), anInt("task_id", 7)}};
const ClassSpec kAuth = {"AUTH_REPLY",
                         {anEnum("select_type", "AUTH_SELECT_TYPE", "getAuthSelectTypeValue"),
                          aText("pass", 260), aText("user", 132), anInt("task_id", 7)}};
const ClassSpec kPicture = {"SAVE_PICTURE_REPLY",
                            {aSwitch("save_flag"),
                             anEnum("medium", "RECORDING_MEDIUM", "getMediumValue"),
                             aSwitch("change_filename"), aText("filename", 779)}};
const ClassSpec kFep = {"START_FEP_REPLY",
                        {anEnum("end_type", "FEP_END_TYPE", "getFepEndValue"),
                         anInt("data_size", 0x1234), aText("data", 1924)}};
const ClassSpec kNvram = {"READ_NVRAM_REPLY",
                          {anEnum("bml_end_type", "BML_END_TYPE", "getBmlEndValue"),
                           aText("ts_name", 44), someBytes("nvram_data", 64)}};
const ClassSpec kStartInfo = {"BML_START_INFO",
                              {anInt("network_id", 1), anInt("service_id", 2),
                               someBytes("affiliation_id", 6), aText("bookmark_url", 260),
                               anObject("drawing_info", kBml)}};

using Parameter = NativeSpec::Parameter;
const Parameter kSession = {3, nullptr};

Parameter number(int usual = 0) {
    return {usual, nullptr};
}
Parameter object(const ClassSpec& of) {
    return {0, &of};
}

NativeSpec native(const char* name, std::vector<Parameter> more = {}) {
    more.insert(more.begin(), kSession);
    return {name, std::move(more), "BG_TE_DTVSVLIB_RESULT"};
}
NativeSpec synchronous(const char* name, const std::string& answer,
                       std::vector<Parameter> more = {}) {
    more.insert(more.begin(), kSession);
    return {name, std::move(more), "BG_TS_DTVSVLIB_" + answer + "_SYNC_INFO"};
}

std::vector<NativeSpec> makeNatives() {
    return {
        {"Create", {number(), number(500)}, "BG_TE_DTVSVLIB_RESULT"},
        native("Release"),
        native("StartScan"),
        native("CancelScan"),
        native("StartBroadcastReceiving", {object(kBroadcast)}),
        native("TerminateBroadcastReceiving"),
        native("SelectChannel", {object(kBroadcast)}),
        native("StartSearchChannel", {object(kBroadcast), number()}),
        native("CancelSearchChannel"),
        native("SetFirstComponent", {object(kComponents)}),
        native("SetDisplayAll", {object(kScreen), object(kCaption), object(kBml)}),
        native("SetScreenDisplay", {object(kScreen)}),
        native("SetCapDisplay", {object(kCaption)}),
        native("SetBMLDisplay", {object(kBml)}),
        native("ReleaseDisplay", {number()}),
        native("ControlDisplayModeReq", {number(), number()}),
        native("ControlScreenDisplay", {number()}),
        native("ControlDecodeScreen", {number()}),
        native("ChangeAudioComponent", {number()}),
        native("ChangeSoundDualMono", {number()}),
        native("SetSoundVideoDelay", {number(), number()}),
        native("ControlDecodeAudio", {number()}),
        native("ControlCap", {number(), number(), object(kCaption)}),
        native("ControlBML", {number(), object(kBml)}),
        native("ChangeCapLang", {number()}),
        native("BMLStartTvLinkReq", {number(), object(kStartInfo)}),
        native("BMLEndTvLinkReq"),
        native("BMLKeyEventNotify", {object(kKey)}),
        native("BMLPermissionReply", {object(kPermission)}),
        native("BMLAuthReply", {object(kAuth)}),
        native("BMLWriteNvramReply", {number()}),
        native("BMLReadNvramReply", {object(kNvram)}),
        native("BMLFepReply", {object(kFep)}),
        native("BMLMailReply", {number()}),
        native("BMLPhonebookReply", {number()}),
        native("BMLCallReply", {number()}),
        native("BMLScheduleReply", {number()}),
        native("BMLBrowserReply", {number()}),
        native("BMLSavePictureReply", {object(kPicture)}),
        native("BMLStartTvlinkReply", {number()}),
        native("BMLEnrolTvlinkReply", {number()}),
        native("BMLRebootBrowserReq"),
        native("StartRec", {number()}),
        native("TerminateRec", {object(kTerminateRec)}),
        native("StartPlay", {object(kStartPlay)}),
        native("ChangePlaySpeed", {object(kSpecialPlay)}),
        native("PausePlay"),
        native("ReStartPlay"),
        native("SkipPlay", {object(kSkipPlay)}),
        native("FrameSlidePlay", {number()}),
        native("TerminatePlay"),
        native("MovePausePosition", {number()}),
        native("ControlLNA", {number(16)}),
        native("SetTunerLog", {number(1)}),
        native("GetTunerLogStatus"),
        synchronous("Release_Sync", "RELEASE_REPLY"),
        synchronous("CancelScan_Sync", "CANCEL_SCAN"),
        synchronous("TerminateBroadcastReceiving_Sync", "TERMINATE_BROADCAST_RECEIVING_REPLY"),
        synchronous("ControlDecodeScreen_Sync", "CONTROL_DECODE_SCREEN", {number()}),
        synchronous("ControlDecodeAudio_Sync", "CONTROL_DECODE_AUDIO", {number()}),
        synchronous("ControlCap_Sync", "CONTROL_CAP", {number(), number(), object(kCaption)}),
        synchronous("ControlBML_Sync", "CONTROL_BML", {number(), object(kBml)}),
        synchronous("BMLEndTvLink_Sync", "END_TVLINK"),
        synchronous("TerminateRec_Sync", "TERMINATE_REC", {object(kTerminateRec)}),
        synchronous("TerminatePlay_Sync", "TERMINATE_PLAY_REPLY"),
    };
}

} // namespace

size_t ClassSpec::indexOf(const std::string& field) const {
    for (size_t i = 0; i < fields.size(); ++i) {
        if (field == fields[i].name) {
            return i;
        }
    }
    std::fprintf(stderr, "%s has no field %s\n", name, field.c_str());
    std::abort();
}

std::string NativeSpec::descriptor() const {
    std::string text = "(";
    for (const Parameter& parameter : parameters) {
        text += parameter.of == nullptr ? "I" : "L" + parameter.of->path() + ";";
    }
    return text + ")Ltenrik/service/dtvserver/type/" + answer + ";";
}

const std::vector<NativeSpec>& natives() {
    static const std::vector<NativeSpec>& all = *new std::vector<NativeSpec>(makeNatives());
    return all;
}

std::string descriptorOf(const FieldSpec& field) {
    switch (field.kind) {
    case Kind::kInt:
        return "I";
    case Kind::kEnum:
        return std::string("Ltenrik/service/dtvserver/type/BG_TE_DTVSVLIB_") + field.type + ";";
    case Kind::kText:
        return "Ljava/lang/String;";
    case Kind::kBytes:
        return "[B";
    case Kind::kSurface:
        return "Landroid/view/Surface;";
    case Kind::kObject:
        return "L" + field.of->path() + ";";
    }
    return "";
}

} // namespace hostile
