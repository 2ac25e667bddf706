#include "simulator/timeline.h"

namespace simulator {

Timeline::Timeline(double scale) : scale_(scale), thread_([this] { run(); }) {}

Timeline::~Timeline() {
    stop();
}

std::chrono::milliseconds Timeline::now() const {
    const std::chrono::duration<double, std::milli> passed = Clock::now() - begun_;
    return std::chrono::milliseconds(static_cast<int64_t>(passed.count() / scale_));
}

Timeline::Clock::time_point Timeline::ahead(std::chrono::milliseconds delay) const {
    const std::chrono::duration<double, std::milli> scaled = delay * scale_;
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(scaled);
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
