// The records that reply to commands.
#pragma once

#include "messages/command_replies.h"

#include <cstdint>
#include <vector>

namespace simulator {

/// The values of a reply. Each form carries the result and some of the others.
struct ReplyValues {
    int32_t result = 0;
    uint16_t channel_count = 0;    ///< kScan
    uint32_t physical_channel = 0; ///< kService
    uint16_t service_no = 0;       ///< kService
    uint8_t plane = 0;             ///< kDisplay
    uint8_t log_status = 0;        ///< kTunerLog
    uint16_t program_no = 0;       ///< kRecording
    uint16_t object_no = 0;        ///< kRecording
};

/// The record of a reply to the session with this handle; empty for kNone.
std::vector<uint8_t> replyRecord(ReplyForm form, uint16_t handle, const ReplyValues& values);

} // namespace simulator
