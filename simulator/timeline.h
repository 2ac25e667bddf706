// The simulator's clock: things to do after a while, done one after another on one thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace simulator {

class Timeline {
public:
    using Clock = std::chrono::steady_clock;
    using Step = std::function<void()>;

    /// Every delay is multiplied by `scale`: 1 is real time, 0.01 a hundred times as fast.
    explicit Timeline(double scale);
    /// Stops.
    ~Timeline();
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    /// Time since the beginning, in the seconds that the delays are given in.
    std::chrono::milliseconds now() const;
    /// The moment that lies `delay` ahead.
    Clock::time_point ahead(std::chrono::milliseconds delay) const;
    /// Does `step` at `moment`; steps of the same moment in the order in which they were given.
    /// Returns at once.
    void at(Clock::time_point moment, Step step);

    /// Drops what is still to be done and waits for the step under way. Not from within a step.
    void stop();

private:
    void run();

    const double scale_;
    const Clock::time_point begun_ = Clock::now();
    std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::pair<Clock::time_point, uint64_t>, Step> steps_;
    uint64_t given_ = 0;
    bool stopped_ = false;
    std::thread thread_;
};

} // namespace simulator
