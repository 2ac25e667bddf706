#include "desk/redact/capture_writer.h"

#include <algorithm>

namespace redact {
namespace {

using sessions::Message;
using Kind = Message::Kind;

constexpr uint32_t kSectionHeader = 0x0a0d0d0a;
constexpr uint32_t kInterfaceDescription = 1;
constexpr uint32_t kEnhancedPacket = 6;
constexpr uint32_t kByteOrder = 0x1a2b3c4d;
constexpr uint16_t kUserLinkType = 147;
constexpr uint32_t kLongestPacket = 65536;

constexpr uint16_t kPacketFlags = 2;
constexpr uint16_t kInterfaceName = 2;
constexpr uint16_t kWriter = 4;
constexpr uint16_t kTimeResolution = 9;
constexpr uint16_t kTimeOffset = 14;

constexpr uint8_t kVersion = 1;
constexpr size_t kNameSize = 16;

constexpr uint64_t kNanosecondsPerSecond = 1000000000;
/// How many seconds the time stamps of one interface cover: 64 bits hold them in nanoseconds.
constexpr int64_t kSpan = int64_t{1} << 33;

void put(std::string& bytes, uint64_t number, size_t size) {
    for (size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> (8 * i) & 0xff);
    }
}

void pad(std::string& bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

void putOption(std::string& bytes, uint16_t code, const std::string& value) {
    put(bytes, code, 2);
    put(bytes, value.size(), 2);
    bytes += value;
    pad(bytes);
}

std::string number(uint64_t value, size_t size) {
    std::string bytes;
    put(bytes, value, size);
    return bytes;
}

std::string block(uint32_t type, const std::string& body) {
    const uint64_t size = body.size() + 12;
    return number(type, 4) + number(size, 4) + body + number(size, 4);
}

/// `offset` is added to the seconds of its time stamps.
std::string interfaceBlock(int64_t offset) {
    std::string body;
    put(body, kUserLinkType, 2);
    put(body, 0, 2);
    put(body, kLongestPacket, 4);
    putOption(body, kInterfaceName, "libDtv");
    putOption(body, kTimeResolution, number(9, 1));
    if (offset != 0) {
        putOption(body, kTimeOffset, number(static_cast<uint64_t>(offset), 8));
    }
    put(body, 0, 4);
    return block(kInterfaceDescription, body);
}

/// The first second of the span that a time is in.
int64_t spanOf(int64_t seconds) {
    const int64_t since = (seconds % kSpan + kSpan) % kSpan;
    return seconds - since;
}

/// The notes with these keys, as the text of a comment.
std::string commentOf(const sessions::Notes& notes, std::initializer_list<const char*> keys) {
    std::string comment;
    for (const char* key : keys) {
        if (const std::string* value = sessions::valueOf(notes, key)) {
            comment += (comment.empty() ? "" : "\n") + std::string(key) + '=' + *value;
        }
    }
    return comment;
}

} // namespace

std::string CaptureWriter::section(const sessions::Notes& notes) {
    std::string body;
    put(body, kByteOrder, 4);
    put(body, 1, 2);
    put(body, 0, 2);
    put(body, UINT64_MAX, 8); // the section's length is not given
    putOption(body, kWriter, "dtv-redact");
    const std::string comment = commentOf(notes, {"city", "seed", "clock", "version"});
    if (!comment.empty()) {
        putOption(body, sessions::Option::kComment, comment);
    }
    put(body, 0, 4);
    interfaces_ = {{0, 0}};
    return block(kSectionHeader, body) + interfaceBlock(0);
}

std::string CaptureWriter::packet(const Message& message, const sessions::Notes& notes) {
    const int64_t offset = spanOf(message.time.seconds);
    const auto [interface, is_new] =
        interfaces_.try_emplace(offset, static_cast<uint32_t>(interfaces_.size()));
    const uint64_t stamp =
        static_cast<uint64_t>(message.time.seconds - offset) * kNanosecondsPerSecond +
        message.time.nanoseconds;
    std::string data;
    put(data, kVersion, 1);
    put(data, message.kind, 1);
    put(data, message.surfaces, 1);
    put(data, message.reserved, 1);
    put(data, message.thread_id, 4);
    put(data, static_cast<uint32_t>(message.id), 4);
    put(data, static_cast<uint32_t>(message.value), 4);
    put(data, static_cast<uint32_t>(message.size), 4);
    std::string name = message.thread_name;
    name.resize(kNameSize);
    data += name;
    data.append(message.record.begin(), message.record.end());

    std::string body;
    put(body, interface->second, 4);
    put(body, stamp >> 32, 4);
    put(body, stamp & 0xffffffff, 4);
    put(body, data.size(), 4);
    put(body, uint64_t{data.size()} + message.left_out, 4);
    body += data;
    pad(body);
    const bool outbound = message.is(Kind::kCommand) || message.is(Kind::kRefusedEvent);
    const bool inbound = message.is(Kind::kAnswer) || message.is(Kind::kEvent);
    // A packet that libDtv cannot have written may be as long as a reader takes them.
    const bool has_flags = (outbound || inbound) && data.size() <= kLongestPacket;
    if (has_flags) {
        putOption(body, kPacketFlags, number(outbound ? 2 : 1, 4));
    }
    const std::string comment = commentOf(notes, {"incomplete"});
    if (!comment.empty()) {
        putOption(body, sessions::Option::kComment, comment);
    }
    if (has_flags || !comment.empty()) {
        put(body, 0, 4);
    }
    return (is_new ? interfaceBlock(offset) : "") + block(kEnhancedPacket, body);
}

} // namespace redact
