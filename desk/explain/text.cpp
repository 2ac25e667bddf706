#include "desk/explain/text.h"

#include "desk/show/quoted_text.h"

#include "sessions/moment.h"

#include <cinttypes>
#include <cstdio>

namespace explain {
namespace {

template <class... Values>
std::string print(const char* format, Values... values) {
    char text[64];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    std::snprintf(text, sizeof text, format, values...);
#pragma GCC diagnostic pop
    return text;
}

/// Of a text that is not quoted.
std::vector<show::Glyph> glyphsOf(std::string_view text) {
    std::vector<show::Glyph> glyphs =
        show::utf8Glyphs({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
    for (show::Glyph& glyph : glyphs) {
        if (glyph.text == "\\\"") {
            glyph = {"\"", 1};
        }
    }
    return glyphs;
}

/// A word as it is shown; in parts when it is wider than a line.
void addParts(std::string_view word, size_t columns, std::vector<std::string>& parts) {
    std::string part;
    size_t width = 0;
    for (const show::Glyph& glyph : glyphsOf(word)) {
        if (width > 0 && width + glyph.columns > columns) {
            parts.push_back(part);
            part.clear();
            width = 0;
        }
        part += glyph.text;
        width += glyph.columns;
    }
    parts.push_back(part);
}

} // namespace

std::string durationText(int64_t nanoseconds) {
    const double value = static_cast<double>(nanoseconds);
    // What would be shown as 1000 of a unit is shown as 1 of the next one.
    if (nanoseconds < 999500) {
        return print("%.0f us", value / 1e3);
    }
    if (nanoseconds < 999950000) {
        return print("%.1f ms", value / 1e6);
    }
    const int64_t seconds = nanoseconds / kSecond;
    if (seconds < 120) {
        return print("%.2f s", value / 1e9);
    }
    if (seconds < 3600) {
        return print("%" PRId64 " min %" PRId64 " s", seconds / 60, seconds % 60);
    }
    if (seconds < 172800) {
        return print("%" PRId64 " h %" PRId64 " min", seconds / 3600, seconds / 60 % 60);
    }
    return print("%" PRId64 " days", seconds / 86400);
}

std::string countText(uint64_t count, std::string_view noun) {
    return std::to_string(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

std::string timeText(const sessions::LogTime& time) {
    int64_t seconds = time.nanoseconds / kSecond;
    int64_t rest = time.nanoseconds % kSecond;
    if (rest < 0) {
        --seconds;
        rest += kSecond;
    }
    // "2026-03-31T23:14:03.123456789Z"
    const std::string utc = sessions::utcText({seconds, static_cast<uint32_t>(rest)});
    if (utc.empty()) {
        return std::to_string(seconds) + " s";
    }
    return utc.substr(time.has_year ? 0 : 5, time.has_year ? 10 : 5) + ' ' + utc.substr(11, 12);
}

std::vector<std::string> wrapped(std::string_view text, size_t columns) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const size_t end = std::min(text.find(' '), text.size());
        if (end > 0) {
            addParts(text.substr(0, end), columns, words);
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return show::wrappedWords(words, columns);
}

std::string shortened(std::string_view text, size_t columns) {
    std::string shown;
    size_t taken = 0;
    const std::vector<show::Glyph> glyphs = glyphsOf(text);
    size_t whole = 0;
    for (const show::Glyph& glyph : glyphs) {
        whole += glyph.columns;
    }
    for (const show::Glyph& glyph : glyphs) {
        if (whole > columns && taken + glyph.columns > columns - 1) {
            return shown + "~";
        }
        shown += glyph.text;
        taken += glyph.columns;
    }
    return shown;
}

} // namespace explain
