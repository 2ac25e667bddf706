// Modified UTF-8, the encoding that NewStringUTF takes, by the rules of the strictest VM: no
// four-byte sequences, no overlong forms but C0 80. Texts of a broadcast hold what they hold.
#pragma once

#include <cstddef>
#include <cstdint>

namespace modified_utf8 {

constexpr bool isContinuation(unsigned char byte) {
    return (byte & 0xc0) == 0x80;
}

/// The length of the well-formed sequence that a zero-terminated text begins with, or 0 when its
/// first byte begins none. Reads no further than the first zero byte.
inline size_t sequenceLength(const unsigned char* text) {
    const unsigned char lead = text[0];
    if (lead != 0 && lead < 0x80) {
        return 1;
    }
    if (lead == 0xc0) {
        return text[1] == 0x80 ? 2 : 0;
    }
    if (lead >= 0xc2 && lead <= 0xdf) {
        return isContinuation(text[1]) ? 2 : 0;
    }
    if (lead >= 0xe0 && lead <= 0xef) {
        const bool overlong = lead == 0xe0 && text[1] < 0xa0;
        return isContinuation(text[1]) && !overlong && isContinuation(text[2]) ? 3 : 0;
    }
    return 0;
}

/// The code point of the standard four-byte sequence that a zero-terminated text begins with
/// (U+10000 to U+10FFFF), or 0 when it begins with none.
inline uint32_t supplementaryCodePoint(const unsigned char* text) {
    if ((text[0] & 0xf8) != 0xf0 || !isContinuation(text[1]) || !isContinuation(text[2]) ||
        !isContinuation(text[3])) {
        return 0;
    }
    const uint32_t code_point = (text[0] & 0x07u) << 18 | (text[1] & 0x3fu) << 12 |
                                (text[2] & 0x3fu) << 6 | (text[3] & 0x3fu);
    return code_point >= 0x10000 && code_point <= 0x10ffff ? code_point : 0;
}

/// Whether a zero-terminated text is modified UTF-8 already.
inline bool isWellFormed(const char* text) {
    const auto* in = reinterpret_cast<const unsigned char*>(text);
    for (;;) {
        // Most texts are ASCII for the most part.
        while (*in != 0 && *in < 0x80) {
            ++in;
        }
        if (*in == 0) {
            return true;
        }
        const size_t length = sequenceLength(in);
        if (length == 0) {
            return false;
        }
        in += length;
    }
}

/// One byte of a text becomes at most this many: a stray byte turns into the three of U+FFFD.
constexpr size_t kGrowth = 3;

/// Writes a zero-terminated text as modified UTF-8: a standard four-byte sequence as its surrogate
/// pair, any byte that belongs to no sequence as U+FFFD. `out` has room for kGrowth times the
/// text's length and the zero byte that ends it.
inline void convert(const char* text, char* out) {
    const auto* in = reinterpret_cast<const unsigned char*>(text);
    const auto put = [&out](uint32_t unit) {
        *out++ = static_cast<char>(0xe0 | unit >> 12);
        *out++ = static_cast<char>(0x80 | (unit >> 6 & 0x3f));
        *out++ = static_cast<char>(0x80 | (unit & 0x3f));
    };
    while (*in != 0) {
        if (size_t length = sequenceLength(in); length != 0) {
            for (; length != 0; --length) {
                *out++ = static_cast<char>(*in++);
            }
        } else if (const uint32_t code_point = supplementaryCodePoint(in); code_point != 0) {
            const uint32_t offset = code_point - 0x10000;
            put(0xd800 | offset >> 10);
            put(0xdc00 | (offset & 0x3ff));
            in += 4;
        } else {
            put(0xfffd);
            ++in;
        }
    }
    *out = '\0';
}

} // namespace modified_utf8
