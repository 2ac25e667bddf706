// The trace that every event leaves around its handler's own lines.
#pragma once

#include "harness/harness.h"
#include "harness/trace_text.h"

#include <string>
#include <vector>

namespace harness {

/// Loads the bridge and has the main thread own the first environment slot, as it does for the rest
/// of the process.
void prepareEvents();

/// The lines before the handler's own, of an event on the main thread after prepareEvents().
std::string received(int event_id, int size);
/// The same, the handler's lines as listenerTrace takes them, and the lines that follow: of an
/// event that was delivered, and of one that was not.
std::string delivered(int event_id, int size, const std::string& handler, const std::string& lines);
std::string refused(int event_id, int size, const std::string& handler = "",
                    const std::string& lines = "");

/// How many local references of the watched library live while it writes a function's FUNCEND line.
/// One at a time for each log.
class LiveAtEnd {
public:
    LiveAtEnd(LogRecorder& log, const std::string& function);
    ~LiveAtEnd();
    LiveAtEnd(const LiveAtEnd&) = delete;
    LiveAtEnd& operator=(const LiveAtEnd&) = delete;

    /// Of the last such line; -1 when there was none.
    int count() const { return live; }

private:
    LogRecorder& observed;
    int live = -1;
};

/// What an ERROR line leaves on standard output.
std::string onStandardOutput(const TraceLine& line);

/// The ERROR lines among them, as they are on standard output.
std::string copiesOfErrors(const std::vector<TraceLine>& lines);

} // namespace harness
