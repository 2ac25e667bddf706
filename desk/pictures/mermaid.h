// A timeline as a sequence diagram in the notation of Mermaid, to be pasted into a report.
#pragma once

#include "desk/pictures/timeline.h"

#include <string>

namespace pictures {

/// Messages that a diagram has at most: what shows it draws no more arrows than 500.
constexpr size_t kMostInDiagram = 400;

/// The diagram, with an arrow for each message between its thread and the service. Of a longer
/// timeline it has the first messages, and says how many are left out.
std::string mermaidText(const Timeline& timeline);

} // namespace pictures
