// The text of a fixed field, with a terminator.
#pragma once

#include <cstddef>
#include <cstring>

/// The text of a field, which ends at its first zero byte or with the field, followed by a zero
/// byte: a text that fills its field has none, and is copied. Any other is read where it is, so the
/// field must stay as long as this.
template <size_t Size>
class FieldText {
public:
    explicit FieldText(const char (&field)[Size]) : text(field) {
        if (strnlen(field, Size) == Size) {
            std::memcpy(copy_, field, Size);
            copy_[Size] = '\0';
            text = copy_;
        }
    }
    FieldText(const FieldText&) = delete;
    FieldText& operator=(const FieldText&) = delete;

    const char* text;

private:
    char copy_[Size + 1]; ///< of a text that fills its field; else not used
};
