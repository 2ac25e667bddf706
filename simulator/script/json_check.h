// What is wrong with a JSON text that the JSON library takes all the same.
#pragma once

#include <cstddef>
#include <string_view>

namespace simulator {

/// Where the first byte lies that belongs to no character of UTF-8; npos when there is none.
size_t firstNoUtf8(std::string_view text);

struct Oddity {
    size_t offset = std::string_view::npos; ///< bytes from the start; npos: there is none
    const char* reason = "";
};

/// The first comment, number of an odd form, bare control character in a string, or object or list
/// that lies too deep: the library calls itself for each.
Oddity firstOddity(std::string_view text);

} // namespace simulator
