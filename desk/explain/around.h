// The surroundings of a line of a log.
#pragma once

#include "sessions/keyed_hash.h"

#include <cstdint>
#include <ostream>
#include <string>

namespace explain {

/// Writes the lines around one, and which call of the bridge it belongs to; with placeholders when
/// `redacts_with` is not null. Returns what is wrong; empty when nothing is.
std::string writeAround(std::ostream& out, const std::string& path, uint64_t line,
                        const sessions::HashKey* redacts_with);

} // namespace explain
