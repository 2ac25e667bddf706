// The names that messages and their kinds have in what is printed and in arguments.
#pragma once

#include "sessions/message.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace show {

/// "command", "answer", "event" or "refused"; empty for another number.
std::string_view nameOfKind(uint8_t kind);

/// The kind with that name, or nothing.
std::optional<uint8_t> kindNamed(std::string_view name);

/// "0x10000006"
std::string idText(int32_t id);

/// "->" leaves the client, "<-" reaches it; "--" for a kind that is not known.
const char* arrowOf(const sessions::Message& message);

/// The name in the catalogue that differs least from a wrong one.
std::string nearestName(std::string_view wanted);

/// A text for a terminal: bytes that are not UTF-8 and control characters are shown as \xNN.
std::string shownText(std::string_view text);

} // namespace show
