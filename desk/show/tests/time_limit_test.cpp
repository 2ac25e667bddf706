// Limits in time as people write them.
#include "desk/show/time_limit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

using sessions::Moment;
using show::timeLimitOf;
using show::TimeRange;

class TimeLimits : public testing::Test {
protected:
    TimeLimits() { setZone("BRT3"); }
    ~TimeLimits() override { setZone("UTC"); }

    static void setZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
};

/// 2026-03-31 20:14:03.5 in a zone three hours after UTC.
constexpr Moment kMoment{1774998843, 500000000};

bool isIn(const std::string& from, const std::string& to, const Moment& moment = kMoment) {
    TimeRange range;
    if (!from.empty()) {
        range.first = timeLimitOf(from);
        EXPECT_TRUE(range.first.has_value()) << from;
    }
    if (!to.empty()) {
        range.last = timeLimitOf(to);
        EXPECT_TRUE(range.last.has_value()) << to;
    }
    return range.contains(moment);
}

TEST_F(TimeLimits, BeginAtTheTimeThatIsWritten) {
    EXPECT_TRUE(isIn("20:14", ""));
    EXPECT_TRUE(isIn("20:14:03", ""));
    EXPECT_TRUE(isIn("20:14:03.5", ""));
    EXPECT_FALSE(isIn("20:14:03.500000001", ""));
    EXPECT_FALSE(isIn("20:14:04", ""));
    EXPECT_TRUE(isIn("2026-03-31", ""));
    EXPECT_FALSE(isIn("2026-04-01", ""));
    EXPECT_TRUE(isIn("2026-03-31 20:14:03.5", ""));
    EXPECT_FALSE(isIn("2026-03-31T20:14:03.51", ""));
    EXPECT_TRUE(isIn("2026-03-31T23:14:03.500000000Z", ""));
    EXPECT_FALSE(isIn("2026-03-31T23:14:04Z", ""));
}

TEST_F(TimeLimits, EndWithTheUnitThatIsWritten) {
    EXPECT_TRUE(isIn("", "20:14"));
    EXPECT_FALSE(isIn("", "20:13"));
    EXPECT_TRUE(isIn("", "20:14:03"));
    EXPECT_TRUE(isIn("", "20:14:03.5"));
    EXPECT_FALSE(isIn("", "20:14:03.4"));
    EXPECT_FALSE(isIn("", "20:14:03.499999999"));
    EXPECT_TRUE(isIn("", "2026-03-31"));
    EXPECT_FALSE(isIn("", "2026-03-30"));
    EXPECT_TRUE(isIn("", "2026-03-31 20:14"));
    EXPECT_TRUE(isIn("", "2026-03-31 23:14:03Z"));
    EXPECT_FALSE(isIn("", "2026-03-31 23:14:02Z"));
}

TEST_F(TimeLimits, CombineOnOneDayAndAcrossMidnight) {
    EXPECT_TRUE(isIn("20:14", "20:14"));
    EXPECT_FALSE(isIn("20:15", "20:20"));
    EXPECT_FALSE(isIn("20:00", "20:13"));
    EXPECT_TRUE(isIn("20:00", "01:00"));
    EXPECT_TRUE(isIn("23:00", "20:14"));
    EXPECT_FALSE(isIn("23:00", "01:00"));
    EXPECT_TRUE(isIn("2026-03-31", "20:15"));
    EXPECT_FALSE(isIn("2026-04-01", "20:15"));
}

TEST_F(TimeLimits, AreEmptyWhenTheEndIsBeforeTheBeginning) {
    TimeRange range;
    range.first = timeLimitOf("2026-03-31 20:14");
    EXPECT_FALSE(range.isEmpty());
    range.last = timeLimitOf("2026-03-31");
    EXPECT_FALSE(range.isEmpty());
    range.last = timeLimitOf("2026-03-31 20:13");
    EXPECT_TRUE(range.isEmpty());
    range.last = timeLimitOf("01:00");
    EXPECT_FALSE(range.isEmpty());
}

TEST_F(TimeLimits, AreNoOtherTexts) {
    for (const char* text : {"",
                             "20",
                             "20:1",
                             "2:14",
                             "24:00",
                             "20:60",
                             "20:14:",
                             "20:14:60",
                             "20:14:03.",
                             "20:14:03.1234567890",
                             "20:14x",
                             "20:14Z",
                             " 20:14",
                             "2026-3-31",
                             "2026-02-29",
                             "2026-13-01",
                             "2026-00-01",
                             "2026-01-00",
                             "2026-04-31",
                             "2026-03-31T",
                             "2026-03-31 ",
                             "2026-03-31  20:14",
                             "2026-03-31 20:14:03+03:00",
                             "yesterday",
                             "-1:00"}) {
        EXPECT_FALSE(timeLimitOf(text).has_value()) << '"' << text << '"';
    }
    EXPECT_TRUE(timeLimitOf("2024-02-29").has_value());
}

TEST_F(TimeLimits, HoldNoMomentThatTheMachineCannotPlace) {
    const Moment beyond{9223372036854775807, 0};
    EXPECT_FALSE(isIn("00:00", "", beyond));
    EXPECT_TRUE(isIn("2026-03-31", "", beyond));
}

} // namespace
