// The first event of each thread is delivered alone.
#include "platform/calling_listener.h"

#include "harness/harness.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace platform;
using android::sp;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;
using testing::ElementsAre;

/// A listener that counts the events that are under way at once.
class OverlapRecorder : public DtvSvLibListener {
public:
    int recvEventFromServer(int, void*, int) override {
        const bool first = begin();
        usleep(first ? 5000 : 500);
        end(first);
        return 0;
    }

    std::atomic<int> overlaps{0}; ///< times that an event was in progress together with a first one
    std::atomic<int> most{0};     ///< events in progress at once
    std::atomic<int> firsts{0};
    std::atomic<int> events{0};

private:
    bool begin() {
        const std::lock_guard<std::mutex> lock(mutex_);
        const bool first = threads_.insert(std::this_thread::get_id()).second;
        first_under_way_ += first ? 1 : 0;
        ++under_way_;
        ++events;
        firsts += first ? 1 : 0;
        overlaps += first_under_way_ > 0 && under_way_ > 1 ? 1 : 0;
        most = std::max(most.load(), under_way_);
        return first;
    }
    void end(bool first) {
        const std::lock_guard<std::mutex> lock(mutex_);
        first_under_way_ -= first ? 1 : 0;
        --under_way_;
    }

    std::mutex mutex_;
    std::set<std::thread::id> threads_;
    int under_way_ = 0;
    int first_under_way_ = 0;
};

/// Starts threads that all begin `body` at the same moment, and waits for their end.
void atOnce(int count, const std::function<void(int)>& body) {
    Point start;
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back([&, number] {
            start.wait();
            body(number);
        });
    }
    start.reach();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(FirstEvent, IsDeliveredAloneOnTwentyThreadsAtOnce) {
    sp<OverlapRecorder> listener = new OverlapRecorder;
    atOnce(20, [](int) {
        for (int event = 0; event < 20; ++event) {
            EXPECT_EQ(deliver(1), 0);
        }
    });
    EXPECT_EQ(listener->events, 400);
    EXPECT_EQ(listener->firsts, 20);
    EXPECT_EQ(listener->overlaps, 0);
    EXPECT_GT(listener->most, 1) << "later events run in parallel";
}

TEST(FirstEvent, IsDeliveredAloneOnTheDeliveryThreadsBesideOthers) {
    dtv::setDeliveryThreads(3);
    sp<OverlapRecorder> listener = new OverlapRecorder;
    atOnce(4, [](int) {
        for (int event = 0; event < 50; ++event) {
            EXPECT_TRUE(dtv::postEvent(1, nullptr, 0));
            EXPECT_EQ(deliver(2), 0);
        }
    });
    ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
    EXPECT_EQ(listener->events, 400);
    EXPECT_EQ(listener->firsts, 7);
    EXPECT_EQ(listener->overlaps, 0);
}

TEST(FirstEvent, IsTheFirstForEachListener) {
    for (int round = 0; round < 2; ++round) {
        dtv::setDeliveryThreads(3);
        sp<OverlapRecorder> listener = new OverlapRecorder;
        for (int event = 0; event < 60; ++event) {
            ASSERT_TRUE(dtv::postEvent(1, nullptr, 0));
        }
        ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
        EXPECT_EQ(listener->firsts, 3);
        EXPECT_EQ(listener->overlaps, 0);
    }
}

TEST(FirstEvent, LetsOthersBeginAfterAWhileWhenItsCallbackWaitsForThem) {
    Point inside;
    Point other_came;
    bool met = false;
    steady_clock::time_point began;
    steady_clock::time_point other_began;
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        if (event == 1) {
            began = steady_clock::now();
            inside.reach();
            met = other_came.wait();
        } else {
            other_began = steady_clock::now();
            other_came.reach();
        }
    });
    std::thread first([] { deliver(1); });
    ASSERT_TRUE(inside.wait());
    std::thread other([] { deliver(2); });
    other.join();
    first.join();
    EXPECT_TRUE(met);
    EXPECT_GE(other_began - began, dtv::firstEventLimit);
}

TEST(FirstEvent, BeginsAfterAWhileWhenACallbackUnderWayWaitsForIt) {
    Point inside;
    Point other_came;
    bool met = false;
    steady_clock::time_point asked;
    steady_clock::time_point other_began;
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        if (event == 2) {
            inside.reach();
            met = other_came.wait();
        } else if (event == 3) {
            other_began = steady_clock::now();
            other_came.reach();
        }
    });
    std::thread known([] {
        deliver(1);
        deliver(2); // a later event of this thread
    });
    ASSERT_TRUE(inside.wait());
    asked = steady_clock::now();
    std::thread other([] { deliver(3); });
    other.join();
    known.join();
    EXPECT_TRUE(met);
    EXPECT_GE(other_began - asked, dtv::firstEventLimit);
}

TEST(FirstEvent, LetsEventsInsideItsCallbackBeginAtOnce) {
    Point inside;
    std::mutex mutex;
    std::vector<std::string> order;
    const auto note = [&](const std::string& what) {
        const std::lock_guard<std::mutex> lock(mutex);
        order.push_back(what);
    };
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        note("begin " + std::to_string(event));
        if (event == 1) {
            inside.reach();
            usleep(100000); // meanwhile the other thread requests its event
            deliver(2);
        }
        note("end " + std::to_string(event));
    });
    std::thread first([] { deliver(1); });
    ASSERT_TRUE(inside.wait());
    std::thread other([] { deliver(3); });
    other.join();
    first.join();
    EXPECT_THAT(order, ElementsAre("begin 1", "begin 2", "end 2", "end 1", "begin 3", "end 3"));
}

TEST(FirstEvent, DoesNotDelayTheEventsInsideALaterCallback) {
    Point inside;
    Point asks;
    std::mutex mutex;
    std::vector<int> order;
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            order.push_back(event);
        }
        if (event == 2) {
            inside.reach();
            asks.wait();
            usleep(100000); // by now the first event of the other thread waits
            deliver(3);
        }
    });
    std::thread known([] {
        deliver(1);
        deliver(2);
    });
    ASSERT_TRUE(inside.wait());
    std::thread other([&] {
        asks.reach();
        deliver(4);
    });
    other.join();
    known.join();
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4));
}

TEST(LaterEvents, RunInParallel) {
    // Each callback waits for that of the other thread.
    constexpr int kRounds = 50;
    std::mutex mutex;
    std::condition_variable changed;
    int arrived = 0;
    const auto meet = [&](int together) {
        std::unique_lock<std::mutex> lock(mutex);
        ++arrived;
        changed.notify_all();
        return changed.wait_for(lock, kPatience, [&] { return arrived >= together; });
    };
    std::atomic<int> met{0};
    const sp<CallingListener> listener = new CallingListener([&](int round) {
        if (round > 0) {
            met += meet(2 * round) ? 1 : 0;
        }
    });
    Point ready[2];
    const steady_clock::time_point begun = steady_clock::now();
    atOnce(2, [&](int number) {
        deliver(0); // the thread's first
        ready[number].reach();
        ready[1 - number].wait();
        for (int round = 1; round <= kRounds; ++round) {
            deliver(round);
        }
    });
    EXPECT_EQ(met, 2 * kRounds);
    EXPECT_LT(steady_clock::now() - begun, kRounds * dtv::firstEventLimit / 2)
        << "they wait for each other";
}

} // namespace
