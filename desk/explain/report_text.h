// The report as people read it, 80 columns wide.
#pragma once

#include "desk/explain/explained.h"

#include <ostream>
#include <string>

namespace explain {

/// Which findings are shown.
struct Selection {
    std::string only; ///< a rule, a severity, or the name of a message; empty: all

    bool takes(const Finding& finding) const;
};

void writeText(std::ostream& out, const Explained& explained, const Selection& selection);

} // namespace explain
