// The service as a script modifies it: the script's own events, modified records, the stop.
#pragma once

#include "script/script_run.h"
#include "service/service.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace simulator {

/// Not locked by itself: what uses it holds the service's mutex. Lives as long as the service's
/// timeline runs.
class ScriptedService {
public:
    /// Sees an event that is about to be sent, and may change its record.
    using OnEvent = std::function<void(int event_id, std::vector<uint8_t>& record)>;

    /// Filters the events of the service, and schedules what the script wants at a time. Each event
    /// of the service that the script lets through goes to `on_event`, which may be empty.
    ScriptedService(Service& service, Script script, OnEvent on_event);
    ScriptedService(const ScriptedService&) = delete;
    ScriptedService& operator=(const ScriptedService&) = delete;

    /// Counts a command that has come in and finds the rules that apply to it. The service stops
    /// answering when the script says so.
    ScriptRun::Arrival arrive(int command_id);
    /// Schedules the events that the script wants after a command. They are about the session with
    /// this handle; without one, about the session that has been open longest.
    void sendAfter(const ScriptRun::Arrival& arrival, std::optional<uint16_t> handle);
    /// How often a command has come in.
    uint32_t arrivals(int command_id) const { return run_.arrivals(command_id); }
    /// A rule of the script, or its stop, has taken effect on a command.
    void acted(const CommandRule* rule) { run_.acted(rule); }
    void stopActed() { run_.acted(&*run_.script().stop); }
    /// How often each rule has taken effect.
    std::vector<ScriptRun::RuleCount> ruleCounts() const { return run_.ruleCounts(); }
    /// What senders get since the service stopped answering; empty while it answers.
    const std::optional<int32_t>& stopped() const { return stopped_; }

private:
    void scheduleTimedRules();
    void stop();
    void send(const EventRule& rule, std::optional<uint16_t> handle);

    Service& service_;
    ScriptRun run_;
    std::optional<int32_t> stopped_;
};

} // namespace simulator
