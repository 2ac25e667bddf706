// One message of a session: libDtv's own header and the record. docs/capture.md has the header's
// bytes.
#pragma once

#include "sessions/capture_reader.h"

#include "records/catalogue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sessions {

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
    uint8_t reserved = 0; ///< byte 3 of the header, which has no meaning yet
    uint32_t thread_id = 0;
    int32_t id = 0;
    int32_t value = 0; ///< what the send or the listener returned
    int32_t size = 0;  ///< bytes, as it was given
    std::string thread_name;
    std::vector<uint8_t> record;
    uint32_t left_out = 0; ///< bytes of the record that the capture does not have
    /// Of a message that was made of a log: for each byte of the record whether the log has it.
    /// Empty: all are there.
    std::vector<bool> known;

    bool is(Kind wanted) const { return kind == static_cast<uint8_t>(wanted); }
};

/// The message in a packet, or nothing and in `error` what is wrong.
std::optional<Message> readMessage(const Packet& packet, std::string& error);

/// The layout of the message's record; null when there is none. `known` is the catalogue's message
/// of that id, or null.
const catalogue::Record* layoutOf(const Message& message, const catalogue::Message* known);

/// The value of a whole number among the fields of a record, or nothing when the layout has no such
/// field, or the record ends before the field does.
std::optional<int64_t> numberIn(const catalogue::Record& layout, Bytes record,
                                std::string_view field);

/// The same of a message's record. Nothing as well when the message was made of a log that lacks
/// bytes of the field.
std::optional<int64_t> numberIn(const catalogue::Record& layout, const Message& message,
                                std::string_view field);

/// The bytes of a field as a whole number; 8 bytes at most.
int64_t numberOf(Bytes bytes, catalogue::Kind kind);

} // namespace sessions
