#include "service/service.h"

#include "dtv/exchange.h"

#include <algorithm>

namespace simulator {
namespace {

/// The most sessions that are open at once.
constexpr size_t kSessions = 16;

} // namespace

Service::Service(ServiceOptions options)
    : options_(std::move(options)), random_(options_.seed),
      timeline_(options_.time_scale, options_.pace) {}

Service::~Service() {
    timeline_.stop();
}

std::time_t Service::wallClock() const {
    const std::time_t time = options_.wall_clock();
    if (!timeline_.isStepped()) {
        return time;
    }
    return time + static_cast<std::time_t>(
                      std::chrono::duration_cast<std::chrono::seconds>(now()).count());
}

Session* Service::open() {
    if (sessions_.size() >= kSessions) {
        return nullptr;
    }
    do {
        last_handle_ = last_handle_ == UINT16_MAX ? uint16_t{1} : uint16_t(last_handle_ + 1);
    } while (sessions_.count(last_handle_) != 0);
    Entry& entry = sessions_[last_handle_];
    entry.serial = ++opened_;
    entry.session.handle = last_handle_;
    return &entry.session;
}

Session* Service::find(uint16_t handle) {
    const auto found = sessions_.find(handle);
    return found == sessions_.end() ? nullptr : &found->second.session;
}

uint16_t Service::oldestHandle() const {
    const auto oldest =
        std::min_element(sessions_.begin(), sessions_.end(), [](const auto& a, const auto& b) {
            return a.second.serial < b.second.serial;
        });
    return oldest != sessions_.end() ? oldest->first : uint16_t{0};
}

void Service::close(Session& session) {
    sessions_.erase(session.handle);
}

void Service::sendBytes(int event_id, const void* record, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(record);
    if (!answering_) {
        return;
    }
    std::vector<uint8_t> copy(bytes, bytes + size);
    const int times = event_filter_ ? event_filter_(event_id, copy) : 1;
    if (times == 0) {
        count(event_id, {1, 1, 0});
    }
    for (int i = 0; i < times; ++i) {
        post(event_id, copy, i == 0);
    }
}

void Service::sendUnfiltered(int event_id, std::vector<uint8_t> record) {
    post(event_id, std::move(record), false);
}

std::map<int, Service::EventCount> Service::eventCounts() const {
    const std::lock_guard<std::mutex> lock(counts_mutex_);
    return counts_;
}

void Service::count(int event_id, EventCount further) {
    const std::lock_guard<std::mutex> lock(counts_mutex_);
    EventCount& counted = counts_[event_id];
    counted.caused += further.caused;
    counted.dropped += further.dropped;
    counted.added += further.added;
}

/// Sends an event that the service caused, or that it did not.
void Service::post(int event_id, std::vector<uint8_t> record, bool caused) {
    auto deliver = [this, event_id, caused, record = std::move(record)] {
        // An empty record is not a null record. Without a listener the event is
        // lost.
        static constexpr uint8_t kEmpty = 0;
        const bool posted = dtv::postEvent(event_id, record.empty() ? &kEmpty : record.data(),
                                           static_cast<int>(record.size()));
        if (caused) {
            count(event_id, {1, posted ? 0U : 1U, 0});
        } else if (posted) {
            count(event_id, {0, 0, 1});
        }
    };
    // In stepped time nothing is delivered before the command that is being sent has returned.
    if (timeline_.isStepped()) {
        timeline_.at(timeline_.ahead(std::chrono::milliseconds{0}), std::move(deliver));
    } else {
        deliver();
    }
}

void Service::later(const Session& session, std::chrono::milliseconds delay,
                    std::function<void(Session&)> step) {
    timeline_.at(timeline_.ahead(delay), [this, key = keyOf(session), step = std::move(step)] {
        const std::lock_guard<std::mutex> lock(mutex_);
        Session* found = findKey(key);
        if (found != nullptr && answering_) {
            step(*found);
        }
    });
}

void Service::reply(Session* session, std::chrono::milliseconds delay,
                    std::function<void()> send_reply, std::function<void(Session&)> then) {
    Timeline::Clock::time_point moment = timeline_.ahead(delay);
    Key key{0, 0};
    if (session != nullptr) {
        moment = session->last_reply = std::max(moment, session->last_reply);
        key = keyOf(*session);
    }
    timeline_.at(moment, [this, key, send_reply = std::move(send_reply), then = std::move(then)] {
        const std::lock_guard<std::mutex> lock(mutex_);
        send_reply();
        Session* found = findKey(key);
        if (found != nullptr && then && answering_) {
            then(*found);
        }
    });
}

Service::Key Service::keyOf(const Session& session) const {
    return {session.handle, sessions_.at(session.handle).serial};
}

Session* Service::findKey(const Key& key) {
    const auto found = sessions_.find(key.first);
    return found == sessions_.end() || found->second.serial != key.second ? nullptr
                                                                          : &found->second.session;
}

} // namespace simulator
