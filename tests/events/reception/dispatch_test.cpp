// Which handler an event id selects, and which ids select none.
#include "entry/java_tables.h"
#include "harness/event_trace.h"

#include <algorithm>
#include <climits>

namespace events {
namespace {

using namespace harness;

struct Dispatched {
    int event_id;
    const char* handler; ///< without "dtvsv_msgid_lib_"
};

const Dispatched dispatched[] = {
    {0x10000042, "bml_permission_req"},
    {0x10000043, "bml_auth_req"},
    {0x10000044, "bml_write_nvram_req"},
    {0x10000045, "bml_read_nvram_req"},
    {0x10000046, "bml_start_fep_req"},
    {0x10000047, "bml_mail_req"},
    {0x10000048, "bml_phonebook_req"},
    {0x10000049, "bml_call_req"},
    {0x1000004a, "bml_schedule_req"},
    {0x1000004b, "bml_browser_req"},
    {0x1000004c, "bml_save_picture_req"},
    {0x1000004d, "bml_start_tvlink_req"},
    {0x1000004e, "bml_enrol_tvlink_req"},
    {0x1000004f, "common_reply"},
    {0x10000050, "common_reply"},
    {0x10000051, "start_scan_reply"},
    {0x10000052, "start_broadcast_receiving_reply"},
    {0x10000053, "common_reply"},
    {0x10000054, "select_channel_reply"},
    {0x10000055, "common_reply"},
    {0x10000056, "common_reply"},
    {0x10000057, "common_reply"},
    {0x10000058, "common_reply"},
    {0x10000059, "common_reply"},
    {0x1000005a, "release_display_reply"},
    {0x1000005b, "common_reply"},
    {0x1000005c, "common_reply"},
    {0x1000005d, "common_reply"},
    {0x1000005e, "common_reply"},
    {0x1000005f, "common_reply"},
    {0x10000060, "common_reply"},
    {0x10000061, "common_reply"},
    {0x10000062, "common_reply"},
    {0x10000063, "common_reply"},
    {0x10000064, "common_reply"},
    {0x10000065, "common_reply"},
    {0x10000066, "common_reply"},
    {0x10000067, "Tuner_log_status_reply"},
    {0x10000068, "common_reply"},
    {0x10000069, "common_reply"},
    {0x1000006a, "common_reply"},
    {0x1000006b, "start_rec_reply"},
    {0x1000006c, "terminate_rec_reply"},
    {0x1000006d, "common_reply"},
    {0x1000006e, "common_reply"},
    {0x1000006f, "common_reply"},
    {0x10000070, "common_reply"},
    {0x10000071, "common_reply"},
    {0x10000072, "common_reply"},
    {0x10000073, "common_reply"},
    {0x10000074, "common_reply"},
    {0x1000007f, "scan_notify"},
    {0x10000080, "terminate_scan_notify"},
    {0x10000081, "start_search_channel_notify"},
    {0x10000082, "terminate_search_channel_notify"},
    {0x10000083, "change_audio_main_sub_notify"},
    {0x10000084, "select_audio_component_notify"},
    {0x10000085, "bml_status_notify"},
    {0x10000086, "cap_status_notify"},
    {0x10000087, "assign_video_area_notify"},
    {0x10000088, "get_caption_data_notify"},
    {0x10000089, "bml_disp_icon_notify"},
    {0x1000008a, "bml_end_fep_notify"},
    {0x1000008b, "good_sens_notify"},
    {0x1000008c, "bad_sens_notify"},
    {0x1000008d, "common_reply"},
    {0x1000008e, "ca_info_notify"},
    {0x1000008f, "receive_sensitivity_notify"},
    {0x10000090, "network_info_notify"},
    {0x10000091, "service_info_notify"},
    {0x10000092, "component_info_notify"},
    {0x10000093, "receive_epg_info_notify"},
    {0x10000094, "update_video_info_notify"},
    {0x10000095, "update_audio_info_notify"},
    {0x10000096, "copy_control_info_notify"},
    {0x10000097, "broadcast_fatal_error_notify"},
    {0x10000098, "rec_status_notify"},
    {0x10000099, "caption_fatal_error_notify"},
    {0x1000009a, "rec_info_notify"},
    {0x1000009b, "play_status_notify"},
    {0x1000009c, "play_event_notify"},
    {0x1000009d, "play_error_notify"},
    {0x1000009e, "tuner_sensitivity_data_notify"},
};

class Dispatch : public testing::Test {
protected:
    void SetUp() override {
        prepareEvents();
        log = LogRecorder::install();
    }
    CallbackRecorder callbacks;
    std::shared_ptr<LogRecorder> log;
};

TEST_F(Dispatch, EachIdSelectsItsHandler) {
    EXPECT_EQ(std::size(dispatched), size_t{expected::eventCount});
    for (const Dispatched& row : dispatched) {
        SCOPED_TRACE(row.handler);
        log->clear();
        deliver(row.event_id, {});
        std::vector<TraceLine> lines = log->take();
        ASSERT_GT(lines.size(), 5U);
        EXPECT_EQ(lines[3].literal(), "JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|");
        EXPECT_EQ(lines[4].level, "FUNCSTART");
        EXPECT_EQ(lines[4].function, std::string("dtvsv_msgid_lib_") + row.handler);
        EXPECT_EQ(lines.back().literal(),
                  "JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|");
    }
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Dispatch, NullRecordIsRefusedUnderEveryId) {
    for (const Dispatched& row : dispatched) {
        for (int size : {0, 8, 10000, -1}) {
            SCOPED_TRACE(size);
            EXPECT_EQ(dtv::deliverEvent(row.event_id, nullptr, size), 1);
            EXPECT_TRACE(log->take(), refused(row.event_id, size));
        }
    }
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_F(Dispatch, OtherIdsAreRefused) {
    std::vector<uint8_t> record = fromHex("0300 0000 00000000 00000000 00000000");
    for (int event_id :
         {0x10000041, 0x10000040, 0x1000009f, 0x100000a0, 0x10000000, 0x1000004f - 0x10000000, 0, 1,
          92, -1, INT_MIN, INT_MAX, 0x20000042, 0x1001004f, 0x10000142}) {
        SCOPED_TRACE(event_id);
        EXPECT_EQ(deliver(event_id, record), 1);
        EXPECT_TRACE(log->take(), refused(event_id, 16));
        EXPECT_EQ(dtv::deliverEvent(event_id, nullptr, 0), 1);
        EXPECT_TRACE(log->take(), refused(event_id, 0));
    }
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_F(Dispatch, GapInsideTheRangeIsRefused) {
    std::vector<uint8_t> record = fromHex("0300 0000 00000000 00000000 00000000");
    for (int event_id : {0x10000075, 0x10000076, 0x10000077, 0x10000078, 0x10000079, 0x1000007a,
                         0x1000007b, 0x1000007c, 0x1000007d, 0x1000007e}) {
        EXPECT_EQ(deliver(event_id, record), 1);
        EXPECT_TRACE(log->take(), refused(event_id, 16));
    }
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_F(Dispatch, RangeEndsAreHandled) {
    EXPECT_EQ(deliver(0x10000042, {}, 0), 1);
    EXPECT_GT(log->take().size(), 5U);
    EXPECT_EQ(deliver(0x1000009e, {}, 0), 1);
    EXPECT_GT(log->take().size(), 5U);
    EXPECT_EQ(deliver(0x10000074, fromHex("0300 0000 01000000")), 0);
    EXPECT_EQ(deliver(0x1000007f, {}, 0), 1);
    EXPECT_EQ(callbacks.take(),
              (std::vector<std::string>{"onEvDtvsvMovePausePositionReply "
                                        "BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY(3, 1)"}));
}

} // namespace
} // namespace events
