// Events posted from many threads, delivered by 1 to 20. The number of delivery threads grows from
// test to test, so each test states how many it needs at least.
#include "platform/calling_listener.h"

#include "harness/harness.h"

#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <random>
#include <set>
#include <thread>
#include <vector>

namespace {

using namespace platform;
using android::sp;
using std::chrono::milliseconds;

constexpr int kPosters = 6;
constexpr int kEvents = 300; ///< of each poster

/// What the posters have posted and the listener has got.
class Ledger {
public:
    /// An event that a poster posts. `random` chooses what the poster does then.
    void post(int poster, int number, std::mt19937& random) {
        EXPECT_TRUE(dtv::postEvent(poster * kEvents + number, nullptr, 0));
        switch (random() % 8) {
        case 0:
            usleep(static_cast<useconds_t>(random() % 50));
            break;
        case 1:
            EXPECT_TRUE(dtv::waitUntilDelivered(kPatience));
            EXPECT_EQ(seen(poster), number + 1) << "of poster " << poster;
            break;
        default:
            break;
        }
    }

    /// The events of a poster that have been delivered.
    int seen(int poster) const {
        int count = 0;
        for (int number = 0; number < kEvents; ++number) {
            count += seen_[static_cast<size_t>(poster * kEvents + number)];
        }
        return count;
    }

    void deliver(int event) {
        EXPECT_EQ(seen_.at(static_cast<size_t>(event))++, 0) << "delivered twice";
        std::atomic<int>& next = next_.at(static_cast<size_t>(event / kEvents));
        disorder_ += event % kEvents == next ? 0 : 1;
        ++next;
    }

    int disorder() const { return disorder_; }

private:
    std::array<std::atomic<int>, kPosters * kEvents> seen_{};
    std::array<std::atomic<int>, kPosters> next_{};
    std::atomic<int> disorder_{0};
};

TEST(ManyThreads, DeliverEveryEventOnce) {
    static bool one_thread = true; // until the first round with more
    for (const int threads : {1, 2, 3, 5, 10, 20}) {
        SCOPED_TRACE(threads);
        one_thread = one_thread && threads == 1;
        dtv::setDeliveryThreads(threads);
        Ledger ledger;
        const sp<CallingListener> listener =
            new CallingListener([&](int event) { ledger.deliver(event); });
        std::vector<std::thread> posters;
        for (int poster = 0; poster < kPosters; ++poster) {
            posters.emplace_back([&ledger, poster] {
                std::mt19937 random(static_cast<unsigned>(poster));
                for (int number = 0; number < kEvents; ++number) {
                    ledger.post(poster, number, random);
                }
            });
        }
        for (std::thread& poster : posters) {
            poster.join();
        }
        ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
        for (int poster = 0; poster < kPosters; ++poster) {
            EXPECT_EQ(ledger.seen(poster), kEvents) << poster;
        }
        if (one_thread) {
            EXPECT_EQ(ledger.disorder(), 0) << "one thread delivers in order";
        }
    }
}

TEST(ManyThreads, DeliverOneEventAfterTheOther) {
    std::atomic<int> delivered{0};
    const sp<CallingListener> listener = new CallingListener([&](int) { ++delivered; });
    for (int event = 1; event <= 3000; ++event) {
        ASSERT_TRUE(dtv::postEvent(event, nullptr, 0));
        ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
        ASSERT_EQ(delivered, event);
    }
}

/// A listener whose callbacks wait until `count` of them are there at once.
class Meeting {
public:
    explicit Meeting(int count) : count_(count) {}
    bool join() {
        std::unique_lock<std::mutex> lock(mutex_);
        ++arrived_;
        changed_.notify_all();
        return changed_.wait_for(lock, kPatience, [this] { return arrived_ >= count_; });
    }

private:
    const int count_;
    std::mutex mutex_;
    std::condition_variable changed_;
    int arrived_ = 0;
};

TEST(ManyThreads, AreAllWokenWhenEachIsNeeded) {
    constexpr int kThreads = 20;
    dtv::setDeliveryThreads(kThreads);
    std::mutex mutex;
    std::set<std::thread::id> known;
    std::atomic<int> met{0};
    Meeting* meeting = nullptr;
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        if (event != 0) {
            met += meeting->join() ? 1 : 0;
            return;
        }
        {
            const std::lock_guard<std::mutex> lock(mutex);
            known.insert(std::this_thread::get_id());
        }
        usleep(1000);
    });
    // The first event of a thread is delivered alone, so that these cannot meet.
    for (int i = 0; i < 200 && known.size() < kThreads; ++i) {
        for (int event = 0; event < 2 * kThreads; ++event) {
            ASSERT_TRUE(dtv::postEvent(0, nullptr, 0));
        }
        ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
    }
    ASSERT_EQ(known.size(), static_cast<size_t>(kThreads));
    for (int round = 0; round < 20; ++round) {
        Meeting all(kThreads);
        meeting = &all;
        for (int event = 1; event <= kThreads; ++event) {
            ASSERT_TRUE(dtv::postEvent(event, nullptr, 0));
        }
        ASSERT_TRUE(dtv::waitUntilDelivered(kPatience));
        ASSERT_EQ(met, (round + 1) * kThreads);
        usleep(static_cast<useconds_t>(round * 100)); // so that some of them sleep again
    }
}

TEST(ManyThreads, ReportToEveryThreadThatWaits) {
    // Several threads wait for different events while others time out.
    Point may_end;
    std::atomic<int> delivered{0};
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        if (event == 0) {
            may_end.wait();
        }
        ++delivered;
    });
    ASSERT_TRUE(dtv::postEvent(0, nullptr, 0));
    std::vector<std::thread> waiters;
    for (int waiter = 1; waiter <= 8; ++waiter) {
        ASSERT_TRUE(dtv::postEvent(waiter, nullptr, 0));
        waiters.emplace_back([&delivered, waiter] {
            EXPECT_FALSE(dtv::waitUntilDelivered(milliseconds(waiter % 3)));
            EXPECT_TRUE(dtv::waitUntilDelivered(kPatience));
            EXPECT_GE(delivered, waiter + 1) << "those posted before";
        });
    }
    usleep(20000);
    may_end.reach();
    for (std::thread& waiter : waiters) {
        waiter.join();
    }
}

} // namespace
