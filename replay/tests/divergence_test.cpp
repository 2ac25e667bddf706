// What is said of a run that differs from the recording.
#include "replay/tests/replay_test.h"

#include <cstdlib>
#include <ctime>

namespace {

using namespace replay;
using testing::ElementsAre;

class Diverging : public ReplayTest {
protected:
    Diverging() {
        setenv("TZ", "UTC", 1);
        tzset();
    }

    static std::vector<uint8_t> channel(uint8_t number, uint8_t service = 0) {
        return {1, 0, 0, 0, number, 0, 0, 0, service, 0, 0, 0};
    }
};

TEST_F(Diverging, OtherBytesAreShownFieldByField) {
    for (uint8_t number = 13; number < 20; ++number) {
        add(kCommand, 1, "desk", kSelectChannel, channel(number));
    }
    start();
    on("desk", [&] {
        for (uint8_t number = 13; number < 19; ++number) {
            EXPECT_EQ(send(kSelectChannel, channel(number)), 0);
        }
        EXPECT_EQ(send(kSelectChannel, channel(62, 2)), 0);
    });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 7:",
                            "SelectChannel on thread desk has other bytes",
                            "                            recorded                   this run",
                            "  physical_channel          19                         62",
                            "  service_no                0                          2", "before it",
                            "     2 00:00:00.002 desk       -> SelectChannel h=1",
                            "     3 00:00:00.003 desk       -> SelectChannel h=1",
                            "     4 00:00:00.004 desk       -> SelectChannel h=1",
                            "     5 00:00:00.005 desk       -> SelectChannel h=1",
                            "     6 00:00:00.006 desk       -> SelectChannel h=1",
                            "divergences: 1 with other bytes",
                            "replay: 7 of 7 messages, 1 divergence"));
}

TEST_F(Diverging, OnlyTheFirstOneIsShownAndTheOthersAreCounted) {
    add(kCommand, 1, "desk", kSelectChannel, channel(13));
    add(kCommand, 1, "desk", kSelectChannel, channel(14));
    start();
    on("desk", [&] {
        EXPECT_EQ(send(kSelectChannel, channel(20)), 0);
        EXPECT_EQ(send(kSelectChannel, channel(21)), 0);
        EXPECT_EQ(send(kSelectChannel, channel(22)), 1);
    });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 1:",
                            "SelectChannel on thread desk has other bytes",
                            "                            recorded                   this run",
                            "  physical_channel          13                         20",
                            "divergences: 2 with other bytes, 1 unexpected",
                            "replay: 2 of 2 messages, 3 divergences"));
}

TEST_F(Diverging, OtherSizesAndSurfacesAreOtherBytes) {
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    start();
    on("desk", [&] {
        uint8_t record[] = {1, 0, 5};
        TS_DTVSV_SP references;
        references.surface_count = 2;
        EXPECT_EQ(listener->sendEventToServer(kStartScan, record, 3, &references, nullptr, nullptr),
                  0);
    });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 1:",
                            "StartScan on thread desk has other bytes",
                            "                            recorded                   this run",
                            "  size                      2                          3",
                            "  surfaces                  0                          2",
                            "  surplus                                              05",
                            "divergences: 1 with other bytes",
                            "replay: 1 of 1 messages, 1 divergence"));
}

TEST_F(Diverging, OtherSurfacesAreOtherBytes) {
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    start();
    on("desk", [&] {
        uint8_t record[] = {1, 0};
        TS_DTVSV_SP references;
        references.surface_count = 1;
        EXPECT_EQ(listener->sendEventToServer(kStartScan, record, 2, &references, nullptr, nullptr),
                  0);
    });
    EXPECT_THAT(finish().divergences.counts, ElementsAre(1, 0, 0, 0, 0));
}

TEST_F(Diverging, AnotherSizeOfNoRecordIsOtherBytes) {
    WrittenMessage message{kCommand, 1, "desk", kStartScan, {}};
    message.size = 2;
    writer.add(message);
    writer.add(message);
    start();
    on("desk", [&] {
        EXPECT_EQ(listener->sendEventToServer(kStartScan, nullptr, 2, nullptr, nullptr), 0);
        EXPECT_EQ(listener->sendEventToServer(kStartScan, nullptr, 3, nullptr, nullptr), 0);
    });
    EXPECT_THAT(finish().divergences.counts, ElementsAre(1, 0, 0, 0, 0));
}

TEST_F(Diverging, BytesThatAreNotKnownAreNotCompared) {
    // The channel of the first, everything of the second.
    WrittenMessage message{
        kCommand, 1, "desk", kSelectChannel, {1, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0, 0}};
    message.comment = "incomplete=4-7";
    writer.add(message);
    message.comment = "incomplete=";
    writer.add(message);
    message.comment = "incomplete=4-7";
    writer.add(message);
    start();
    on("desk", [&] {
        EXPECT_EQ(send(kSelectChannel, channel(13, 2)), 0);
        EXPECT_EQ(send(kSelectChannel, channel(14, 1)), 0);
        EXPECT_EQ(send(kSelectChannel, channel(15, 1)), 0);
    });
    EXPECT_THAT(report(),
                testing::IsSupersetOf({"a.pcapng: the first divergence is at message 3:",
                                       "  service_no                2                          1",
                                       "divergences: 1 with other bytes",
                                       "replay: 3 of 3 messages, 1 divergence"}));
}

TEST_F(Diverging, AnUnexpectedCommandIsNotTaken) {
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    add(kCommand, 1, "desk", kCancelScan, {1, 0});
    start();
    on("desk", [&] {
        EXPECT_EQ(send(kStartScan, {1, 0}), 0);
        EXPECT_EQ(send(kSelectChannel, channel(13)), 1);
        EXPECT_EQ(send(kCancelScan, {1, 0}), 0);
    });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 2:",
                            "SelectChannel on thread desk came; the capture has none there",
                            "                            recorded                   this run",
                            "  handle                                               1",
                            "  physical_channel                                     13",
                            "  service_no                                           0",
                            "  size                                                 12",
                            "  surfaces                                             0", "before it",
                            "     1 00:00:00.001 desk       -> StartScan h=1",
                            "divergences: 1 unexpected", "replay: 2 of 2 messages, 1 divergence"));
}

/// Takes everything.
class OtherService : public dtv::ServiceEndpoint {
public:
    int onCommand(const dtv::Command& command) override {
        ids.push_back(command.message_id);
        return 0;
    }
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override {
        ids.push_back(command.message_id);
        *reply.size = 3;
        return 0;
    }

    std::vector<int> ids;
};

TEST_F(Diverging, AnUnexpectedCommandGoesToAnotherService) {
    const auto other = std::make_shared<OtherService>();
    settings.unknown = other;
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    start();
    on("desk", [&] {
        EXPECT_EQ(send(kStartScan, {1, 0}), 0);
        EXPECT_EQ(send(kSelectChannel, channel(13)), 0);
        uint8_t record[] = {1, 0};
        uint8_t reply[8] = {};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 0);
        EXPECT_EQ(size, 3);
    });
    EXPECT_THAT(other->ids, ElementsAre(kSelectChannel, kReleaseSync));
    EXPECT_EQ(finish().divergences.total(), 2u);
}

TEST_F(Diverging, ACommandThatIsLeftOutIsMissing) {
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    add(kAnswer, 1, "desk", kStartScan, {}, 3);
    add(kCommand, 1, "desk", kCancelScan, {1, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    start();
    on("desk", [&] { EXPECT_EQ(send(kCancelScan, {1, 0}), 0); });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 1:",
                            "StartScan on thread desk did not come",
                            "                            recorded                   this run",
                            "  handle                    1", "  size                      2",
                            "  surfaces                  0", "divergences: 1 missing",
                            "replay: 2 of 4 messages, 1 divergence"));
    EXPECT_EQ(delivered().size(), 1u);
}

TEST_F(Diverging, WhatDoesNotComeEndsTheReplay) {
    settings.pace.patience = std::chrono::seconds(1);
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    add(kCommand, 1, "desk", kCancelScan, {1, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    start();
    on("desk", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 2:",
                            "CancelScan on thread desk did not come",
                            "                            recorded                   this run",
                            "  handle                    1", "  size                      2",
                            "  surfaces                  0", "before it",
                            "     1 00:00:00.001 desk       -> StartScan h=1",
                            "divergences: 1 missing",
                            "It ended there, because nothing came any more.",
                            "replay: 1 of 3 messages, 1 divergence"));
    on("desk", [&] { EXPECT_EQ(send(kCancelScan, {1, 0}), 1) << "it has ended"; });
}

TEST_F(Diverging, ACallbackThatDoesNotReturnEndsTheReplay) {
    settings.pace.patience = std::chrono::seconds(1);
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    std::atomic<bool> may_return{false};
    listener->before = [&] {
        while (!may_return) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };
    start();
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 2:",
                            "the callback before CreateReply on thread DtvEvent-1 has not returned",
                            "before it", "     1 00:00:00.001 DtvEvent-1 <- CreateReply h=1 r=0",
                            "divergences: 1 unfinished",
                            "It ended there, because nothing came any more.",
                            "replay: 1 of 2 messages, 1 divergence"));
    may_return = true;
    service->finish(); // waits for the callback
}

TEST_F(Diverging, AnotherResultOfAnEventIsOne) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kRefusal, 3, "DtvEvent-1", kScanReply, {}, 1);
    start();
    EXPECT_THAT(report(),
                ElementsAre("a.pcapng: the first divergence is at message 1:",
                            "CreateReply on thread DtvEvent-1 had another result",
                            "                            recorded                   this run",
                            "  result                    refused, 1                 accepted",
                            "divergences: 1 with another result",
                            "replay: 2 of 2 messages, 1 divergence"));
}

TEST_F(Diverging, ACommandThatACallbackDoesNotSendIsMissing) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kCommand, 3, "DtvEvent-1", kStartScan, {7, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    start();
    const Outcome outcome = finish();
    EXPECT_THAT(outcome.divergences.counts, ElementsAre(0, 0, 1, 0, 0));
    EXPECT_EQ(outcome.passed, 2u);
    EXPECT_EQ(delivered().size(), 2u);
}

TEST_F(Diverging, ManyFieldsAreCounted) {
    add(kCommand, 1, "desk", 0x10000017,
        {1, 0, 1, 1, 64, 1, 60, 0, 0, 0, 16, 20, 3, 2, 0, 0, 0, 0, 1, 1});
    start();
    on("desk",
       [&] { send(0x10000017, {2, 0, 2, 2, 1, 1, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0}); });
    const std::vector<std::string> lines = report();
    EXPECT_EQ(lines.at(3), "  handle                    1                          2");
    EXPECT_EQ(lines.at(6), "  cap.surface_width         320                        257");
    EXPECT_EQ(lines.at(7), "  and 10 more fields");
}

TEST_F(Diverging, LongSentencesTakeTwoLines) {
    for (int i = 0; i < 6; ++i) {
        add(kCommand, 1, "pool-1-thread-2", 0x10000017,
            {1, 0, 1, 1, 64, 1, 60, 0, 0, 0, 16, 20, 3, 2, 0, 0, 0, 0, 1, 1});
    }
    start();
    service->enter(0);
    for (int i = 0; i < 5; ++i) {
        send(0x10000017, service->recording().entries[service->nextCommand()].message.record);
    }
    service->giveUp(service->nextCommand(),
                    "300 of cap_lang is no constant of BG_TE_DTVSVLIB_CAP_LANG");
    const std::vector<std::string> lines = report();
    EXPECT_EQ(lines.at(1),
              "ControlCap on thread pool-1-thread-2 did not come: 300 of cap_lang is no");
    EXPECT_EQ(lines.at(2), "constant of BG_TE_DTVSVLIB_CAP_LANG");
    EXPECT_EQ(lines.size(), 17u);
}

TEST_F(Diverging, IsAJsonObjectOnOneLine) {
    add(kCommand, 1, "desk", kStartScan, {1, 0});
    add(kCommand, 1, "desk", kSelectChannel, channel(13));
    start();
    on("desk", [&] {
        send(kStartScan, {1, 0});
        send(kSelectChannel, channel(14));
    });
    const Outcome outcome = finish();
    EXPECT_EQ(
        reportJson("a \"b\"", service->recording(), outcome),
        R"({"version":1,"file":"a \"b\"","messages":2,"passed":2,"left_out":0,"stalled":false,)"
        R"("divergences":{"other_bytes":1,"unexpected_command":0,"missing_command":0,)"
        R"("other_result":0,"unfinished_event":0},"first":{"number":2,)"
        R"("difference":"other_bytes","what":"SelectChannel on thread desk has other bytes",)"
        R"("fields":[{"field":"physical_channel","recorded":"13","this_run":"14"}],)"
        R"("before":[{"number":1,"kind":"command","name":"StartScan","thread":"desk"}]},)"
        R"("status":1})");
}

} // namespace
