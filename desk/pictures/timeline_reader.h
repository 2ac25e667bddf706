// Makes a timeline of a file.
#pragma once

#include "desk/pictures/timeline.h"
#include "desk/show/filter.h"

#include <string>

namespace pictures {

/// Reads a capture or a log as a whole. "-" is a log on standard input. False when nothing can be
/// read of it: `error` says why.
bool readTimeline(const std::string& path, const show::Filter& filter, Timeline& timeline,
                  std::string& error);

} // namespace pictures
