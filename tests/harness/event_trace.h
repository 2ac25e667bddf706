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

/// What an ERROR line leaves on standard output.
std::string onStandardOutput(const TraceLine& line);

/// The ERROR lines among them, as they are on standard output.
std::string copiesOfErrors(const std::vector<TraceLine>& lines);

} // namespace harness
