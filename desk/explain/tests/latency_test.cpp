// How long answers take: counts, percentiles and the longest.
#include "desk/explain/latency.h"

#include "desk/explain/text.h"

#include <gtest/gtest.h>

namespace explain::tests {
namespace {

constexpr int64_t kMillisecond = 1000000; ///< nanoseconds

TEST(Durations, OfNothing) {
    const Durations none;
    EXPECT_EQ(none.count(), 0U);
    EXPECT_EQ(none.percentile(50), 0);
    EXPECT_EQ(none.longest(), 0);
    EXPECT_EQ(none.longestLine(), 0U);
}

TEST(Durations, OfOneAreExact) {
    Durations one;
    one.add(123456789, 7);
    EXPECT_EQ(one.count(), 1U);
    EXPECT_EQ(one.longest(), 123456789);
    EXPECT_EQ(one.longestLine(), 7U);
    EXPECT_EQ(one.percentile(50), 123456789);
    EXPECT_EQ(one.percentile(95), 123456789);
    one.add(123456789, 8);
    EXPECT_EQ(one.percentile(50), 123456789);
}

TEST(Durations, PercentilesAreExactToSevenPercent) {
    Durations durations;
    for (int i = 1; i <= 1000; ++i) {
        durations.add(i * kMillisecond, static_cast<uint64_t>(i));
    }
    EXPECT_EQ(durations.count(), 1000U);
    EXPECT_NEAR(static_cast<double>(durations.percentile(50)), 500e6, 500e6 * 0.07);
    EXPECT_NEAR(static_cast<double>(durations.percentile(95)), 950e6, 950e6 * 0.07);
    EXPECT_EQ(durations.longest(), 1000 * kMillisecond);
    EXPECT_EQ(durations.longestLine(), 1000U);
}

TEST(Durations, ThePercentileIsADurationThatManyAreNotLongerThan) {
    Durations durations;
    for (int i = 0; i < 19; ++i) {
        durations.add(3, 1);
    }
    durations.add(5, 2);
    EXPECT_EQ(durations.percentile(95), 3); // 19 of 20
    EXPECT_EQ(durations.percentile(96), 5);
    EXPECT_EQ(durations.percentile(100), 5);
    EXPECT_EQ(durations.percentile(50), 3);
}

TEST(Durations, ANegativeOneCountsAsZero) {
    Durations durations;
    durations.add(-5, 9);
    EXPECT_EQ(durations.longest(), 0);
    EXPECT_EQ(durations.longestLine(), 9U);
    EXPECT_EQ(durations.percentile(50), 0);
}

TEST(Durations, TheLongestThereIs) {
    Durations durations;
    durations.add(INT64_MAX, 1);
    EXPECT_EQ(durations.longest(), INT64_MAX);
    EXPECT_GT(durations.percentile(50), INT64_MAX / 100 * 93);
    durations.add(INT64_MAX, 2);
    EXPECT_EQ(durations.longestLine(), 1U); // the first of equal ones
}

TEST(Text, Durations) {
    EXPECT_EQ(durationText(0), "0 us");
    EXPECT_EQ(durationText(850000), "850 us");
    EXPECT_EQ(durationText(999499), "999 us");
    EXPECT_EQ(durationText(1000000), "1.0 ms");
    EXPECT_EQ(durationText(12340000), "12.3 ms");
    EXPECT_EQ(durationText(kSecond), "1.00 s");
    EXPECT_EQ(durationText(119 * kSecond), "119.00 s");
    EXPECT_EQ(durationText(120 * kSecond), "2 min 0 s");
    EXPECT_EQ(durationText(3599 * kSecond), "59 min 59 s");
    EXPECT_EQ(durationText(3600 * kSecond), "1 h 0 min");
    EXPECT_EQ(durationText(172799 * kSecond), "47 h 59 min");
    EXPECT_EQ(durationText(172800 * kSecond), "2 days");
    // A unit has no value that rounds to the next one.
    EXPECT_EQ(durationText(999600), "1.0 ms");
    EXPECT_EQ(durationText(999960000), "1.00 s");
}

TEST(Text, Shortened) {
    EXPECT_EQ(shortened("abc", 3), "abc");
    EXPECT_EQ(shortened("abcd", 3), "ab~");
    EXPECT_EQ(shortened("\x01"
                        "b",
                        10),
              "\\x01b");
    EXPECT_EQ(shortened("\xff", 10), "\\xff");
    // Two columns each.
    EXPECT_EQ(shortened("日本語", 6), "日本語");
    EXPECT_EQ(shortened("日本語", 5), "日本~");
    EXPECT_EQ(shortened("日本語", 4), "日~");
    EXPECT_EQ(shortened("", 0), "");
}

TEST(Text, Wrapped) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(wrapped("a bc def", 4), (Lines{"a bc", "def"}));
    EXPECT_EQ(wrapped("", 4), Lines{""});
    EXPECT_EQ(wrapped("\"./run rows\"", 20), Lines{"\"./run rows\""});
    EXPECT_EQ(wrapped("a\x1b[31m", 20), Lines{"a\\x1b[31m"});
    // A word that no line holds is divided.
    EXPECT_EQ(wrapped("abcdefgh ij", 4), (Lines{"abcd", "efgh", "ij"}));
    EXPECT_EQ(wrapped("日本語", 4), (Lines{"日本", "語"}));
}

} // namespace
} // namespace explain::tests
