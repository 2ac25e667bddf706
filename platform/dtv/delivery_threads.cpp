// The threads that deliver posted events: their start, their work, their end.
#include "delivery.h"

#include <utils/AndroidThreads.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace dtv {
namespace {

/// How long the end of the process waits for the deliveries under way.
constexpr std::chrono::milliseconds exit_limit{250};

} // namespace

thread_local Delivery::ThreadEnd Delivery::thread_end;

Delivery::ThreadEnd::~ThreadEnd() {
    if (delivery != nullptr) {
        const std::lock_guard<std::mutex> lock(delivery->mutex_);
        --delivery->live_threads_;
        delivery->progress_.notify_all();
    }
}

void Delivery::setThreads(int count) {
    const std::lock_guard<std::mutex> lock(mutex_);
    wanted_threads_ = std::max(wanted_threads_, count);
    if (posted_ && !closed_) {
        startThreads();
    }
}

/// With the lock held: starts the threads that are missing.
void Delivery::startThreads() {
    while (started_threads_ < wanted_threads_) {
        const int number = started_threads_ + 1;
        char name[32];
        std::snprintf(name, sizeof name, "DtvEvent-%d", number);
        void* argument = reinterpret_cast<void*>(static_cast<intptr_t>(number));
        if (!android::createThreadEtc(runThread, argument, name)) {
            std::fprintf(stderr, "libDtv: thread %s could not be made\n", name);
            return;
        }
        started_threads_ = number;
        ++live_threads_;
    }
}

int Delivery::runThread(void* number) {
    // Without the Android runtime nobody names the thread.
    char name[32];
    std::snprintf(name, sizeof name, "DtvEvent-%d",
                  static_cast<int>(reinterpret_cast<intptr_t>(number)));
    androidSetThreadName(name);

    Delivery& delivery = instance();
    thread_end.delivery = &delivery;
    delivery.run();
    return 0;
}

void Delivery::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        waitForWork(lock);
        if (ending_) {
            return;
        }
        Event event = std::move(queue_.front());
        queue_.pop_front();
        if (wakeIsNeeded()) {
            work_.notify_one();
        }
        deliverPosted(lock, std::move(event));
    }
}

/// With the lock held, which it releases while it waits.
void Delivery::waitForWork(std::unique_lock<std::mutex>& lock) {
    // One thread at a time: the next event needs no more. A thread that waits awake for the event
    // just delivered is likely to post the next one at once.
    if (!hasWork() && !work_awaited_) {
        const ShortWait::Time awake =
            progress_awaited_ > 0 ? ShortWait::usual : short_wait_for_work_.limit();
        if (awake.count() > 0) {
            work_awaited_ = true;
            waitAwake(lock, work_signal_, awake);
            work_awaited_ = false;
            short_wait_for_work_.learn(hasWork());
        }
    }
    // Closed without ending is the end of the process: the thread stays where it is.
    while (!hasWork()) {
        ++sleepers_;
        work_.wait(lock);
        --sleepers_;
        waking_ = false;
    }
}

/// With the lock held, after each change of the queue: whether the caller has to wake a delivery
/// thread. Only one is on its way at a time. When it has taken its event and others are left, it
/// wakes the next one: so no thread is woken for an event that another takes before it has come.
bool Delivery::wakeIsNeeded() {
    if (queue_.empty() || sleepers_ == 0 || work_awaited_ || waking_) {
        return false;
    }
    waking_ = true;
    return true;
}

void Delivery::stop() {
    std::deque<Event> dropped;
    std::unique_lock<std::mutex> lock(mutex_);
    closed_ = true;
    ending_ = true;
    if (!queue_.empty()) {
        first_dropped_ = std::min(first_dropped_, queue_.front().number);
        dropped.swap(queue_);
    }
    work_signal_.give();
    work_.notify_all();
    progress_signal_.give();
    progress_.notify_all();
    admission_.wake();
    // From inside a delivery there is nothing to wait for that could come.
    if (deliveries_here == 0) {
        progress_.wait(lock, [this] { return admission_.underWay() == 0 && live_threads_ == 0; });
    }
}

/// Nothing is joined or detached here: when Java ends the process this runs on a thread of the VM,
/// at a safepoint, where a delivery that is in Java or on its way there does not move.
void Delivery::closeAtExit() {
    std::unique_lock<std::mutex> lock(mutex_);
    closed_ = true;
    admission_.wake();
    progress_.wait_for(lock, exit_limit,
                       [this] { return admission_.underWay() <= deliveries_here; });
}

} // namespace dtv
