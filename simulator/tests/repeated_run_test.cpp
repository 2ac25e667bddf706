// Runs in stepped time can be repeated exactly.
#include "stepped_client.h"

#include "records/status_records.h"

#include <tuple>

namespace {

/// Everything that comes in a run: when, which, and the bytes.
using Course = std::vector<std::tuple<int64_t, int, std::vector<uint8_t>>>;

class RepeatedRunTest : public SteppedTest {
protected:
    /// A scan, then half a minute of reception with the tuner's log.
    Course run(uint32_t seed) {
        follow(R"({"version": 1, "commands": [{"command": "TerminatePlay_Sync",
                                               "delay_ms": 2500}]})",
               seed);
        std::vector<TimedEvent> events;
        const auto go = [&](int64_t moment) {
            const std::vector<TimedEvent> more = until(moment);
            events.insert(events.end(), more.begin(), more.end());
        };
        EXPECT_EQ(0, send(command_id::kCreate, TS_CREATE_REQ{}));
        go(60);
        EXPECT_EQ(0, send(command_id::kStartScan, 1));
        go(1000);
        EXPECT_EQ(0, send(command_id::kSetTunerLog, 1, 1));
        EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(1, 20)));
        go(2000);
        exchangeResult(command_id::kTerminatePlay_Sync, 1);
        go(30000);
        Course all;
        for (const TimedEvent& arrived : events) {
            all.emplace_back(arrived.moment, arrived.event.id, arrived.event.bytes);
        }
        return all;
    }

    /// The signal of channel 20 right after its selection.
    uint32_t firstSignal(uint32_t seed) {
        follow(R"({"version": 1})", seed);
        openReceiving();
        return await(event_id::kReceiveSensitivityNotify)
            .event.as<TS_RECEIVE_SENSITIVITY_NOTIFY>()
            .cn;
    }
};

TEST_F(RepeatedRunTest, IsTheSameWithTheSameSeed) {
    const Course first = run(7);
    EXPECT_LT(100U, first.size());
    EXPECT_EQ(first, run(7));
}

TEST_F(RepeatedRunTest, DiffersWithAnotherSeed) {
    const Course first = run(7);
    const Course other = run(8);
    EXPECT_NE(first, other);
    // Except for the signals it is the same.
    ASSERT_EQ(first.size(), other.size());
    for (size_t index = 0; index < first.size(); ++index) {
        EXPECT_EQ(std::get<0>(first[index]), std::get<0>(other[index]));
        EXPECT_EQ(std::get<1>(first[index]), std::get<1>(other[index]));
    }
}

TEST_F(RepeatedRunTest, TakesRandomNumbersFromTheSeed) {
    // 1940, and the generator's first number modulo 30.
    EXPECT_EQ(1954U, firstSignal(0));
    EXPECT_EQ(1965U, firstSignal(1));
}

} // namespace
