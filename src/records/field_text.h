// The text of a fixed field, with a terminator.
#pragma once

#include <cstddef>
#include <cstring>

/// The text of a field, which ends at its first zero byte or with the field, followed by a zero
/// byte: a text that fills its field has none.
template <size_t Size>
struct FieldText {
    explicit FieldText(const char (&field)[Size]) {
        std::memcpy(text, field, Size);
        text[Size] = '\0';
    }
    char text[Size + 1];
};
