// What messages and places of a log are called in findings.
#pragma once

#include "desk/explain/finding.h"

#include "sessions/log/bridge_call.h"
#include "sessions/pairing.h"

#include "records/catalogue.h"

#include <optional>
#include <string>

namespace explain {

/// The name of a message, or its number as "0x1000007f".
std::string messageName(int id);

Place placeOf(const sessions::LoggedLine& line);

/// The handle of the session that a message belongs to.
std::optional<int> handleOf(const sessions::Link& link);

/// The command whose outcome an event reports; null when it is no such event.
const catalogue::Message* commandAnsweredBy(int event);

} // namespace explain
