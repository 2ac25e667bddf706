// A random capture: what several threads send at the same time, and what comes back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace replay {

/// A capture with about `messages` messages, the same from the same seed on every machine.
std::string randomCapture(uint64_t seed, size_t messages);

} // namespace replay
