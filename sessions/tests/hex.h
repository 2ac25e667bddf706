// Bytes as the tests write them.
#pragma once

#include "sessions/bytes.h"

#include <cctype>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

/// "0a0d 2c" with blanks and line ends anywhere but within a byte.
inline std::vector<uint8_t> fromHex(const std::string& text) {
    std::vector<uint8_t> bytes;
    for (size_t at = 0; at < text.size();) {
        if (std::isspace(static_cast<unsigned char>(text[at])) != 0) {
            ++at;
            continue;
        }
        size_t used = 0;
        const int byte = std::stoi(text.substr(at, 2), &used, 16);
        if (used != 2) {
            throw std::invalid_argument("half a byte in " + text);
        }
        bytes.push_back(static_cast<uint8_t>(byte));
        at += 2;
    }
    return bytes;
}

inline sessions::Bytes view(const std::vector<uint8_t>& bytes) {
    return {bytes.data(), bytes.size()};
}

inline std::string asString(const std::vector<uint8_t>& bytes) {
    return {bytes.begin(), bytes.end()};
}
