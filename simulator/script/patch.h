// Bytes that a script writes into a record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace simulator {

/// Bytes written over those of a record.
struct Patch {
    size_t offset; ///< bytes from the start of the record
    std::vector<uint8_t> bytes;
};

/// Writes the patches into a record, which grows when they reach beyond its end.
void applyPatches(const std::vector<Patch>& patches, std::vector<uint8_t>& record);

} // namespace simulator
