// Small questions about parts of a line.
#pragma once

#include <string_view>

namespace sessions {

inline std::string_view withoutBlanksAtEnd(std::string_view text) {
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

inline bool beginsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

inline bool contains(std::string_view text, std::string_view wanted) {
    return text.find(wanted) != std::string_view::npos;
}

/// The value of a digit as the bridge writes it, or -1.
inline int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

} // namespace sessions
