#include "desk/pictures/joined.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace pictures {
namespace {

/// The most messages of a thread that may be missing in the log between two that are there.
constexpr size_t kMostMissing = 256;

/// The messages of each thread, as indexes, in the order of the file.
std::map<std::string, std::vector<size_t>> byThread(const Timeline& timeline) {
    std::map<std::string, std::vector<size_t>> indexes;
    for (size_t i = 0; i < timeline.entries.size(); ++i) {
        indexes[timeline.threads[timeline.entries[i].thread].name].push_back(i);
    }
    return indexes;
}

bool areAlike(const Entry& a, const Entry& b) {
    return a.message.id == b.message.id && a.message.kind == b.message.kind;
}

/// The time of a log as that of a capture.
class Clock {
public:
    void match(int64_t log, int64_t capture) { matched_[log] = capture; }

    int64_t captureTime(int64_t log) const {
        const auto after = matched_.upper_bound(log);
        if (matched_.empty()) {
            return log;
        }
        if (after == matched_.begin()) {
            return after->second - (after->first - log);
        }
        const auto before = std::prev(after);
        const int64_t since = log - before->first;
        if (after == matched_.end() || after->second <= before->second) {
            return before->second + since;
        }
        const double share =
            static_cast<double>(since) / static_cast<double>(after->first - before->first);
        const auto span = static_cast<double>(after->second - before->second);
        return before->second + static_cast<int64_t>(share * span);
    }

private:
    std::map<int64_t, int64_t> matched_;
};

/// Which message of the capture each message of the log is, by number.
std::unordered_map<uint64_t, uint64_t> match(const Timeline& capture, const Timeline& log,
                                             Clock& clock) {
    std::unordered_map<uint64_t, uint64_t> numbers;
    const auto of_capture = byThread(capture);
    for (const auto& [thread, indexes] : byThread(log)) {
        const auto found = of_capture.find(thread);
        if (found == of_capture.end()) {
            continue;
        }
        size_t next = 0;
        for (const size_t index : indexes) {
            const Entry& logged = log.entries[index];
            const size_t end = std::min(found->second.size(), next + kMostMissing);
            for (size_t at = next; at < end; ++at) {
                const Entry& captured = capture.entries[found->second[at]];
                if (areAlike(logged, captured)) {
                    numbers[logged.link.number] = captured.link.number;
                    clock.match(nanoseconds(logged.message.time),
                                nanoseconds(captured.message.time));
                    next = at + 1;
                    break;
                }
            }
        }
    }
    return numbers;
}

/// The capture's thread of that name; it gets one when it has none.
size_t threadIn(Timeline& capture, const Thread& thread) {
    for (size_t i = 0; i < capture.threads.size(); ++i) {
        if (capture.threads[i].name == thread.name) {
            return i;
        }
    }
    capture.threads.push_back(thread);
    return capture.threads.size() - 1;
}

} // namespace

size_t join(Timeline& capture, const Timeline& log) {
    Clock clock;
    const auto numbers = match(capture, log, clock);
    std::set<uint64_t> in_log;
    std::vector<Span> spans;
    for (Span span : log.spans) {
        const auto found = numbers.find(span.number);
        span.number = found != numbers.end() ? found->second : 0;
        span.thread = threadIn(capture, log.threads[span.thread]);
        span.begin = clock.captureTime(span.begin);
        span.end = std::max(span.begin, clock.captureTime(span.end));
        in_log.insert(span.number);
        spans.push_back(std::move(span));
    }
    for (Span& span : capture.spans) {
        if (in_log.count(span.number) == 0) {
            spans.push_back(std::move(span));
        }
    }
    std::stable_sort(spans.begin(), spans.end(),
                     [](const Span& a, const Span& b) { return a.begin < b.begin; });
    capture.spans = std::move(spans);
    capture.lines = log.lines;
    for (Line& line : capture.lines) {
        line.time = clock.captureTime(line.time);
    }
    capture.damages.insert(capture.damages.end(), log.damages.begin(), log.damages.end());
    return numbers.size();
}

} // namespace pictures
