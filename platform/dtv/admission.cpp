#include "admission.h"

#include "exchange.h"

#include <algorithm>

namespace dtv {

bool Admission::firstUnderWay() const {
    return first_ != 0 && Clock::now() < first_limit_;
}

bool Admission::wait(std::unique_lock<std::mutex>& lock, bool first, int nested,
                     const bool& closed) {
    if (first) {
        return waitForOthers(lock, nested, closed);
    }
    // Inside an event of the same thread: whoever waits for that event waits for this one as well.
    return nested > 0 || waitForFirst(lock, closed);
}

/// A first event waits until no other is under way.
bool Admission::waitForOthers(std::unique_lock<std::mutex>& lock, int nested, const bool& closed) {
    const uint64_t number = ++last_number_;
    waiting_.push_back(number);
    // While it waits no later event begins, so after this time those under way are all old enough.
    const Clock::time_point limit = Clock::now() + firstEventLimit;
    const auto may_begin = [&] {
        return waiting_.front() == number && !firstUnderWay() &&
               (under_way_ <= nested || Clock::now() >= limit);
    };
    while (!closed && !may_begin()) {
        if (firstUnderWay()) {
            changed_.wait_until(lock, first_limit_);
        } else if (waiting_.front() == number) {
            changed_.wait_until(lock, limit);
        } else {
            changed_.wait(lock);
        }
    }
    waiting_.erase(std::find(waiting_.begin(), waiting_.end(), number));
    changed_.notify_all();
    return !closed;
}

/// A later event waits for the first ones alone.
bool Admission::waitForFirst(std::unique_lock<std::mutex>& lock, const bool& closed) {
    while (!closed && (!waiting_.empty() || firstUnderWay())) {
        if (firstUnderWay()) {
            changed_.wait_until(lock, first_limit_);
        } else {
            changed_.wait(lock);
        }
    }
    return !closed;
}

Admission::Ticket Admission::begin(bool first) {
    ++under_way_;
    if (!first) {
        return {};
    }
    first_ = ++last_number_;
    first_limit_ = Clock::now() + firstEventLimit;
    return {first_};
}

void Admission::end(Ticket ticket) {
    --under_way_;
    if (ticket.first != 0 && ticket.first == first_) {
        first_ = 0;
    }
    changed_.notify_all();
}

} // namespace dtv
