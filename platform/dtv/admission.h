// When an event may begin. The bridge learns a thread with the first event that the thread
// delivers, and keeps what it learnt in a table without a lock, so the first event of each thread
// comes alone.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace dtv {

/// Counts the events under way and decides when the next one begins. No other event is under way
/// while a first one is, but those that have been under way for firstEventLimit: their threads are
/// known, and their callbacks may wait for the event that is to begin.
///
/// Not locked by itself: every function is called with the lock that guards the delivery.
class Admission {
public:
    /// An event under way.
    struct Ticket {
        uint64_t first = 0; ///< the number of a first event; 0 for a later one
    };

    /// Waits until an event may begin. First events begin in the order in which they asked, and
    /// before the later events that wait with them. False when `closed` has become true; wake() is
    /// to be called when it does.
    ///
    /// `first`   the calling thread has delivered nothing yet
    /// `nested`  events under way on the calling thread, which this one is not to wait for
    bool wait(std::unique_lock<std::mutex>& lock, bool first, int nested, const bool& closed);

    /// The event begins, after wait() with the same `first` and without releasing the lock between.
    Ticket begin(bool first);
    /// The event's callback has returned.
    void end(Ticket ticket);

    /// Has those that wait look again.
    void wake() { changed_.notify_all(); }

    /// The events under way.
    int underWay() const { return under_way_; }

private:
    using Clock = std::chrono::steady_clock;

    bool waitForOthers(std::unique_lock<std::mutex>& lock, int nested, const bool& closed);
    bool waitForFirst(std::unique_lock<std::mutex>& lock, const bool& closed);
    bool firstUnderWay() const;

    std::condition_variable changed_; ///< an event has ended, or no longer waits
    int under_way_ = 0;
    std::deque<uint64_t> waiting_; ///< the first events that ask to begin, by number
    uint64_t last_number_ = 0;     ///< of a first event
    uint64_t first_ = 0;           ///< the first event under way that others wait for; 0: none
    Clock::time_point first_limit_{};
};

} // namespace dtv
