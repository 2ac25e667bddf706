// The last lines of the bridge, for what is found a few lines after them.
#pragma once

#include "desk/explain/finding.h"

#include "sessions/log/log_reader.h"

#include <array>
#include <cstdint>

namespace explain {

/// Keeps where the last kKept lines of the bridge were written, and what they said.
class RecentLines {
public:
    static constexpr size_t kKept = 1024;
    static constexpr size_t kMostText = 200; ///< bytes of a line's text

    void add(const sessions::LogLine& line);

    /// The line with that number in the log; null when it is no line of the bridge, or too old.
    const Place* find(uint64_t line) const;

private:
    struct Line {
        Place place;
        uint64_t last = 0; ///< number of its last line: a text may have line ends in it
    };

    std::array<Line, kKept> lines_; ///< the oldest at next_ % kKept, once all are taken
    size_t next_ = 0;
};

} // namespace explain
