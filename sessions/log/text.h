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

} // namespace sessions
