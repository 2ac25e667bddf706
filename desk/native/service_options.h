// What a simulated service begins with, and what the capture's section header says of it.
#pragma once

#include "simulator.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace desk {

/// Reads the files that a service begins with; no name, no guide or script. On failure nothing, and
/// `error` says why.
std::optional<simulator::Options> readOptions(const std::string& table, const std::string& guide,
                                              const std::string& script, std::string& error);

/// The lines of the capture's section header: docs/capture.md has the keys. `table` is the path of
/// the channel table, `clock` the service's time of day at its beginning.
std::string descriptionOf(const std::string& table, uint32_t seed, std::time_t clock);

} // namespace desk
