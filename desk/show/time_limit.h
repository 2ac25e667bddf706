// A limit in time as people write it.
#pragma once

#include "sessions/moment.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace show {

/// A time of day or a moment, with the unit down to which it was written: 20:14 is a whole minute.
struct TimeLimit {
    bool of_day = false;     ///< it recurs on every day
    int64_t nanosecond = 0;  ///< of the day where it is one, or after `moment`
    sessions::Moment moment; ///< in whole seconds; not of a time of day
    int64_t unit = 0;        ///< nanoseconds
};

/// HH:MM, HH:MM:SS and HH:MM:SS.FRACTION, with a date as 2026-03-31 and a blank or a T before it or
/// without one, or a date alone. The time is local; after a date a Z makes it UTC. Nothing for any
/// other text, and for a date that there is not.
std::optional<TimeLimit> timeLimitOf(std::string_view text);

/// The nanosecond of the local day in which a moment is; nothing when the machine cannot say.
std::optional<int64_t> nanosecondOfDay(const sessions::Moment& moment);

/// From one limit to another; either may be missing. The unit of the last one is part of the range.
/// When both are times of day and the last is before the first, the range passes midnight.
class TimeRange {
public:
    std::optional<TimeLimit> first;
    std::optional<TimeLimit> last;

    bool contains(const sessions::Moment& moment) const;

    /// Whether nothing can be in it: its last moment is before its first.
    bool isEmpty() const;
};

} // namespace show
