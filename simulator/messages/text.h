// Texts of the records: UTF-8 in fields of a fixed size.
#pragma once

#include <cstddef>
#include <string_view>

namespace simulator {

/// How many bytes of `text` fit into `room` without cutting a character in two.
size_t fittingBytes(std::string_view text, size_t room);

/// Writes as much of `text` as fits into a record's field, whole characters only, and returns the
/// number of bytes written. A text that fills the field has no zero byte
/// after it.
size_t writeText(char* field, size_t room, std::string_view text);

template <size_t kRoom>
size_t writeText(char (&field)[kRoom], std::string_view text) {
    return writeText(field, kRoom, text);
}

/// Writes as much of a UTF-8 text as fits into a field of `units` UTF-16 units, whole characters
/// only, and returns the number of units written. Bytes that are no UTF-8 become U+FFFD.
size_t writeUtf16(char* field, size_t units, std::string_view text);

} // namespace simulator
