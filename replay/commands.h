// A command that has come, beside a recorded one.
#pragma once

#include "replay/divergence.h"

#include "dtv/exchange.h"
#include "sessions/message.h"

namespace replay {

/// Whether a command is the recorded one, byte for byte.
bool isSame(const sessions::Message& recorded, const dtv::Command& command);

/// A command of the calling thread, to be kept.
Given givenOf(const dtv::Command& command);

/// Answers as it was recorded. What does not fit is cut off.
void writeReply(const sessions::Message& answer, const dtv::Reply& reply);

} // namespace replay
