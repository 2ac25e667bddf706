// A timeline as a trace that Perfetto opens.
#pragma once

#include "desk/pictures/timeline.h"

#include <functional>
#include <string>

namespace pictures {

/// Gets the trace piece by piece.
using TakeBytes = std::function<void(const std::string&)>;

/// Writes a track for each thread with a slice for each native and event, an arrow from each
/// command to the event that answers it, counters of the signal and of the commands that wait, and
/// the lines of the trace as lines of Android's log. Times are those of the file, as if its zone
/// were UTC.
void writePerfetto(const Timeline& timeline, const TakeBytes& take);

} // namespace pictures
