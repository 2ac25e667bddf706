// The events of a replay, on the threads that deliver them.
#include "replay/service.h"

#include "replay/delivery_threads.h"
#include "replay/here.h"

#include <algorithm>
#include <cstdio>

namespace replay {
namespace {

using sessions::Message;
using Kind = Message::Kind;

constexpr std::chrono::milliseconds kUntilAListenerComes{10};

/// Room for a handle and a result, whatever the length, as all records of libDtv have.
constexpr size_t kSmallestRecord = 8;

/// The record of an event as it was given to the listener.
class RecordCopy {
public:
    /// `refused` is what the listener returned in the recording. A record of no bytes may have been
    /// a null one: that is refused with 1 whatever the event is.
    RecordCopy(const Entry& event, int refused) {
        const Message& message = event.message;
        const bool has_no_bytes = message.record.empty() && !event.incomplete;
        is_null_ = has_no_bytes && (message.size > 0 || refused == 1);
        bytes_ = message.record;
        const auto size = static_cast<size_t>(std::max(message.size, 0));
        bytes_.resize(std::max({bytes_.size(), kSmallestRecord, size}));
    }

    void* data() { return is_null_ ? nullptr : bytes_.data(); }

private:
    std::vector<uint8_t> bytes_;
    bool is_null_;
};

} // namespace

/// Tells the replay which step of a delivery is reached.
class Service::Steps : public dtv::DeliverySteps {
public:
    Steps(Service& service, size_t event) : service_(service), event_(event) {}

    void begins() override {
        has_begun_ = true;
        const std::lock_guard<std::mutex> lock(service_.mutex_);
        service_.sequence_.callbackBegins(service_.recording_.entries[event_].thread);
        service_.pass(event_);
    }

    void ended(int result) override { service_.endEvent(event_, result); }

    /// False when there was no listener.
    bool hasBegun() const { return has_begun_; }

private:
    Service& service_;
    const size_t event_;
    bool has_begun_ = false;
};

/// Time counts from now on, and events are delivered.
void Service::begin() {
    sequence_.begin();
    startDelivery();
}

/// Starts the delivery of a thread's events, when the next message is the first of them.
void Service::startDelivery() {
    const size_t next = sequence_.next();
    if (next >= recording_.entries.size() || sequence_.hasEnded()) {
        return;
    }
    const size_t thread = recording_.entries[next].thread;
    Track& track = tracks_[thread];
    if (track.started || !recording_.threads[thread].delivers) {
        return;
    }
    track.started = track.taken = true;
    ++deliverers_;
    const auto self = shared_from_this();
    const bool runs = DeliveryThreads::instance().run(
        recording_.threads[thread].name, [self, thread] { self->deliverEvents(thread); },
        [self] {
            const std::lock_guard<std::mutex> lock(self->mutex_);
            --self->deliverers_;
            self->delivered_.notify_all();
        });
    if (!runs) {
        --deliverers_;
        std::fputs("replay: no thread can be made that delivers events\n", stderr);
        sequence_.end();
    }
}

/// All events of a thread, one after the other.
void Service::deliverEvents(size_t thread) {
    here::current() = {run_, thread, kNone};
    std::unique_lock<std::mutex> lock(mutex_);
    for (size_t event = nextEntry(thread); event != kNone; event = nextEntry(thread)) {
        if (!sequence_.waitForTurn(lock, event)) {
            return;
        }
        if (recording_.entries[event].incomplete && !settings_.fill) {
            leaveOut(event);
        } else {
            deliver(lock, event);
        }
    }
}

/// With the lock held, which it releases meanwhile.
void Service::deliver(std::unique_lock<std::mutex>& lock, size_t event) {
    const Entry& entry = recording_.entries[event];
    const size_t refusal = entry.reply;
    RecordCopy record(entry, refusal != kNone ? recording_.entries[refusal].message.value : 0);
    Steps steps(*this, event);
    while (!steps.hasBegun() && !sequence_.hasEnded()) {
        lock.unlock();
        dtv::deliverEvent(entry.message.id, record.data(), entry.message.size, steps);
        lock.lock();
        if (!steps.hasBegun()) {
            // The Java side has not loaded the bridge yet.
            delivered_.wait_for(lock, kUntilAListenerComes);
        }
    }
    if (refusal != kNone && steps.hasBegun()) {
        pass(refusal);
    }
}

/// The listener has returned: the commands of the callback have come, or do not come any more. A
/// recorded refusal waits for its turn, so that the capture of this run has it in its place.
void Service::endEvent(size_t event, int result) {
    std::unique_lock<std::mutex> lock(mutex_);
    const Entry& entry = recording_.entries[event];
    sequence_.callbackEnds(entry.thread);
    if (sequence_.hasEnded()) {
        return;
    }
    while (isCommand(nextEntry(entry.thread))) {
        skipCommand(nextEntry(entry.thread), "");
    }
    const size_t refusal = entry.reply;
    const int recorded = refusal != kNone ? recording_.entries[refusal].message.value : 0;
    if (result != recorded) {
        Given given;
        given.id = entry.message.id;
        given.result = result;
        outcome_.divergences.add({Difference::kOtherResult, event, given, ""});
    }
    if (refusal != kNone) {
        sequence_.waitForTurn(lock, refusal);
    }
}

/// An event is not delivered. What was recorded on its thread up to the next one does not come.
void Service::leaveOut(size_t event) {
    const size_t thread = recording_.entries[event].thread;
    size_t entry = event;
    do {
        ++outcome_.not_delivered;
        pass(entry, false);
        entry = nextEntry(thread);
    } while (entry != kNone && !recording_.entries[entry].message.is(Kind::kEvent));
}

} // namespace replay
