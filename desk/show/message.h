// What is printed of one message.
#pragma once

#include "sessions/message.h"

#include <string>
#include <vector>

namespace show {

/// The lines for a message: one headline, wrapped, and what its record says. They begin with
/// `time`.
std::vector<std::string> messageLines(const sessions::Message& message, const std::string& time);

/// A moment in local time.
struct LocalTime {
    std::string date; ///< "2026-03-31"
    std::string time; ///< "20:14:03.123456"
};
LocalTime localTime(const sessions::Moment& moment);

} // namespace show
