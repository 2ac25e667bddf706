// A view of bytes that another object owns.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace sessions {

struct Bytes {
    const uint8_t* data = nullptr;
    size_t size = 0;

    /// What follows the first `count` bytes; nothing when there are no more.
    Bytes from(size_t count) const {
        return count < size ? Bytes{data + count, size - count} : Bytes{};
    }
    /// The first `count` bytes, or all when there are fewer.
    Bytes first(size_t count) const { return {data, std::min(count, size)}; }

    bool areZero() const {
        return std::all_of(data, data + size, [](uint8_t byte) { return byte == 0; });
    }

    /// All of them, 8 at most, as one little-endian number.
    uint64_t number() const {
        uint64_t value = 0;
        for (size_t i = 0; i < size && i < 8; ++i) {
            value |= uint64_t{data[i]} << (8 * i);
        }
        return value;
    }
};

} // namespace sessions
