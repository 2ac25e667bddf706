// The delivery of events to the listener: a queue, and the threads that empty it.
//
// The bridge knows a thread by its pthread_t, and the C library gives that of a thread that has
// ended to the next one. So no delivery thread ends while events may still come, and none is
// replaced.
#include "delivery.h"

#include "capture.h"
#include "exchange.h"

#include <utils/AndroidThreads.h>

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

namespace dtv {
namespace {

using android::sp;
using android::wp;

/// How long the end of the process waits for the deliveries under way.
constexpr std::chrono::milliseconds exit_limit{250};

/// What RefBase counts while an object has had no strong reference yet. Taking the first one and
/// dropping it again would destroy the object under whoever is still making it.
constexpr int32_t never_owned = 1 << 28;

/// An event's record has room for a handle and a result, whatever its length says.
constexpr size_t smallest_record = 8;

struct Event {
    uint64_t number = 0; ///< counts the events posted
    int id = 0;
    int size = 0;
    std::unique_ptr<unsigned char[]> record; ///< null for a null record
};

/// As long as it has to be and no longer, so that a tool that watches the heap sees every read
/// beyond it.
std::unique_ptr<unsigned char[]> copyRecord(const void* data, int size) {
    if (data == nullptr) {
        return nullptr;
    }
    const size_t length = size > 0 ? static_cast<size_t>(size) : 0;
    auto record = std::make_unique<unsigned char[]>(std::max(length, smallest_record));
    std::memcpy(record.get(), data, length);
    return record;
}

class Delivery {
public:
    /// Never destroyed: its threads are there until the process is gone.
    static Delivery& instance() {
        static Delivery& delivery = *new Delivery;
        return delivery;
    }

    void setListener(DtvSvLibListener* listener);
    void unsetListener(const DtvSvLibListener* listener);
    bool post(Event event);
    int deliver(int event_id, void* data, int size);
    void setThreads(int count);
    bool waitUntilDelivered(std::chrono::milliseconds limit);
    void stop();
    void closeAtExit();

private:
    /// Lives in each delivery thread and goes after everything else there, the thread shell's
    /// detaching included.
    struct ThreadEnd {
        Delivery* delivery = nullptr;
        ~ThreadEnd();
    };

    static int runThread(void* number);
    void run();
    bool hasOwnedListener() const;
    bool begin(sp<DtvSvLibListener>& listener);
    int call(sp<DtvSvLibListener>& listener, int event_id, void* data, int size);
    void startThreads();
    uint64_t firstUndelivered() const;

    static thread_local int deliveries_here; ///< under way on this thread, one inside the other
    static thread_local ThreadEnd thread_end;

    std::mutex mutex_; ///< guards everything below; never held while the listener runs or goes
    std::condition_variable work_;     ///< there may be something to do for a delivery thread
    std::condition_variable progress_; ///< a delivery or a delivery thread has ended

    const DtvSvLibListener* listener_address_ = nullptr;
    wp<DtvSvLibListener> listener_;
    std::deque<Event> queue_;
    std::vector<uint64_t> in_delivery_; ///< numbers of the posted events under way
    uint64_t next_number_ = 0;
    uint64_t first_dropped_ = std::numeric_limits<uint64_t>::max();
    int under_way_ = 0; ///< deliveries, those on foreign threads included
    int wanted_threads_ = 1;
    int started_threads_ = 0;
    int live_threads_ = 0;
    bool posted_ = false; ///< the threads are started with the first event
    bool closed_ = false; ///< no further delivery begins
    bool ending_ = false; ///< the delivery threads end
};

thread_local int Delivery::deliveries_here = 0;
thread_local Delivery::ThreadEnd Delivery::thread_end;

Delivery::ThreadEnd::~ThreadEnd() {
    if (delivery != nullptr) {
        const std::lock_guard<std::mutex> lock(delivery->mutex_);
        --delivery->live_threads_;
        delivery->progress_.notify_all();
    }
}

void Delivery::setListener(DtvSvLibListener* listener) {
    const std::lock_guard<std::mutex> lock(mutex_);
    listener_address_ = listener;
    listener_ = listener;
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

/// With the lock held: begins a delivery, if one may begin, to the listener in `listener`. call()
/// is to follow.
bool Delivery::begin(sp<DtvSvLibListener>& listener) {
    if (closed_ || !hasOwnedListener()) {
        return false;
    }
    listener = listener_.promote();
    if (listener == nullptr) {
        return false;
    }
    ++under_way_;
    return true;
}

/// Without the lock: delivers what begin() began, and lets the listener go.
int Delivery::call(sp<DtvSvLibListener>& listener, int event_id, void* data, int size) {
    ++deliveries_here;
    Capture* const capture = Capture::instance();
    if (capture != nullptr) {
        capture->event(event_id, data, size);
    }
    const int result = listener->recvEventFromServer(event_id, data, size);
    if (capture != nullptr && result != 0) {
        capture->refusedEvent(event_id, result);
    }
    // The last owner may have left meanwhile: then the listener is destroyed here.
    listener.clear();
    --deliveries_here;
    return result;
}

bool Delivery::post(Event event) {
    const std::lock_guard<std::mutex> lock(mutex_);
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
    work_.notify_one();
    return true;
}

int Delivery::deliver(int event_id, void* data, int size) {
    sp<DtvSvLibListener> listener;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!begin(listener)) {
            return noListener;
        }
    }
    const int result = call(listener, event_id, data, size);
    const std::lock_guard<std::mutex> lock(mutex_);
    --under_way_;
    progress_.notify_all();
    return result;
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
        // Closed without ending is the end of the process: the thread stays where it is.
        work_.wait(lock, [this] { return ending_ || (!closed_ && !queue_.empty()); });
        if (ending_) {
            return;
        }
        Event event = std::move(queue_.front());
        queue_.pop_front();
        sp<DtvSvLibListener> listener;
        // An event whose listener has gone meanwhile is done with.
        const bool begun = begin(listener);
        if (begun) {
            in_delivery_.push_back(event.number);
            lock.unlock();
            call(listener, event.id, event.record.get(), event.size);
            event.record.reset();
            lock.lock();
            in_delivery_.erase(std::find(in_delivery_.begin(), in_delivery_.end(), event.number));
            --under_way_;
        }
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
    std::unique_lock<std::mutex> lock(mutex_);
    const uint64_t target = next_number_;
    progress_.wait_for(lock, bounded, [this, target] {
        return firstUndelivered() >= target || first_dropped_ < target;
    });
    return firstUndelivered() >= target;
}

void Delivery::stop() {
    std::deque<Event> dropped;
    std::unique_lock<std::mutex> lock(mutex_);
    closed_ = true;
    ending_ = true;
    if (!queue_.empty()) {
        first_dropped_ = queue_.front().number;
        dropped.swap(queue_);
    }
    work_.notify_all();
    progress_.notify_all();
    // From inside a delivery there is nothing to wait for that could come.
    if (deliveries_here == 0) {
        progress_.wait(lock, [this] { return under_way_ == 0 && live_threads_ == 0; });
    }
}

/// Nothing is joined or detached here: when Java ends the process this runs on a thread of the VM,
/// at a safepoint, where a delivery that is in Java or on its way there does not move.
void Delivery::closeAtExit() {
    std::unique_lock<std::mutex> lock(mutex_);
    closed_ = true;
    progress_.wait_for(lock, exit_limit, [this] { return under_way_ <= deliveries_here; });
}

} // namespace

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
    return Delivery::instance().deliver(event_id, data, size);
}

void setDeliveryThreads(int count) {
    Delivery::instance().setThreads(count);
}

bool waitUntilDelivered(std::chrono::milliseconds limit) {
    return Delivery::instance().waitUntilDelivered(limit);
}

void stopDelivery() {
    Delivery::instance().stop();
}

} // namespace dtv
