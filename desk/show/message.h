// One message of a capture: libDtv's own header, and what is printed of it. docs/capture.md has the
// header's bytes.
#pragma once

#include "desk/show/capture_reader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace show {

struct Message {
    enum class Kind : uint8_t {
        kCommand = 1,
        kAnswer = 2,
        kEvent = 3,
        kRefusedEvent = 4
    };

    Moment time;
    uint8_t kind = 0; ///< a Kind, or a number that is none yet
    uint8_t surfaces = 0;
    uint32_t thread_id = 0;
    int32_t id = 0;
    int32_t value = 0; ///< what the send or the listener returned
    int32_t size = 0;  ///< bytes, as it was given
    std::string thread_name;
    std::vector<uint8_t> record;
    uint32_t left_out = 0; ///< bytes of the record that the capture does not have
};

/// The message in a packet, or nothing and in `error` what is wrong.
std::optional<Message> readMessage(const Packet& packet, std::string& error);

/// The lines for a message: one headline, wrapped, and what its record says. They begin with
/// `time`.
std::vector<std::string> messageLines(const Message& message, const std::string& time);

/// A moment in local time.
struct LocalTime {
    std::string date; ///< "2026-03-31"
    std::string time; ///< "20:14:03.123456"
};
LocalTime localTime(const Moment& moment);

} // namespace show
