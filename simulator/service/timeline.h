// The simulator's clock: steps that are done at their moments, one after another.
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

/// How time passes.
enum class Pace {
    kClock,   ///< by itself; steps are done on a thread of the timeline's own
    kStepped, ///< from one step to the next, when advance() or pass() is called, so that nothing
              ///< depends on the speed of the machine
};

class Timeline {
public:
    using Clock = std::chrono::steady_clock;
    using Step = std::function<void()>;

    /// Every delay is multiplied by `scale`: 1 is real time, 0.01 a hundred times as fast.
    explicit Timeline(double scale, Pace pace = Pace::kClock);
    /// Stops.
    ~Timeline();
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    /// Time since the beginning, in the seconds that the delays are given in.
    std::chrono::milliseconds now() const;
    /// The moment `delay` from now.
    Clock::time_point ahead(std::chrono::milliseconds delay) const;
    /// Does `step` at `moment`; steps of the same moment in the order in which they were given.
    /// Returns at once.
    void at(Clock::time_point moment, Step step);
    /// Returns when `delay` has passed. In stepped time the steps until then are done here, each
    /// followed by `after_step` if there is one. Not from within a step.
    void pass(std::chrono::milliseconds delay, const Step& after_step = {});

    bool isStepped() const { return pace_ == Pace::kStepped; }
    /// Stepped time only: advances to the next step and does it, on the calling thread. False when
    /// there is none, and then no time passes.
    bool advance();

    /// Drops what is still to be done and waits for the step under way on the thread of its own.
    /// Not from within a step.
    void stop();

private:
    Clock::time_point moment() const;
    bool advanceTo(Clock::time_point limit);
    void run();

    const double scale_;
    const Pace pace_;
    mutable std::mutex mutex_;
    Clock::time_point stepped_to_{}; ///< stepped time only
    const Clock::time_point begun_;
    std::condition_variable changed_;
    std::map<std::pair<Clock::time_point, uint64_t>, Step> steps_;
    uint64_t given_ = 0;
    bool stopped_ = false;
    std::thread thread_;
};

} // namespace simulator
