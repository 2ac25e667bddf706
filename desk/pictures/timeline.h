// What a capture or a log shows of a session, by time: the messages, what ran on which thread, and
// the lines of the trace.
#pragma once

#include "sessions/log/trace_lines.h"
#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pictures {

/// A thread of the receiver's process, in one run of it.
struct Thread {
    uint32_t id = 0;
    std::string name; ///< may be empty
    uint32_t run = 0; ///< of the process, from 1: a capture's section
};

/// A message, with what it belongs to.
struct Entry {
    sessions::Message message;
    sessions::Link link;
    size_t thread = 0; ///< index
};

/// A native method that ran, an event that was delivered, or the load of the library.
struct Span {
    enum class Kind : uint8_t {
        kNative,
        kEvent,
        kLoad
    };
    Kind kind = Kind::kNative;
    std::string name;    ///< of the message, or the function
    size_t thread = 0;   ///< index
    int64_t begin = 0;   ///< nanoseconds since 1970, UTC
    int64_t end = 0;     ///< the same as the begin when it is not known
    uint64_t number = 0; ///< of its first message, from 1; 0: none was sent
    uint64_t line = 0;   ///< of a log, where it begins
    /// What went wrong: the line that says it, or what is known of it. Empty: nothing.
    std::string failure;
    std::string function; ///< of the bridge, and the line in its sources; from a log alone
    int source_line = 0;
};

/// A line of the trace.
struct Line {
    uint64_t number = 0; ///< in the log, from 1
    int64_t time = 0;    ///< nanoseconds since 1970, UTC
    int pid = 0;         ///< 0: not known
    uint32_t tid = 0;    ///< 0: not known
    std::string task;    ///< the thread's name, as the line has it
    sessions::TraceLevel level = sessions::TraceLevel::kDebug;
    std::string text; ///< with the function and the line of the source before it
};

struct Timeline {
    std::vector<Thread> threads;
    std::vector<Entry> entries; ///< in the order of the file; those that the filter takes
    std::vector<Span> spans;    ///< in the order of their begins
    std::vector<Line> lines;    ///< of a log, in its order
    uint64_t messages = 0;      ///< of the file, whatever the filter takes
    /// What is wrong with the file, each a sentence without its end. What could be read is there.
    std::vector<std::string> damages;
    bool is_capture = false; ///< its times are UTC; those of a log are in the zone of its receiver
    bool has_times = true;   ///< false: each line of the log takes a microsecond
};

/// The moment as nanoseconds since 1970.
int64_t nanoseconds(const sessions::Moment& moment);

/// The name of a message, or its number.
std::string nameOf(const sessions::Message& message);

} // namespace pictures
