// The 65 native methods, with the richest arguments that they accept.
#pragma once

#include "plan.h"

#include <memory>
#include <vector>

namespace torture {

/// With the bridge loaded, on the main thread, in a frame of local references that stays.
std::vector<std::unique_ptr<Operation>> nativeOperations();

} // namespace torture
