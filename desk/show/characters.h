// Unicode characters in the bytes of a text.
#pragma once

#include "sessions/bytes.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace show {

constexpr uint32_t kReplacementCharacter = 0xfffd;

/// Whether it is half of a character in UTF-16, and none by itself.
constexpr bool isSurrogate(uint32_t point) {
    return point >= 0xd800 && point < 0xe000;
}

/// The character that an UTF-8 text begins with, and in `length` its bytes; `length` is 0 when the
/// text does not begin with one. The text has one byte at least.
uint32_t decodeUtf8(sessions::Bytes text, size_t& length);

/// The character that an UTF-16LE text begins with, and in `length` its bytes, 2 or 4. It is a
/// surrogate when its other half is not there. The text has two bytes at least.
uint32_t decodeUtf16(sessions::Bytes text, size_t& length);

std::string encodeUtf8(uint32_t point);

/// Up to the first unit of `unit` zero bytes.
sessions::Bytes untilZero(sessions::Bytes text, size_t unit);

} // namespace show
