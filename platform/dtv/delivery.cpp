// The delivery of events: what begins it, what it does, who waits for it.
#include "delivery.h"

#include "capture.h"
#include "exchange.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace dtv {
namespace {

/// What RefBase counts while an object has had no strong reference yet. Taking the first one and
/// dropping it again would destroy the object under whoever is still making it.
constexpr int32_t never_owned = 1 << 28;

/// An event's record has room for a handle and a result, whatever its length says.
constexpr size_t smallest_record = 8;

/// As long as it has to be and no longer, so that a tool that watches the heap sees every read
/// beyond it.
std::unique_ptr<unsigned char[]> copyRecord(const void* data, int size) {
    if (data == nullptr) {
        return nullptr;
    }
    const size_t length = size > 0 ? static_cast<size_t>(size) : 0;
    const size_t room = std::max(length, smallest_record);
    std::unique_ptr<unsigned char[]> record(new unsigned char[room]); // not filled with zeros first
    std::memcpy(record.get(), data, length);
    std::memset(record.get() + length, 0, room - length);
    return record;
}

} // namespace

thread_local int Delivery::deliveries_here = 0;
thread_local uint64_t Delivery::listener_here = 0;

void Delivery::setListener(DtvSvLibListener* listener) {
    const std::lock_guard<std::mutex> lock(mutex_);
    listener_address_ = listener;
    listener_ = listener;
    ++listener_number_;
}

void Delivery::unsetListener(const DtvSvLibListener* listener) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (listener_address_ == listener) {
        listener_address_ = nullptr;
        listener_.clear();
    }
}

/// With the lock held, which keeps the listener's destructor from passing.
bool Delivery::hasOwnedListener() const {
    if (listener_address_ == nullptr) {
        return false;
    }
    const int32_t owners = listener_address_->getStrongCount();
    return owners > 0 && owners < never_owned;
}

/// With the lock held, which it releases while it waits: begins a delivery to the listener, if one
/// may begin. callListener() and end() are to follow.
bool Delivery::begin(std::unique_lock<std::mutex>& lock, Call& call) {
    bool first = false;
    do {
        if (closed_ || !hasOwnedListener()) {
            return false;
        }
        first = listener_here != listener_number_;
        if (!admission_.wait(lock, first, deliveries_here, closed_)) {
            return false;
        }
        // Another listener may have come meanwhile.
    } while (first != (listener_here != listener_number_));
    if (!hasOwnedListener()) {
        return false;
    }
    call.listener = listener_.promote();
    if (call.listener == nullptr) {
        return false;
    }
    call.ticket = admission_.begin(first);
    listener_here = listener_number_;
    return true;
}

/// With the lock held: the callback has returned.
void Delivery::end(const Call& call) {
    admission_.end(call.ticket);
    if (closed_) {
        progress_.notify_all(); // somebody waits for the last one
    }
}

/// Without the lock: delivers what begin() began, and lets the listener go. `steps` may be null.
int Delivery::callListener(Call& call, int event_id, void* data, int size, DeliverySteps* steps) {
    ++deliveries_here;
    Capture* const capture = Capture::instance();
    if (capture != nullptr) {
        capture->event(event_id, data, size);
    }
    if (steps != nullptr) {
        steps->begins();
    }
    const int result = call.listener->recvEventFromServer(event_id, data, size);
    if (steps != nullptr) {
        steps->ended(result);
    }
    if (capture != nullptr && result != 0) {
        capture->refusedEvent(event_id, result);
    }
    // The last owner may have left meanwhile: then the listener is destroyed here.
    call.listener.clear();
    --deliveries_here;
    return result;
}

bool Delivery::post(Event event) {
    std::unique_lock<std::mutex> lock(mutex_, std::defer_lock);
    lockSoon(lock);
    if (closed_ || !hasOwnedListener()) {
        return false;
    }
    posted_ = true;
    startThreads();
    if (live_threads_ == 0) {
        return false; // startThreads has said why
    }
    event.number = next_number_++;
    queue_.push_back(std::move(event));
    most_waiting_ = std::max(most_waiting_, queue_.size());
    const bool wake = wakeIsNeeded();
    work_signal_.give();
    lock.unlock();
    if (wake) {
        work_.notify_one();
    }
    return true;
}

int Delivery::deliver(int event_id, void* data, int size, DeliverySteps* steps) {
    Call call;
    std::unique_lock<std::mutex> lock(mutex_);
    if (!begin(lock, call)) {
        return noListener;
    }
    lock.unlock();
    const int result = callListener(call, event_id, data, size, steps);
    lock.lock();
    end(call);
    return result;
}

/// With the lock held, which it releases meanwhile.
void Delivery::deliverPosted(std::unique_lock<std::mutex>& lock, Event event) {
    in_delivery_.push_back(event.number);
    Call call;
    if (begin(lock, call)) {
        lock.unlock();
        callListener(call, event.id, event.record.get(), event.size, nullptr);
        event.record.reset();
        lockSoon(lock);
        end(call);
    } else if (closed_) {
        first_dropped_ = std::min(first_dropped_, event.number);
    } // else its listener was destroyed meanwhile, and the event is lost
    in_delivery_.erase(std::find(in_delivery_.begin(), in_delivery_.end(), event.number));
    noteProgress();
}

/// With the lock held: a posted event is no longer in delivery. Wakes those who wait for that, when
/// it is the last one that they wait for.
void Delivery::noteProgress() {
    progress_signal_.give();
    if (closed_ || (awaited_ != none && firstUndelivered() >= awaited_)) {
        awaited_ = none; // who still has to wait says so again
        progress_.notify_all();
    }
}

/// With the lock held: every event with a smaller number has been delivered.
uint64_t Delivery::firstUndelivered() const {
    uint64_t first = queue_.empty() ? next_number_ : queue_.front().number;
    for (const uint64_t number : in_delivery_) {
        first = std::min(first, number);
    }
    return std::min(first, first_dropped_);
}

bool Delivery::waitUntilDelivered(std::chrono::milliseconds limit) {
    // A day is for ever, and does not overflow the clock.
    const std::chrono::milliseconds bounded =
        std::min<std::chrono::milliseconds>(limit, std::chrono::hours(24));
    const auto deadline = std::chrono::steady_clock::now() + bounded;
    std::unique_lock<std::mutex> lock(mutex_, std::defer_lock);
    lockSoon(lock); // a delivery thread may just be taking the event
    const uint64_t target = next_number_;
    const auto ended = [this, target] {
        return firstUndelivered() >= target || first_dropped_ < target;
    };
    // Several events take too long to stay awake for.
    if (!ended() && target - firstUndelivered() == 1 && bounded.count() > 0) {
        const ShortWait::Time awake = short_wait_for_progress_.limit();
        if (awake.count() > 0) {
            ++progress_awaited_;
            waitAwake(lock, progress_signal_, awake);
            --progress_awaited_;
            short_wait_for_progress_.learn(ended());
        }
    }
    bool in_time = true;
    while (!ended() && in_time) {
        awaited_ = std::min(awaited_, target);
        in_time = progress_.wait_until(lock, deadline) == std::cv_status::no_timeout;
    }
    return firstUndelivered() >= target;
}

size_t Delivery::mostWaiting() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return most_waiting_;
}

void registerListener(DtvSvLibListener* listener) {
    Delivery::instance().setListener(listener);
    // The handlers run from the last to the first. This one comes after the static objects of the
    // library that makes the listener, so it runs before they are destroyed.
    if (std::atexit([] { Delivery::instance().closeAtExit(); }) != 0) {
        std::fprintf(stderr, "libDtv: no room for a handler of the process's end\n");
    }
}

void unregisterListener(const DtvSvLibListener* listener) {
    Delivery::instance().unsetListener(listener);
}

bool postEvent(int event_id, const void* data, int size) {
    return Delivery::instance().post(Event{0, event_id, size, copyRecord(data, size)});
}

int deliverEvent(int event_id, void* data, int size) {
    return Delivery::instance().deliver(event_id, data, size, nullptr);
}

DeliverySteps::~DeliverySteps() = default;

int deliverEvent(int event_id, void* data, int size, DeliverySteps& steps) {
    return Delivery::instance().deliver(event_id, data, size, &steps);
}

void setDeliveryThreads(int count) {
    Delivery::instance().setThreads(count);
}

bool waitUntilDelivered(std::chrono::milliseconds limit) {
    return Delivery::instance().waitUntilDelivered(limit);
}

size_t mostWaiting() {
    return Delivery::instance().mostWaiting();
}

void stopDelivery() {
    Delivery::instance().stop();
}

} // namespace dtv
