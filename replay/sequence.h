// The order of a replay: a message passes when all before it have passed.
#pragma once

#include "replay/recording.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace replay {

/// How time passes in a replay.
struct Pace {
    /// Seconds of the recording in one second of the replay; 0: no message waits for its time.
    double speed = 0;
    /// How long the replay waits for what it needs from the Java side, beyond the time that the
    /// recording took for it.
    std::chrono::milliseconds patience{10000};
};

/// How long messages wait for a callback at most.
constexpr std::chrono::milliseconds callbackLimit{100};

/// What a replay is at. Commands may pass before their turn, because nobody holds up the Java side;
/// answers and events do not.
///
/// An event passes when its callback begins. What comes after it on other threads waits for the end
/// of the callback as well, when the recording has nothing more of it: so the Java side sees one
/// after the other. It waits for callbackLimit at most, for a callback may wait for another thread
/// itself.
///
/// Not locked by itself: every function is called with the lock that guards the replay.
class Sequence {
public:
    Sequence(const Recording& recording, const Pace& pace);

    /// Time counts from now on. Before, waitForTurn() waits without a limit.
    void begin();

    /// The first message that has not passed; entries.size() when all have.
    size_t next() const { return next_; }
    bool hasPassed(size_t index) const { return passed_[index]; }
    size_t passedCount() const { return passed_count_; }

    /// A message has passed, or will not come any more.
    void pass(size_t index, bool came = true);

    /// The callback of an event on this thread of the recording begins, and has returned.
    void callbackBegins(size_t thread);
    void callbackEnds(size_t thread);

    /// Waits until all messages before this one have passed and it is due. False when the replay
    /// has ended before.
    bool waitForTurn(std::unique_lock<std::mutex>& lock, size_t index);

    /// Waits until all messages have passed, or the replay has ended.
    void waitForAll(std::unique_lock<std::mutex>& lock);

    /// Nothing passes any more. Wakes all who wait.
    void end();
    bool hasEnded() const { return ended_; }
    /// The message that did not come in time, if one has ended the replay.
    const std::optional<size_t>& stalledAt() const { return stalled_at_; }

private:
    using Clock = std::chrono::steady_clock;

    /// What is known of a recorded thread that delivers events.
    struct Callback {
        bool open = false;
        size_t next_place = 0;       ///< of the message after the last one that passed there
        Clock::time_point changed{}; ///< when that one passed
    };

    bool isLast(size_t thread) const;
    Clock::time_point heldUntil(size_t thread) const;
    Clock::time_point dueAt(size_t index) const;
    void wait(std::unique_lock<std::mutex>& lock, std::condition_variable& changed);

    const Recording& recording_;
    const Pace pace_;
    std::vector<bool> passed_;
    size_t passed_count_ = 0;
    size_t next_ = 0;
    bool begun_ = false;
    bool ended_ = false;
    std::optional<size_t> stalled_at_;
    Clock::time_point begin_{};
    Clock::time_point last_progress_{};
    std::vector<Callback> callbacks_; ///< of each thread
    size_t open_callbacks_ = 0;
    /// For each thread: its message may have its turn. One thread is woken for a message.
    std::vector<std::condition_variable> changed_;
    std::condition_variable all_passed_;
};

} // namespace replay
