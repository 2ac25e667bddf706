// The rules of a script, which modifies the behaviour of the service; see docs/scripts.md.
#pragma once

#include "script/patch.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace simulator {

/// Which of the messages with the same id a rule applies to: the nth, counted from 1, or every one.
struct Occurrence {
    std::optional<uint32_t> nth;
    bool fits(uint32_t number) const { return !nth || *nth == number; }
};

/// Changes the handling of a command.
struct CommandRule {
    int command_id = 0;
    Occurrence which;
    std::chrono::milliseconds delay{0}; ///< in addition to the time that the service takes
    std::optional<int32_t> result;      ///< answered with this instead of being carried out
    std::optional<int32_t> send_result; ///< not taken: what the sender gets; never 0
    /// False: taken, but neither carried out nor answered. A synchronous command, which has to end,
    /// is not taken.
    bool answer = true;
};

/// The moment of something: a time of the service's clock, or a time after a command.
struct Occasion {
    std::optional<std::chrono::milliseconds> at;
    int command_id = 0; ///< when `at` is empty
    Occurrence which;
    std::chrono::milliseconds delay{0}; ///< after the command
};

/// An event that is sent although nothing in the service causes it.
struct EventRule {
    Occasion when;
    int event_id = 0;
    std::vector<uint8_t> record;
    /// The record has a handle of its own. Otherwise it gets that of the command's session, or of
    /// the session that has been open longest.
    bool names_session = false;
};

/// Changes the record of an event.
struct RecordRule {
    int event_id = 0;
    Occurrence which;
    std::vector<Patch> patches;
    std::optional<size_t> size; ///< cut to it, or filled up with zeros
    bool drop = false;          ///< never sent
    int copies = 0;             ///< sent as often once more
};

/// The service stops answering: with this command, or at a time.
struct StopRule {
    Occasion when;
    int32_t send_result = 0; ///< what a sender gets from then on; one that waits never gets 0
};

/// Of the rules for a message the first that fits applies.
struct Script {
    std::vector<CommandRule> commands;
    std::vector<EventRule> events;
    std::vector<RecordRule> records;
    std::optional<StopRule> stop;
};

} // namespace simulator
