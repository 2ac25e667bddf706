// When messages pass: the order of events, answers and refusals, and on which threads.
#include "replay/tests/replay_test.h"

#include <chrono>

namespace {

using namespace replay;
using testing::ElementsAre;
using testing::IsEmpty;

using Order = ReplayTest;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

TEST_F(Order, AnEventWaitsForAllCommandsBeforeIt) {
    add(kCommand, 1, "one", kStartScan, {1, 0});
    add(kCommand, 2, "two", kCancelScan, {2, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    start();
    on("one", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_THAT(delivered(), IsEmpty());
    on("two", [&] { EXPECT_EQ(send(kCancelScan, {2, 0}), 0); });
    EXPECT_THAT(report(), ElementsAre("replay: 3 of 3 messages, no divergence"));
    EXPECT_THAT(delivered(), ElementsAre(kScanReply));
    EXPECT_THAT(listener->task_names, ElementsAre("DtvEvent-1"));
}

TEST_F(Order, CommandsOfSeveralThreadsMayComeInAnotherOrder) {
    add(kCommand, 1, "one", kStartScan, {1, 0});
    add(kCommand, 2, "two", kCancelScan, {2, 0});
    start();
    on("two", [&] { EXPECT_EQ(send(kCancelScan, {2, 0}), 0); });
    on("one", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
}

TEST_F(Order, EventsComeInTheirOrderOnTheirThreads) {
    for (int i = 0; i < 20; ++i) {
        add(kEvent, 3 + static_cast<uint32_t>(i % 2), i % 2 == 0 ? "DtvEvent-1" : "DtvEvent-2",
            kScanReply + i, {1, 0, 0, 0, 0, 0, 0, 0});
    }
    start();
    EXPECT_THAT(report(), ElementsAre("replay: 20 of 20 messages, no divergence"));
    std::vector<int> wanted;
    for (int i = 0; i < 20; ++i) {
        wanted.push_back(kScanReply + i);
    }
    EXPECT_EQ(delivered(), wanted);
    EXPECT_EQ(listener->threads.size(), 2u);
}

TEST_F(Order, WhatComesAfterAnEventWaitsForItsCallback) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kEvent, 4, "DtvEvent-2", kScanReply + 1, {1, 0, 0, 0, 0, 0, 0, 0});
    std::atomic<int> begun{0};
    listener->before = [&] {
        if (++begun == 1) {
            std::this_thread::sleep_for(milliseconds(50));
            EXPECT_EQ(begun, 1);
        }
    };
    start();
    EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
    EXPECT_THAT(delivered(), ElementsAre(kScanReply, kScanReply + 1));
}

TEST_F(Order, ACallbackMayWaitForWhatComesAfterItsEvent) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kCommand, 1, "one", kReleaseSync, {1, 0});
    add(kAnswer, 1, "one", kReleaseSync, {1, 0, 0, 0, 9, 0, 0, 0});
    std::atomic<bool> answered{false};
    listener->before = [&] {
        while (!answered) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    };
    start();
    on("one", [&] {
        uint8_t record[] = {1, 0};
        uint8_t reply[8] = {};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 0);
        answered = true;
    });
    EXPECT_THAT(report(), ElementsAre("replay: 3 of 3 messages, no divergence"));
}

TEST_F(Order, ASynchronousAnswerWaitsForWhatWasRecordedBeforeIt) {
    add(kCommand, 1, "one", kReleaseSync, {1, 0});
    add(kCommand, 2, "two", kCancelScan, {2, 0});
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kAnswer, 1, "one", kReleaseSync, {1, 0, 0, 0, 9, 0, 0, 0});
    start();
    std::atomic<bool> answered{false};
    std::thread sender = thread("one", [&] {
        uint8_t record[] = {1, 0};
        uint8_t reply[8] = {};
        int size = 0;
        EXPECT_EQ(listener->sendEventToServer(kReleaseSync, record, 2, reply, &size), 0);
        answered = true;
        EXPECT_EQ(size, 8);
        EXPECT_EQ(reply[4], 9);
        EXPECT_THAT(delivered(), ElementsAre(kScanReply));
    });
    std::this_thread::sleep_for(milliseconds(50));
    EXPECT_FALSE(answered);
    on("two", [&] { EXPECT_EQ(send(kCancelScan, {2, 0}), 0); });
    sender.join();
    EXPECT_THAT(report(), ElementsAre("replay: 4 of 4 messages, no divergence"));
}

TEST_F(Order, CommandsOfACallbackAreThoseOfItsThread) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kCommand, 3, "DtvEvent-1", kStartScan, {7, 0});
    add(kCommand, 1, "one", kCancelScan, {2, 0});
    add(kRefusal, 3, "DtvEvent-1", kScanReply, {}, 5);
    listener->answer = 5;
    listener->before = [&] { EXPECT_EQ(send(kStartScan, {7, 0}), 0); };
    start();
    std::thread sender = thread("one", [&] { EXPECT_EQ(send(kCancelScan, {2, 0}), 0); });
    sender.join();
    EXPECT_THAT(report(), ElementsAre("replay: 4 of 4 messages, no divergence"));
}

TEST_F(Order, ThreadsAreFoundByNameThenInTheOrderInWhichTheyAppear) {
    add(kCommand, 1, "pool", kStartScan, {1, 0});
    add(kCommand, 2, "pool", kStartScan, {2, 0});
    add(kCommand, 3, "Thread-8", kStartScan, {3, 0});
    start();
    on("pool", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    on("Thread-9", [&] { EXPECT_EQ(send(kStartScan, {3, 0}), 0); });
    on("pool", [&] { EXPECT_EQ(send(kStartScan, {2, 0}), 0); });
    EXPECT_THAT(report(), ElementsAre("replay: 3 of 3 messages, no divergence"));
}

TEST_F(Order, AThreadThatTheCaptureHasOnceMayBeTwo) {
    add(kCommand, 1, "pool", kStartScan, {1, 0});
    add(kCommand, 1, "pool", kStartScan, {2, 0});
    start();
    on("pool", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    on("pool", [&] { EXPECT_EQ(send(kStartScan, {2, 0}), 0); });
    EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
}

TEST_F(Order, TimePassesAsRecordedOrFaster) {
    const auto replay = [&](double speed) {
        settings.pace.speed = speed;
        start();
        const Clock::time_point begin = Clock::now();
        on("one", [&] { send(kStartScan, {1, 0}); });
        EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
        return std::chrono::duration<double>(Clock::now() - begin).count();
    };
    add(kCommand, 1, "one", kStartScan, {1, 0});
    time += 299000000;
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_GE(replay(1), 0.3);
    EXPECT_GE(replay(0.5), 0.6);

    writer = CaptureWriter();
    add(kCommand, 1, "one", kStartScan, {1, 0});
    time += 20000000000; // longer than the replay waits for what does not come
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    const double faster = replay(100);
    EXPECT_GE(faster, 0.2);
    EXPECT_LT(faster, 20);
}

TEST_F(Order, WhatTheRecordingTookIsNoPartOfTheWait) {
    settings.pace = {1, milliseconds(200)};
    add(kCommand, 1, "one", kStartScan, {1, 0});
    time += 900000000;
    add(kCommand, 1, "one", kCancelScan, {1, 0});
    start();
    on("one", [&] {
        send(kStartScan, {1, 0});
        std::this_thread::sleep_for(milliseconds(600));
        EXPECT_EQ(send(kCancelScan, {1, 0}), 0);
    });
    EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
}

TEST_F(Order, NoMessageWaitsForItsTimeUnlessItIsAskedFor) {
    add(kCommand, 1, "one", kStartScan, {1, 0});
    time += 3ull * 3600 * 1000000000;
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    start();
    on("one", [&] { send(kStartScan, {1, 0}); });
    EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
}

TEST_F(Order, OneReplayAfterTheOtherUsesTheSameThreads) {
    add(kEvent, 3, "DtvEvent-1", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    add(kEvent, 4, "DtvEvent-2", kScanReply, {1, 0, 0, 0, 0, 0, 0, 0});
    for (int i = 0; i < 30; ++i) {
        start();
        EXPECT_THAT(report(), ElementsAre("replay: 2 of 2 messages, no divergence"));
    }
    EXPECT_EQ(listener->events.size(), 60u);
    EXPECT_EQ(listener->threads.size(), 2u);
}

TEST_F(Order, ThePlayerSendsTheCommandsOfAllThreadsInTheirTurn) {
    std::vector<int> wanted;
    for (int i = 0; i < 200; ++i) {
        const auto number = static_cast<uint8_t>(i);
        add(kCommand, 1 + static_cast<uint32_t>(i * i % 3), "sender", kStartScan, {number, 0});
        wanted.push_back(i);
    }
    start();
    std::mutex mutex;
    std::vector<int> sent;
    std::vector<std::thread> threads;
    for (const size_t sender : service->senders()) {
        threads.push_back(thread("any", [&, sender] {
            service->enter(sender);
            for (size_t entry = service->nextCommand(); entry != kNone;
                 entry = service->nextCommand()) {
                const auto record = service->recording().entries[entry].message.record;
                {
                    const std::lock_guard<std::mutex> lock(mutex);
                    sent.push_back(record[0]);
                }
                EXPECT_EQ(send(kStartScan, record), 0);
                EXPECT_TRUE(service->hasCome(entry));
            }
        }));
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(sent, wanted);
    EXPECT_THAT(report(), ElementsAre("replay: 200 of 200 messages, no divergence"));
}

} // namespace
