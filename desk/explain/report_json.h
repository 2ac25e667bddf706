// The report as JSON. docs/field.md describes it.
#pragma once

#include "desk/explain/explained.h"
#include "desk/explain/report_text.h"

#include <ostream>

namespace explain {

/// One document.
void writeJson(std::ostream& out, const Explained& explained, const Selection& selection);

/// A line for the log, one for each of its sessions, and one for each finding.
void writeNdjson(std::ostream& out, const Explained& explained);

} // namespace explain
