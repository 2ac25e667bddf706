// The delays of sound and video, and the bound that the last creation of a session gives them.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

class SoundVideoDelay : public Commands {
protected:
    /// Sets a new bound; what the creation itself sends and logs is dropped.
    void bound(int delay) {
        EXPECT_EQ(call("DtvSvLib_Create", {0, delay}), ok);
        service->take();
        log->clear();
    }

    void expectDelay(int handle, int video, int audio, const std::string& start,
                     const std::string& send, const std::string& wire) {
        EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {handle, video, audio}), ok);
        EXPECT_EQ(service->takeTexts(), Texts{wire});
        EXPECT_TRACE(log->take(), sentTrace("dtvSvLibSetSoundVideoDelay", start, {send}, "0", "0"));
    }

    void expectRefusal(int video, int audio, const std::string& refusal) {
        EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, video, audio}), param_ng);
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_TRACE(log->take(), refusedTrace("dtvSvLibSetSoundVideoDelay", "hdl = 3", refusal));
    }
};

TEST_F(SoundVideoDelay, UpToTheBound) {
    bound(999);
    expectDelay(3, 999, 999, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 999, audio_viltime = 999, "
                "max_delay_time = 999",
                "10000015: 03 00 e7 03 e7 03");
    expectDelay(65540, 0, 258, "hdl = 65540",
                "SEND, dtvsv_handle = 4, video_viltime = 0, audio_viltime = 258, "
                "max_delay_time = 999",
                "10000015: 04 00 00 00 02 01");
    expectRefusal(1000, 0, "video_viltime is too large : 1000, max_delat_time = 999, ret = 5");
    expectRefusal(0, 1000, "audio_viltime is too large : 1000, max_delat_time = 999, ret = 5");
}

TEST_F(SoundVideoDelay, VideoIsCheckedBeforeAudio) {
    bound(10);
    expectRefusal(11, 12, "video_viltime is too large : 11, max_delat_time = 10, ret = 5");
    expectRefusal(10, 12, "audio_viltime is too large : 12, max_delat_time = 10, ret = 5");
}

TEST_F(SoundVideoDelay, NegativeOnesAreSent) {
    bound(999);
    expectDelay(3, -1, -1, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 65535, audio_viltime = -1, "
                "max_delay_time = 999",
                "10000015: 03 00 ff ff ff ff");
    expectDelay(3, lowest, -32768, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = -32768, "
                "max_delay_time = 999",
                "10000015: 03 00 00 00 00 80");
}

TEST_F(SoundVideoDelay, VideoIsCheckedWithAll32Bits) {
    bound(999);
    expectRefusal(65536, 0, "video_viltime is too large : 65536, max_delat_time = 999, ret = 5");
    expectRefusal(65541, 0, "video_viltime is too large : 65541, max_delat_time = 999, ret = 5");
    expectRefusal(65535, 0, "video_viltime is too large : 65535, max_delat_time = 999, ret = 5");
    expectRefusal(highest, 0,
                  "video_viltime is too large : 2147483647, max_delat_time = 999, ret = 5");
    expectDelay(3, -65531, 0, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 5, audio_viltime = 0, "
                "max_delay_time = 999",
                "10000015: 03 00 05 00 00 00");
}

TEST_F(SoundVideoDelay, OfAudioTheLow16BitsCount) {
    bound(999);
    expectDelay(3, 0, 65541, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = 5, "
                "max_delay_time = 999",
                "10000015: 03 00 00 00 05 00");
    expectDelay(3, 0, 65535, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = -1, "
                "max_delay_time = 999",
                "10000015: 03 00 00 00 ff ff");
    expectDelay(3, 0, 32768, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = -32768, "
                "max_delay_time = 999",
                "10000015: 03 00 00 00 00 80");
    expectDelay(3, 0, highest, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = -1, "
                "max_delay_time = 999",
                "10000015: 03 00 00 00 ff ff");
    // The message names the value that was checked.
    expectRefusal(0, 66536, "audio_viltime is too large : 1000, max_delat_time = 999, ret = 5");
    expectRefusal(0, 32767, "audio_viltime is too large : 32767, max_delat_time = 999, ret = 5");
    expectRefusal(0, lowest + 1000,
                  "audio_viltime is too large : 1000, max_delat_time = 999, ret = 5");
}

TEST_F(SoundVideoDelay, ANegativeBoundIsComparedWithAllItsBits) {
    bound(-5);
    expectDelay(3, -5, -5, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 65531, audio_viltime = -5, "
                "max_delay_time = -5",
                "10000015: 03 00 fb ff fb ff");
    expectRefusal(-4, -5, "video_viltime is too large : -4, max_delat_time = -5, ret = 5");
    expectRefusal(-5, -4, "audio_viltime is too large : -4, max_delat_time = -5, ret = 5");
    // No 16-bit value is as low as this bound.
    bound(-65000);
    expectRefusal(-64999, 0,
                  "video_viltime is too large : -64999, max_delat_time = -65000, ret = 5");
    expectRefusal(-65000, -32768,
                  "audio_viltime is too large : -32768, max_delat_time = -65000, ret = 5");
    bound(lowest);
    expectRefusal(lowest, -32768,
                  "audio_viltime is too large : -32768, max_delat_time = -2147483648, ret = 5");
}

TEST_F(SoundVideoDelay, TheLastCreationCounts) {
    bound(10);
    bound(20);
    expectDelay(3, 20, 20, "hdl = 3",
                "SEND, dtvsv_handle = 3, video_viltime = 20, audio_viltime = 20, "
                "max_delay_time = 20",
                "10000015: 03 00 14 00 14 00");
    bound(10);
    expectRefusal(11, 0, "video_viltime is too large : 11, max_delat_time = 10, ret = 5");
}

TEST_F(SoundVideoDelay, ARefusedCreationChangesNoBound) {
    bound(10);
    EXPECT_EQ(call("DtvSvLib_Create", {5, 20}), param_ng);
    EXPECT_EQ(call("DtvSvLib_Create", {0, 1000}), param_ng);
    log->clear();
    expectRefusal(11, 0, "video_viltime is too large : 11, max_delat_time = 10, ret = 5");
}

TEST_F(SoundVideoDelay, AnUndeliveredCreationChangesTheBound) {
    bound(10);
    service->setResult(-1);
    EXPECT_EQ(call("DtvSvLib_Create", {0, 20}), ng);
    service->setResult(0);
    service->take();
    log->clear();
    expectRefusal(21, 0, "video_viltime is too large : 21, max_delat_time = 20, ret = 5");
}

TEST_F(SoundVideoDelay, ReleaseKeepsTheBound) {
    bound(10);
    EXPECT_EQ(call("DtvSvLib_Release", {3}), ok);
    service->take();
    log->clear();
    expectRefusal(11, 0, "video_viltime is too large : 11, max_delat_time = 10, ret = 5");
}

TEST_F(SoundVideoDelay, IsNotDelivered) {
    bound(10);
    service->setResult(7);
    EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 1, 2}), ng);
    EXPECT_EQ(service->takeTexts(), Texts{"10000015: 03 00 01 00 02 00"});
    EXPECT_TRACE(log->take(),
                 sentTrace("dtvSvLibSetSoundVideoDelay", "hdl = 3",
                           {"SEND, dtvsv_handle = 3, video_viltime = 1, audio_viltime = 2, "
                            "max_delay_time = 10"},
                           "1", "7"));
}

} // namespace
