// The load of the library, again and again in one process, and the first event of a thread.
#pragma once

#include "plan.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace torture {

/// In a process that has not loaded the bridge.
std::vector<std::unique_ptr<Operation>> loadOperations();

/// Refused loads as Java sees them, through System.load, then one that is taken. What is wrong,
/// with the round's name; how many rounds were played.
std::vector<std::pair<std::string, std::string>>
playRefusedLoads(const std::function<void(const std::string&)>& begins);

} // namespace torture
