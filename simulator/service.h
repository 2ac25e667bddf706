// The sessions, and what the handling of commands may use: the stations on the air, the events
// out, the time ahead.
#pragma once

#include "simulator/channel_plan.h"
#include "simulator/guide.h"
#include "simulator/session.h"
#include "simulator/shelf.h"
#include "simulator/timeline.h"

#include <chrono>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace simulator {

struct Options {
    ChannelPlan plan;
    /// What the stations show; may be empty.
    Guide guide;
    /// Tells what time it is for the guide.
    std::function<std::time_t()> wall_clock = [] { return std::time(nullptr); };
    /// Factor for every delay: 1 is real time, smaller is faster; above 0.
    double time_scale = 1.0;
};

/// Not locked by itself: what uses it holds mutex().
class Service {
public:
    explicit Service(Options options);
    /// Stops the timeline: no step is under way afterwards.
    ~Service();

    std::mutex& mutex() { return mutex_; }
    const ChannelPlan& plan() const { return options_.plan; }
    const Guide& guide() const { return options_.guide; }
    /// The recordings, of all sessions.
    Shelf& shelf() { return shelf_; }

    /// Time since the service began, in the seconds of its own scale.
    std::chrono::milliseconds now() const { return timeline_.now(); }
    std::time_t wallClock() const { return options_.wall_clock(); }

    /// A new session with an unused handle from 1 up; null when there are too many.
    Session* open();
    /// The session, or null.
    Session* find(uint16_t handle);
    void close(Session& session);

    /// Sends an event record.
    template <class Record>
    void send(int event_id, const Record& record) {
        sendBytes(event_id, &record, sizeof record);
    }
    void sendBytes(int event_id, const void* record, size_t size);

    /// Does `step` after `delay`, under the mutex, if the session still exists then.
    void later(const Session& session, std::chrono::milliseconds delay,
               std::function<void(Session&)> step);
    /// Sends the reply to a command after the replies before it and not before `delay`, then goes
    /// on with `then`. The session may be null or gone by then: the reply leaves all the same.
    void reply(Session* session, std::chrono::milliseconds delay, std::function<void()> send_reply,
               std::function<void(Session&)> then);

private:
    using Key = std::pair<uint16_t, uint64_t>; ///< a handle, and which session had it

    Key keyOf(const Session& session) const;
    Session* findKey(const Key& key);

    struct Entry {
        Session session;
        uint64_t serial;
    };

    const Options options_;
    std::mutex mutex_;
    std::map<uint16_t, Entry> sessions_;
    uint16_t last_handle_ = 0;
    uint64_t opened_ = 0;
    Shelf shelf_;
    Timeline timeline_; ///< the last member: its steps use the others
};

} // namespace simulator
