#include "desk_client.h"

#include "records/programme_records.h"
#include "records/status_records.h"

#include <future>
#include <thread>

namespace {

using namespace simulator;

class TunerTest : public SimulatorTest {
protected:
    static TS_SEARCH_CHANNEL_REQ searchFrom(int handle, int channel, int operation) {
        TS_SEARCH_CHANNEL_REQ record{};
        record.handle = static_cast<uint16_t>(handle);
        record.physical_channel = channel;
        record.channel_operation = static_cast<uint8_t>(operation);
        return record;
    }

    /// Where a search that was accepted ends; the channels that it tried are added to `looked_at`.
    TS_TERMINATE_SEARCH_CHANNEL_NOTIFY searchEnd(std::vector<int>& looked_at) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (std::chrono::steady_clock::now() < end) {
            const std::optional<Event> event = listener().next(std::chrono::seconds(5));
            if (event && event->id == event_id::kTerminateSearchChannelNotify) {
                return event->as<TS_TERMINATE_SEARCH_CHANNEL_NOTIFY>();
            }
            if (event && event->id == event_id::kStartSearchChannelNotify) {
                const auto looking = event->as<TS_START_SEARCH_CHANNEL_NOTIFY>();
                looked_at.push_back(static_cast<int>(looking.physical_channel));
            }
        }
        ADD_FAILURE() << "the search does not end";
        return {};
    }
};

TEST_F(TunerTest, NumbersSessionsFromOne) {
    EXPECT_EQ(1, create());
    EXPECT_EQ(2, create());
    EXPECT_EQ(0, send(command_id::kRelease, 1));
    EXPECT_EQ(kDone, resultOf(event_id::kReleaseReply, 1));
    EXPECT_EQ(3, create());
}

TEST_F(TunerTest, RefusesTheSeventeenthSession) {
    for (int session = 1; session <= 16; ++session) {
        EXPECT_EQ(session, create());
    }
    EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
    EXPECT_EQ(kNotNow, resultOf(event_id::kCreateReply, 0));
}

TEST_F(TunerTest, ScansEveryChannelInOrder) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    const auto started = expectNext(event_id::kStartScanReply).as<TS_START_SCAN_REPLY>();
    EXPECT_EQ(handle, started.handle);
    EXPECT_EQ(kDone, started.result);
    EXPECT_EQ(50, started.channel_num);

    int found = 0;
    for (uint32_t channel = 13; channel <= 62; ++channel) {
        const bool occupied = channel == 20 || channel == 30 || channel == 40;
        found += occupied ? 1 : 0;
        const auto notify = expectNext(event_id::kScanNotify).as<TS_SCAN_NOTIFY>();
        EXPECT_EQ(handle, notify.handle);
        EXPECT_EQ(channel, notify.channnel);
        EXPECT_EQ(found, notify.result_channnel_num);
        EXPECT_EQ(occupied ? kDone : kNoSuchThing, static_cast<int32_t>(notify.result));
        EXPECT_EQ(occupied ? 1 : 0, notify.network.partialsvc_cnt);
        if (occupied) {
            const auto services =
                expectNext(event_id::kServiceInfoNotify).as<TS_SERVICE_INFO_NOTIFY>();
            EXPECT_EQ(channel, services.physical_channel);
            EXPECT_EQ(channel == 20 ? 2 : channel == 30 ? 1 : 0, services.svc_cnt);
        }
        if (channel == 20) {
            EXPECT_STREQ("Um, Dois", notify.network.ts_name);
            EXPECT_EQ(8, notify.network.ts_name_size);
            EXPECT_STREQ("Um", notify.network.nw_name);
        }
        if (channel == 40) {
            EXPECT_EQ(0, notify.network.ts_name_size);
        }
    }
    const auto end = expectNext(event_id::kTerminateScanNotify).as<TS_TERMINATE_SCAN_NOTIFY>();
    EXPECT_EQ(handle, end.handle);
    EXPECT_EQ(0U, end.result);
    expectNothing();
}

TEST_F(TunerTest, EndsAScanThatIsCancelled) {
    simulator::Options slow = options();
    slow.time_scale = 1;
    start(std::move(slow));
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    expectLater(event_id::kScanNotify);
    EXPECT_EQ(0, send(command_id::kCancelScan, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kTerminateScanNotify, handle));
    expectNothing();
    EXPECT_EQ(0, send(command_id::kCancelScan, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kTerminateScanNotify, handle));
}

TEST_F(TunerTest, NotifiesAboutAStationOnceItIsReceived) {
    const int handle = createReceiving();
    EXPECT_EQ(20U, expectLater(event_id::kGoodSensNotify).as<TS_SENS_NOTIFY>().physical_channel);
    EXPECT_LT(
        0U,
        expectLater(event_id::kReceiveSensitivityNotify).as<TS_RECEIVE_SENSITIVITY_NOTIFY>().cn);
    const auto network = expectLater(event_id::kNetworkInfoNotify).as<TS_NETWORK_INFO_NOTIFY>();
    EXPECT_EQ(handle, network.handle);
    EXPECT_EQ(20U, network.physical_channel);
    EXPECT_EQ(2, expectLater(event_id::kServiceInfoNotify).as<TS_SERVICE_INFO_NOTIFY>().svc_cnt);
    EXPECT_EQ(
        1,
        expectLater(event_id::kComponentInfoNotify).as<TS_COMPONENT_INFO_NOTIFY>().cap_exist_flg);
    EXPECT_EQ(
        320,
        expectLater(event_id::kUpdateVideoInfoNotify).as<TS_UPDATE_VIDEO_INFO_NOTIFY>().size_h);
    expectLater(event_id::kUpdateAudioInfoNotify).as<TS_UPDATE_AUDIO_INFO_NOTIFY>();
    expectLater(event_id::kGetCaptionDataNotify).as<TS_GET_CAPTION_DATA_NOTIFY>();
}

TEST_F(TunerTest, AnswersASelectionWithTheServiceThatItNamed) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20, 1)));
    const auto reply = expectNext(event_id::kSelectChannelReply).as<TS_SERVICE_REPLY>();
    EXPECT_EQ(handle, reply.handle);
    EXPECT_EQ(kDone, reply.result);
    EXPECT_EQ(20U, reply.physical_channel);
    EXPECT_EQ(1, reply.service_no);
}

TEST_F(TunerTest, RefusesAChannelWithoutAStation) {
    const int handle = create();
    for (const TS_BROADCAST_INFO_REQ& wanted :
         {serviceOf(handle, 21), serviceOf(handle, 20, 2), serviceOf(handle, -1)}) {
        EXPECT_EQ(0, send(command_id::kSelectChannel, wanted));
        EXPECT_EQ(kNoSuchThing, resultOf(event_id::kSelectChannelReply, handle));
        EXPECT_EQ(0, send(command_id::kStartBroadcastReceiving, wanted));
        EXPECT_EQ(kNoSuchThing, resultOf(event_id::kStartBroadcastReceivingReply, handle));
    }
    EXPECT_EQ(0, send(command_id::kTerminateBroadcastReceiving, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kTerminateBroadcastReceivingReply, handle));
}

TEST_F(TunerTest, StartsReceptionOnceAndEndsItOnce) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kStartBroadcastReceiving, serviceOf(handle, 30)));
    EXPECT_EQ(kDone, resultOf(event_id::kStartBroadcastReceivingReply, handle));
    EXPECT_EQ(0, send(command_id::kStartBroadcastReceiving, serviceOf(handle, 30)));
    EXPECT_EQ(kNotNow, resultOf(event_id::kStartBroadcastReceivingReply, handle));
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kStartScanReply, handle));
    EXPECT_EQ(0, send(command_id::kTerminateBroadcastReceiving, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kTerminateBroadcastReceivingReply, handle));
    EXPECT_EQ(0, send(command_id::kTerminateBroadcastReceiving, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kTerminateBroadcastReceivingReply, handle));
    expectNothing();
}

TEST_F(TunerTest, SearchesUpAndDownAndReceivesWhatItFinds) {
    const int handle = create();
    std::vector<int> looked_at;
    EXPECT_EQ(0, send(command_id::kStartSearchChannel, searchFrom(handle, 37, 0)));
    EXPECT_EQ(kDone, resultOf(event_id::kStartSearchChannelReply, handle));
    const auto up = searchEnd(looked_at);
    EXPECT_EQ(0U, up.result);
    EXPECT_EQ(40U, up.physical_channel);
    EXPECT_EQ((std::vector<int>{38, 39, 40}), looked_at);
    EXPECT_EQ(
        40U,
        expectLater(event_id::kNetworkInfoNotify).as<TS_NETWORK_INFO_NOTIFY>().physical_channel);

    looked_at.clear();
    EXPECT_EQ(0, send(command_id::kStartSearchChannel, searchFrom(handle, 20, 1)));
    EXPECT_EQ(kDone, resultOf(event_id::kStartSearchChannelReply, handle));
    EXPECT_EQ(40U, searchEnd(looked_at).physical_channel);
    EXPECT_EQ(13, looked_at[6]);
    EXPECT_EQ(62, looked_at[7]);

    EXPECT_EQ(0, send(command_id::kTerminateBroadcastReceiving, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kTerminateBroadcastReceivingReply, handle));
}

TEST_F(TunerTest, FindsNothingWithoutStations) {
    simulator::Options empty = options();
    empty.plan.stations.clear();
    start(std::move(empty));
    const int handle = create();
    std::vector<int> looked_at;
    EXPECT_EQ(0, send(command_id::kStartSearchChannel, searchFrom(handle, 13, 0)));
    EXPECT_EQ(kDone, resultOf(event_id::kStartSearchChannelReply, handle));
    EXPECT_EQ(static_cast<uint32_t>(kNoSuchThing), searchEnd(looked_at).result);
    EXPECT_EQ(50U, looked_at.size());
    EXPECT_EQ(13, looked_at.back());
}

TEST_F(TunerTest, RefusesASearchFromAnUnknownService) {
    const int handle = create();
    for (const TS_SEARCH_CHANNEL_REQ& wanted :
         {searchFrom(handle, 12, 0), searchFrom(handle, 63, 0), searchFrom(handle, 20, 2)}) {
        EXPECT_EQ(0, send(command_id::kStartSearchChannel, wanted));
        EXPECT_EQ(kNoSuchThing, resultOf(event_id::kStartSearchChannelReply, handle));
    }
    EXPECT_EQ(0, send(command_id::kCancelSearchChannel, handle));
    EXPECT_EQ(kNotNow, resultOf(event_id::kTerminateSearchChannelNotify, handle));
}

TEST_F(TunerTest, ReceivesNothingAfterACancelledSearch) {
    simulator::Options slow = options();
    slow.time_scale = 1;
    start(std::move(slow));
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kStartSearchChannel, searchFrom(handle, 41, 0)));
    expectLater(event_id::kStartSearchChannelNotify);
    EXPECT_EQ(0, send(command_id::kCancelSearchChannel, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kTerminateSearchChannelNotify, handle));
    expectNothing();
    EXPECT_EQ(kNotNow,
              exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
}

TEST_F(TunerTest, AnswersForASessionThatDoesNotExist) {
    EXPECT_EQ(0, send(command_id::kStartScan, 7));
    EXPECT_EQ(kUnknownHandle, resultOf(event_id::kStartScanReply, 7));
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(7, 20)));
    EXPECT_EQ(kUnknownHandle, resultOf(event_id::kSelectChannelReply, 7));
    EXPECT_EQ(0, send(command_id::kRelease, 7));
    EXPECT_EQ(kUnknownHandle, resultOf(event_id::kReleaseReply, 7));
    const TS_COMMON_SYNC_REPLY reply = exchange(command_id::kRelease_Sync, 7);
    EXPECT_EQ(7, reply.handle);
    EXPECT_EQ(kUnknownHandle, reply.return_value);
}

TEST_F(TunerTest, ReleasesASessionOnce) {
    const int handle = createReceiving();
    EXPECT_EQ(0, send(command_id::kRelease, handle));
    EXPECT_EQ(kDone, resultOf(event_id::kReleaseReply, handle));
    expectNothing();
    EXPECT_EQ(0, send(command_id::kRelease, handle));
    EXPECT_EQ(kUnknownHandle, resultOf(event_id::kReleaseReply, handle));
}

TEST_F(TunerTest, RepliesInTheOrderOfTheCommands) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 21)));
    EXPECT_EQ(0, send(command_id::kCancelScan, handle));
    EXPECT_EQ(0, send(command_id::kRelease, handle));
    expectNext(event_id::kSelectChannelReply);
    expectLater(event_id::kSelectChannelReply);
    expectLater(event_id::kTerminateScanNotify);
    expectLater(event_id::kReleaseReply);
}

TEST_F(TunerTest, AnswersSynchronousCommandsAtOnceAndWithoutAnEvent) {
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 30)));
    const TS_COMMON_SYNC_REPLY stopped =
        exchange(command_id::kTerminateBroadcastReceiving_Sync, handle);
    EXPECT_EQ(handle, stopped.handle);
    EXPECT_EQ(kDone, stopped.return_value);
    EXPECT_EQ(kNotNow, exchange(command_id::kCancelScan_Sync, handle).return_value);
    EXPECT_EQ(kDone, exchange(command_id::kRelease_Sync, handle).return_value);
    expectNext(event_id::kSelectChannelReply);
    expectNothing();
}

TEST_F(TunerTest, RefusesWhatIsNoCommand) {
    const int handle = create();
    EXPECT_NE(0, send(0x10000008, handle));
    EXPECT_NE(0, send(0x10000042, handle));
    EXPECT_NE(0, send(command_id::kStartScan, handle, 0)) << "4 bytes instead of 2";
    EXPECT_NE(0, send(command_id::kRelease_Sync, handle)) << "no room for the answer";
    EXPECT_NE(0,
              listener().sendEventToServer(command_id::kStartScan, nullptr, 2, nullptr, nullptr));
    expectNothing();
}

TEST_F(TunerTest, KeepsTheSessionsOfSeveralThreadsApart) {
    std::vector<int> handles;
    for (int session = 0; session < 4; ++session) {
        handles.push_back(create());
    }
    std::vector<std::thread> threads;
    for (const int handle : handles) {
        threads.emplace_back([this, handle] {
            for (int round = 0; round < 50; ++round) {
                EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 30)));
                EXPECT_EQ(
                    kDone,
                    exchange(command_id::kTerminateBroadcastReceiving_Sync, handle).return_value);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    int replies = 0;
    while (replies < 200) {
        const std::optional<Event> event = listener().next(std::chrono::seconds(5));
        ASSERT_TRUE(event.has_value()) << replies << " replies came";
        if (event->id == event_id::kSelectChannelReply) {
            EXPECT_EQ(kDone, event->as<TS_SERVICE_REPLY>().result);
            ++replies;
        }
    }
}

} // namespace
