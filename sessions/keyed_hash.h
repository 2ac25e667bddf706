// A hash whose result says nothing about the data to whom does not have the key.
#pragma once

#include "sessions/bytes.h"

#include <cstdint>
#include <optional>

namespace sessions {

/// 128 bits.
struct HashKey {
    uint64_t low = 0;
    uint64_t high = 0;
};

/// A key that nobody can foresee, from the kernel; nothing when the kernel has none.
std::optional<HashKey> randomHashKey();

/// SipHash-2-4 of the data.
uint64_t keyedHash(const HashKey& key, Bytes data);

} // namespace sessions
