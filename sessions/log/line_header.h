// What stands before the text of a line of a log: the header of the forms that logcat writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace sessions {

/// How the lines of a log are laid out: those of `logcat -v`, and the trace as libDtv writes it to
/// a file, which has no headers.
enum class LogForm : uint8_t {
    kRaw,
    kBrief,      ///< I/tag( pid): text
    kTag,        ///< I/tag: text
    kProcess,    ///< I( pid) text  (tag)
    kThread,     ///< I( pid: tid) text
    kTime,       ///< 11-21 22:13:37.123 I/tag( pid): text
    kThreadTime, ///< 11-21 22:13:37.123 pid tid I tag: text
    kLong,       ///< [ 11-21 22:13:37.123 pid: tid I/tag ], and the text on the lines after it
    kOther,      ///< something else stands before the text
};
const char* nameOf(LogForm form);

/// The time of a line. Logs give it in the time zone of the receiver, and often without a year.
struct LogTime {
    int64_t nanoseconds = 0; ///< since 1970, as if the zone were UTC; in 2000 without a year
    bool has_year = false;
};

struct LineHeader {
    LogForm form = LogForm::kRaw;
    std::optional<LogTime> time;
    int pid = -1;      ///< -1: the form has none
    int tid = -1;      ///< -1: the form has none
    char priority = 0; ///< a letter of logcat, or 0
    std::string_view tag;
    std::string_view text; ///< what follows the header; empty in the long form
};

/// Reads the header of a line. A line without one is all text.
LineHeader readHeader(std::string_view line);

} // namespace sessions
