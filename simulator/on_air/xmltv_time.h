// The times of XMLTV files: 20260401190000 +0900, or less of it.
#pragma once

#include <ctime>
#include <optional>
#include <string_view>

namespace simulator {

struct XmltvTime {
    std::time_t time;
    int utc_offset; ///< seconds east of Greenwich
};

/// Digits from the year on, at least to the day; then, after a blank, the offset from Greenwich
/// (+hhmm, -hhmm, Z or UTC), which is 0 when it is missing. Empty for a text that is no time.
std::optional<XmltvTime> parseXmltvTime(std::string_view text);

} // namespace simulator
