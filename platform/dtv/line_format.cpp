#include "line_format.h"

#include <cstdint>
#include <cstring>

namespace dtv {
namespace {

/// A text that grows in a room of its own, until something does not fit.
class Text {
public:
    Text(char* begin, size_t room) : begin_(begin), next_(begin), end_(begin + room) {}

    bool put(const char* bytes, size_t count) {
        // One byte remains for the end.
        if (count >= static_cast<size_t>(end_ - next_)) {
            return false;
        }
        std::memcpy(next_, bytes, count);
        next_ += count;
        return true;
    }

    bool putSpaces(size_t count) {
        if (count >= static_cast<size_t>(end_ - next_)) {
            return false;
        }
        std::memset(next_, ' ', count);
        next_ += count;
        return true;
    }

    /// Writes the text before the next '%' or the end, and returns where that is; null when the
    /// text does not fit. Byte by byte: what is between two conversions is short.
    const char* putUntilPercent(const char* format) {
        char* next = next_;
        char* const last = end_ - 1;
        while (*format != '%' && *format != '\0') {
            if (next == last) {
                return nullptr;
            }
            *next++ = *format++;
        }
        next_ = next;
        return format;
    }

    int finish() {
        *next_ = '\0';
        return static_cast<int>(next_ - begin_);
    }

private:
    char* const begin_;
    char* next_;
    char* const end_;
};

struct Conversion {
    bool left = false;
    bool is_long = false;
    size_t width = 0;
    char letter = '\0';
};

/// Reads a conversion after its '%' and returns what follows it. One that is not known here gets a
/// letter that no conversion has: a precision, a further flag, another length.
const char* parse(const char* format, Conversion& conversion) {
    if (*format == '-') {
        conversion.left = true;
        ++format;
    }
    // A width that begins with 0 is a flag and not known; nor is a width that no line has.
    if (*format >= '1' && *format <= '9') {
        for (int digits = 0; digits < 3 && *format >= '0' && *format <= '9'; ++digits) {
            conversion.width = conversion.width * 10 + static_cast<size_t>(*format++ - '0');
        }
    }
    if (*format == 'l') {
        conversion.is_long = true;
        ++format;
    }
    conversion.letter = *format;
    return conversion.letter == '\0' ? format : format + 1;
}

bool putPadded(Text& text, const Conversion& conversion, const char* bytes, size_t count) {
    const size_t padding = conversion.width > count ? conversion.width - count : 0;
    if (padding == 0) {
        return text.put(bytes, count);
    }
    if (conversion.left) {
        return text.put(bytes, count) && text.putSpaces(padding);
    }
    return text.putSpaces(padding) && text.put(bytes, count);
}

/// The digits of a number, made from the last to the first.
class Digits {
public:
    void decimal(unsigned long value) {
        do {
            *--first_ = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
    }
    void hexadecimal(uintptr_t value) {
        do {
            *--first_ = "0123456789abcdef"[value % 16];
            value /= 16;
        } while (value != 0);
    }
    void before(char character) { *--first_ = character; }

    bool putTo(Text& text, const Conversion& conversion) const {
        return putPadded(text, conversion, first_,
                         static_cast<size_t>(bytes_ + sizeof bytes_ - first_));
    }

private:
    char bytes_[24];
    char* first_ = bytes_ + sizeof bytes_;
};

bool putSigned(Text& text, const Conversion& conversion, long value) {
    Digits digits;
    // Negated without a sign, so that the smallest number has its own value.
    digits.decimal(value < 0 ? 0 - static_cast<unsigned long>(value)
                             : static_cast<unsigned long>(value));
    if (value < 0) {
        digits.before('-');
    }
    return digits.putTo(text, conversion);
}

bool putUnsigned(Text& text, const Conversion& conversion, unsigned long value) {
    Digits digits;
    if (conversion.letter == 'u') {
        digits.decimal(value);
    } else {
        digits.hexadecimal(value);
    }
    return digits.putTo(text, conversion);
}

bool putString(Text& text, const Conversion& conversion, const char* string) {
    if (string == nullptr) {
        string = "(null)";
    }
    return putPadded(text, conversion, string, std::strlen(string));
}

bool putPointer(Text& text, const Conversion& conversion, const void* pointer) {
    if (pointer == nullptr) {
        return putPadded(text, conversion, "(nil)", 5);
    }
    Digits digits;
    digits.hexadecimal(reinterpret_cast<uintptr_t>(pointer));
    digits.before('x');
    digits.before('0');
    return digits.putTo(text, conversion);
}

/// The arguments of a line. An object can be handed on by reference, which a va_list cannot on
/// every machine.
struct Values {
    va_list list;
};

/// False when the conversion is not known here, or when its text does not fit.
bool putValue(Text& text, const Conversion& conversion, Values& values) {
    switch (conversion.letter) {
    case 'd':
        return putSigned(text, conversion,
                         conversion.is_long ? va_arg(values.list, long) : va_arg(values.list, int));
    case 'u':
    case 'x':
        return putUnsigned(text, conversion,
                           conversion.is_long ? va_arg(values.list, unsigned long)
                                              : va_arg(values.list, unsigned));
    default:
        break;
    }
    if (conversion.is_long) {
        return false; // wide characters
    }
    switch (conversion.letter) {
    case 's':
        return putString(text, conversion, va_arg(values.list, const char*));
    case 'p':
        return putPointer(text, conversion, va_arg(values.list, const void*));
    case 'c': {
        const char character = static_cast<char>(va_arg(values.list, int));
        return character != '\0' && putPadded(text, conversion, &character, 1);
    }
    case '%':
        return conversion.width == 0 && !conversion.left && text.put("%", 1);
    default:
        return false;
    }
}

} // namespace

int formatLine(char* text, size_t room, const char* format, va_list values) {
    Text line(text, room);
    Values rest;
    va_copy(rest.list, values);
    bool known = true;
    while (known) {
        format = line.putUntilPercent(format);
        if (format == nullptr || *format == '\0') {
            known = format != nullptr;
            break;
        }
        Conversion conversion;
        format = parse(format + 1, conversion);
        known = putValue(line, conversion, rest);
    }
    va_end(rest.list);
    return known ? line.finish() : -1;
}

} // namespace dtv
