// Numbers and times as people read them.
#pragma once

#include "sessions/log/line_header.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace explain {

/// The width of what is written.
constexpr size_t kColumns = 80;

constexpr int64_t kSecond = 1000000000; ///< nanoseconds

/// "850 us", "12.3 ms", "4.71 s", "3 min 20 s", "2 h 5 min".
std::string durationText(int64_t nanoseconds);

/// "1 line", "12 lines".
std::string countText(uint64_t count, std::string_view noun);

/// "11-21 22:13:37.123", with a year when there is one.
std::string timeText(const sessions::LogTime& time);

/// The words of a text on lines of `columns` at most. A word that is wider than a line is divided.
/// Control characters are shown as \xNN.
std::vector<std::string> wrapped(std::string_view text, size_t columns);

/// What fits into `columns`; "~" ends what does not. Control characters are shown as \xNN.
std::string shortened(std::string_view text, size_t columns);

} // namespace explain
