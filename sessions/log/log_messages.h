// Messages made of the lines of a log.
#pragma once

#include "sessions/log/activity.h"
#include "sessions/message.h"

#include <optional>

namespace sessions {

/// The message that a step shows, with the bytes of its record that the log has; nothing for a step
/// that is none. Without a time in the log, that of the message is 1970.
std::optional<Message> messageOf(const Step& step);

} // namespace sessions
