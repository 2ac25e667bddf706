#include "simulator/service.h"

#include "dtv/exchange.h"

#include <algorithm>

namespace simulator {
namespace {

/// As many as the service is believed to have memory for.
constexpr size_t kSessions = 16;

} // namespace

Service::Service(Options options) : options_(std::move(options)), timeline_(options_.time_scale) {}

Service::~Service() {
    timeline_.stop();
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

void Service::close(Session& session) {
    sessions_.erase(session.handle);
}

void Service::sendBytes(int event_id, const void* record, size_t size) {
    // Nobody may be listening any more: the service does not mind.
    dtv::postEvent(event_id, record, static_cast<int>(size));
}

void Service::later(const Session& session, std::chrono::milliseconds delay,
                    std::function<void(Session&)> step) {
    timeline_.at(timeline_.ahead(delay), [this, key = keyOf(session), step = std::move(step)] {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (Session* found = findKey(key)) {
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
        if (found != nullptr && then) {
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
