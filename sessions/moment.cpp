#include "sessions/moment.h"

namespace sessions {
namespace {

constexpr uint64_t powerOfTen(unsigned exponent) {
    uint64_t power = 1;
    for (unsigned i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}
constexpr unsigned kLargestPower = 19; ///< of 10 that 64 bits hold

} // namespace

Moment momentOf(uint64_t stamp, uint8_t resolution, int64_t offset) {
    const unsigned power = resolution & 0x7f;
    uint64_t seconds = 0;
    uint64_t nanoseconds = 0;
    if ((resolution & 0x80) != 0) {
        const uint64_t fraction = power < 64 ? stamp & ((uint64_t{1} << power) - 1) : stamp;
        seconds = power < 64 ? stamp >> power : 0;
        // 30 bits of the fraction are fine enough, and leave room to multiply.
        uint64_t thirty = 0;
        if (power <= 30) {
            thirty = fraction << (30 - power);
        } else if (power - 30 < 64) {
            thirty = fraction >> (power - 30);
        }
        nanoseconds = (thirty * 1000000000) >> 30;
    } else {
        uint64_t fraction = stamp;
        if (power <= kLargestPower) {
            seconds = stamp / powerOfTen(power);
            fraction = stamp % powerOfTen(power);
        }
        if (power <= 9) {
            nanoseconds = fraction * powerOfTen(9 - power);
        } else if (power - 9 <= kLargestPower) {
            nanoseconds = fraction / powerOfTen(power - 9);
        }
    }
    // The sum wraps around instead of overflowing: such stamps mean nothing.
    return {static_cast<int64_t>(seconds + static_cast<uint64_t>(offset)),
            static_cast<uint32_t>(nanoseconds)};
}

} // namespace sessions
