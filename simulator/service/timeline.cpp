#include "service/timeline.h"

#include <algorithm>
#include <cmath>

namespace simulator {

Timeline::Timeline(double scale, Pace pace) : scale_(scale), pace_(pace), begun_(moment()) {
    if (!isStepped()) {
        thread_ = std::thread([this] { run(); });
    }
}

Timeline::~Timeline() {
    stop();
}

Timeline::Clock::time_point Timeline::moment() const {
    if (!isStepped()) {
        return Clock::now();
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    return stepped_to_;
}

std::chrono::milliseconds Timeline::now() const {
    const std::chrono::duration<double, std::milli> passed = moment() - begun_;
    // Rounded: with a scale that is no power of two the quotient is a little too small.
    return std::chrono::milliseconds(std::llround(passed.count() / scale_));
}

Timeline::Clock::time_point Timeline::ahead(std::chrono::milliseconds delay) const {
    const std::chrono::duration<double, std::milli> scaled = delay * scale_;
    return moment() + std::chrono::duration_cast<Clock::duration>(scaled);
}

void Timeline::at(Clock::time_point moment, Step step) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (stopped_) {
            return;
        }
        steps_.emplace(std::make_pair(moment, given_++), std::move(step));
    }
    changed_.notify_one();
}

void Timeline::pass(std::chrono::milliseconds delay, const Step& after_step) {
    const Clock::time_point end = ahead(delay);
    if (!isStepped()) {
        std::this_thread::sleep_until(end);
        return;
    }
    while (advanceTo(end)) {
        if (after_step) {
            after_step();
        }
    }
    // Another thread may have advanced further meanwhile.
    const std::lock_guard<std::mutex> lock(mutex_);
    stepped_to_ = std::max(stepped_to_, end);
}

bool Timeline::advance() {
    return advanceTo(Clock::time_point::max());
}

/// Stepped time: does the next step, unless its moment is after `limit`.
bool Timeline::advanceTo(Clock::time_point limit) {
    Step step;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (steps_.empty() || steps_.begin()->first.first > limit) {
            return false;
        }
        // A step whose moment has passed is done now: time does not run backwards.
        stepped_to_ = std::max(stepped_to_, steps_.begin()->first.first);
        step = std::move(steps_.begin()->second);
        steps_.erase(steps_.begin());
    }
    step();
    return true;
}

void Timeline::stop() {
    std::map<std::pair<Clock::time_point, uint64_t>, Step> dropped;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        stopped_ = true;
        dropped.swap(steps_);
    }
    changed_.notify_one();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Timeline::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopped_) {
        if (steps_.empty()) {
            changed_.wait(lock);
            continue;
        }
        const Clock::time_point moment = steps_.begin()->first.first;
        if (Clock::now() < moment) {
            changed_.wait_until(lock, moment);
            continue;
        }
        const Step step = std::move(steps_.begin()->second);
        steps_.erase(steps_.begin());
        lock.unlock();
        step();
        lock.lock();
    }
}

} // namespace simulator
