// Reads a log: the lines that the bridge wrote, between those of other programs, and what says that
// lines are missing.
#pragma once

#include "sessions/log/line_header.h"
#include "sessions/log/line_source.h"
#include "sessions/log/trace_lines.h"

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace sessions {

/// What a line of a log is.
enum class LogLineKind : uint8_t {
    kTrace,     ///< a line of the trace that the bridge can write
    kNotKnown,  ///< a line of the trace that it cannot write
    kShortened, ///< the beginning of a line of the trace
    kCopy,      ///< the copy of an ERROR line on standard output
    kDropped,   ///< the log's own note that lines were thrown away
    kSection,   ///< "--------- beginning of main", or a section of a bug report
    kForeign,   ///< of another program
};

struct LogLine {
    LogLineKind kind = LogLineKind::kForeign;
    uint64_t first = 0; ///< number of its first line in the log, from 1
    uint64_t last = 0;  ///< of its last one: a text may have line ends in it
    LineHeader header;
    TraceLine trace;        ///< of the first four kinds
    std::string_view text;  ///< without header; valid until the next line is read
    uint64_t dropped = 0;   ///< how many lines the log says it threw away
    bool identical = false; ///< they said the same as the line before them
    bool cut = false;       ///< the log begins or ends in the middle of it
};

/// How many lines there were.
struct LogCounts {
    uint64_t lines = 0;
    uint64_t of_bridge = 0;  ///< lines of the trace and their copies, each once
    uint64_t understood = 0; ///< those of them that the bridge can write
    uint64_t shortened = 0;  ///< those of them of which the end is missing
    std::array<uint64_t, kTraceLevels> of_level{};
    std::array<uint64_t, 9> of_form{}; ///< lines of the trace, by LogForm
};

/// Holds the lines that one of the bridge may take, whatever the log's length.
class LogReader {
public:
    /// `source` must outlive the reader.
    explicit LogReader(LineSource& source) : source_(source) {}

    /// The next line; false at the end of the log. What it refers to is valid until the next call.
    bool next(LogLine& line);

    const LogCounts& counts() const { return counts_; }

    /// Has lines() give what the log has; a copy of each line more.
    void keepLines() { keeps_lines_ = true; }
    /// The lines of the log that the last line takes, with their headers and without their ends.
    const std::vector<std::string>& lines() const { return lines_; }
    /// Whether the last line has no end: the log ends in it.
    bool isUnended() const { return current_.unended; }

private:
    struct Physical {
        std::string text;
        bool unended = false;
    };

    const Physical* peek(size_t index);
    bool take();
    void classify(LogLine& line);
    void readTrace(LogLine& line, size_t start);
    void join(LogLine& line);
    bool joinWith(LogLine& line, std::string_view separator, size_t most);
    void joinLastText(LogLine& line);
    void take(LogLine& line, std::string joined, size_t more);
    bool isWrapped(const LogLine& line);
    bool continues(const LogLine& line, std::string_view next, LineHeader& header) const;
    bool beginIsCut(const LogLine& line);
    void markCut(LogLine& line);
    void count(const LogLine& line);

    LineSource& source_;
    Physical current_;
    std::deque<Physical> ahead_; ///< read, and not yet given
    std::string joined_;         ///< a line of the bridge that takes several
    std::string joined_tag_;     ///< of its first line
    bool keeps_lines_ = false;
    std::vector<std::string> lines_;
    /// The header that the lines of the long form belong to, and its texts.
    LineHeader long_header_;
    std::string long_tag_;
    bool in_long_ = false;
    LogCounts counts_;
};

} // namespace sessions
