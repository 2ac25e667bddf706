#include "replay/sequence.h"

#include <algorithm>

namespace replay {

Sequence::Sequence(const Recording& recording, const Pace& pace)
    : recording_(recording), pace_(pace), passed_(recording.entries.size()),
      changed_(recording.threads.size()) {}

void Sequence::begin() {
    if (!begun_) {
        begun_ = true;
        begin_ = last_progress_ = Clock::now();
        // Those who wait without a limit look at the time from now on.
        for (std::condition_variable& changed : changed_) {
            changed.notify_all();
        }
    }
}

void Sequence::pass(size_t index, bool came) {
    if (passed_[index]) {
        return;
    }
    passed_[index] = true;
    passed_count_ += came ? 1 : 0;
    last_progress_ = Clock::now();
    if (index != next_) {
        return;
    }
    while (next_ < passed_.size() && passed_[next_]) {
        ++next_;
    }
    if (next_ == passed_.size()) {
        all_passed_.notify_all();
    } else {
        changed_[recording_.entries[next_].thread].notify_all();
    }
}

bool Sequence::waitForTurn(std::unique_lock<std::mutex>& lock, size_t index) {
    std::condition_variable& changed = changed_[recording_.entries[index].thread];
    while (!ended_) {
        if (next_ != index) {
            wait(lock, changed);
            continue;
        }
        if (pace_.speed <= 0 || Clock::now() >= dueAt(index)) {
            return true;
        }
        changed.wait_until(lock, dueAt(index));
    }
    return false;
}

void Sequence::waitForAll(std::unique_lock<std::mutex>& lock) {
    while (!ended_ && next_ < passed_.size()) {
        wait(lock, all_passed_);
    }
}

/// Waits for a change, or ends the replay when none has come for too long.
void Sequence::wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed) {
    if (!begun_) {
        changed.wait(lock);
        return;
    }
    const Clock::time_point limit = std::max(last_progress_, dueAt(next_)) + pace_.patience;
    if (Clock::now() < limit) {
        changed.wait_until(lock, limit);
        return;
    }
    stalled_at_ = next_;
    end();
}

/// When a message is due at the earliest.
Sequence::Clock::time_point Sequence::dueAt(size_t index) const {
    if (pace_.speed <= 0 || index >= recording_.entries.size()) {
        return begin_;
    }
    const std::chrono::duration<double, std::nano> due = recording_.entries[index].due;
    return begin_ + std::chrono::duration_cast<Clock::duration>(due / pace_.speed);
}

void Sequence::end() {
    ended_ = true;
    for (std::condition_variable& changed : changed_) {
        changed.notify_all();
    }
    all_passed_.notify_all();
}

} // namespace replay
