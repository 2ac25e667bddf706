#include "desk/pictures/mermaid.h"

#include "desk/show/message.h"
#include "desk/show/names.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace pictures {
namespace {

using Kind = sessions::Message::Kind;

/// A text in a diagram: characters that have a meaning there are written as their numbers.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : show::shownText(text)) {
        const bool plain = std::isalnum(static_cast<unsigned char>(c)) != 0 || (c & 0x80) != 0 ||
                           std::strchr(" _-.,=()/+", c) != nullptr;
        result += plain ? std::string(1, c) : '#' + std::to_string(static_cast<int>(c)) + ';';
    }
    return result;
}

std::string latencyText(int64_t nanoseconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g ms", static_cast<double>(nanoseconds) / 1e6);
    return text;
}

std::string threadName(const Thread& thread) {
    return thread.name.empty() ? std::to_string(thread.id) : thread.name;
}

std::string participant(size_t thread) {
    return 'T' + std::to_string(thread + 1);
}

std::string labelOf(const Entry& entry) {
    const sessions::Message& message = entry.message;
    std::string label = std::to_string(entry.link.number) + ' ' + nameOf(message);
    if (entry.link.session) {
        label += ", handle " + std::to_string(*entry.link.session);
    }
    const catalogue::Message* const known = catalogue::find(message.id);
    const catalogue::Record* const layout = sessions::layoutOf(message, known);
    if (!message.is(Kind::kCommand) && layout != nullptr) {
        if (const auto result = sessions::numberIn(*layout, message, "result")) {
            label += ", result " + std::to_string(*result);
        }
    }
    if (message.value != 0 && !message.is(Kind::kEvent)) {
        label += ", returned " + std::to_string(message.value);
    }
    if (entry.link.latency) {
        label += " (" + latencyText(*entry.link.latency) + " after " +
                 std::to_string(entry.link.partner) + ')';
    }
    return label;
}

std::string arrowOf(const Entry& entry) {
    const std::string thread = participant(entry.thread);
    const bool failed = entry.message.value != 0;
    switch (static_cast<Kind>(entry.message.kind)) {
    case Kind::kCommand:
        return thread + (failed ? "-xS" : "->>S");
    case Kind::kRefusedEvent:
        return thread + "--xS";
    default:
        return 'S' + std::string(failed ? "--x" : "-->>") + thread;
    }
}

} // namespace

std::string mermaidText(const Timeline& timeline) {
    const size_t count = std::min(timeline.entries.size(), kMostInDiagram);
    std::vector<bool> used(timeline.threads.size());
    for (size_t i = 0; i < count; ++i) {
        used[timeline.entries[i].thread] = true;
    }
    std::string text = "sequenceDiagram\n";
    for (size_t i = 0; i < used.size(); ++i) {
        if (used[i]) {
            text += "    participant " + participant(i) + " as " +
                    escaped(threadName(timeline.threads[i])) + '\n';
        }
    }
    text += "    participant S as DTV service\n";
    std::string second;
    for (size_t i = 0; i < count; ++i) {
        const Entry& entry = timeline.entries[i];
        const show::LocalTime time = show::localTime(entry.message.time);
        if (time.time.substr(0, 8) != second) {
            second = time.time.substr(0, 8);
            text += "    Note over S: " + escaped(time.date + ' ' + second) + '\n';
        }
        text += "    " + arrowOf(entry) + ": " + escaped(labelOf(entry)) + '\n';
    }
    if (count < timeline.entries.size()) {
        text += "    Note over S: " + std::to_string(timeline.entries.size() - count) +
                " more messages are left out\n";
    }
    return text;
}

} // namespace pictures
