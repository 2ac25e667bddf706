// How long the answers to commands take.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace explain {

/// Counts durations in classes, each at most a sixteenth of its durations wide: percentiles are
/// exact to 7 %, and equal durations are exact. The room does not grow with the count.
class Durations {
public:
    /// Nanoseconds; a negative one counts as 0.
    void add(int64_t nanoseconds, uint64_t line);

    uint64_t count() const { return count_; }
    int64_t longest() const { return longest_; }
    uint64_t longestLine() const { return longest_line_; }
    /// The duration that `percent` of them are not longer than; 0 when there are none.
    int64_t percentile(int percent) const;

private:
    struct Class {
        uint64_t count = 0;
        double mean = 0; ///< nanoseconds
    };

    std::map<int, Class> classes_;
    uint64_t count_ = 0;
    int64_t longest_ = 0;
    uint64_t longest_line_ = 0;
};

/// By the name of the command.
using Latencies = std::map<std::string, Durations>;

} // namespace explain
