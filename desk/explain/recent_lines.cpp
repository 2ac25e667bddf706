#include "desk/explain/recent_lines.h"

#include <algorithm>

namespace explain {

void RecentLines::add(const sessions::LogLine& line) {
    if (line.kind > sessions::LogLineKind::kShortened) {
        return;
    }
    Line& kept = lines_[next_++ % kKept];
    kept.last = line.last;
    Place& place = kept.place;
    place.line = line.first;
    place.function.assign(line.trace.function);
    place.source_line = line.trace.source_line;
    place.text.assign(line.trace.message.substr(0, kMostText));
}

const Place* RecentLines::find(uint64_t line) const {
    // The number of the line, counted from the oldest: the numbers grow.
    const size_t count = std::min(next_, kKept);
    const size_t oldest = next_ - count;
    size_t from = 0;
    size_t to = count;
    while (from < to) {
        const size_t middle = (from + to) / 2;
        if (lines_[(oldest + middle) % kKept].last < line) {
            from = middle + 1;
        } else {
            to = middle;
        }
    }
    const Line* const kept = from < count ? &lines_[(oldest + from) % kKept] : nullptr;
    return kept != nullptr && kept->place.line <= line ? &kept->place : nullptr;
}

} // namespace explain
