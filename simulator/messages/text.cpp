#include "messages/text.h"

#include <cstdint>
#include <cstring>

namespace simulator {
namespace {

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

constexpr char32_t kNoCharacter = 0xFFFD;

/// Takes one character off the front.
char32_t takeCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    const size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (first < 0xC2 || first > 0xF4 || text.size() < more) {
        return kNoCharacter;
    }
    char32_t character = first & (0x3FU >> more);
    for (size_t index = 0; index < more; ++index) {
        if (!continuesCharacter(text[index])) {
            return kNoCharacter;
        }
        character = character << 6U | (static_cast<unsigned char>(text[index]) & 0x3FU);
    }
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < kSmallest[more] || character > 0x10FFFF || surrogate) {
        return kNoCharacter;
    }
    text.remove_prefix(more);
    return character;
}

} // namespace

size_t fittingBytes(std::string_view text, size_t room) {
    if (text.size() <= room) {
        return text.size();
    }
    size_t bytes = room;
    while (bytes > 0 && continuesCharacter(text[bytes])) {
        --bytes;
    }
    return bytes;
}

size_t writeText(char* field, size_t room, std::string_view text) {
    const size_t bytes = fittingBytes(text, room);
    std::memset(field, 0, room);
    std::memcpy(field, text.data(), bytes);
    return bytes;
}

size_t writeUtf16(char* field, size_t units, std::string_view text) {
    std::memset(field, 0, units * 2);
    size_t written = 0;
    const auto put = [&](char32_t unit) {
        const auto value = static_cast<uint16_t>(unit);
        std::memcpy(field + written * 2, &value, sizeof value);
        ++written;
    };
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        const bool pair = character > 0xFFFF;
        if (written + (pair ? 2 : 1) > units) {
            break;
        }
        if (pair) {
            put(0xD800 + ((character - 0x10000) >> 10U));
            put(0xDC00 + ((character - 0x10000) & 0x3FFU));
        } else {
            put(character);
        }
    }
    return written;
}

} // namespace simulator
