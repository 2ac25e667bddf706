// How the service's behaviour is bent: read from a JSON file, see docs/scripts.md.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// Which of the messages of a kind a rule is about: the nth, counted from 1, or each.
struct Occurrence {
    std::optional<uint32_t> nth;
    bool fits(uint32_t number) const { return !nth || *nth == number; }
};

/// What becomes of a command.
struct CommandRule {
    int command_id = 0;
    Occurrence which;
    std::chrono::milliseconds delay{0}; ///< more than the service takes by itself
    std::optional<int32_t> result;      ///< answered with this instead of being carried out
    std::optional<int32_t> send_result; ///< not taken: what the sender gets, not 0
    /// False: taken, and that is all. A synchronous command, which has to end, is not taken.
    bool answer = true;
};

/// Bytes written over those of a record.
struct Patch {
    size_t offset;
    std::vector<uint8_t> bytes;
};

/// Writes the patches into a record, which grows when they reach behind its end.
void applyPatches(const std::vector<Patch>& patches, std::vector<uint8_t>& record);

/// When something happens: at a time of the service's clock, or after a command.
struct Occasion {
    std::optional<std::chrono::milliseconds> at;
    int command_id = 0; ///< when there is no time
    Occurrence which;
    std::chrono::milliseconds delay{0}; ///< after the command
};

/// An event that is sent although nothing in the service causes it.
struct EventRule {
    Occasion when;
    int event_id = 0;
    std::vector<uint8_t> record;
    /// The record says itself which session it is about. Else it is about the command's, or about
    /// the one that is open longest.
    bool names_session = false;
};

/// What becomes of an event's record.
struct RecordRule {
    int event_id = 0;
    Occurrence which;
    std::vector<Patch> patches;
    std::optional<size_t> size; ///< cut to it, or filled up with zeros
    bool drop = false;          ///< never sent
};

/// The service stops answering: with this command, or at a time.
struct StopRule {
    Occasion when;
    int32_t send_result = 0; ///< what a sender gets from then on; one that waits never gets 0
};

/// The first rule that fits a message counts.
struct Script {
    std::vector<CommandRule> commands;
    std::vector<EventRule> events;
    std::vector<RecordRule> records;
    std::optional<StopRule> stop;
};

/// Reads a script. On failure empty; `error` is "FILE:LINE: what is wrong" about the mistake that
/// comes first in the file, or "FILE: why" when that cannot be read or has more than 1048576 bytes.
std::optional<Script> readScript(const std::string& path, std::string& error);

} // namespace simulator
