#include "records/texts.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

namespace hostile {
namespace {

using namespace std::string_view_literals;

/// What a text of one kind is made of.
struct Kind {
    std::basic_string_view<char> pieces[8];
};

const Kind kKinds[] = {
    // ASCII, control characters among it, and formats.
    {{"a", "Z", " ", "\x01", "\x7f", "%s%n", "|", "\r\n"}},
    // Well-formed UTF-8 of all lengths, at the ends of each length's range.
    {{"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80",
      "\xF4\x8F\xBF\xBF", "\xE3\x81\x82", "\xE6\x97\xA5"}},
    // Modified UTF-8: zero in two bytes, surrogates in three bytes each, paired and alone.
    {{"\xC0\x80", "\xED\xA0\x80\xED\xB0\x80", "\xED\xA0\x80", "\xED\xBF\xBF",
      "\xED\xB0\x80\xED\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "x"}},
    // Overlong, above the last code point, bytes that are in no UTF-8.
    {{"\xC0\xAF", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xF0\x80\x80\x80",
      "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"}},
    // Cut sequences and stray bytes.
    {{"\x80", "\xBF", "\xC2", "\xE3\x81", "\xF0\x9F\x98", "\xFE", "\xFF", "\xE3"}},
    // Shift JIS, half-width katakana, EUC-JP, ISO-2022-JP, ARIB's designations.
    {{"\x93\xFA", "\x96\x7B", "\xB1\xB2", "\xC6\xFC", "\xCB\xDC", "\x1B$B", "\x1B\x24\x3B\x7A",
      "\x0E\x0F"}},
};

const uint16_t kUnits[][8] = {
    {'a', ' ', 0x7f, 0x80, 0x3042, 0x65E5, 0xFFFD, 0xFEFF},
    {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xD83D, 0xDE00, 'x', 0xFFFF},
    {0, 1, 0x7FF, 0x800, 0xFFFE, 0xFFFF, 0, 'y'},
};

/// How much of a field a text takes: nothing, all, all but one, or any.
size_t lengthWithin(Random& random, size_t size) {
    switch (random.below(5)) {
    case 0:
        return 0;
    case 1:
        return size;
    case 2:
        return size - std::min<size_t>(size, 1);
    default:
        return random.below(size + 1);
    }
}

} // namespace

void fillText(Random& random, uint8_t* field, size_t size) {
    const size_t length = lengthWithin(random, size);
    const bool mixed = random.oneIn(4);
    size_t kind = random.below(std::size(kKinds));
    size_t at = 0;
    while (at < length) {
        if (mixed) {
            kind = random.below(std::size(kKinds));
        }
        const std::string_view piece = kKinds[kind].pieces[random.below(8)];
        const size_t taken = std::min(piece.size(), length - at);
        std::memcpy(field + at, piece.data(), taken);
        at += taken;
    }
    if (at < size) {
        // After the zero byte is what was there before.
        field[at] = 0;
    }
}

void fillUtf16(Random& random, uint8_t* field, size_t size) {
    const size_t length = lengthWithin(random, size / 2);
    const bool mixed = random.oneIn(4);
    size_t kind = random.below(std::size(kUnits));
    for (size_t i = 0; i < length; ++i) {
        if (mixed) {
            kind = random.below(std::size(kUnits));
        }
        const uint16_t unit = kUnits[kind][random.below(8)];
        field[2 * i] = static_cast<uint8_t>(unit);
        field[2 * i + 1] = static_cast<uint8_t>(unit >> 8);
    }
}

} // namespace hostile
