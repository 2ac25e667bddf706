// What is said of a replay.
#pragma once

#include "replay/divergence.h"
#include "replay/recording.h"

#include <string>
#include <vector>

namespace replay {

/// The exit status of a replay: 0 when it was the same, 1 when it diverged, 2 when nothing of it
/// was replayed.
int statusOf(const Outcome& outcome);

/// The first divergence, the messages before it, and how many there are of each kind; then one line
/// with the sum. 20 lines of 80 columns at most. `file` is the name of the capture.
std::vector<std::string> reportLines(const std::string& file, const Recording& recording,
                                     const Outcome& outcome);

/// The same as a JSON object on one line. docs/replay.md describes the keys.
std::string reportJson(const std::string& file, const Recording& recording, const Outcome& outcome);

} // namespace replay
