// A capture as it is replayed: the messages in the order in which they passed, and the threads on
// which they did.
#pragma once

#include "sessions/block_options.h"
#include "sessions/message.h"
#include "sessions/pairing.h"

#include <chrono>
#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace replay {

/// In place of an index that there is not.
constexpr size_t kNone = static_cast<size_t>(-1);

/// A message of the capture.
struct Entry {
    sessions::Message message;
    sessions::Link link;  ///< its number in the file is there
    size_t thread = 0;    ///< index of its thread
    size_t place = 0;     ///< index among the entries of its thread
    size_t reply = kNone; ///< index of a command's answer, or of an event's refusal
    /// When it is due, since the first message. No less than that of the entry before it.
    std::chrono::nanoseconds due{0};
    bool incomplete = false; ///< not all bytes of its record are known
};

/// A thread on which messages passed.
struct Thread {
    std::string name;
    /// Whether events are delivered on it: its commands are those of the events' callbacks then.
    bool delivers = false;
    std::vector<size_t> entries; ///< indices, in their order
};

/// The capture in memory.
struct Recording {
    sessions::Notes section; ///< of the first section
    std::vector<Entry> entries;
    std::vector<Thread> threads; ///< in the order of their first messages
    size_t messages = 0;         ///< in the file
    /// How many of them belong to nothing: answers without their command, refusals without their
    /// event, and kinds of message that are not known. They have no entry.
    size_t left_out = 0;
};

/// Reads a capture to its end. Nothing, and in `error` what is wrong, when it is damaged anywhere,
/// or has neither a command nor an event: a replay of it would prove nothing.
std::optional<Recording> readRecording(std::istream& file, std::string& error);

/// The layout of an entry's record, or null when there is none.
const catalogue::Record* layoutOf(const Entry& entry);

} // namespace replay
