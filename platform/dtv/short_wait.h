// A wait of a few microseconds that does not sleep. To put a thread to sleep and to wake it again
// costs the two threads several microseconds, more than most events cost.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>

namespace dtv {

/// Counts what happens, for those who wait for it without a lock.
class Signal {
public:
    /// One caller at a time: with the lock that guards what has happened.
    void give() { count_.store(count() + 1, std::memory_order_release); }
    uint32_t count() const { return count_.load(std::memory_order_acquire); }

private:
    std::atomic<uint32_t> count_{0};
};

/// Decides by what has happened before how long the next wait of a kind stays awake. With a single
/// processor no wait does.
///
/// Not locked by itself: every function is called with the lock that guards what is waited for.
class ShortWait {
public:
    using Time = std::chrono::microseconds;

    /// About what it costs to sleep and to be woken, so that no wait costs much more than it has
    /// to.
    static constexpr Time usual{5};

    /// `trial` is for the waits by which it learns that what is waited for comes soon.
    explicit ShortWait(Time trial);

    /// How long the next wait is to stay awake; zero: it is to sleep at once.
    Time limit();

    /// Says whether what was waited for has come in that time.
    void learn(bool came);

private:
    const Time trial_;
    bool awake_ = false; ///< the next wait is to stay awake
    int successes_ = 0;  ///< waits awake, one after the other, that were not in vain
    int skipped_ = 0;    ///< waits asleep since the last trial
    int interval_;       ///< waits from one trial to the next
};

/// Releases the lock and waits until `signal` is given, for `limit` at most.
void waitAwake(std::unique_lock<std::mutex>& lock, const Signal& signal, ShortWait::Time limit);

/// Locks a mutex that is held for moments only: tries for a while before it sleeps.
void lockSoon(std::unique_lock<std::mutex>& lock);

} // namespace dtv
