#include "replay/sequence.h"

#include <algorithm>

namespace replay {

Sequence::Sequence(const Recording& recording, const Pace& pace)
    : recording_(recording), pace_(pace), passed_(recording.entries.size()),
      callbacks_(recording.threads.size()), changed_(recording.threads.size()) {}

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
    const Entry& entry = recording_.entries[index];
    Callback& callback = callbacks_[entry.thread];
    callback.next_place = std::max(callback.next_place, entry.place + 1);
    callback.changed = last_progress_;
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
        const Clock::time_point until =
            std::max(dueAt(index), heldUntil(recording_.entries[index].thread));
        if (until == begin_ || Clock::now() >= until) {
            return true;
        }
        changed.wait_until(lock, until);
    }
    return false;
}

void Sequence::waitForAll(std::unique_lock<std::mutex>& lock) {
    while (!ended_ && next_ < passed_.size()) {
        wait(lock, all_passed_);
    }
}

void Sequence::callbackBegins(size_t thread) {
    callbacks_[thread].open = true;
    ++open_callbacks_;
}

void Sequence::callbackEnds(size_t thread) {
    callbacks_[thread].open = false;
    --open_callbacks_;
    if (next_ < passed_.size()) {
        changed_[recording_.entries[next_].thread].notify_all();
    }
}

/// Whether the recording has nothing more of the callback on a thread.
bool Sequence::isLast(size_t thread) const {
    const std::vector<size_t>& entries = recording_.threads[thread].entries;
    const size_t place = callbacks_[thread].next_place;
    return place >= entries.size() ||
           recording_.entries[entries[place]].message.is(sessions::Message::Kind::kEvent);
}

/// Until when a message of this thread waits for callbacks of others; begin_ when it does not.
Sequence::Clock::time_point Sequence::heldUntil(size_t thread) const {
    Clock::time_point until = begin_;
    for (size_t other = 0; open_callbacks_ > 0 && other < callbacks_.size(); ++other) {
        if (other != thread && callbacks_[other].open && isLast(other)) {
            until = std::max(until, callbacks_[other].changed + callbackLimit);
        }
    }
    return until;
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
