// Long texts and records, written short.
#pragma once

#include <string>

namespace commands {

inline std::string repeated(const std::string& what, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += what;
    }
    return text;
}

/// " 00 00 00" for ("00", 3): bytes as a sent message's text shows them.
inline std::string bytes(const std::string& hexadecimal, int count) {
    return repeated(" " + hexadecimal, count);
}

} // namespace commands
