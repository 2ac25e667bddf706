// What the application answers to the data broadcast's requests with one number, and the two
// requests of its own without a number.
#include "commands/command_rows.h"

namespace {

using namespace commands;

const Sent requests[] = {
    Sent("DtvSvLib_BMLEndTvLinkReq", {3}, "dtvSvLibBMLEndTvLinkReq", "hdl = 3",
         {"SEND, dtvsv_handle = 3"}, "1000001e: 03 00"),
    Sent("DtvSvLib_BMLEndTvLinkReq", {65536}, "dtvSvLibBMLEndTvLinkReq", "hdl = 65536",
         {"SEND, dtvsv_handle = 0"}, "1000001e: 00 00"),
    Sent("DtvSvLib_BMLRebootBrowserReq", {4660}, "dtvSvLibBMLRebootBrowserReq", "hdl = 4660",
         {"SEND, BML_REBOOT_BROWSER_REQ : dtvsv_handle = 4660"}, "1000002d: 34 12"),
    Sent("DtvSvLib_BMLRebootBrowserReq", {-1}, "dtvSvLibBMLRebootBrowserReq", "hdl = -1",
         {"SEND, BML_REBOOT_BROWSER_REQ : dtvsv_handle = 65535"}, "1000002d: ff ff")};
INSTANTIATE_TEST_SUITE_P(BmlRequest, SentCommands, testing::ValuesIn(requests), rowName<Sent>);

// Of any number the low byte is sent.
const Sent nvram[] = {
    Sent("DtvSvLib_BMLWriteNvramReply", {3, 0}, "dtvSvLibBMLWriteNvramReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3, bml_end_type = 0"}, "10000022: 03 00 00 00"),
    Sent("DtvSvLib_BMLWriteNvramReply", {3, 2}, "dtvSvLibBMLWriteNvramReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3, bml_end_type = 2"}, "10000022: 03 00 02 00"),
    Sent("DtvSvLib_BMLWriteNvramReply", {65537, 511}, "dtvSvLibBMLWriteNvramReply", "hdl = 65537",
         {"SEND, dtvsv_handle = 1, bml_end_type = 255"}, "10000022: 01 00 ff 00"),
    Sent("DtvSvLib_BMLWriteNvramReply", {3, -1}, "dtvSvLibBMLWriteNvramReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3, bml_end_type = 255"}, "10000022: 03 00 ff 00"),
    Sent("DtvSvLib_BMLWriteNvramReply", {3, lowest}, "dtvSvLibBMLWriteNvramReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3, bml_end_type = 0"}, "10000022: 03 00 00 00"),
    Sent("DtvSvLib_BMLWriteNvramReply", {3, highest}, "dtvSvLibBMLWriteNvramReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3, bml_end_type = 255"}, "10000022: 03 00 ff 00")};
INSTANTIATE_TEST_SUITE_P(BmlNvram, SentCommands, testing::ValuesIn(nvram), rowName<Sent>);

const Sent answers[] = {
    Sent("DtvSvLib_BMLMailReply", {3, 1}, "dtvSvLibBMLMailReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_MAIL_REPLY : bml_end_type = 1"},
         "10000025: 03 00 01 00"),
    Sent("DtvSvLib_BMLMailReply", {65536, -1}, "dtvSvLibBMLMailReply", "hdl = 65536",
         {"SEND, dtvsv_handle = 0", "SEND, BML_MAIL_REPLY : bml_end_type = 255"},
         "10000025: 00 00 ff 00"),
    Sent("DtvSvLib_BMLPhonebookReply", {3, 1}, "dtvSvLibBMLPhonebookReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_PHONEBOOK_REPLY : bml_end_type = 1"},
         "10000026: 03 00 01 00"),
    Sent("DtvSvLib_BMLPhonebookReply", {65537, -2}, "dtvSvLibBMLPhonebookReply", "hdl = 65537",
         {"SEND, dtvsv_handle = 1", "SEND, BML_PHONEBOOK_REPLY : bml_end_type = 254"},
         "10000026: 01 00 fe 00"),
    Sent("DtvSvLib_BMLCallReply", {3, 1}, "dtvSvLibBMLCallReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_CALL_REPLY : bml_end_type = 1"},
         "10000027: 03 00 01 00"),
    Sent("DtvSvLib_BMLCallReply", {65538, -3}, "dtvSvLibBMLCallReply", "hdl = 65538",
         {"SEND, dtvsv_handle = 2", "SEND, BML_CALL_REPLY : bml_end_type = 253"},
         "10000027: 02 00 fd 00"),
    Sent("DtvSvLib_BMLScheduleReply", {3, 1}, "dtvSvLibBMLScheduleReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_SCHEDULE_REPLY : bml_end_type = 1"},
         "10000028: 03 00 01 00"),
    Sent("DtvSvLib_BMLScheduleReply", {65539, -4}, "dtvSvLibBMLScheduleReply", "hdl = 65539",
         {"SEND, dtvsv_handle = 3", "SEND, BML_SCHEDULE_REPLY : bml_end_type = 252"},
         "10000028: 03 00 fc 00"),
    Sent("DtvSvLib_BMLBrowserReply", {3, 1}, "dtvSvLibBMLBrowserReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_BROWSER_REPLY : bml_end_type = 1"},
         "10000029: 03 00 01 00"),
    Sent("DtvSvLib_BMLBrowserReply", {65540, lowest}, "dtvSvLibBMLBrowserReply", "hdl = 65540",
         {"SEND, dtvsv_handle = 4", "SEND, BML_BROWSER_REPLY : bml_end_type = 0"},
         "10000029: 04 00 00 00"),
    // In the trace this command's name has a capital L, unlike the name in Java.
    Sent("DtvSvLib_BMLStartTvlinkReply", {3, 1}, "dtvSvLibBMLStartTvLinkReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_START_TVLINK_REPLY : bml_end_type = 1"},
         "1000002b: 03 00 01 00"),
    Sent("DtvSvLib_BMLStartTvlinkReply", {65541, -5}, "dtvSvLibBMLStartTvLinkReply", "hdl = 65541",
         {"SEND, dtvsv_handle = 5", "SEND, BML_START_TVLINK_REPLY : bml_end_type = 251"},
         "1000002b: 05 00 fb 00"),
    Sent("DtvSvLib_BMLEnrolTvlinkReply", {3, 1}, "dtvSvLibBMLEnrolTvlinkReply", "hdl = 3",
         {"SEND, dtvsv_handle = 3", "SEND, BML_ENROL_TVLINK_REPLY : bml_end_type = 1"},
         "1000002c: 03 00 01 00"),
    Sent("DtvSvLib_BMLEnrolTvlinkReply", {65542, -6}, "dtvSvLibBMLEnrolTvlinkReply", "hdl = 65542",
         {"SEND, dtvsv_handle = 6", "SEND, BML_ENROL_TVLINK_REPLY : bml_end_type = 250"},
         "1000002c: 06 00 fa 00")};
INSTANTIATE_TEST_SUITE_P(BmlAnswer, SentCommands, testing::ValuesIn(answers), rowName<Sent>);

const Refused refused_answers[] = {
    Refused("DtvSvLib_BMLMailReply", {3, 2}, "dtvSvLibBMLMailReply", "hdl = 3",
            "mail_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLMailReply", {3, 256}, "dtvSvLibBMLMailReply", "hdl = 3",
            "mail_reply is too large : 256, ret = 5"),
    Refused("DtvSvLib_BMLPhonebookReply", {3, 2}, "dtvSvLibBMLPhonebookReply", "hdl = 3",
            "phonebook_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLPhonebookReply", {3, highest}, "dtvSvLibBMLPhonebookReply", "hdl = 3",
            "phonebook_reply is too large : 2147483647, ret = 5"),
    Refused("DtvSvLib_BMLCallReply", {3, 2}, "dtvSvLibBMLCallReply", "hdl = 3",
            "call_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLCallReply", {3, 257}, "dtvSvLibBMLCallReply", "hdl = 3",
            "call_reply is too large : 257, ret = 5"),
    Refused("DtvSvLib_BMLScheduleReply", {3, 2}, "dtvSvLibBMLScheduleReply", "hdl = 3",
            "schedule_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLScheduleReply", {65539, 256}, "dtvSvLibBMLScheduleReply", "hdl = 65539",
            "schedule_reply is too large : 256, ret = 5"),
    Refused("DtvSvLib_BMLBrowserReply", {3, 2}, "dtvSvLibBMLBrowserReply", "hdl = 3",
            "browser_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLBrowserReply", {3, highest}, "dtvSvLibBMLBrowserReply", "hdl = 3",
            "browser_reply is too large : 2147483647, ret = 5"),
    Refused("DtvSvLib_BMLStartTvlinkReply", {3, 2}, "dtvSvLibBMLStartTvLinkReply", "hdl = 3",
            "tvlink_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLStartTvlinkReply", {3, 256}, "dtvSvLibBMLStartTvLinkReply", "hdl = 3",
            "tvlink_reply is too large : 256, ret = 5"),
    Refused("DtvSvLib_BMLEnrolTvlinkReply", {3, 2}, "dtvSvLibBMLEnrolTvlinkReply", "hdl = 3",
            "tvlink_reply is too large : 2, ret = 5"),
    Refused("DtvSvLib_BMLEnrolTvlinkReply", {3, 65537}, "dtvSvLibBMLEnrolTvlinkReply", "hdl = 3",
            "tvlink_reply is too large : 65537, ret = 5")};
INSTANTIATE_TEST_SUITE_P(BmlAnswer, RefusedCommands, testing::ValuesIn(refused_answers),
                         rowName<Refused>);

} // namespace
