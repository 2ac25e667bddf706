// The 83 events, each with full texts, with texts that are no UTF-8, and with empty ones.
#pragma once

#include "plan.h"

#include <memory>
#include <vector>

namespace torture {

/// With the bridge loaded. They are delivered on the calling thread, and the same again on a thread
/// that the bridge attached to the VM.
std::vector<std::unique_ptr<Operation>> eventOperations();

} // namespace torture
