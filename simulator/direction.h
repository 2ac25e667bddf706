// A script while it is followed: which of its rules fits the message at hand.
#pragma once

#include "simulator/script.h"

#include <cstdint>
#include <map>
#include <vector>

namespace simulator {

/// Not locked by itself.
class Direction {
public:
    explicit Direction(Script script);

    const Script& script() const { return script_; }

    /// What the script says of a command that has come in.
    struct Arrival {
        const CommandRule* rule;              ///< null: nothing
        std::vector<const EventRule*> events; ///< to be sent after it
        bool stops;                           ///< the service stops answering with this command
    };
    /// Counts a command or its synchronous twin.
    Arrival arrive(int command_id);
    /// How often it has come in.
    uint32_t arrivals(int command_id) const;

    /// Counts an event that is to be sent and does to its record what the script says. False: it is
    /// not sent.
    bool bend(int event_id, std::vector<uint8_t>& record);

private:
    const Script script_;
    std::map<int, uint32_t> counts_; ///< of messages, by their numbers
};

} // namespace simulator
