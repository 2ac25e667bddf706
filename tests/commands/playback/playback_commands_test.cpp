// Recording and playback by plain numbers.
#include "commands/command_rows.h"

namespace {

using namespace commands;

const Sent playback[] = {
    Sent("DtvSvLib_StartRec", {3, 1}, "dtvSvLibStartRec", "hdl = 3",
         {"SEND, dtvsv_handle = 3, medium = 1"}, "1000002e: 03 00 01 00"),
    Sent("DtvSvLib_StartRec", {65536, -1}, "dtvSvLibStartRec", "hdl = 65536",
         {"SEND, dtvsv_handle = 0, medium = 255"}, "1000002e: 00 00 ff 00"),
    Sent("DtvSvLib_PausePlay", {3}, "dtvSvLibPausePlay", "hdl = 3",
         {"SEND, PAUSE_PLAY : dtvsv_handle = 3"}, "10000032: 03 00"),
    Sent("DtvSvLib_PausePlay", {65537}, "dtvSvLibPausePlay", "hdl = 65537",
         {"SEND, PAUSE_PLAY : dtvsv_handle = 1"}, "10000032: 01 00"),
    Sent("DtvSvLib_ReStartPlay", {4660}, "dtvSvLibReStartPlay", "hdl = 4660",
         {"SEND, RESTART_PLAY : dtvsv_handle = 4660"}, "10000033: 34 12"),
    Sent("DtvSvLib_ReStartPlay", {-2}, "dtvSvLibReStartPlay", "hdl = -2",
         {"SEND, RESTART_PLAY : dtvsv_handle = 65534"}, "10000033: fe ff"),
    Sent("DtvSvLib_FrameSlidePlay", {3, 1}, "dtvSvLibFrameSlidePlay", "hdl = 3",
         {"SEND, FRAME_SLIDE_PLAY : dtvsv_handle = 3, direction = 1"}, "10000035: 03 00 01 00"),
    Sent("DtvSvLib_FrameSlidePlay", {65538, lowest}, "dtvSvLibFrameSlidePlay", "hdl = 65538",
         {"SEND, FRAME_SLIDE_PLAY : dtvsv_handle = 2, direction = 0"}, "10000035: 02 00 00 00"),
    Sent("DtvSvLib_FrameSlidePlay", {3, -1}, "dtvSvLibFrameSlidePlay", "hdl = 3",
         {"SEND, FRAME_SLIDE_PLAY : dtvsv_handle = 3, direction = 255"}, "10000035: 03 00 ff 00"),
    Sent("DtvSvLib_TerminatePlay", {3}, "dtvSvLibTerminatePlay", "hdl = 3",
         {"SEND, TERMINATE_PLAY : dtvsv_handle = 3"}, "10000036: 03 00"),
    Sent("DtvSvLib_TerminatePlay", {65539}, "dtvSvLibTerminatePlay", "hdl = 65539",
         {"SEND, TERMINATE_PLAY : dtvsv_handle = 3"}, "10000036: 03 00"),
    Sent("DtvSvLib_MovePausePosition", {3, 1}, "dtvSvLibMovePausePosition", "hdl = 3",
         {"SEND, MOVE_PAUSE_POSITION : dtvsv_handle = 3, move_pos = 1"}, "10000037: 03 00 01 00"),
    Sent("DtvSvLib_MovePausePosition", {65540, -4}, "dtvSvLibMovePausePosition", "hdl = 65540",
         {"SEND, MOVE_PAUSE_POSITION : dtvsv_handle = 4, move_pos = 252"},
         "10000037: 04 00 fc 00")};
INSTANTIATE_TEST_SUITE_P(Playback, SentCommands, testing::ValuesIn(playback), rowName<Sent>);

const Refused refused_playback[] = {
    Refused("DtvSvLib_StartRec", {3, 2}, "dtvSvLibStartRec", "hdl = 3",
            "medium is too large : 2, ret = 5"),
    Refused("DtvSvLib_StartRec", {3, 256}, "dtvSvLibStartRec", "hdl = 3",
            "medium is too large : 256, ret = 5"),
    Refused("DtvSvLib_FrameSlidePlay", {3, 2}, "dtvSvLibFrameSlidePlay", "hdl = 3",
            "direction is over, direction = 2"),
    Refused("DtvSvLib_FrameSlidePlay", {65539, highest}, "dtvSvLibFrameSlidePlay", "hdl = 65539",
            "direction is over, direction = 2147483647"),
    Refused("DtvSvLib_MovePausePosition", {3, 2}, "dtvSvLibMovePausePosition", "hdl = 3",
            "move_pos is over, move_pos = 2"),
    Refused("DtvSvLib_MovePausePosition", {3, 257}, "dtvSvLibMovePausePosition", "hdl = 3",
            "move_pos is over, move_pos = 257")};
INSTANTIATE_TEST_SUITE_P(Playback, RefusedCommands, testing::ValuesIn(refused_playback),
                         rowName<Refused>);

} // namespace
