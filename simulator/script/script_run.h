// A script while the service runs: counts the messages and finds the rules that apply to them.
#pragma once

#include "script/script.h"

#include <cstdint>
#include <map>
#include <vector>

namespace simulator {

/// Not locked by itself.
class ScriptRun {
public:
    explicit ScriptRun(Script script);

    const Script& script() const { return script_; }

    /// The rules that apply to a command that has come in.
    struct Arrival {
        const CommandRule* rule;              ///< null: none
        std::vector<const EventRule*> events; ///< to be sent after it
        bool stops;                           ///< the service stops answering with this command
    };
    /// Counts a command; a synchronous one is counted by itself.
    Arrival arrive(int command_id);
    /// How often a command has come in.
    uint32_t arrivals(int command_id) const;

    /// Counts an event that is to be sent and modifies its record as the script says. False: it is
    /// not sent.
    bool modify(int event_id, std::vector<uint8_t>& record);

private:
    const Script script_;
    std::map<int, uint32_t> counts_; ///< of messages, by their numbers
};

} // namespace simulator
