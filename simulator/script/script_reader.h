// Reads a script from its JSON file; see docs/scripts.md.
#pragma once

#include "script/script.h"

#include <optional>
#include <string>

namespace simulator {

/// Reads a script. On failure empty; `error` is "FILE:LINE: what is wrong" about the mistake that
/// comes first in the file, or "FILE: why" when that cannot be read or has more than 1048576 bytes.
std::optional<Script> readScript(const std::string& path, std::string& error);

} // namespace simulator
