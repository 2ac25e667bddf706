// A DTV service for the desk, as an endpoint for libDtv.so: it answers the commands of the bridge
// from a channel table, as if the stations of the table were on the air.
#pragma once

#include "dtv/exchange.h"
#include "messages/command_replies.h"
#include "script/script.h"
#include "scripted_service.h"
#include "service/service.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <thread>
#include <vector>

namespace simulator {

struct Options : ServiceOptions {
    /// Modifies the behaviour of the service; may be empty.
    Script script;
    /// Sees the record of each event of the service after the script's rules, in the order in which
    /// the events are sent, and may change it. Called with the service's lock held; may be empty.
    std::function<void(int event_id, std::vector<uint8_t>& record)> on_event;
};

/// Sessions are numbered from 1; each has a tuner of its own. A command that names a session that
/// does not exist is taken and answered with kUnknownHandle; a message that is no command, or that
/// has the wrong size, is not taken. Commands never wait: replies and notifications come from a
/// thread of the simulator's own, replies of a session in the order of its commands. Only a script
/// makes a synchronous command wait.
class Simulator : public dtv::ServiceEndpoint {
public:
    explicit Simulator(Options options);
    ~Simulator() override;

    int onCommand(const dtv::Command& command) override;
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override;

    /// Stepped time only: does the next step and waits until its events are delivered. False when
    /// there is no further step. Not from an event's callback.
    bool advance();
    /// Time since the service began, on its own clock.
    std::chrono::milliseconds now() const { return service_.now(); }
    /// How often a command, synchronous or not, has come in.
    uint32_t arrivals(int command_id);
    /// How often each rule of the script has taken effect; the stop: on how many commands.
    std::vector<ScriptRun::RuleCount> ruleCounts();
    /// How many events of each kind there were.
    std::map<int, Service::EventCount> eventCounts() const { return service_.eventCounts(); }
    /// Stops the time, so that nothing more is sent but what a command sends at once. In stepped
    /// time what is due within a second is done first. Not from an event's callback.
    void finish();

private:
    int take(const CommandReply& row, const dtv::Command& command, const CommandRule* rule,
             std::optional<uint16_t>& handle);
    void pass(std::chrono::milliseconds delay);

    Service service_;
    ScriptedService scripted_;
    std::atomic<std::thread::id> advancing_{}; ///< the thread that time advances on
};

} // namespace simulator
