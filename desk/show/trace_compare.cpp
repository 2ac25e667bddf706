#include "desk/show/trace_compare.h"

#include <array>
#include <utility>

namespace show {
namespace {

constexpr char kDigits[] = "0123456789";
constexpr char kHexDigits[] = "0123456789abcdef";

bool isWord(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

/// How many characters at the beginning of `text` are among `characters`.
size_t spanOf(std::string_view text, const char* characters) {
    const size_t end = text.find_first_not_of(characters);
    return end == std::string_view::npos ? text.size() : end;
}

bool beginsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// The length of one of these words at the beginning of `text`, with the equals sign that follows
/// it and a blank at most on each side of it; 0 when there is none.
template <size_t Count>
size_t lengthOfKey(std::string_view text, const std::array<std::string_view, Count>& words) {
    for (const std::string_view word : words) {
        if (!beginsWith(text, word)) {
            continue;
        }
        size_t end = word.size();
        end += beginsWith(text.substr(end), " ") ? 1 : 0;
        if (!beginsWith(text.substr(end), "=")) {
            continue;
        }
        ++end;
        end += beginsWith(text.substr(end), " ") ? 1 : 0;
        return end;
    }
    return 0;
}

/// An address as `%p` prints it: its length, or 0.
size_t lengthOfAddress(std::string_view text) {
    constexpr std::string_view null = "(nil)";
    if (beginsWith(text, null)) {
        return null.size();
    }
    if (!beginsWith(text, "0x")) {
        return 0;
    }
    const size_t digits = spanOf(text.substr(2), kHexDigits);
    return digits == 0 ? 0 : 2 + digits;
}

/// A whole number in hexadecimal or decimal digits: its length, or 0.
size_t lengthOfNumber(std::string_view text) {
    const size_t digits = spanOf(text, kHexDigits);
    return digits < text.size() && isWord(text[digits]) ? 0 : digits;
}

/// A place in a line: how long it is there, and what is compared in its place.
struct Replaced {
    size_t length = 0;
    std::string by;
};

/// `NAME = VALUE` at the beginning of `text`, where the value is another in every run.
Replaced replacedValue(std::string_view text) {
    static constexpr std::array<std::string_view, 3> addresses{"env", "cls", "clazz"};
    static constexpr std::array<std::string_view, 3> numbers{"pid", "tid", "threadid"};
    if (const size_t key = lengthOfKey(text, addresses); key != 0) {
        const size_t value = lengthOfAddress(text.substr(key));
        return value == 0 ? Replaced{}
                          : Replaced{key + value, std::string(text.substr(0, key)) + "ADDRESS"};
    }
    if (const size_t key = lengthOfKey(text, numbers); key != 0) {
        const size_t value = lengthOfNumber(text.substr(key));
        return value == 0 ? Replaced{}
                          : Replaced{key + value, std::string(text.substr(0, key)) + "NUMBER"};
    }
    return {};
}

/// A number between `before` and `after`, with blanks before it.
Replaced replacedBetween(std::string_view text, std::string_view before, std::string_view after,
                         const char* word) {
    if (!beginsWith(text, before)) {
        return {};
    }
    size_t end = before.size();
    end += spanOf(text.substr(end), " ");
    const size_t digits = spanOf(text.substr(end), kDigits);
    end += digits;
    if (digits == 0 || !beginsWith(text.substr(end), after)) {
        return {};
    }
    return {end + after.size(), std::string(before) + word + std::string(after)};
}

/// A line of a file, or nothing at its end. A last line that is cut says so.
std::optional<std::string> nextLine(std::istream& file) {
    std::string line;
    if (!std::getline(file, line)) {
        return std::nullopt;
    }
    if (file.eof()) {
        line += " (the file ends within this line)";
    }
    return line;
}

} // namespace

std::string comparableLine(std::string_view line, const TraceCompareOptions& options) {
    std::string result;
    result.reserve(line.size() + 16);
    size_t place = 0;
    while (place < line.size()) {
        const std::string_view rest = line.substr(place);
        Replaced found;
        if (place == 0 || !isWord(line[place - 1])) {
            found = replacedValue(rest);
        }
        if (found.length == 0) {
            found = replacedBetween(rest, "(", "):<", "PID");
        }
        if (found.length == 0 && options.ignore_source_lines) {
            found = replacedBetween(rest, "(),", ",", "LINE");
        }
        if (found.length == 0 && options.ignore_source_lines) {
            found = replacedBetween(rest, "():", "]", "LINE");
        }
        if (found.length == 0) {
            result += line[place++];
        } else {
            result += found.by;
            place += found.length;
        }
    }
    return result;
}

TraceComparison compareTraces(std::istream& first, std::istream& second,
                              const TraceCompareOptions& options) {
    TraceComparison comparison;
    while (true) {
        std::optional<std::string> here = nextLine(first);
        std::optional<std::string> there = nextLine(second);
        if (!here && !there) {
            return comparison;
        }
        if (!here || !there || comparableLine(*here, options) != comparableLine(*there, options)) {
            comparison.difference = {comparison.same_lines + 1, std::move(here), std::move(there)};
            return comparison;
        }
        ++comparison.same_lines;
    }
}

} // namespace show
