// Replies with more than the session handle and the result. Every byte of a record differs from its
// neighbours and the padding is not zero, so that a field read a byte off, or widened with the
// wrong sign, reaches Java as another number.
#include "events/record_event.h"

namespace events {

using namespace harness;

const RecordEvent named_replies[] = {
    {"start_scan_reply",
     0x10000051,
     "0380 eeee 04030281 0685 eeee",
     "",
     {"handle = 32771, result = -2130574588, channnel_num = 34054"},
     {{124, 57}},
     55,
     "onEvDtvsvStartScanReply BG_EV_DTVSV_START_SCAN_REPLY(32771, -2130574588, 34054)",
     false,
     {{11, {"handle = 32771, result = -2130574588, channnel_num = 34054"}},
      {9, {"handle = 32771, result = -2130574588, channnel_num = 6"}},
      {8, {"handle = 32771, result = -2130574588, channnel_num = 0"}},
      {7, {"handle = 32771, result = 131844, channnel_num = 0"}},
      {1, {"handle = 3, result = 0, channnel_num = 0"}},
      {0, {"handle = 0, result = 0, channnel_num = 0"}}}},
    {"start_broadcast_receiving_reply",
     0x10000052,
     "0380 eeee 04030281 f1f2f3f4 0a89 eeee",
     "",
     {},
     {{123, 56}},
     54,
     "onEvDtvsvStartBroadcastReply "
     "BG_EV_DTVSV_START_BROADCAST_REPLY(32771, -2130574588, 4109628145L, 35082)",
     false,
     {{15, {}}, {12, {}}, {0, {}}}},
    {"select_channel_reply",
     0x10000054,
     "0380 eeee 04030281 f1f2f3f4 0a89 eeee",
     "",
     {},
     {{117, 50}},
     48,
     "onEvDtvsvSelectChannelReply "
     "BG_EV_DTVSV_SELECT_CHANNEL_REPLY(32771, -2130574588, 4109628145L, 35082)",
     false,
     {{15, {}}, {12, {}}, {0, {}}}},
    {"release_display_reply",
     0x1000005a,
     "0380 eeee 04030281 f7 eeeeee",
     "",
     {"dtvsv_handle = 32771, result = -2130574588, drawing_destination = 247"},
     {{115, 48}},
     46,
     "onEvDtvsvReleaseDisplayReply BG_EV_DTVSV_RELEASE_DISPLAY_REPLY(32771, -2130574588, 247)",
     false,
     {{11, {"dtvsv_handle = 32771, result = -2130574588, drawing_destination = 247"}},
      {8, {"dtvsv_handle = 32771, result = -2130574588, drawing_destination = 0"}},
      {5, {"dtvsv_handle = 32771, result = 4, drawing_destination = 0"}},
      {0, {"dtvsv_handle = 0, result = 0, drawing_destination = 0"}}}},
    {"Tuner_log_status_reply",
     0x10000067,
     "0380 eeee 04030281 f7 eeeeee",
     "",
     {"handle = 32771, result = -2130574588, log_status = 247"},
     {{135, 68}},
     67,
     "onEvDtvsvGetTunerLogStatusReply "
     "BG_EV_DTVSV_GET_TUNER_LOG_STATUS_REPLY(32771, -2130574588, 247)",
     false,
     {{11, {"handle = 32771, result = -2130574588, log_status = 247"}},
      {8, {"handle = 32771, result = -2130574588, log_status = 0"}},
      {6, {"handle = 32771, result = 772, log_status = 0"}},
      {0, {"handle = 0, result = 0, log_status = 0"}}}},
    {"start_rec_reply",
     0x1000006b,
     "0380 eeee 04030281 f1f2f3f4 0a89 eeee",
     "",
     {},
     {{192, 110}},
     177,
     "onEvDtvsvStartRecReply "
     "BG_EV_DTVSV_START_REC_REPLY(32771, -2130574588, 4109628145L, 35082)",
     false,
     {{15, {}}, {12, {}}, {0, {}}}},
    {"terminate_rec_reply",
     0x1000006c,
     "0380 eeee 04030281 0685 0887",
     "",
     {"handle = 32771, result = -2130574588",
      "TERMINATE_REC_REPLY : program_no = 34054, object_no = 34568"},
     {{208, 126}, {193, 111}},
     178,
     "onEvDtvsvTerminateRecReply BG_EV_DTVSV_TERMINATE_REC_REPLY(32771, -2130574588, "
     "BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(34054, 34568))",
     false,
     {{11,
       {"handle = 32771, result = -2130574588",
        "TERMINATE_REC_REPLY : program_no = 34054, object_no = 8"}},
      {10,
       {"handle = 32771, result = -2130574588",
        "TERMINATE_REC_REPLY : program_no = 34054, object_no = 0"}},
      {8,
       {"handle = 32771, result = -2130574588",
        "TERMINATE_REC_REPLY : program_no = 0, object_no = 0"}},
      {0, {"handle = 0, result = 0", "TERMINATE_REC_REPLY : program_no = 0, object_no = 0"}}}},
};

INSTANTIATE_TEST_SUITE_P(NamedReplies, RecordEvents, testing::ValuesIn(named_replies),
                         recordEventName);

/// The least and greatest numbers of each field, in the three replies with a channel.
TEST(ChannelReplies, LongIsNeverNegative) {
    prepareEvents();
    harness::CallbackRecorder callbacks;
    for (int event_id : {0x10000052, 0x10000054, 0x1000006b}) {
        EXPECT_EQ(deliver(event_id, harness::fromHex("ffff ffff ffffffff ffffffff ffff ffff")), 0);
        EXPECT_EQ(deliver(event_id, harness::fromHex("0000 0000 00000080 00000080 0080 0000")), 0);
        EXPECT_EQ(deliver(event_id, harness::fromHex("0000 0000 00000000 00000000 0000 0000")), 0);
    }
    EXPECT_EQ(
        callbacks.take(),
        (std::vector<std::string>{
            "onEvDtvsvStartBroadcastReply "
            "BG_EV_DTVSV_START_BROADCAST_REPLY(65535, -1, 4294967295L, 65535)",
            "onEvDtvsvStartBroadcastReply "
            "BG_EV_DTVSV_START_BROADCAST_REPLY(0, -2147483648, 2147483648L, 32768)",
            "onEvDtvsvStartBroadcastReply BG_EV_DTVSV_START_BROADCAST_REPLY(0, 0, 0L, 0)",
            "onEvDtvsvSelectChannelReply "
            "BG_EV_DTVSV_SELECT_CHANNEL_REPLY(65535, -1, 4294967295L, 65535)",
            "onEvDtvsvSelectChannelReply "
            "BG_EV_DTVSV_SELECT_CHANNEL_REPLY(0, -2147483648, 2147483648L, 32768)",
            "onEvDtvsvSelectChannelReply BG_EV_DTVSV_SELECT_CHANNEL_REPLY(0, 0, 0L, 0)",
            "onEvDtvsvStartRecReply BG_EV_DTVSV_START_REC_REPLY(65535, -1, 4294967295L, 65535)",
            "onEvDtvsvStartRecReply "
            "BG_EV_DTVSV_START_REC_REPLY(0, -2147483648, 2147483648L, 32768)",
            "onEvDtvsvStartRecReply BG_EV_DTVSV_START_REC_REPLY(0, 0, 0L, 0)",
        }));
}

} // namespace events
