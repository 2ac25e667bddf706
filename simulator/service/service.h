// The sessions, and what the handlers of commands use: the stations on the air, the events to the
// client, the time.
#pragma once

#include "on_air/channel_plan.h"
#include "on_air/guide.h"
#include "service/nvram.h"
#include "service/recordings.h"
#include "service/session.h"
#include "service/timeline.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace simulator {

struct ServiceOptions {
    ChannelPlan plan;
    /// The programmes of the stations; may be empty.
    Guide guide;
    /// The time of day for the guide.
    std::function<std::time_t()> wall_clock = [] { return std::time(nullptr); };
    /// Factor for every delay: 1 is real time, smaller is faster; above 0.
    double time_scale = 1.0;
    /// Whether time passes by itself.
    Pace pace = Pace::kClock;
    /// The seed of the random numbers: with the same seed the signals are the same.
    uint32_t seed = 0;
};

/// Not locked by itself: what uses it holds mutex().
class Service {
public:
    explicit Service(ServiceOptions options);
    /// Stops the timeline: no step is under way afterwards.
    ~Service();

    std::mutex& mutex() { return mutex_; }
    const ChannelPlan& plan() const { return options_.plan; }
    const Guide& guide() const { return options_.guide; }
    /// The recordings, of all sessions.
    Recordings& recordings() { return recordings_; }
    /// The broadcasters' memory, of all sessions.
    Nvram& nvram() { return nvram_; }

    /// Time since the service began, in the seconds of its own scale.
    std::chrono::milliseconds now() const { return timeline_.now(); }
    std::time_t wallClock() const;
    Timeline& timeline() { return timeline_; }
    /// A random number below `range`.
    uint32_t random(uint32_t range) { return static_cast<uint32_t>(random_()) % range; }

    /// A new session with an unused handle from 1 up; null when there are too many.
    Session* open();
    /// The session, or null.
    Session* find(uint16_t handle);
    /// The handle of the session that has been open longest; 0 when there is none.
    uint16_t oldestHandle() const;
    void close(Session& session);

    /// Sees the record of each event before it is sent, and may change it. Returns how often it is
    /// sent; 0: not at all.
    using EventFilter = std::function<int(int event_id, std::vector<uint8_t>& record)>;
    void setEventFilter(EventFilter filter) { event_filter_ = std::move(filter); }

    /// No event is sent from now on, no step of a session is done and nothing follows a reply.
    /// Replies on their way are not sent.
    void stopAnswering() { answering_ = false; }

    /// Sends an event record, unless the filter holds it back.
    template <class Record>
    void send(int event_id, const Record& record) {
        sendBytes(event_id, &record, sizeof record);
    }
    void sendBytes(int event_id, const void* record, size_t size);
    /// Sends an event that the filter does not see, and that nothing in the service causes.
    void sendUnfiltered(int event_id, std::vector<uint8_t> record);

    /// How many events of a kind there were.
    struct EventCount {
        uint32_t caused = 0;  ///< by the service itself, whether or not they were sent
        uint32_t dropped = 0; ///< of those, were not sent
        uint32_t added = 0;   ///< were sent besides: copies, and those of a script
    };
    /// By the numbers of the events. Needs no lock.
    std::map<int, EventCount> eventCounts() const;

    /// Does `step` after `delay`, under the mutex, if the session still exists then.
    void later(const Session& session, std::chrono::milliseconds delay,
               std::function<void(Session&)> step);
    /// Sends the reply to a command after the replies before it and not before `delay`, then does
    /// `then`. The session may be null or gone by then: the reply is sent all the same.
    void reply(Session* session, std::chrono::milliseconds delay, std::function<void()> send_reply,
               std::function<void(Session&)> then);

private:
    using Key = std::pair<uint16_t, uint64_t>; ///< a handle, and which session had it

    struct Entry {
        Session session;
        uint64_t serial;
    };

    void post(int event_id, std::vector<uint8_t> record, bool caused);
    void count(int event_id, EventCount further);
    Key keyOf(const Session& session) const;
    Session* findKey(const Key& key);

    const ServiceOptions options_;
    std::mutex mutex_;
    std::map<uint16_t, Entry> sessions_;
    uint16_t last_handle_ = 0;
    uint64_t opened_ = 0;
    Recordings recordings_;
    Nvram nvram_;
    std::mt19937 random_;
    EventFilter event_filter_;
    mutable std::mutex counts_mutex_; ///< guards the next one
    std::map<int, EventCount> counts_;
    bool answering_ = true;
    Timeline timeline_; ///< the last member: its steps use the others
};

} // namespace simulator
