#include "service/timeline.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

namespace {

using simulator::Pace;
using simulator::Timeline;
using std::chrono::milliseconds;

/// Stepped time, and letters that its steps write.
class TimelineTest : public testing::Test {
protected:
    void writeAfter(int delay, char letter) {
        timeline_.at(timeline_.ahead(milliseconds{delay}), [this, letter] { written_ += letter; });
    }
    int now() const { return static_cast<int>(timeline_.now().count()); }

    std::string written_;
    Timeline timeline_{1, Pace::kStepped};
};

TEST_F(TimelineTest, BeginsAtZeroAndStaysThere) {
    EXPECT_TRUE(timeline_.isStepped());
    std::this_thread::sleep_for(milliseconds{3});
    EXPECT_EQ(0, now());
    EXPECT_FALSE(timeline_.advance());
    EXPECT_EQ(0, now());
}

TEST_F(TimelineTest, DoesOneStepAfterAnother) {
    writeAfter(30, 'c');
    writeAfter(10, 'a');
    writeAfter(20, 'b');
    EXPECT_EQ("", written_);
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ("a", written_);
    EXPECT_EQ(10, now());
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ(20, now());
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ("abc", written_);
    EXPECT_EQ(30, now());
    EXPECT_FALSE(timeline_.advance());
    EXPECT_EQ(30, now());
}

TEST_F(TimelineTest, DoesStepsOfTheSameMomentInTheirOrder) {
    for (const char letter : std::string("simultaneous")) {
        writeAfter(5, letter);
    }
    while (timeline_.advance()) {
        EXPECT_EQ(5, now());
    }
    EXPECT_EQ("simultaneous", written_);
}

TEST_F(TimelineTest, DoesAStepOnTheThreadThatAdvances) {
    std::thread::id here;
    timeline_.at(timeline_.ahead(milliseconds{1}), [&here] { here = std::this_thread::get_id(); });
    timeline_.advance();
    EXPECT_EQ(std::this_thread::get_id(), here);
}

TEST_F(TimelineTest, TakesStepsFromWithinAStep) {
    timeline_.at(timeline_.ahead(milliseconds{10}), [this] {
        writeAfter(5, 'b');
        writeAfter(0, 'a');
    });
    EXPECT_TRUE(timeline_.advance());
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ("a", written_);
    EXPECT_EQ(10, now());
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ("ab", written_);
    EXPECT_EQ(15, now());
}

TEST_F(TimelineTest, DoesAStepOfThePastAtOnce) {
    const Timeline::Clock::time_point early = timeline_.ahead(milliseconds{10});
    timeline_.pass(milliseconds{50});
    timeline_.at(early, [this] { written_ += 'a'; });
    EXPECT_TRUE(timeline_.advance());
    EXPECT_EQ("a", written_);
    EXPECT_EQ(50, now());
}

TEST_F(TimelineTest, PassesExactlyTheGivenTime) {
    writeAfter(10, 'a');
    writeAfter(40, 'b');
    writeAfter(41, 'c');
    timeline_.pass(milliseconds{40});
    EXPECT_EQ("ab", written_);
    EXPECT_EQ(40, now());
    timeline_.pass(milliseconds{0});
    EXPECT_EQ("ab", written_);
    EXPECT_EQ(40, now());
    timeline_.pass(milliseconds{3600000});
    EXPECT_EQ("abc", written_);
    EXPECT_EQ(3600040, now());
}

TEST_F(TimelineTest, NotifiesAfterEachStep) {
    writeAfter(10, 'a');
    writeAfter(20, 'b');
    writeAfter(31, 'c');
    timeline_.pass(milliseconds{30}, [this] { written_ += '.'; });
    EXPECT_EQ("a.b.", written_);
}

TEST_F(TimelineTest, NeverRunsBackwards) {
    // During the first pass another one advances further.
    writeAfter(10, 'a');
    timeline_.pass(milliseconds{20}, [this] { timeline_.pass(milliseconds{100}); });
    EXPECT_EQ(110, now());
}

TEST_F(TimelineTest, DropsEverythingWhenItStops) {
    writeAfter(10, 'a');
    timeline_.stop();
    EXPECT_FALSE(timeline_.advance());
    writeAfter(10, 'b');
    EXPECT_FALSE(timeline_.advance());
    EXPECT_EQ("", written_);
}

TEST(TimelineScaleTest, CountsInTheTimeOfItsDelays) {
    // A hundredth has no exact binary fraction.
    Timeline timeline(0.01, Pace::kStepped);
    for (int step = 1; step <= 1000; ++step) {
        timeline.pass(milliseconds{1});
        ASSERT_EQ(step, timeline.now().count());
    }
}

TEST(TimelineClockTest, AdvancesWithoutBeingStepped) {
    Timeline timeline(0.01);
    EXPECT_FALSE(timeline.isStepped());
    std::atomic<bool> done{false};
    std::atomic<std::thread::id> there{};
    timeline.at(timeline.ahead(milliseconds{100}), [&] {
        there = std::this_thread::get_id();
        done = true;
    });
    const auto begun = std::chrono::steady_clock::now();
    timeline.pass(milliseconds{2000});
    EXPECT_LE(milliseconds{20}, std::chrono::steady_clock::now() - begun);
    EXPECT_LE(2000, timeline.now().count());
    for (int tries = 0; tries < 5000 && !done; ++tries) {
        std::this_thread::sleep_for(milliseconds{1});
    }
    EXPECT_TRUE(done);
    EXPECT_NE(std::this_thread::get_id(), there.load());
}

} // namespace
