// The sessions, and what the handling of commands may use: the stations on the air, the events
// out, the time ahead.
#pragma once

#include "simulator/channel_plan.h"
#include "simulator/direction.h"
#include "simulator/guide.h"
#include "simulator/nvram.h"
#include "simulator/session.h"
#include "simulator/shelf.h"
#include "simulator/timeline.h"

#include <chrono>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace simulator {

struct Options {
    ChannelPlan plan;
    /// What the stations show; may be empty.
    Guide guide;
    /// Tells what time it is for the guide.
    std::function<std::time_t()> wall_clock = [] { return std::time(nullptr); };
    /// Factor for every delay: 1 is real time, smaller is faster; above 0.
    double time_scale = 1.0;
    /// Whether time passes by itself.
    Pace pace = Pace::kClock;
    /// What chance begins with: the same number, the same signals.
    uint32_t seed = 0;
    /// How the service's behaviour is bent.
    Script script;
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
    /// The broadcasters' memory, of all sessions.
    Nvram& nvram() { return nvram_; }

    /// Time since the service began, in the seconds of its own scale.
    std::chrono::milliseconds now() const { return timeline_.now(); }
    std::time_t wallClock() const;
    Timeline& timeline() { return timeline_; }
    /// By chance a number below `range`.
    uint32_t chance(uint32_t range) { return static_cast<uint32_t>(chance_()) % range; }

    /// A command has come in: what the script says of it. Stops answering when it says so.
    Direction::Arrival arrive(int command_id);
    /// Sends the events that the script wants after a command, about its session; about the one
    /// that is open longest when it has none.
    void sendAfter(const Direction::Arrival& arrival, std::optional<uint16_t> handle);
    /// How often a command has come in.
    uint32_t arrivals(int command_id) const { return direction_.arrivals(command_id); }
    /// What senders get since the service stopped answering; empty while it answers.
    const std::optional<int32_t>& stopped() const { return stopped_; }

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
    /// Sends an event's record as the script bends it.
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
    void atMoments();
    void sendScripted(const EventRule& rule, std::optional<uint16_t> handle);
    void post(int event_id, std::vector<uint8_t> record);

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
    Nvram nvram_;
    std::mt19937 chance_;
    Direction direction_;
    std::optional<int32_t> stopped_;
    Timeline timeline_; ///< the last member: its steps use the others
};

} // namespace simulator
