// What the sender of a command gets, and what records events have.
#include "replay/tests/replay_test.h"

namespace {

using namespace replay;
using testing::ElementsAre;

using Answers = ReplayTest;

TEST_F(Answers, AreThoseOfTheCapture) {
    add(kCommand, 1, "one", kStartScan, {1, 0});
    add(kAnswer, 1, "one", kStartScan, {}, -7);
    add(kCommand, 1, "one", kReleaseSync, {1, 0});
    WrittenMessage answer{kAnswer, 1, "one", kReleaseSync, {1, 2, 3, 4, 5}};
    answer.size = 5;
    writer.add(answer);
    add(kCommand, 1, "one", kReleaseSync, {1, 0});
    answer = {kAnswer, 1, "one", kReleaseSync, {}};
    answer.size = -3;
    answer.value = 4;
    writer.add(answer);
    start();
    on("one", [&] {
        EXPECT_EQ(send(kStartScan, {1, 0}), -7);
        uint8_t record[] = {1, 0};
        uint8_t reply[8] = {};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 0);
        EXPECT_EQ(size, 5);
        EXPECT_THAT(reply, ElementsAre(1, 2, 3, 4, 5, 0, 0, 0));
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 4);
        EXPECT_EQ(size, -3);
        EXPECT_THAT(reply, ElementsAre(1, 2, 3, 4, 5, 0, 0, 0));
    });
    EXPECT_THAT(report(), ElementsAre("replay: 6 of 6 messages, no divergence"));
}

TEST_F(Answers, AreNotThereWhereTheCaptureEnds) {
    add(kCommand, 1, "one", kReleaseSync, {1, 0});
    start();
    on("one", [&] {
        uint8_t record[] = {1, 0};
        uint8_t reply[8] = {};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 1);
    });
    EXPECT_THAT(report(), ElementsAre("replay: 1 of 1 messages, no divergence"));
}

/// Refuses as the bridge does: null records with 1.
class RefusingListener : public platform::ListenerDouble {
public:
    int recvEventFromServer(int event_id, void* data, int size) override {
        platform::ListenerDouble::recvEventFromServer(event_id, data, size);
        return data == nullptr ? 1 : 0;
    }
};

TEST_F(Answers, EventsHaveTheRecordsOfTheCapture) {
    listener = new RefusingListener;
    const auto event = [&](const std::vector<uint8_t>& record, int size) {
        WrittenMessage message{kEvent, 3, "DtvEvent-1", kScanReply, record};
        message.size = size;
        writer.add(message);
    };
    event({1, 2, 3}, 3);
    event({}, 4); // null
    add(kRefusal, 3, "DtvEvent-1", kScanReply, {}, 1);
    event({}, 0);
    event({}, -9); // null
    add(kRefusal, 3, "DtvEvent-1", kScanReply, {}, 1);
    event({}, -9);
    event({}, 4); // null, whatever the listener returned
    start();
    EXPECT_EQ(finish().divergences.total(), 1u) << "this listener refuses the last one";
    ASSERT_EQ(listener->events.size(), 6u);
    EXPECT_FALSE(listener->events[5].had_data);
    EXPECT_THAT(listener->events[0].bytes, ElementsAre(1, 2, 3, 0, 0, 0, 0, 0));
    EXPECT_FALSE(listener->events[1].had_data);
    EXPECT_EQ(listener->events[1].size, 4);
    EXPECT_TRUE(listener->events[2].had_data);
    EXPECT_EQ(listener->events[2].size, 0);
    EXPECT_FALSE(listener->events[3].had_data);
    EXPECT_EQ(listener->events[3].size, -9);
    EXPECT_TRUE(listener->events[4].had_data);
}

TEST_F(Answers, AnIncompleteEventIsNotDelivered) {
    WrittenMessage message{kEvent, 3, "DtvEvent-1", kScanReply, {1, 2}};
    message.size = 8;
    message.comment = "incomplete=result";
    writer.add(message);
    add(kCommand, 3, "DtvEvent-1", kStartScan, {7, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply + 1, {1, 0, 0, 0, 0, 0, 0, 0});
    message.comment.clear();
    message.left_out = 6;
    writer.add(message);
    start();
    EXPECT_THAT(report(), ElementsAre("replay: 1 of 4 messages, no divergence, 3 left out"));
    EXPECT_THAT(delivered(), ElementsAre(kScanReply + 1));
}

TEST_F(Answers, AReplayOfIncompleteEventsAloneShowsNothing) {
    WrittenMessage message{kEvent, 3, "DtvEvent-1", kScanReply, {1, 2}};
    message.comment = "incomplete=";
    writer.add(message);
    start();
    const Outcome outcome = finish();
    EXPECT_EQ(statusOf(outcome), 2);
    EXPECT_THAT(
        reportLines("a.pcapng", service->recording(), outcome),
        ElementsAre("replay: 0 of 1 messages, no divergence, 1 left out: nothing was replayed"));
}

TEST_F(Answers, AnIncompleteEventIsFilledWithZeros) {
    WrittenMessage message{kEvent, 3, "DtvEvent-1", kScanReply, {1, 2}};
    message.size = 12;
    message.comment = "incomplete=";
    writer.add(message);
    settings.fill = true;
    start();
    EXPECT_THAT(report(), ElementsAre("replay: 1 of 1 messages, no divergence"));
    ASSERT_EQ(listener->events.size(), 1u);
    EXPECT_EQ(listener->events[0].size, 12);
    EXPECT_THAT(listener->events[0].bytes, ElementsAre(1, 2, 0, 0, 0, 0, 0, 0));
}

} // namespace
