// Compares the traces of two runs line by line, but for what is another in every run.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace show {

/// What of a line is compared.
struct TraceCompareOptions {
    bool ignore_source_lines = false; ///< the numbers of the lines of the bridge's sources
};

/// The line with a word in place of each number that is another in every run: process (`pid`, and
/// in the copies for standard output), thread (`tid`, `threadid`), and address (`env`, `cls`,
/// `clazz`).
std::string comparableLine(std::string_view line, const TraceCompareOptions& options = {});

struct TraceDifference {
    size_t line = 0;                  ///< from 1, in both files
    std::optional<std::string> first; ///< as it is in the file; nothing after the file's last line
    std::optional<std::string> second;
};

struct TraceComparison {
    size_t same_lines = 0; ///< before the difference, or in all
    std::optional<TraceDifference> difference;
};

/// Reads both to their ends or to the first difference. A last line without an end is another than
/// the same line with one. What cannot be read counts as the end: ask the streams.
TraceComparison compareTraces(std::istream& first, std::istream& second,
                              const TraceCompareOptions& options = {});

} // namespace show
