// DEBUG lines of the native methods as values, for tables and for whoever writes a line on behalf
// of another function. The compiler holds the format against its values where the line is stated.
#pragma once

#include "entry/trace.h"

#include <cstddef>
#include <cstdio>

/// Writes a line with a format that was checked where it was stated. Ints that it does not show are
/// not used. With a null format nothing is written.
void writeLine(const char* format, const char* function, int source_line, int first = 0,
               int second = 0, int third = 0);

/// A line that shows `Ints` ints, each with "%d".
template <int Ints>
struct Line {
    const char* format; ///< with the prefix of all lines
};

/// The text of a line with the prefix, after the compiler has held it against its values: nothing
/// of the call is executed.
#define CHECKED_FORMAT(text, ...)                                                                  \
    (static_cast<void>(sizeof(std::printf(TRACE_PREFIX text, "", "", "", __VA_ARGS__))),           \
     TRACE_PREFIX text)

#define LINE(text) (Line<0>{CHECKED_FORMAT(text, 0)})
#define INT_LINE(text) (Line<1>{CHECKED_FORMAT(text, 0, 0)})
#define TWO_INTS_LINE(text) (Line<2>{CHECKED_FORMAT(text, 0, 0, 0)})
#define THREE_INTS_LINE(text) (Line<3>{CHECKED_FORMAT(text, 0, 0, 0, 0)})

/// The line about something that cannot be read. It may show "ret".
struct FieldLine {
    constexpr FieldLine(std::nullptr_t) {}
    constexpr FieldLine(Line<0> line) : format(line.format) {}
    constexpr FieldLine(Line<1> line) : format(line.format) {}

    const char* format = nullptr; ///< null: nothing is said about it
};

/// The line about a value that is not accepted. It shows the value, and may show "ret".
struct ValueLine {
    constexpr ValueLine(std::nullptr_t) {}
    constexpr ValueLine(Line<1> line) : format(line.format) {}
    constexpr ValueLine(Line<2> line) : format(line.format) {}

    const char* format = nullptr; ///< null: every value is accepted
};
