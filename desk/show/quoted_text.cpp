#include "desk/show/quoted_text.h"

#include "desk/show/characters.h"

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

Glyph characterGlyph(uint32_t point) {
    if (point == '"' || point == '\\') {
        return {std::string("\\") + static_cast<char>(point), 2};
    }
    return {encodeUtf8(point), isWide(point) ? size_t{2} : size_t{1}};
}

} // namespace

std::vector<Glyph> utf8Glyphs(Bytes text) {
    std::vector<Glyph> glyphs;
    while (text.size > 0) {
        size_t length = 0;
        const uint32_t point = decodeUtf8(text, length);
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
        size_t length = 0;
        const uint32_t point = decodeUtf16(text, length);
        if (point < 0x80 && isControl(point)) {
            glyphs.push_back(byteGlyph(static_cast<uint8_t>(point)));
        } else if (isControl(point) || isSurrogate(point)) {
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
        columns += isWide(decodeUtf8(rest, length)) ? 2 : 1;
        rest = rest.from(std::max<size_t>(length, 1));
    }
    return columns;
}

} // namespace show
