#include "script/json_check.h"

#include <algorithm>

namespace simulator {
namespace {

constexpr int kDeepest = 16; ///< objects and lists in one another; no script needs more
constexpr size_t kNowhere = std::string_view::npos;

/// The length of the character that the text begins with; 0 when that is none.
size_t lengthOfCharacter(std::string_view text) {
    const auto byte = [&](size_t index) -> unsigned {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const unsigned first = byte(0);
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    // Overlong forms, surrogates, and numbers beyond the last character are invalid.
    const unsigned lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest) {
        return 0;
    }
    const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    for (size_t index = 2; index < length; ++index) {
        if ((byte(index) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    return length;
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Takes the digits off the front; false when there are none.
bool takeDigits(std::string_view& text) {
    const size_t begun_with = text.size();
    while (!text.empty() && isDigit(text.front())) {
        text.remove_prefix(1);
    }
    return text.size() < begun_with;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == kNowhere) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

bool isNumber(std::string_view text) {
    takeOneOf(text, "-");
    if (!takeOneOf(text, "0") && !takeDigits(text)) {
        return false;
    }
    if (takeOneOf(text, ".") && !takeDigits(text)) {
        return false;
    }
    if (takeOneOf(text, "eE")) {
        takeOneOf(text, "+-");
        if (!takeDigits(text)) {
            return false;
        }
    }
    return text.empty();
}

/// The length of the number or name that the text begins with, right or wrong.
size_t lengthOfWord(std::string_view text) {
    const auto end = std::find_if(text.begin(), text.end(), [](char character) {
        const char lower = static_cast<char>(character | 0x20);
        return !isDigit(character) && !(lower >= 'a' && lower <= 'z') && character != '+' &&
               character != '-' && character != '.';
    });
    return static_cast<size_t>(end - text.begin());
}

} // namespace

size_t firstInvalidUtf8(std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const size_t length = lengthOfCharacter(text.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return kNowhere;
}

JsonViolation firstViolation(std::string_view text) {
    int depth = 0;
    bool in_string = false;
    for (size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (in_string) {
            if (static_cast<unsigned char>(character) < ' ') {
                return {at,
                        "a control character in a text has to be written as \\n, \\t or \\u001b"};
            }
            in_string = character != '"';
            at += character == '\\' ? 1 : 0;
            continue;
        }
        switch (character) {
        case '"':
            in_string = true;
            break;
        case '/':
            return {at, "JSON has no comments"};
        case '{':
        case '[':
            if (++depth > kDeepest) {
                return {at, "objects and lists lie too deep in one another"};
            }
            break;
        case '}':
        case ']':
            --depth;
            break;
        default: {
            const std::string_view word = text.substr(at, lengthOfWord(text.substr(at)));
            if (word.empty()) {
                break;
            }
            const bool name = word.front() >= 'A'; // the library checks names
            if (!name && !isNumber(word)) {
                return {at, "this is no number of JSON"};
            }
            at += word.size() - 1;
        }
        }
    }
    return {};
}

} // namespace simulator
