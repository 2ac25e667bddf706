// What a long run leaves in memory.
#pragma once

#include "runner/rounds.h"

namespace bench {

/// Delivers `events` events of all kinds through the bridge. The series are what the process and
/// the VM's heap hold before and after. Checks that neither has grown.
Result measureMemory(int events);

} // namespace bench
