// The surroundings of a line of a log.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace explain {

/// Writes the lines around one, and which call of the bridge it belongs to. Returns what is wrong;
/// empty when nothing is.
std::string writeAround(std::ostream& out, const std::string& path, uint64_t line);

} // namespace explain
