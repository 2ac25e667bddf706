#include "desk/explain/names.h"

#include <cstdio>

namespace explain {

std::string messageName(int id) {
    if (const catalogue::Message* const message = catalogue::find(id)) {
        return std::string(message->name);
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(id));
    return text;
}

Place placeOf(const sessions::LoggedLine& line) {
    return {line.line, line.function, line.source_line, line.text};
}

std::optional<int> handleOf(const sessions::Link& link) {
    return link.session ? std::optional<int>(*link.session) : std::nullopt;
}

const catalogue::Message* commandAnsweredBy(int event) {
    for (const catalogue::Message& command : catalogue::commands()) {
        if (command.reply_event == event) {
            return &command;
        }
    }
    return nullptr;
}

} // namespace explain
