#include "simulator/text.h"

#include <cstring>

namespace simulator {
namespace {

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::string_view withoutBlanks(std::string_view text) {
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
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

std::vector<std::string_view> splitAtCommas(std::string_view text) {
    std::vector<std::string_view> parts;
    while (true) {
        const size_t comma = text.find(',');
        const std::string_view part = withoutBlanks(text.substr(0, comma));
        if (!part.empty()) {
            parts.push_back(part);
        }
        if (comma == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(comma + 1);
    }
}

} // namespace simulator
