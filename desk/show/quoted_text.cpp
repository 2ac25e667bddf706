#include "desk/show/quoted_text.h"

#include <cstdio>

namespace show {
namespace {

using sessions::Bytes;

Glyph byteGlyph(uint8_t byte) {
    char text[8];
    std::snprintf(text, sizeof text, "\\x%02x", byte);
    return {text, 4};
}

Glyph unitGlyph(uint32_t unit) {
    char text[16];
    std::snprintf(text, sizeof text, "\\u%04x", unit);
    return {text, 6};
}

bool isControl(uint32_t point) {
    return point < 0x20 || (point >= 0x7f && point < 0xa0);
}

/// Whether a character takes two columns, as those of East Asian scripts do.
bool isWide(uint32_t point) {
    static constexpr uint32_t ranges[][2] = {
        {0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0xa4cf},  {0xac00, 0xd7a3},
        {0xf900, 0xfaff},   {0xfe30, 0xfe6f},   {0xff00, 0xff60},  {0xffe0, 0xffe6},
        {0x1f300, 0x1f64f}, {0x1f900, 0x1f9ff}, {0x20000, 0x3fffd}};
    return std::any_of(std::begin(ranges), std::end(ranges), [point](const uint32_t(&range)[2]) {
        return range[0] <= point && point <= range[1];
    });
}

std::string encode(uint32_t point) {
    std::string text;
    const auto add = [&text](uint32_t byte) { text += static_cast<char>(byte); };
    if (point < 0x80) {
        add(point);
        return text;
    }
    if (point < 0x800) {
        add(0xc0 | point >> 6);
    } else {
        if (point < 0x10000) {
            add(0xe0 | point >> 12);
        } else {
            add(0xf0 | point >> 18);
            add(0x80 | (point >> 12 & 0x3f));
        }
        add(0x80 | (point >> 6 & 0x3f));
    }
    add(0x80 | (point & 0x3f));
    return text;
}

Glyph characterGlyph(uint32_t point) {
    if (point == '"' || point == '\\') {
        return {std::string("\\") + static_cast<char>(point), 2};
    }
    return {encode(point), isWide(point) ? size_t{2} : size_t{1}};
}

/// The character that a text begins with, and in `length` its bytes; `length` is 0 when the text
/// does not begin with one.
uint32_t decode(Bytes text, size_t& length) {
    length = 0;
    const uint8_t first = text.data[0];
    size_t count = 1;
    uint32_t point = first;
    uint32_t smallest = 0;
    if (first >= 0x80) {
        if (first >= 0xf0 && first < 0xf8) {
            count = 4;
            point = first & 0x07;
            smallest = 0x10000;
        } else if (first >= 0xe0 && first < 0xf0) {
            count = 3;
            point = first & 0x0f;
            smallest = 0x800;
        } else if (first >= 0xc0 && first < 0xe0) {
            count = 2;
            point = first & 0x1f;
            smallest = 0x80;
        } else {
            return 0;
        }
    }
    if (count > text.size) {
        return 0;
    }
    for (size_t i = 1; i < count; ++i) {
        if ((text.data[i] & 0xc0) != 0x80) {
            return 0;
        }
        point = point << 6 | (text.data[i] & 0x3f);
    }
    if (point < smallest || point > 0x10ffff || (point >= 0xd800 && point < 0xe000)) {
        return 0;
    }
    length = count;
    return point;
}

} // namespace

std::vector<Glyph> utf8Glyphs(Bytes text) {
    std::vector<Glyph> glyphs;
    while (text.size > 0) {
        size_t length = 0;
        const uint32_t point = decode(text, length);
        if (length > 0 && !isControl(point)) {
            glyphs.push_back(characterGlyph(point));
        } else {
            length = std::max<size_t>(length, 1);
            for (size_t i = 0; i < length; ++i) {
                glyphs.push_back(byteGlyph(text.data[i]));
            }
        }
        text = text.from(length);
    }
    return glyphs;
}

std::vector<Glyph> utf16Glyphs(Bytes text) {
    std::vector<Glyph> glyphs;
    while (text.size >= 2) {
        auto point = static_cast<uint32_t>(text.first(2).number());
        size_t length = 2;
        if (point >= 0xd800 && point < 0xdc00 && text.size >= 4) {
            const auto low = static_cast<uint32_t>(text.from(2).first(2).number());
            if (low >= 0xdc00 && low < 0xe000) {
                point = 0x10000 + ((point - 0xd800) << 10) + (low - 0xdc00);
                length = 4;
            }
        }
        if (point < 0x80 && isControl(point)) {
            glyphs.push_back(byteGlyph(static_cast<uint8_t>(point)));
        } else if (isControl(point) || (point >= 0xd800 && point < 0xe000)) {
            glyphs.push_back(unitGlyph(point));
        } else {
            glyphs.push_back(characterGlyph(point));
        }
        text = text.from(length);
    }
    if (text.size > 0) {
        glyphs.push_back(byteGlyph(text.data[0]));
    }
    return glyphs;
}

std::vector<std::string> quotedLines(const std::vector<Glyph>& glyphs, size_t columns) {
    std::vector<std::string> lines{"\""};
    size_t used = 2; // the quotes
    for (const Glyph& glyph : glyphs) {
        if (used + glyph.columns > columns && lines.back().size() > 1) {
            lines.back() += '"';
            lines.emplace_back("\"");
            used = 2;
        }
        lines.back() += glyph.text;
        used += glyph.columns;
    }
    lines.back() += '"';
    return lines;
}

std::vector<std::string> wrappedWords(const std::vector<std::string>& words, size_t columns) {
    std::vector<std::string> lines(1);
    size_t used = 0;
    for (const std::string& word : words) {
        const size_t width = columnsOf(word);
        if (used > 0 && used + 1 + width > columns) {
            lines.emplace_back();
            used = 0;
        } else if (used > 0) {
            lines.back() += ' ';
            ++used;
        }
        lines.back() += word;
        used += width;
    }
    return lines;
}

size_t columnsOf(const std::string& text) {
    size_t columns = 0;
    Bytes rest{reinterpret_cast<const uint8_t*>(text.data()), text.size()};
    while (rest.size > 0) {
        size_t length = 0;
        columns += isWide(decode(rest, length)) ? 2 : 1;
        rest = rest.from(std::max<size_t>(length, 1));
    }
    return columns;
}

} // namespace show
