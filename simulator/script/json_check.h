// Violations of JSON that the JSON library accepts.
#pragma once

#include <cstddef>
#include <string_view>

namespace simulator {

/// The offset of the first byte that belongs to no character of UTF-8; npos when there is none.
size_t firstInvalidUtf8(std::string_view text);

struct JsonViolation {
    size_t offset = std::string_view::npos; ///< bytes from the start; npos: there is none
    const char* reason = "";
};

/// The first comment, number that is not JSON, bare control character in a string, or object or
/// list that is nested too deeply: the library calls itself for each.
JsonViolation firstViolation(std::string_view text);

} // namespace simulator
