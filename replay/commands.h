// A command that has come, beside a recorded one.
#pragma once

#include "replay/divergence.h"

#include "dtv/exchange.h"
#include "sessions/message.h"

#include <cstdint>
#include <vector>

namespace replay {

/// Whether a command is the recorded one, byte for byte. Bytes that the recording does not know,
/// for it was made of a log, are not compared.
bool isSame(const sessions::Message& recorded, const dtv::Command& command);

/// A record as it is compared: with the recorded bytes where those are not known.
std::vector<uint8_t> knownPartOf(const sessions::Message& recorded, std::vector<uint8_t> record);

/// A command of the calling thread, to be kept.
Given givenOf(const dtv::Command& command);

/// Answers as it was recorded. What does not fit is cut off.
void writeReply(const sessions::Message& answer, const dtv::Reply& reply);

} // namespace replay
