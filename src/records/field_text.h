// The text of a fixed field, for those who need a terminator behind it.
#pragma once

#include <cstddef>
#include <cstring>

/// The text of a field, which ends at its first zero byte or with the field, and a zero byte behind
/// it: a text that fills its field has none there.
template <size_t Size>
struct FieldText {
    explicit FieldText(const char (&field)[Size]) {
        std::memcpy(text, field, Size);
        text[Size] = '\0';
    }
    char text[Size + 1];
};
