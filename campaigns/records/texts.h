// Texts as a service could send them: well formed, broken, too long, in every encoding.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hostile {

/// Random numbers that follow from a seed. Small and fast: a record takes many.
class Random {
public:
    explicit Random(uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15ULL + 0xD1B54A32D192ED03ULL) {}
    uint64_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return state_;
    }
    /// 0 to `count` - 1; 0 of none.
    size_t below(size_t count) {
        return count != 0 ? static_cast<size_t>(next() >> 11) % count : 0;
    }
    bool oneIn(size_t count) { return below(count) == 0; }

private:
    uint64_t state_;
};

/// Fills a field of `size` bytes with an 8-bit text of any kind.
void fillText(Random& random, uint8_t* field, size_t size);
/// The same with UTF-16 units, in little-endian order.
void fillUtf16(Random& random, uint8_t* field, size_t size);

} // namespace hostile
