// The formatting of log lines: the conversions that they are made of, without the cost of the
// general function.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace dtv {

/// Writes what vsnprintf() writes, byte for byte, when the format has only conversions that are
/// known here: %d %u %x with or without l, %s, %c, %p and %%, each with a width and the flag '-' if
/// wanted. Needs `room` bytes for the text and its end.
///
/// Returns the length of the text without its end, which is less than `room`. Returns -1 when the
/// format has something else, when a character of %c is zero, or when the text does not fit: what
/// `text` holds is of no use then, and vsnprintf() has to write the line.
int formatLine(char* text, size_t room, const char* format, va_list values)
    __attribute__((format(printf, 3, 0)));

} // namespace dtv
