// Recordings that were made while the signal was bad.
#include "stepped_client.h"

#include "records/status_records.h"

namespace {

using namespace simulator;

/// Channel 20 is received from 185 ms on and turns bad at 10195 ms, ten seconds after its first
/// signal.
class DamagedRecordingTest : public SteppedTest {
protected:
    /// Records from now until `moment`, ends reception, and starts to play what was recorded.
    /// Playing begins at playing_from_.
    void recordAndPlay(int64_t moment) {
        EXPECT_EQ(0, send(command_id::kStartRec, 1, 0));
        EXPECT_EQ(kDone, awaitResult(event_id::kStartRecReply));
        until(moment);
        TS_TERMINATE_REC_REQ end{};
        end.handle = 1;
        end.save_data = 1;
        TS_TERMINATE_REC_SYNC_REPLY kept{};
        EXPECT_EQ(0, exchangeInto(kept, command_id::kTerminateRec_Sync, end));
        EXPECT_EQ(1, kept.program_no);
        EXPECT_EQ(kDone, exchangeResult(command_id::kTerminateBroadcastReceiving_Sync, 1));
        TS_START_PLAY_REQ play{};
        play.handle = 1;
        play.program_number = 1;
        EXPECT_EQ(0, send(command_id::kStartPlay, play));
        const TimedEvent playing = await(event_id::kStartPlayReply);
        EXPECT_EQ(kDone, playing.event.as<TS_COMMON_REPLY>().result);
        playing_from_ = playing.moment;
    }

    void changeSpeed(int numerator, bool backward) {
        TS_SPECIAL_PLAY_REQ speed{};
        speed.handle = 1;
        speed.direction = backward ? 1 : 0;
        speed.numerator = static_cast<uint16_t>(numerator);
        speed.denominator = 1;
        EXPECT_EQ(0, send(command_id::kChangePlaySpeed, speed));
    }

    int64_t playing_from_ = 0;
};

TEST_F(DamagedRecordingTest, IsReportedWhereItIsDamaged) {
    openReceiving();
    EXPECT_EQ(185, now());
    recordAndPlay(16000);
    // It began at 185 and is damaged at 10195.
    const TimedEvent damage = await(event_id::kPlayErrorNotify);
    EXPECT_EQ(10010, damage.moment - playing_from_);
    const auto error = damage.event.as<TS_PLAY_ERROR_NOTIFY>();
    EXPECT_EQ(1, error.handle);
    EXPECT_EQ(1U, error.play_error);
    const std::vector<TimedEvent> rest = until(now() + 60000);
    EXPECT_EQ(0U, countOf(rest, event_id::kPlayErrorNotify)) << "once";
    EXPECT_EQ(1U, countOf(rest, event_id::kPlayEventNotify)) << "the end";
}

TEST_F(DamagedRecordingTest, IsReportedSoonerWhenPlayedFast) {
    openReceiving();
    recordAndPlay(16000);
    changeSpeed(10, false);
    const TimedEvent damage = await(event_id::kPlayErrorNotify);
    EXPECT_EQ(1001, damage.moment - playing_from_);
    EXPECT_EQ(0U, countOf(until(now() + 60000), event_id::kPlayErrorNotify)) << "once";
}

TEST_F(DamagedRecordingTest, IsNotReportedBackwards) {
    openReceiving();
    recordAndPlay(16000);
    until(playing_from_ + 15000);
    changeSpeed(10, true);
    // At the beginning it plays forward again.
    std::vector<TimedEvent> events;
    do {
        const std::vector<TimedEvent> more = until(now() + 1);
        events.insert(events.end(), more.begin(), more.end());
    } while (countOf(events, event_id::kPlayEventNotify) == 0 && now() < 60000);
    ASSERT_EQ(1U, countOf(events, event_id::kPlayEventNotify));
    EXPECT_EQ(0U, countOf(events, event_id::kPlayErrorNotify));
    const int64_t turned_at = events.back().moment;
    EXPECT_EQ(10010, await(event_id::kPlayErrorNotify).moment - turned_at);
}

TEST_F(DamagedRecordingTest, IsNotReportedBackwardsFromBeforeTheDamage) {
    openReceiving();
    recordAndPlay(16000);
    until(playing_from_ + 9000);
    changeSpeed(1, true);
    const int64_t turned_at = now();
    // Nine seconds back, but in none of them playback reaches the damage.
    EXPECT_EQ(0U, countOf(until(turned_at + 8000), event_id::kPlayErrorNotify));
    const TimedEvent beginning = await(event_id::kPlayEventNotify);
    EXPECT_EQ(10010, await(event_id::kPlayErrorNotify).moment - beginning.moment);
}

TEST_F(DamagedRecordingTest, IsNotReportedWhilePaused) {
    openReceiving();
    recordAndPlay(16000);
    until(playing_from_ + 10000);
    EXPECT_EQ(0, send(command_id::kPausePlay, 1));
    EXPECT_EQ(kDone, awaitResult(event_id::kPausePlayReply));
    EXPECT_EQ(0U, countOf(until(now() + 20000), event_id::kPlayErrorNotify));
    const int64_t resumed_at = now();
    EXPECT_EQ(0, send(command_id::kReStartPlay, 1));
    EXPECT_EQ(10, await(event_id::kPlayErrorNotify).moment - resumed_at);
}

TEST_F(DamagedRecordingTest, IsDamagedAtTheFirstFadeOnly) {
    openReceiving();
    until(10195);
    EXPECT_EQ(0, send(command_id::kControlLNA, 1, 1));
    EXPECT_EQ(10200, await(event_id::kControlLNAReply).moment);
    // It begins within the fade, which is noticed at 11195 ms; the next one comes at 30195 ms.
    recordAndPlay(36000);
    EXPECT_EQ(995, await(event_id::kPlayErrorNotify).moment - playing_from_);
    EXPECT_EQ(0U, countOf(until(now() + 60000), event_id::kPlayErrorNotify)) << "once";
}

TEST_F(DamagedRecordingTest, IsWholeWhenTheSignalWasGood) {
    openReceiving();
    recordAndPlay(9000);
    const std::vector<TimedEvent> events = until(now() + 60000);
    EXPECT_EQ(1U, countOf(events, event_id::kPlayEventNotify));
    EXPECT_EQ(0U, countOf(events, event_id::kPlayErrorNotify));
}

} // namespace
