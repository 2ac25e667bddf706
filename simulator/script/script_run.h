// A script while the service runs: counts the messages and finds the rules that apply to them.
#pragma once

#include "script/script.h"

#include <cstdint>
#include <map>
#include <string>
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

    /// Counts an event that is to be sent and modifies its record as the script says. Returns how
    /// often it is sent; 0: not at all.
    int modify(int event_id, std::vector<uint8_t>& record);

    /// A rule of this script has taken effect. Those of records are counted by modify(), which
    /// leaves out those that change nothing.
    void acted(const void* rule) { ++acted_[rule]; }

    /// A rule, and how often it has taken effect.
    struct RuleCount {
        std::string place; ///< in the script, as "commands[2]"; "stop"
        int message_id;    ///< of the command or event; 0 for a stop at a time
        uint32_t acted;
    };
    /// Of all rules, in the order of the script's keys.
    std::vector<RuleCount> ruleCounts() const;

private:
    const Script script_;
    uint32_t actedOf(const void* rule) const;

    std::map<int, uint32_t> counts_;        ///< of messages, by their numbers
    std::map<const void*, uint32_t> acted_; ///< by rules of the script
};

} // namespace simulator
