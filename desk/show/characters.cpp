#include "desk/show/characters.h"

namespace show {

using sessions::Bytes;

uint32_t decodeUtf8(Bytes text, size_t& length) {
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
    if (point < smallest || point > 0x10ffff || isSurrogate(point)) {
        return 0;
    }
    length = count;
    return point;
}

uint32_t decodeUtf16(Bytes text, size_t& length) {
    const auto point = static_cast<uint32_t>(text.first(2).number());
    length = 2;
    if (point >= 0xd800 && point < 0xdc00 && text.size >= 4) {
        const auto low = static_cast<uint32_t>(text.from(2).first(2).number());
        if (low >= 0xdc00 && low < 0xe000) {
            length = 4;
            return 0x10000 + ((point - 0xd800) << 10) + (low - 0xdc00);
        }
    }
    return point;
}

std::string encodeUtf8(uint32_t point) {
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

Bytes untilZero(Bytes text, size_t unit) {
    size_t length = 0;
    while (length + unit <= text.size && !text.from(length).first(unit).areZero()) {
        length += unit;
    }
    return length + unit <= text.size ? text.first(length) : text;
}

} // namespace show
