#include "sessions/message.h"

#include "sessions/known_bytes.h"

#include <algorithm>

namespace sessions {
namespace {

using Kind = Message::Kind;

constexpr uint8_t kVersion = 1;
constexpr size_t kHeaderSize = 36;
constexpr size_t kNameSize = 16;

} // namespace

std::optional<Message> readMessage(const Packet& packet, std::string& error) {
    const Bytes bytes{packet.data.data(), packet.data.size()};
    const std::string where = "the packet at byte " + std::to_string(packet.offset);
    if (bytes.size == 0) {
        error = where + " is empty";
        return std::nullopt;
    }
    if (bytes.data[0] != kVersion) {
        error = where + " has a message of version " + std::to_string(bytes.data[0]) +
                "; this program reads version " + std::to_string(kVersion);
        return std::nullopt;
    }
    if (bytes.size < kHeaderSize) {
        error = where + " is " + std::to_string(bytes.size) +
                " bytes long; a message begins with " + std::to_string(kHeaderSize);
        return std::nullopt;
    }
    const auto number = [bytes](size_t offset) {
        return static_cast<uint32_t>(bytes.from(offset).first(4).number());
    };
    Message message;
    message.time = packet.time;
    message.kind = bytes.data[1];
    message.surfaces = bytes.data[2];
    message.reserved = bytes.data[3];
    message.thread_id = number(4);
    message.id = static_cast<int32_t>(number(8));
    message.value = static_cast<int32_t>(number(12));
    message.size = static_cast<int32_t>(number(16));
    const uint8_t* name = bytes.data + 20;
    message.thread_name.assign(name, std::find(name, name + kNameSize, uint8_t{0}));
    message.record.assign(bytes.data + kHeaderSize, bytes.data + bytes.size);
    if (const std::string* const unknown = valueOf(packet.notes, kIncompleteNote)) {
        message.known = knownBytes(*unknown, message.record.size());
    }
    if (packet.original_size > packet.data.size()) {
        message.left_out = packet.original_size - static_cast<uint32_t>(packet.data.size());
    }
    return message;
}

const catalogue::Record* layoutOf(const Message& message, const catalogue::Message* known) {
    if (known == nullptr) {
        return nullptr;
    }
    if (message.is(Kind::kAnswer)) {
        return known->reply;
    }
    return message.is(Kind::kCommand) || message.is(Kind::kEvent) ? known->record : nullptr;
}

namespace {

/// The whole number of that name among the fields of a record, or null.
const catalogue::Field* numberNamed(const catalogue::Record& layout, std::string_view name) {
    for (const catalogue::Field& field : layout.fields) {
        if (field.name == name && field.count == 1 &&
            (field.kind == catalogue::Kind::kUnsigned || field.kind == catalogue::Kind::kSigned)) {
            return &field;
        }
    }
    return nullptr;
}

std::optional<int64_t> numberAt(const catalogue::Field& field, Bytes record) {
    const Bytes bytes = record.from(field.offset).first(field.size);
    return bytes.size == field.size ? std::optional<int64_t>(numberOf(bytes, field.kind))
                                    : std::nullopt;
}

} // namespace

std::optional<int64_t> numberIn(const catalogue::Record& layout, Bytes record,
                                std::string_view field) {
    const catalogue::Field* const named = numberNamed(layout, field);
    return named != nullptr ? numberAt(*named, record) : std::nullopt;
}

std::optional<int64_t> numberIn(const catalogue::Record& layout, const Message& message,
                                std::string_view field) {
    const catalogue::Field* const named = numberNamed(layout, field);
    if (named == nullptr) {
        return std::nullopt;
    }
    const size_t end = std::min(named->offset + named->size, message.known.size());
    for (size_t at = named->offset; at < end; ++at) {
        if (!message.known[at]) {
            return std::nullopt;
        }
    }
    return numberAt(*named, {message.record.data(), message.record.size()});
}

int64_t numberOf(Bytes bytes, catalogue::Kind kind) {
    const uint64_t value = bytes.number();
    if (kind != catalogue::Kind::kSigned || bytes.size == 0 || bytes.size > 8) {
        return static_cast<int64_t>(value);
    }
    // The sign bit counts negative.
    const uint64_t sign = uint64_t{1} << (8 * bytes.size - 1);
    return static_cast<int64_t>((value ^ sign) - sign);
}

} // namespace sessions
