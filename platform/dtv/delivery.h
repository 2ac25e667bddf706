// The delivery of events to the listener of the process: a queue, and the threads that empty it.
//
// The bridge knows a thread by its pthread_t, and the C library gives that of a thread that has
// ended to the next one. So no delivery thread ends while events may still come, and none is
// replaced. The first event of each thread comes alone: see admission.h.
#pragma once

#include "admission.h"
#include "exchange.h"
#include "short_wait.h"

#include <DtvSvLibListener.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

namespace dtv {

/// Events go to `listener` from now on, but none before it has its first owner. The reference is
/// weak.
void registerListener(DtvSvLibListener* listener);

/// For the listener's destructor: no event begins to be delivered to it any more. Does nothing when
/// another listener has taken its place.
void unregisterListener(const DtvSvLibListener* listener);

/// An event that was posted.
struct Event {
    uint64_t number = 0; ///< counts the events posted
    int id = 0;
    int size = 0;
    std::unique_ptr<unsigned char[]> record; ///< null for a null record
};

/// The events of the process, on the threads of their own and on foreign ones.
class Delivery {
public:
    /// Never destroyed: its threads are there until the process ends.
    static Delivery& instance() {
        static Delivery& delivery = *new Delivery;
        return delivery;
    }

    void setListener(DtvSvLibListener* listener);
    void unsetListener(const DtvSvLibListener* listener);
    bool post(Event event);
    int deliver(int event_id, void* data, int size, DeliverySteps* steps);
    void setThreads(int count);
    bool waitUntilDelivered(std::chrono::milliseconds limit);
    size_t mostWaiting();
    void stop();
    void closeAtExit();

private:
    /// Lives in each delivery thread and goes after everything else there, the thread shell's
    /// detaching included.
    struct ThreadEnd {
        Delivery* delivery = nullptr;
        ~ThreadEnd();
    };

    /// One delivery under way.
    struct Call {
        android::sp<DtvSvLibListener> listener;
        Admission::Ticket ticket;
    };

    static int runThread(void* number);
    void run();
    void waitForWork(std::unique_lock<std::mutex>& lock);
    bool wakeIsNeeded();
    bool hasWork() const { return ending_ || (!closed_ && !queue_.empty()); }
    void deliverPosted(std::unique_lock<std::mutex>& lock, Event event);
    bool hasOwnedListener() const;
    bool begin(std::unique_lock<std::mutex>& lock, Call& call);
    void end(const Call& call);
    int callListener(Call& call, int event_id, void* data, int size, DeliverySteps* steps);
    void startThreads();
    void noteProgress();
    uint64_t firstUndelivered() const;

    static constexpr uint64_t none =
        std::numeric_limits<uint64_t>::max(); ///< the number of no event

    static thread_local int deliveries_here; ///< under way on this thread, one inside the other
    /// The number of the last listener that this thread has delivered to; 0: to none yet.
    static thread_local uint64_t listener_here;
    static thread_local ThreadEnd thread_end;

    std::mutex mutex_; ///< guards everything below; never held while the listener runs or goes
    std::condition_variable work_;     ///< there may be something to do for a delivery thread
    std::condition_variable progress_; ///< what somebody waits for may have been reached
    Signal work_signal_;               ///< the same, for those who wait without sleeping
    Signal progress_signal_;
    ShortWait short_wait_for_work_{ShortWait::usual};
    /// Trials are as long as a delivery thread needs to wake and to deliver an event.
    ShortWait short_wait_for_progress_{ShortWait::Time(100)};
    int progress_awaited_ = 0;  ///< threads that wait for progress without sleeping
    bool work_awaited_ = false; ///< a delivery thread waits for work without sleeping
    int sleepers_ = 0;          ///< delivery threads that sleep until there is work
    bool waking_ = false;       ///< one of them has been woken and has not come yet

    const DtvSvLibListener* listener_address_ = nullptr;
    android::wp<DtvSvLibListener> listener_;
    uint64_t listener_number_ = 0; ///< counts the listeners: an address may come again
    std::deque<Event> queue_;
    std::vector<uint64_t> in_delivery_; ///< numbers of the posted events that left the queue
    uint64_t next_number_ = 0;
    uint64_t first_dropped_ = none;
    uint64_t awaited_ = none; ///< the least number of events that somebody waits for asleep
    size_t most_waiting_ = 0; ///< the longest that the queue has been
    Admission admission_;     ///< of all deliveries, those on foreign threads included
    int wanted_threads_ = 1;
    int started_threads_ = 0;
    int live_threads_ = 0;
    bool posted_ = false; ///< the threads are started with the first event
    bool closed_ = false; ///< no further delivery begins
    bool ending_ = false; ///< the delivery threads end
};

} // namespace dtv
