// Commands of one or two plain numbers: display, decoding, sound, captions and the tuner.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

const Sent display[] = {
    Sent("DtvSvLib_ReleaseDisplay", {3, 2}, "dtvSvLibReleaseDisplay", "hdl = 3",
         {"SEND, dtvsv_handle = 3, drawing_destination = 2"}, "1000000f: 03 00 02 00"),
    Sent("DtvSvLib_ReleaseDisplay", {65540, -1}, "dtvSvLibReleaseDisplay", "hdl = 65540",
         {"SEND, dtvsv_handle = 4, drawing_destination = 255"}, "1000000f: 04 00 ff 00"),
    Sent("DtvSvLib_ReleaseDisplay", {5, lowest}, "dtvSvLibReleaseDisplay", "hdl = 5",
         {"SEND, dtvsv_handle = 5, drawing_destination = 0"}, "1000000f: 05 00 00 00"),
    Sent("DtvSvLib_ControlDisplayModeReq", {3, 3, 3}, "dtvSvLibControlDisplayModeReq", "hdl = 3",
         {"SEND, dtvsv_handle = 3, screen_mode = 3"}, "10000010: 03 00 03 03"),
    Sent("DtvSvLib_ControlDisplayModeReq", {4660, 1, 2}, "dtvSvLibControlDisplayModeReq",
         "hdl = 4660", {"SEND, dtvsv_handle = 4660, screen_mode = 1"}, "10000010: 34 12 01 02"),
    Sent("DtvSvLib_ControlDisplayModeReq", {-1, -2, -3}, "dtvSvLibControlDisplayModeReq",
         "hdl = -1", {"SEND, dtvsv_handle = 65535, screen_mode = 254"}, "10000010: ff ff fe fd"),
    // This one is marked as the end of a playback in the trace.
    Sent("DtvSvLib_ControlScreenDisplay", {3, 1}, "dtvSvLibControlScreenDisplay", "hdl = 3",
         {"SEND, TERMINATE_PLAY : dtvsv_handle = 3"}, "10000011: 03 00 01 00"),
    Sent("DtvSvLib_ControlScreenDisplay", {65536, 0}, "dtvSvLibControlScreenDisplay", "hdl = 65536",
         {"SEND, TERMINATE_PLAY : dtvsv_handle = 0"}, "10000011: 00 00 00 00"),
    Sent("DtvSvLib_ControlScreenDisplay", {3, -1}, "dtvSvLibControlScreenDisplay", "hdl = 3",
         {"SEND, TERMINATE_PLAY : dtvsv_handle = 3"}, "10000011: 03 00 ff 00"),
    Sent("DtvSvLib_ControlDecodeScreen", {3, 1}, "dtvSvLibControlDecodeScreen", "hdl = 3",
         {"SEND, CONTROL_DECODE_SCREEN : dtvsv_handle = 3, onoff = 1"}, "10000012: 03 00 01 00"),
    Sent("DtvSvLib_ControlDecodeScreen", {65538, -255}, "dtvSvLibControlDecodeScreen",
         "hdl = 65538", {"SEND, CONTROL_DECODE_SCREEN : dtvsv_handle = 2, onoff = 1"},
         "10000012: 02 00 01 00")};
INSTANTIATE_TEST_SUITE_P(Display, SentCommands, testing::ValuesIn(display), rowName<Sent>);

const Refused refused_display[] = {
    Refused("DtvSvLib_ReleaseDisplay", {3, 3}, "dtvSvLibReleaseDisplay", "hdl = 3",
            "drawing_destination is too large : 3, ret = 5"),
    Refused("DtvSvLib_ReleaseDisplay", {3, highest}, "dtvSvLibReleaseDisplay", "hdl = 3",
            "drawing_destination is too large : 2147483647, ret = 5"),
    Refused("DtvSvLib_ControlDisplayModeReq", {3, 4, 0}, "dtvSvLibControlDisplayModeReq", "hdl = 3",
            "screen_mode is too large : 4, ret = 5"),
    Refused("DtvSvLib_ControlDisplayModeReq", {3, 0, 4}, "dtvSvLibControlDisplayModeReq", "hdl = 3",
            "screen_rotate is too large : 4, ret = 5"),
    Refused("DtvSvLib_ControlDisplayModeReq", {3, 256, 257}, "dtvSvLibControlDisplayModeReq",
            "hdl = 3", "screen_mode is too large : 256, ret = 5"),
    Refused("DtvSvLib_ControlDisplayModeReq", {65539, -1, highest}, "dtvSvLibControlDisplayModeReq",
            "hdl = 65539", "screen_rotate is too large : 2147483647, ret = 5"),
    Refused("DtvSvLib_ControlScreenDisplay", {3, 2}, "dtvSvLibControlScreenDisplay", "hdl = 3",
            "onoff too large : 2, ret = 5"),
    Refused("DtvSvLib_ControlScreenDisplay", {3, 257}, "dtvSvLibControlScreenDisplay", "hdl = 3",
            "onoff too large : 257, ret = 5"),
    Refused("DtvSvLib_ControlDecodeScreen", {3, 2}, "dtvSvLibControlDecodeScreen", "hdl = 3",
            "onoff too large : 2, ret = 5"),
    Refused("DtvSvLib_ControlDecodeScreen", {-3, highest}, "dtvSvLibControlDecodeScreen",
            "hdl = -3", "onoff too large : 2147483647, ret = 5")};
INSTANTIATE_TEST_SUITE_P(Display, RefusedCommands, testing::ValuesIn(refused_display),
                         rowName<Refused>);

const Sent sound[] = {
    Sent("DtvSvLib_ChangeAudioComponent", {3, 1}, "dtvSvLibChangeAudioComponent", "hdl = 3",
         {"SEND, dtvsv_handle = 3, audio_component = 1"}, "10000013: 03 00 01 00"),
    Sent("DtvSvLib_ChangeAudioComponent", {65541, -2}, "dtvSvLibChangeAudioComponent",
         "hdl = 65541", {"SEND, dtvsv_handle = 5, audio_component = 254"}, "10000013: 05 00 fe 00"),
    Sent("DtvSvLib_ChangeSoundDualMono", {3, 4}, "dtvSvLibChangeSoundDualMono", "hdl = 3",
         {"SEND, dtvsv_handle = 3, dualmono = 4"}, "10000014: 03 00 04 00"),
    Sent("DtvSvLib_ChangeSoundDualMono", {65542, -3}, "dtvSvLibChangeSoundDualMono", "hdl = 65542",
         {"SEND, dtvsv_handle = 6, dualmono = 253"}, "10000014: 06 00 fd 00"),
    Sent("DtvSvLib_ControlDecodeAudio", {3, 1}, "dtvSvLibControlDecodeAudio", "hdl = 3",
         {"SEND, CONTROL_DECODE_AUDIO : dtvsv_handle = 3, onoff = 1"}, "10000016: 03 00 01 00"),
    Sent("DtvSvLib_ControlDecodeAudio", {65543, -128}, "dtvSvLibControlDecodeAudio", "hdl = 65543",
         {"SEND, CONTROL_DECODE_AUDIO : dtvsv_handle = 7, onoff = 128"}, "10000016: 07 00 80 00"),
    Sent("DtvSvLib_ChangeCapLang", {3, 8}, "dtvSvLibChangeCapLang", "hdl = 3",
         {"SEND, dtvsv_handle = 3, cap_lang = 8"}, "10000019: 03 00 08 00"),
    Sent("DtvSvLib_ChangeCapLang", {65544, -1}, "dtvSvLibChangeCapLang", "hdl = 65544",
         {"SEND, dtvsv_handle = 8, cap_lang = 255"}, "10000019: 08 00 ff 00")};
INSTANTIATE_TEST_SUITE_P(Sound, SentCommands, testing::ValuesIn(sound), rowName<Sent>);

const Refused refused_sound[] = {
    Refused("DtvSvLib_ChangeAudioComponent", {3, 2}, "dtvSvLibChangeAudioComponent", "hdl = 3",
            "audio_component is too large : 2, ret = 5"),
    Refused("DtvSvLib_ChangeAudioComponent", {3, 256}, "dtvSvLibChangeAudioComponent", "hdl = 3",
            "audio_component is too large : 256, ret = 5"),
    Refused("DtvSvLib_ChangeSoundDualMono", {3, 5}, "dtvSvLibChangeSoundDualMono", "hdl = 3",
            "dualmono is too large : 5, ret = 5"),
    Refused("DtvSvLib_ChangeSoundDualMono", {3, highest}, "dtvSvLibChangeSoundDualMono", "hdl = 3",
            "dualmono is too large : 2147483647, ret = 5"),
    Refused("DtvSvLib_ControlDecodeAudio", {3, 2}, "dtvSvLibControlDecodeAudio", "hdl = 3",
            "onoff too large : 2, ret = 5"),
    Refused("DtvSvLib_ControlDecodeAudio", {65539, 65536}, "dtvSvLibControlDecodeAudio",
            "hdl = 65539", "onoff too large : 65536, ret = 5"),
    Refused("DtvSvLib_ChangeCapLang", {3, 9}, "dtvSvLibChangeCapLang", "hdl = 3",
            "cap_lang is too large : 9, ret = 5"),
    Refused("DtvSvLib_ChangeCapLang", {3, 264}, "dtvSvLibChangeCapLang", "hdl = 3",
            "cap_lang is too large : 264, ret = 5")};
INSTANTIATE_TEST_SUITE_P(Sound, RefusedCommands, testing::ValuesIn(refused_sound),
                         rowName<Refused>);

const Sent tuner[] = {
    Sent("DtvSvLib_ControlLNA", {3, 0}, "dtvSvLibControlLNA", "hdl = 3",
         {"SEND, LNA_MODE : dtvsv_handle = 3, lna_mode = 0"}, "1000001a: 03 00 00 00"),
    Sent("DtvSvLib_ControlLNA", {4660, 16}, "dtvSvLibControlLNA", "hdl = 4660",
         {"SEND, LNA_MODE : dtvsv_handle = 4660, lna_mode = 16"}, "1000001a: 34 12 10 00"),
    Sent("DtvSvLib_ControlLNA", {65545, 17}, "dtvSvLibControlLNA", "hdl = 65545",
         {"SEND, LNA_MODE : dtvsv_handle = 9, lna_mode = 17"}, "1000001a: 09 00 11 00"),
    Sent("DtvSvLib_SetTunerLog", {3, 1}, "dtvSvLibSetTunerLog", "hdl = 3",
         {"SEND, TUNER_LOG : dtvsv_handle = 3, set_log = 1"}, "1000001b: 03 00 01 00"),
    Sent("DtvSvLib_SetTunerLog", {65546, 2}, "dtvSvLibSetTunerLog", "hdl = 65546",
         {"SEND, TUNER_LOG : dtvsv_handle = 10, set_log = 2"}, "1000001b: 0a 00 02 00"),
    Sent("DtvSvLib_GetTunerLogStatus", {3}, "dtvSvLibGetTunerLogStatus", "hdl = 3",
         {"SEND, TUNER_LOG_STATUS : dtvsv_handle = 3"}, "1000001c: 03 00"),
    Sent("DtvSvLib_GetTunerLogStatus", {65547}, "dtvSvLibGetTunerLogStatus", "hdl = 65547",
         {"SEND, TUNER_LOG_STATUS : dtvsv_handle = 11"}, "1000001c: 0b 00")};
INSTANTIATE_TEST_SUITE_P(Tuner, SentCommands, testing::ValuesIn(tuner), rowName<Sent>);

// Values that are listed, not bounded: a value between them or with the same low byte is refused.
const Refused refused_tuner[] = {
    Refused("DtvSvLib_ControlLNA", {3, 1}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = 1"),
    Refused("DtvSvLib_ControlLNA", {3, 15}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = 15"),
    Refused("DtvSvLib_ControlLNA", {3, 18}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = 18"),
    Refused("DtvSvLib_ControlLNA", {3, -1}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = -1"),
    Refused("DtvSvLib_ControlLNA", {3, 256}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = 256"),
    Refused("DtvSvLib_ControlLNA", {3, 272}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = 272"),
    Refused("DtvSvLib_ControlLNA", {3, lowest}, "dtvSvLibControlLNA", "hdl = 3",
            "lna_mode is over, lna_mode = -2147483648"),
    Refused("DtvSvLib_ControlLNA", {65539, highest}, "dtvSvLibControlLNA", "hdl = 65539",
            "lna_mode is over, lna_mode = 2147483647"),
    Refused("DtvSvLib_SetTunerLog", {3, 0}, "dtvSvLibSetTunerLog", "hdl = 3",
            "set_log is over, set_log = 0"),
    Refused("DtvSvLib_SetTunerLog", {3, 3}, "dtvSvLibSetTunerLog", "hdl = 3",
            "set_log is over, set_log = 3"),
    Refused("DtvSvLib_SetTunerLog", {3, -1}, "dtvSvLibSetTunerLog", "hdl = 3",
            "set_log is over, set_log = -1"),
    Refused("DtvSvLib_SetTunerLog", {3, 257}, "dtvSvLibSetTunerLog", "hdl = 3",
            "set_log is over, set_log = 257"),
    Refused("DtvSvLib_SetTunerLog", {3, lowest}, "dtvSvLibSetTunerLog", "hdl = 3",
            "set_log is over, set_log = -2147483648"),
    Refused("DtvSvLib_SetTunerLog", {65539, highest}, "dtvSvLibSetTunerLog", "hdl = 65539",
            "set_log is over, set_log = 2147483647")};
INSTANTIATE_TEST_SUITE_P(Tuner, RefusedCommands, testing::ValuesIn(refused_tuner),
                         rowName<Refused>);

} // namespace
