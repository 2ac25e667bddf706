// A message on one line.
#pragma once

#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstdint>
#include <string>

namespace show {

/// Number, time of day, thread, direction, name; then as far as they are known: the handle of the
/// session as h=3, the result in the record as r=-5, what a send or a listener returned as ret=1,
/// the number of the partner as #11 (#11? when it is ambiguous) and the time since it, and `cut`
/// when the record ends before its layout does. 80 columns at most: a name that is too long for
/// what follows it is shortened, and ends with a tilde then. `time` is as localTime() says it.
std::string briefLine(const sessions::Message& message, const sessions::Link& link,
                      const std::string& time);

/// A time span with three digits or more: "12.345us", "6.646ms", "-1.500s".
std::string spanText(int64_t nanoseconds);

} // namespace show
