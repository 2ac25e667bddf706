#include "desk_client.h"

#include "records/status_records.h"

namespace {

using namespace simulator;

class RecorderTest : public SimulatorTest {
protected:
    enum Status {
        kPlaying = 1,
        kPaused = 2,
        kFast = 3,
    };

    static TS_TERMINATE_REC_REQ endOf(int handle, bool save) {
        TS_TERMINATE_REC_REQ record{};
        record.handle = static_cast<uint16_t>(handle);
        record.save_data = save ? 1 : 0;
        record.title_size = 4;
        std::memcpy(record.title_name, "Noite", 5);
        return record;
    }

    static TS_START_PLAY_REQ playOf(int handle, int program, bool resume = false,
                                    bool pause = false) {
        TS_START_PLAY_REQ record{};
        record.handle = static_cast<uint16_t>(handle);
        record.program_number = static_cast<uint16_t>(program);
        record.resume = resume ? 1 : 0;
        record.pause = pause ? 1 : 0;
        return record;
    }

    /// Records `seconds` of channel 20 and leaves the session idle. Returns the programme's number.
    int record(int handle, uint32_t seconds) {
        EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
        EXPECT_EQ(kDone, resultOf(event_id::kSelectChannelReply, handle));
        EXPECT_EQ(0, send(command_id::kStartRec, handle, 0));
        EXPECT_EQ(kDone, resultOf(event_id::kStartRecReply, handle));
        uint32_t recorded = 0;
        while (recorded < seconds && !HasFailure()) {
            recorded = expectLater(event_id::kRecInfoNotify).as<TS_REC_INFO_NOTIFY>().rec_time;
        }
        const auto kept = exchange<TS_TERMINATE_REC_SYNC_REPLY>(command_id::kTerminateRec_Sync,
                                                                endOf(handle, true));
        EXPECT_EQ(kDone, kept.result);
        EXPECT_EQ(kDone,
                  exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
        return kept.program_no;
    }

    PLAY_STATUS_INFO nextStatus() {
        return expectLater(event_id::kPlayStatusNotify).as<TS_PLAY_STATUS_NOTIFY>().play_status;
    }

    /// Sends a command to the player and expects this result in its reply.
    template <class Record>
    void order(int command, int reply, const Record& record, int result) {
        EXPECT_EQ(0, send(command, record));
        EXPECT_EQ(result, resultOf(reply, record.handle)) << std::hex << command;
    }
    void order(int command, int reply, int handle, int result) {
        order(command, reply, TS_HANDLE_REQ{static_cast<uint16_t>(handle)}, result);
    }
};

TEST_F(RecorderTest, RecordsWhatIsReceived) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 0));
    EXPECT_EQ(kNotNow, resultOf(event_id::kStartRecReply, handle));

    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20, 1)));
    EXPECT_EQ(kDone, resultOf(event_id::kSelectChannelReply, handle));
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 2));
    EXPECT_EQ(kNoSuchThing, resultOf(event_id::kStartRecReply, handle));
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 1));
    const auto started = expectLater(event_id::kStartRecReply).as<TS_SERVICE_REPLY>();
    EXPECT_EQ(kDone, started.result);
    EXPECT_EQ(20U, started.physical_channel);
    EXPECT_EQ(1, started.service_no);
    EXPECT_EQ(1U, expectLater(event_id::kRecStatusNotify).as<TS_REC_STATUS_NOTIFY>().rec_status);

    uint32_t last = 0;
    for (int notified = 0; notified < 3; ++notified) {
        const auto info = expectLater(event_id::kRecInfoNotify).as<TS_REC_INFO_NOTIFY>();
        EXPECT_EQ(20U, info.physical_channel);
        EXPECT_LE(info.rec_cap, 100);
        EXPECT_LE(last, info.rec_time);
        last = info.rec_time;
    }
    EXPECT_LE(2U, last);

    EXPECT_EQ(0, send(command_id::kTerminateRec, endOf(handle, true)));
    const auto ended = expectLater(event_id::kTerminateRecReply).as<TS_TERMINATE_REC_REPLY>();
    EXPECT_EQ(kDone, ended.result);
    EXPECT_EQ(1, ended.program_no);
    EXPECT_EQ(1, ended.object_no);
    EXPECT_EQ(0U, expectLater(event_id::kRecStatusNotify).as<TS_REC_STATUS_NOTIFY>().rec_status);
    EXPECT_EQ(0, send(command_id::kTerminateRec, endOf(handle, true)));
    EXPECT_EQ(kNotNow, resultOf(event_id::kTerminateRecReply, handle));
}

TEST_F(RecorderTest, HoldsTheTunerWhileItRecords) {
    const int handle = createReceiving();
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 0));
    EXPECT_EQ(kDone, resultOf(event_id::kStartRecReply, handle));
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 0));
    EXPECT_EQ(kNotNow, resultOf(event_id::kStartRecReply, handle));
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 30)));
    EXPECT_EQ(kNotNow, resultOf(event_id::kSelectChannelReply, handle));
    EXPECT_EQ(kNotNow,
              exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
    EXPECT_EQ(kDone, exchange(command_id::kRelease_Sync, handle).return_value);
}

TEST_F(RecorderTest, KeepsNothingThatIsNotToBeSaved) {
    const int handle = createReceiving();
    EXPECT_EQ(0, send(command_id::kStartRec, handle, 0));
    EXPECT_EQ(kDone, resultOf(event_id::kStartRecReply, handle));
    const auto dropped =
        exchange<TS_TERMINATE_REC_SYNC_REPLY>(command_id::kTerminateRec_Sync, endOf(handle, false));
    EXPECT_EQ(kDone, dropped.result);
    EXPECT_EQ(0, dropped.program_no);
    EXPECT_EQ(0, dropped.object_no);
    EXPECT_EQ(kDone, exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, 1), kNoSuchThing);
}

TEST_F(RecorderTest, PlaysToTheEnd) {
    const int handle = create();
    const int program = record(handle, 3);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program), kDone);
    const PLAY_STATUS_INFO begin = nextStatus();
    EXPECT_EQ(kPlaying, begin.status);
    EXPECT_EQ(0U, begin.current_time);
    EXPECT_EQ(0, begin.eof_flag);
    const auto end = expectLater(event_id::kPlayEventNotify).as<TS_PLAY_EVENT_NOTIFY>();
    EXPECT_EQ(1, end.play_event);
    EXPECT_EQ(kPaused, end.play_status.status);
    EXPECT_EQ(1, end.play_status.eof_flag);
    EXPECT_LE(3U, end.play_status.current_time);
    EXPECT_EQ(kDone, exchange(command_id::kTerminatePlay_Sync, handle).return_value);
    order(command_id::kTerminatePlay, event_id::kTerminatePlayReply, handle, kNotNow);
}

TEST_F(RecorderTest, PlaysOneThingAtATime) {
    const int handle = create();
    const int program = record(handle, 1);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program), kDone);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program), kNotNow);
    order(command_id::kSelectChannel, event_id::kSelectChannelReply, serviceOf(handle, 20),
          kNotNow);
    order(command_id::kStartScan, event_id::kStartScanReply, handle, kNotNow);
    order(command_id::kTerminatePlay, event_id::kTerminatePlayReply, handle, kDone);
    order(command_id::kSelectChannel, event_id::kSelectChannelReply, serviceOf(handle, 20), kDone);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program), kNotNow);
}

TEST_F(RecorderTest, MovesThroughAPausedRecording) {
    const int handle = create();
    const int program = record(handle, 5);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program, false, true),
          kDone);
    EXPECT_EQ(kPaused, nextStatus().status);
    order(command_id::kPausePlay, event_id::kPausePlayReply, handle, kNotNow);

    TS_SKIP_PLAY_REQ skip{};
    skip.handle = static_cast<uint16_t>(handle);
    skip.skipsec = 4;
    order(command_id::kSkipPlay, event_id::kSkipPlayReply, skip, kDone);
    EXPECT_EQ(4U, nextStatus().current_time);
    TS_ONE_VALUE_REQ backward{};
    backward.handle = static_cast<uint16_t>(handle);
    backward.value = 1;
    order(command_id::kFrameSlidePlay, event_id::kFrameSlidePlayReply, backward, kDone);
    EXPECT_EQ(3U, nextStatus().current_time);
    order(command_id::kMovePausePosition, event_id::kMovePausePositionReply, backward, kDone);
    EXPECT_EQ(2U, nextStatus().current_time);
    skip.direction = 1;
    skip.skipsec = 100;
    order(command_id::kSkipPlay, event_id::kSkipPlayReply, skip, kDone);
    EXPECT_EQ(0U, nextStatus().current_time);
    backward.value = 2;
    order(command_id::kFrameSlidePlay, event_id::kFrameSlidePlayReply, backward, kNoSuchThing);

    skip.direction = 0;
    skip.skipsec = 2;
    order(command_id::kSkipPlay, event_id::kSkipPlayReply, skip, kDone);
    order(command_id::kTerminatePlay, event_id::kTerminatePlayReply, handle, kDone);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program, true, true),
          kDone);
    EXPECT_EQ(2U, nextStatus().current_time) << "where it was stopped";
}

TEST_F(RecorderTest, PlaysFastAndBackwards) {
    simulator::Options slower = options();
    slower.time_scale = 0.1; // so that the end is not reached before it turns around
    start(std::move(slower));
    const int handle = create();
    const int program = record(handle, 10);
    TS_SPECIAL_PLAY_REQ fast{};
    fast.handle = static_cast<uint16_t>(handle);
    fast.numerator = 20;
    fast.denominator = 10;
    order(command_id::kChangePlaySpeed, event_id::kChangePlaySpeedReply, fast, kNotNow);
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(handle, program), kDone);
    nextStatus();
    order(command_id::kReStartPlay, event_id::kRestartPlayReply, handle, kNotNow);
    order(command_id::kChangePlaySpeed, event_id::kChangePlaySpeedReply, fast, kDone);
    EXPECT_EQ(kFast, nextStatus().status);
    TS_ONE_VALUE_REQ forward{};
    forward.handle = static_cast<uint16_t>(handle);
    order(command_id::kFrameSlidePlay, event_id::kFrameSlidePlayReply, forward, kNotNow);
    fast.direction = 1;
    order(command_id::kChangePlaySpeed, event_id::kChangePlaySpeedReply, fast, kDone);
    const auto turned = expectLater(event_id::kPlayEventNotify).as<TS_PLAY_EVENT_NOTIFY>();
    EXPECT_EQ(2, turned.play_event);
    EXPECT_EQ(kPlaying, turned.play_status.status);
    EXPECT_EQ(0U, turned.play_status.current_time);
    fast.numerator = 0;
    order(command_id::kChangePlaySpeed, event_id::kChangePlaySpeedReply, fast, kNoSuchThing);
}

TEST_F(RecorderTest, SharesRecordingsBetweenSessions) {
    const int program = record(create(), 1);
    const int other = create();
    order(command_id::kStartPlay, event_id::kStartPlayReply, playOf(other, program), kDone);
    TS_START_PLAY_REQ other_medium = playOf(create(), program);
    other_medium.medium = 1;
    order(command_id::kStartPlay, event_id::kStartPlayReply, other_medium, kNoSuchThing);
}

} // namespace
