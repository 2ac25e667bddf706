// A DTV service for the desk, as an endpoint for libDtv.so: it answers the commands of the bridge
// from a channel table, as if the stations of the table were on the air.
#pragma once

#include "dtv/exchange.h"
#include "messages/command_replies.h"
#include "script/script.h"
#include "scripted_service.h"
#include "service/service.h"

#include <atomic>
#include <optional>
#include <thread>

namespace simulator {

struct Options : ServiceOptions {
    /// Modifies the behaviour of the service; may be empty.
    Script script;
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

private:
    int take(const CommandReply& row, const dtv::Command& command, const CommandRule* rule,
             std::optional<uint16_t>& handle);
    void pass(std::chrono::milliseconds delay);

    Service service_;
    ScriptedService scripted_;
    std::atomic<std::thread::id> advancing_{}; ///< the thread that time advances on
};

} // namespace simulator
