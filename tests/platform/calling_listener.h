// What the tests of several delivery threads share: a point that threads wait for, a listener that
// calls the test.
#pragma once

#include "dtv/exchange.h"

#include <DtvSvLibListener.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

namespace platform {

/// Longer than anything here takes, shorter than the limit of a test.
constexpr std::chrono::seconds kPatience{20};

/// A point that threads reach, and that others wait for.
class Point {
public:
    void reach() {
        const std::lock_guard<std::mutex> lock(mutex_);
        reached_ = true;
        changed_.notify_all();
    }
    bool wait() {
        std::unique_lock<std::mutex> lock(mutex_);
        return changed_.wait_for(lock, kPatience, [this] { return reached_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool reached_ = false;
};

/// Calls `body` with the event's number for each event.
class CallingListener : public DtvSvLibListener {
public:
    explicit CallingListener(std::function<void(int)> body) : body_(std::move(body)) {}
    int recvEventFromServer(int event_id, void*, int) override {
        body_(event_id);
        return 0;
    }

private:
    std::function<void(int)> body_;
};

inline int deliver(int event_id) {
    char record[8] = {};
    return dtv::deliverEvent(event_id, record, 8);
}

} // namespace platform
