#include "desk/show/names.h"

#include "desk/show/quoted_text.h"

#include "records/catalogue.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <vector>

namespace show {
namespace {

using Kind = sessions::Message::Kind;

/// In the order of their numbers, from 1.
constexpr std::string_view kKinds[] = {"command", "answer", "event", "refused"};

/// How many letters must be put in, left out or exchanged to make one name the other; capitals do
/// not count.
size_t distance(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    std::vector<size_t> row(other.size() + 1);
    for (size_t j = 0; j < row.size(); ++j) {
        row[j] = j;
    }
    for (size_t i = 1; i <= one.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j < row.size(); ++j) {
            const size_t exchanged = diagonal + (lower(one[i - 1]) == lower(other[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchanged});
        }
    }
    return row.back();
}

} // namespace

std::string_view nameOfKind(uint8_t kind) {
    return kind >= 1 && kind <= std::size(kKinds) ? kKinds[kind - 1] : std::string_view();
}

std::optional<uint8_t> kindNamed(std::string_view name) {
    const auto* const found = std::find(std::begin(kKinds), std::end(kKinds), name);
    if (found == std::end(kKinds)) {
        return std::nullopt;
    }
    return static_cast<uint8_t>(found - std::begin(kKinds) + 1);
}

std::string idText(int32_t id) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(id));
    return text;
}

const char* arrowOf(const sessions::Message& message) {
    if (message.is(Kind::kCommand) || message.is(Kind::kRefusedEvent)) {
        return "->";
    }
    return message.is(Kind::kAnswer) || message.is(Kind::kEvent) ? "<-" : "--";
}

std::string nearestName(std::string_view wanted) {
    std::string_view nearest;
    size_t smallest = std::string_view::npos;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            const size_t found = distance(wanted.substr(0, 64), message.name);
            if (found < smallest) {
                smallest = found;
                nearest = message.name;
            }
        }
    }
    return std::string(nearest);
}

std::string shownText(std::string_view text) {
    std::string shown;
    for (const Glyph& glyph :
         utf8Glyphs({reinterpret_cast<const uint8_t*>(text.data()), text.size()})) {
        shown += glyph.text;
    }
    return shown;
}

} // namespace show
