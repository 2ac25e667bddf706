// What must be true of a run so that its figures mean something.
#pragma once

#include <string>

namespace bench {

/// Notes a check. One that does not hold is printed, and the run fails.
void require(bool holds, const std::string& what);

int failedChecks();
int heldChecks();

} // namespace bench
