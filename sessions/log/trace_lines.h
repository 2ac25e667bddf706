// The lines that the bridge can write to the trace, as its sources state them, and what a line of a
// log says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sessions {

enum class TraceLevel : uint8_t {
    kError,
    kFuncStart,
    kFuncEnd,
    kInfo,
    kDebug,
};
constexpr int kTraceLevels = 5;
/// "ERROR", "FUNCSTART", "FUNCEND", "INFO", "DEBUG".
const char* nameOf(TraceLevel level);

/// One line that the bridge can write.
struct KnownLine {
    /// A value that the line shows.
    struct Value {
        std::string_view label; ///< what the format calls it, as "dtvsv_handle"; may be empty
        char conversion;        ///< d, x, p or s
    };

    TraceLevel level;
    std::string_view function; ///< who writes it; empty: it is written on behalf of others
    std::string_view file;     ///< of the sources
    int source_line;
    std::string_view format;                ///< of the message, without what all lines begin with
    std::vector<std::string_view> literals; ///< one more than there are values
    std::vector<Value> values;
};

/// All of them, each format of a function and level once.
const std::vector<KnownLine>& knownLines();

/// A value as a line of a log shows it.
struct ShownValue {
    std::string_view text;
    int64_t number = 0; ///< of a value that is no text; signed as it is shown
};

/// A line of the trace. Its texts are parts of the line that was read.
struct TraceLine {
    std::string_view task; ///< name of the thread, without the blanks after it
    TraceLevel level = TraceLevel::kDebug;
    std::string_view function;
    int source_line = 0;
    std::string_view message;
    /// The line that it is, or null when the bridge writes no such line. When it is `shortened` the
    /// message ends before the format does, and the last value may be cut.
    const KnownLine* known = nullptr;
    bool shortened = false;
    std::vector<ShownValue> values; ///< as many as the line shows; fewer when it is shortened

    /// The value with that label; null when there is none.
    const ShownValue* value(std::string_view label) const;
    /// The same as a number.
    std::optional<int64_t> number(std::string_view label) const;
};

/// Reads what follows ",TENRIK," of a line, up to its message. False when it is no line of the
/// trace. What the message says is not looked at.
bool readTraceLine(std::string_view text, TraceLine& line);

/// Looks up which line of the bridge it is, and reads its values.
void understand(TraceLine& line);

/// The place in a text where a line of the trace begins, or npos.
size_t findTraceLine(std::string_view text);

/// The copy of an ERROR line that the bridge writes to standard output. False when the text is
/// none.
bool readTraceCopy(std::string_view text, TraceLine& line);

} // namespace sessions
