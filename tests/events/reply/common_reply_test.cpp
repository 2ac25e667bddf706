// Replies with only a session handle and a result, which one handler serves.
#include "harness/event_trace.h"

#include <ostream>

namespace events {
namespace {

using namespace harness;

const std::string handler = "dtvsv_msgid_lib_common_reply";

struct CommonReply {
    int event_id;
    int constructor;
    int class_id;
    int callback_id;
    const char* callback;
    const char* event_class;
    int result; ///< of the record "0380 f7ee 04030281"
};

std::ostream& operator<<(std::ostream& out, const CommonReply& reply) {
    return out << reply.callback;
}

// Bytes 04 03 02 81 at offset 4; the start of the TV-link has its result in byte 2, f7.
const CommonReply replies[] = {
    {0x1000004f, 114, 47, 45, "onEvDtvsvCreateReply", "BG_EV_DTVSV_CREATE_REPLY", -2130574588},
    {0x10000050, 116, 49, 47, "onEvDtvsvReleaseReply", "BG_EV_DTVSV_RELEASE_REPLY", -2130574588},
    {0x10000053, 126, 59, 57, "onEvDtvsvTerminateBroadcastReply",
     "BG_EV_DTVSV_TERMINATE_BROADCAST_REPLY", -2130574588},
    {0x10000055, 125, 58, 56, "onEvDtvsvStartSearchChannelReply",
     "BG_EV_DTVSV_START_SEARCH_CHANNEL_REPLY", -2130574588},
    {0x10000056, 120, 53, 51, "onEvDtvsvSetDisplayAllReply", "BG_EV_DTVSV_SET_DISPLAY_ALL_REPLY",
     -2130574588},
    {0x10000057, 121, 54, 52, "onEvDtvsvSetScreenDisplayReply",
     "BG_EV_DTVSV_SET_SCREEN_DISPLAY_REPLY", -2130574588},
    {0x10000058, 119, 52, 50, "onEvDtvsvSetCapDisplayReply", "BG_EV_DTVSV_SET_CAP_DISPLAY_REPLY",
     -2130574588},
    {0x10000059, 118, 51, 49, "onEvDtvsvSetBmlDisplayReply", "BG_EV_DTVSV_SET_BML_DISPLAY_REPLY",
     -2130574588},
    {0x1000005b, 113, 46, 44, "onEvDtvsvControlDisplayModeReply",
     "BG_EV_DTVSV_CONTROL_DISPLAY_MODE_REPLY", -2130574588},
    {0x1000005c, 127, 60, 58, "onEvDtvsvControlScreenDisplayReply",
     "BG_EV_DTVSV_CONTROL_SCREEN_DISPLAY_REPLY", -2130574588},
    {0x1000005d, 128, 61, 59, "onEvDtvsvControlDecodeScreenReply",
     "BG_EV_DTVSV_CONTROL_DECODE_SCREEN_REPLY", -2130574588},
    {0x1000005e, 110, 43, 41, "onEvDtvsvChangeAudioComponentReply",
     "BG_EV_DTVSV_CHANGE_AUDIO_COMPONENT_REPLY", -2130574588},
    {0x1000005f, 112, 45, 43, "onEvDtvsvChangeSoundDualMonoReply",
     "BG_EV_DTVSV_CHANGE_SOUND_DUALMONO_REPLY", -2130574588},
    {0x10000060, 122, 55, 53, "onEvDtvsvSetSoundVideoDelayReply",
     "BG_EV_DTVSV_SET_SOUND_VIDEO_DELAY_REPLY", -2130574588},
    {0x10000061, 129, 62, 60, "onEvDtvsvControlDecodeAudioReply",
     "BG_EV_DTVSV_CONTROL_DECODE_AUDIO_REPLY", -2130574588},
    {0x10000062, 131, 64, 62, "onEvDtvsvControlCapReply", "BG_EV_DTVSV_CONTROL_CAP_REPLY",
     -2130574588},
    {0x10000063, 132, 65, 63, "onEvDtvsvControlBmlReply", "BG_EV_DTVSV_CONTROL_BML_REPLY",
     -2130574588},
    {0x10000064, 111, 44, 42, "onEvDtvsvChangeCapLangReply", "BG_EV_DTVSV_CHANGE_CAP_LANG_REPLY",
     -2130574588},
    {0x10000065, 133, 66, 64, "onEvDtvsvControlLNAReply", "BG_EV_DTVSV_CONTROL_LNA_REPLY",
     -2130574588},
    {0x10000066, 134, 67, 66, "onEvDtvsvSetTunerLogReply", "BG_EV_DTVSV_SET_TUNER_LOG_REPLY",
     -2130574588},
    {0x10000068, 109, 42, 40, "onEvDtvsvBmlStartTvlinkReply", "BG_EV_DTVSV_BML_START_TVLINK_REPLY",
     247},
    {0x10000069, 107, 40, 38, "onEvDtvsvBmlEndTvlinkReply", "BG_EV_DTVSV_BML_END_TVLINK_REPLY",
     -2130574588},
    {0x1000006a, 108, 41, 39, "onEvDtvsvBmlRebootBrowserReply",
     "BG_EV_DTVSV_BML_REBOOT_BROWSER_REPLY", -2130574588},
    {0x1000006d, 194, 112, 179, "onEvDtvsvStartPlayReply", "BG_EV_DTVSV_START_PLAY_REPLY",
     -2130574588},
    {0x1000006e, 195, 113, 180, "onEvDtvsvChangePlaySpeedReply",
     "BG_EV_DTVSV_CHANGE_PLAY_SPEED_REPLY", -2130574588},
    {0x1000006f, 196, 114, 181, "onEvDtvsvPausePlayReply", "BG_EV_DTVSV_PAUSE_PLAY_REPLY",
     -2130574588},
    {0x10000070, 197, 115, 182, "onEvDtvsvRestartPlayReply", "BG_EV_DTVSV_RESTART_PLAY_REPLY",
     -2130574588},
    {0x10000071, 198, 116, 183, "onEvDtvsvSkipPlayReply", "BG_EV_DTVSV_SKIP_PLAY_REPLY",
     -2130574588},
    {0x10000072, 199, 117, 184, "onEvDtvsvFrameSlidePlayReply",
     "BG_EV_DTVSV_FRAME_SLIDE_PLAY_REPLY", -2130574588},
    {0x10000073, 200, 118, 185, "onEvDtvsvTerminatePlayReply", "BG_EV_DTVSV_TERMINATE_PLAY_REPLY",
     -2130574588},
    {0x10000074, 201, 119, 186, "onEvDtvsvMovePausePositionReply",
     "BG_EV_DTVSV_MOVE_PAUSE_POSITION_REPLY", -2130574588},
    {0x1000008d, 130, 63, 61, "onEvDtvsvBmlSavePictureNotify",
     "BG_EV_DTVSV_BML_SAVE_PICTURE_NOTIFY", -2130574588},
};

class CommonReplies : public testing::TestWithParam<CommonReply> {
protected:
    void SetUp() override {
        prepareEvents();
        log = LogRecorder::install();
    }
    std::string start() const {
        return "START\nDEBUG |dtvsv_handle = 32771, result = " + std::to_string(GetParam().result) +
               "\n";
    }
    std::string constructor() const {
        return std::to_string(GetParam().constructor) + " " + std::to_string(GetParam().class_id);
    }
    std::string callback() const {
        return std::string(GetParam().callback) + " " + GetParam().event_class + "(32771, " +
               std::to_string(GetParam().result) + ")";
    }
    std::string wholeTrace(int size) const {
        return delivered(GetParam().event_id, size, handler,
                         start() + "NEW " + constructor() + "\nSTATIC " +
                             std::to_string(GetParam().callback_id) + "\nEND |ret = 0");
    }
    std::shared_ptr<LogRecorder> log;
    const std::vector<uint8_t> record = fromHex("0380 f7ee 04030281");
};

INSTANTIATE_TEST_SUITE_P(All, CommonReplies, testing::ValuesIn(replies),
                         [](const auto& info) { return std::string(info.param.callback); });

TEST_P(CommonReplies, ReachesJavaWithAnySize) {
    CallbackRecorder callbacks;
    for (int size : {8, 0, 3, 7, 9, 4096, -1, -2147483647 - 1}) {
        SCOPED_TRACE(size);
        StdoutCapture output;
        Calls deleted("DeleteLocalRef");
        LiveAtEnd at_end(*log, handler);
        EXPECT_EQ(deliver(GetParam().event_id, record, size), 0);
        EXPECT_EQ(at_end.count(), 0) << "references are released before FUNCEND";
        EXPECT_TRACE(log->take(), wholeTrace(size));
        EXPECT_EQ(callbacks.take(), std::vector<std::string>{callback()});
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(deleted.made(), 1);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
}

TEST_P(CommonReplies, NullRecordIsRefused) {
    CallbackRecorder callbacks;
    for (int size : {8, 0, -1}) {
        EXPECT_EQ(dtv::deliverEvent(GetParam().event_id, nullptr, size), 1);
        EXPECT_TRACE(log->take(), refused(GetParam().event_id, size));
    }
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_P(CommonReplies, ObjectThatCannotBeBuiltEndsIt) {
    CallbackRecorder callbacks;
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        StdoutCapture output;
        Calls described("ExceptionDescribe");
        {
            FailJni fails("NewObjectV", 0, leaves);
            EXPECT_EQ(deliver(GetParam().event_id, record), 1);
        }
        EXPECT_EQ(takeException(), "");
        EXPECT_TRACE(log->take(), refused(GetParam().event_id, 8, handler,
                                          start() + "NEWFAIL " + constructor() +
                                              "\nDEBUG |CallMethod NG, ret = 1"));
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(described.made(), leaves == FailJni::Leaves::exception ? 1 : 0);
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
    EXPECT_TRUE(callbacks.take().empty());
}

TEST_P(CommonReplies, CallbackThatThrowsCountsAsCalled) {
    CallbackRecorder callbacks;
    Calls described("ExceptionDescribe");
    Calls deleted("DeleteLocalRef");
    callbacks.throwNext("java/lang/OutOfMemoryError");
    EXPECT_EQ(deliver(GetParam().event_id, record), 0);
    EXPECT_EQ(takeException(), "");
    EXPECT_TRACE(log->take(), wholeTrace(8));
    EXPECT_EQ(described.made(), 1);
    EXPECT_EQ(deleted.made(), 1);
    EXPECT_EQ(deliver(GetParam().event_id, record), 0);
    EXPECT_EQ(callbacks.take(), (std::vector<std::string>{callback(), callback()}));
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

std::vector<std::string> afterDelivering(int event_id, const char* record) {
    CallbackRecorder callbacks;
    EXPECT_EQ(deliver(event_id, fromHex(record)), 0);
    return callbacks.take();
}

TEST(CommonReply, EdgesOfItsFields) {
    prepareEvents();
    using Texts = std::vector<std::string>;
    EXPECT_EQ(afterDelivering(0x1000004f, "0300 0000 00000000"),
              Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)"});
    EXPECT_EQ(afterDelivering(0x1000004f, "ffff 0000 ffffffff"),
              Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(65535, -1)"});
    EXPECT_EQ(afterDelivering(0x1000004f, "0080 ffff ffffff7f"),
              Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(32768, 2147483647)"});
    EXPECT_EQ(afterDelivering(0x1000004f, "ff7f ffff 00000080"),
              Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(32767, -2147483648)"});
}

TEST(CommonReply, TvLinkStartHasItsResultInByteTwo) {
    prepareEvents();
    using Texts = std::vector<std::string>;
    EXPECT_EQ(afterDelivering(0x10000068, "0300 0700 00000000"),
              Texts{"onEvDtvsvBmlStartTvlinkReply BG_EV_DTVSV_BML_START_TVLINK_REPLY(3, 7)"});
    EXPECT_EQ(afterDelivering(0x10000068, "0300 00ff ffffffff"),
              Texts{"onEvDtvsvBmlStartTvlinkReply BG_EV_DTVSV_BML_START_TVLINK_REPLY(3, 0)"});
    EXPECT_EQ(afterDelivering(0x10000068, "ffff ff00 00000000"),
              Texts{"onEvDtvsvBmlStartTvlinkReply BG_EV_DTVSV_BML_START_TVLINK_REPLY(65535, 255)"});
    EXPECT_EQ(afterDelivering(0x10000069, "0300 0700 00000000"),
              Texts{"onEvDtvsvBmlEndTvlinkReply BG_EV_DTVSV_BML_END_TVLINK_REPLY(3, 0)"});
}

} // namespace
} // namespace events
