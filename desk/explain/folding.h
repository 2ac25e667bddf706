// Which findings follow from which.
#pragma once

#include "desk/explain/finding.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace explain {

/// What a finding is about beside its subject.
struct Relations {
    int class_id = -1;  ///< of the Java class in the bridge's table; -1: none
    int method_id = -1; ///< of the Java method
    std::optional<int> handle;
    /// The commands of the session that had failed when they were sent last.
    std::set<std::string> failed;
};

struct RelatedFinding {
    Finding finding;
    Relations relations;
};

/// Puts each finding under the one that it follows from: by class, method, command and session. The
/// first causes come first, the worst before the others, then by line; then what follows from them,
/// by line.
std::vector<Finding> withFirstCauses(std::vector<RelatedFinding> found);

} // namespace explain
