#include "desk/show/brief_text.h"

#include "desk/show/names.h"
#include "desk/show/quoted_text.h"
#include "desk/show/record_text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace show {
namespace {

using sessions::Message;
using Kind = Message::Kind;

constexpr size_t kThreadColumns = 10;
constexpr size_t kNarrowestName = 12;
constexpr size_t kTimeColumns = 12; ///< milliseconds; the partner's time has the rest

/// The text in that many columns: shortened, with a tilde at its end then.
std::string shortened(const std::string& text, size_t columns) {
    if (columnsOf(text) <= columns) {
        return text;
    }
    std::string result;
    size_t used = 0;
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    for (size_t at = 0; at < text.size();) {
        size_t length = 1;
        while (at + length < text.size() && (bytes[at + length] & 0xc0) == 0x80) {
            ++length;
        }
        const std::string character = text.substr(at, length);
        used += columnsOf(character);
        if (used + 1 > columns) {
            break;
        }
        result += character;
        at += length;
    }
    return result + '~';
}

std::string filled(std::string text, size_t columns) {
    const size_t used = columnsOf(text);
    text.append(columns - std::min(columns, used), ' ');
    return text;
}

std::string threadName(const Message& message) {
    const std::string name = shownText(message.thread_name);
    return name.empty() ? std::to_string(message.thread_id) : name;
}

/// What follows the name, each part after a blank.
std::string tail(const Message& message, const catalogue::Message* known,
                 const sessions::Link& link) {
    std::string text;
    if (link.session) {
        text += " h=" + std::to_string(*link.session);
    }
    const catalogue::Record* layout = sessions::layoutOf(message, known);
    const sessions::Bytes record{message.record.data(), message.record.size()};
    if (layout != nullptr && !message.is(Kind::kCommand)) {
        for (const char* name : {"result", "return_value"}) {
            if (const auto result = sessions::numberIn(*layout, message, name)) {
                text += " r=" + std::to_string(*result);
            }
        }
    }
    if ((message.is(Kind::kAnswer) && (message.value != 0 || record.size == 0)) ||
        message.is(Kind::kRefusedEvent)) {
        text += " ret=" + std::to_string(message.value);
    }
    if (nameOfKind(message.kind).empty()) {
        text += " kind=" + std::to_string(message.kind);
    }
    if (link.partner != 0) {
        text += " #" + std::to_string(link.partner) + (link.ambiguous ? "?" : "");
        text += link.latency ? ' ' + spanText(*link.latency) : "";
    }
    const bool empty_answer = message.is(Kind::kAnswer) && record.size == 0;
    if (layout != nullptr && record.size < layout->size && !empty_answer) {
        text += " cut";
    }
    if (std::find(message.known.begin(), message.known.end(), false) != message.known.end()) {
        text += " incomplete";
    }
    return text;
}

} // namespace

std::string briefLine(const Message& message, const sessions::Link& link, const std::string& time) {
    const catalogue::Message* known = catalogue::find(message.id);
    char number[32];
    std::snprintf(number, sizeof number, "%6llu", static_cast<unsigned long long>(link.number));
    const std::string head =
        std::string(number) + ' ' + filled(time.substr(0, kTimeColumns), kTimeColumns) + ' ' +
        filled(shortened(threadName(message), kThreadColumns), kThreadColumns) + ' ' +
        arrowOf(message) + ' ';
    const std::string end = tail(message, known, link);
    const std::string name = known != nullptr ? std::string(known->name) : idText(message.id);
    const size_t used = columnsOf(head) + end.size();
    const size_t left = kColumns - std::min(kColumns, used);
    // Numbers of many digits alone may need more than a line has.
    return shortened(head + shortened(name, std::max(left, kNarrowestName)) + end, kColumns);
}

std::string spanText(int64_t nanoseconds) {
    const bool negative = nanoseconds < 0;
    const uint64_t span =
        negative ? 0 - static_cast<uint64_t>(nanoseconds) : static_cast<uint64_t>(nanoseconds);
    uint64_t unit = 1;
    const char* name = "ns";
    if (span >= 1000000000) {
        unit = 1000000000;
        name = "s";
    } else if (span >= 1000000) {
        unit = 1000000;
        name = "ms";
    } else if (span >= 1000) {
        unit = 1000;
        name = "us";
    }
    char text[64];
    if (unit == 1) {
        std::snprintf(text, sizeof text, "%s%uns", negative ? "-" : "",
                      static_cast<unsigned>(span));
    } else {
        std::snprintf(text, sizeof text, "%s%llu.%03u%s", negative ? "-" : "",
                      static_cast<unsigned long long>(span / unit),
                      static_cast<unsigned>(span % unit / (unit / 1000)), name);
    }
    return text;
}

} // namespace show
