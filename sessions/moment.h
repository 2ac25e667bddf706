// A point in time, and how the time stamps of a capture say it.
#pragma once

#include <cstdint>
#include <string>

namespace sessions {

/// A moment since the beginning of 1970, UTC.
struct Moment {
    int64_t seconds = 0;
    uint32_t nanoseconds = 0; ///< less than 10^9
};

/// A time stamp of an interface with that resolution (see if_tsresol of pcapng).
Moment momentOf(uint64_t stamp, uint8_t resolution, int64_t offset);

/// "2026-03-31T23:14:03.123456789Z", as RFC 3339 has it; empty when the year has not four digits.
std::string utcText(const Moment& moment);

} // namespace sessions
