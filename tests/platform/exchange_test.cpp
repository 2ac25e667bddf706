// libDtv.so at the desk: commands reach its service, events its listener, lines its log.
#include "platform/listener_double.h"

#include "harness/harness.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <atomic>
#include <chrono>

namespace {

using namespace platform;
using android::sp;
using std::chrono::seconds;
using testing::ElementsAre;

class Exchange : public testing::Test {
protected:
    sp<ListenerDouble> listener = new ListenerDouble;
    char record[4] = {3, 0, 7, 0};
};

TEST_F(Exchange, AnswersMinusOneWithoutAService) {
    dtv::setServiceEndpoint(nullptr);
    EXPECT_EQ(listener->sendEventToServer(0x10000006, record, 4, nullptr, nullptr), -1);
    TS_DTVSV_SP references;
    EXPECT_EQ(listener->sendEventToServer(0x1000000c, record, 4, &references, nullptr, nullptr),
              -1);
}

TEST_F(Exchange, PassesCommandsToTheService) {
    auto service = harness::ServiceDouble::serve();
    service->setResult(7);
    EXPECT_EQ(listener->sendEventToServer(0x10000006, record, 4, nullptr, nullptr), 7);
    TS_DTVSV_SP references;
    references.surface[0] = new android::Surface;
    references.surface_count = 1;
    EXPECT_EQ(listener->sendEventToServer(0x1000000c, record, 4, &references, nullptr, nullptr), 7);
    EXPECT_THAT(service->takeTexts(),
                ElementsAre("10000006: 03 00 07 00", "1000000c surfaces=1: 03 00 07 00"));
}

TEST_F(Exchange, WritesNoMoreOfAnAnswerThanFits) {
    auto service = harness::ServiceDouble::serve();
    service->setReply(harness::fromHex("01020304 05060708 090a0b0c"));
    unsigned char reply[12] = {};
    int size = 0;
    EXPECT_EQ(listener->sendEventToServer(0x1000003f, record, 4, reply, &size), 0);
    EXPECT_EQ(reply[7], 8);
    EXPECT_EQ(reply[8], 0) << "the reply is 8 bytes long";
    EXPECT_EQ(listener->sendEventToServer(0x10000040, record, 4, reply, &size), 0);
    EXPECT_EQ(reply[11], 12);
    std::vector<harness::Message> sent = service->take();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0].reply_capacity, 8);
    EXPECT_EQ(sent[1].reply_capacity, 12);
}

TEST_F(Exchange, DeliversOnTheCallingThreadAsItIs) {
    listener->answer = 42;
    EXPECT_EQ(dtv::deliverEvent(0x1000004f, nullptr, -5), 42);
    ASSERT_EQ(listener->events.size(), 1u);
    EXPECT_EQ(listener->events[0].id, 0x1000004f);
    EXPECT_FALSE(listener->events[0].had_data);
    EXPECT_EQ(listener->events[0].size, -5);
    EXPECT_EQ(listener->threads, std::set<pthread_t>{pthread_self()});
}

/// Notes the steps of a delivery, with what the listener has had by then.
class NotedSteps : public dtv::DeliverySteps {
public:
    explicit NotedSteps(ListenerDouble& listener) : listener_(listener) {}
    void begins() override { note("begins"); }
    void ended(int result) override { note("ended " + std::to_string(result)); }

    std::vector<std::string> steps;

private:
    void note(const std::string& step) {
        steps.push_back(step + " with " + std::to_string(listener_.events.size()));
    }

    ListenerDouble& listener_;
};

TEST_F(Exchange, SaysWhichStepOfADeliveryIsReached) {
    const sp<ListenerDouble> listener = new ListenerDouble;
    listener->answer = 42;
    NotedSteps steps(*listener);
    char eight[8] = {};
    EXPECT_EQ(dtv::deliverEvent(1, eight, 8, steps), 42);
    EXPECT_THAT(steps.steps, testing::ElementsAre("begins with 0", "ended 42 with 1"));
}

/// Notes which commands have returned.
class ReturningService : public dtv::ServiceEndpoint {
public:
    int onCommand(const dtv::Command&) override { return 3; }
    int onSynchronousCommand(const dtv::Command&, const dtv::Reply&) override { return 0; }
    void onReturned(int message_id) override { returned.push_back(message_id); }

    std::vector<int> returned;
};

TEST_F(Exchange, TellsTheServiceThatACommandReturns) {
    const sp<ListenerDouble> listener = new ListenerDouble;
    const auto service = std::make_shared<ReturningService>();
    dtv::setServiceEndpoint(service);
    char record[8] = {};
    int size = 0;
    EXPECT_EQ(listener->sendEventToServer(0x10000006, record, 8, nullptr, nullptr), 3);
    EXPECT_EQ(listener->sendEventToServer(0x10000038, record, 2, record, &size), 0);
    EXPECT_THAT(service->returned, testing::ElementsAre(0x10000006, 0x10000038));
    dtv::setServiceEndpoint(nullptr);
}

TEST_F(Exchange, DeliversNothingWithoutAListener) {
    char eight[8] = {};
    listener = nullptr;
    EXPECT_EQ(dtv::deliverEvent(1, eight, 8), dtv::noListener);
    EXPECT_FALSE(dtv::postEvent(1, eight, 8));
}

TEST_F(Exchange, DeliversPostedEventsInOrderOnOneThread) {
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(dtv::postEvent(i, &i, 4));
    }
    ASSERT_TRUE(dtv::waitUntilDelivered(seconds(20)));
    ASSERT_EQ(listener->events.size(), 100u);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(listener->events[static_cast<size_t>(i)].id, i);
    }
    EXPECT_EQ(listener->threads.size(), 1u);
    EXPECT_EQ(listener->threads.count(pthread_self()), 0u);
}

TEST_F(Exchange, FillsAShortRecordUpToEightBytes) {
    const unsigned char two[] = {1, 2};
    ASSERT_TRUE(dtv::postEvent(5, two, 2));
    ASSERT_TRUE(dtv::postEvent(5, two, -1));
    ASSERT_TRUE(dtv::waitUntilDelivered(seconds(20)));
    ASSERT_EQ(listener->events.size(), 2u);
    EXPECT_THAT(listener->events[0].bytes, ElementsAre(1, 2, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(listener->events[0].size, 2);
    EXPECT_THAT(listener->events[1].bytes, ElementsAre(0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(listener->events[1].size, -1);
}

TEST_F(Exchange, CountsTheEventsThatWait) {
    std::atomic<bool> inside{false};
    std::atomic<bool> may_end{false};
    listener->before = [&] {
        inside = true;
        while (!may_end) {
            usleep(100);
        }
    };
    int value = 0;
    ASSERT_TRUE(dtv::postEvent(5, &value, 4));
    while (!inside) {
        usleep(100);
    }
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(dtv::postEvent(5, &value, 4));
    }
    EXPECT_EQ(dtv::mostWaiting(), 1000u) << "no other test has more";
    may_end = true;
    ASSERT_TRUE(dtv::waitUntilDelivered(seconds(20)));
    EXPECT_EQ(dtv::mostWaiting(), 1000u);
    EXPECT_EQ(listener->events.size(), 1001u);
}

TEST_F(Exchange, KeepsAListenerWhileItIsCalled) {
    std::atomic<bool> inside{false};
    std::atomic<bool> may_end{false};
    listener->before = [&] {
        inside = true;
        while (!may_end) {
            usleep(100);
        }
    };
    android::wp<ListenerDouble> watched = listener;
    int value = 0;
    ASSERT_TRUE(dtv::postEvent(5, &value, 4));
    while (!inside) {
        usleep(100);
    }
    listener = nullptr;
    {
        sp<ListenerDouble> still = watched.promote();
        EXPECT_NE(still, nullptr) << "the delivery holds a reference";
    }
    may_end = true;
    EXPECT_TRUE(dtv::waitUntilDelivered(seconds(20)));
    EXPECT_FALSE(dtv::postEvent(5, &value, 4));
}

} // namespace
