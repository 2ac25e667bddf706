#include "short_wait.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace dtv {
namespace {

using Clock = std::chrono::steady_clock;

/// While waits sleep, one wait of this number is a trial. It doubles with each trial in vain.
constexpr int least_interval = 32;
constexpr int most_interval = 1024;

/// After this number of waits that were not in vain one that is in vain is an exception.
constexpr int usual_successes = 8;

/// The longest pause between two attempts to lock, in turns of pause().
constexpr int longest_pause = 64;

bool severalProcessors() {
    static const bool several = std::thread::hardware_concurrency() > 1;
    return several;
}

/// Leaves the processor's resources to others for a moment.
void pause() {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#elif defined(__aarch64__) || (defined(__arm__) && __ARM_ARCH >= 7)
    asm volatile("yield");
#endif
}

} // namespace

ShortWait::ShortWait(Time trial) : trial_(trial), interval_(least_interval) {}

ShortWait::Time ShortWait::limit() {
    if (!severalProcessors()) {
        return Time::zero();
    }
    if (awake_) {
        return usual;
    }
    ++skipped_;
    if (skipped_ < interval_) {
        return Time::zero();
    }
    skipped_ = 0;
    return trial_;
}

void ShortWait::learn(bool came) {
    const bool usually_comes = successes_ >= usual_successes;
    if (came) {
        successes_ += awake_ && !usually_comes ? 1 : 0;
        awake_ = true;
        return;
    }
    // After an exception the next wait is a trial. It lasts until the other thread, which slept
    // meanwhile, is awake again.
    interval_ = usually_comes ? least_interval : std::min(interval_ * 2, most_interval);
    skipped_ = usually_comes ? interval_ : 0;
    successes_ = 0;
    awake_ = false;
}

void waitAwake(std::unique_lock<std::mutex>& lock, const Signal& signal, ShortWait::Time limit) {
    const uint32_t seen = signal.count();
    lock.unlock();
    const Clock::time_point end = Clock::now() + limit;
    while (signal.count() == seen && Clock::now() < end) {
        pause();
    }
    lockSoon(lock);
}

/// The pauses double: who holds the mutex is not to be disturbed by attempts.
void lockSoon(std::unique_lock<std::mutex>& lock) {
    for (int turns = 1; severalProcessors() && turns <= longest_pause; turns *= 2) {
        if (lock.try_lock()) {
            return;
        }
        for (int turn = 0; turn < turns; ++turn) {
            pause();
        }
    }
    lock.lock();
}

} // namespace dtv
