#include "sessions/capture_writer.h"

#include "sessions/known_bytes.h"
#include "sessions/pcapng.h"

#include <algorithm>

namespace sessions {
namespace {

using Kind = Message::Kind;

constexpr uint32_t kByteOrder = 0x1a2b3c4d;
constexpr uint32_t kLongestPacket = 65536;
constexpr size_t kLongestOption = 65535; ///< bytes

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

/// A comment with the notes, if there are any.
void putNotes(std::string& bytes, const Notes& notes) {
    std::string comment;
    for (const auto& [key, value] : notes) {
        comment.append(key).append("=").append(value).append("\n");
    }
    if (!comment.empty()) {
        comment.pop_back();
        putOption(bytes, Option::kComment, comment.substr(0, kLongestOption));
    }
}

/// The notes with the one that says which bytes of the record are not known.
Notes withUnknown(Notes notes, const std::vector<bool>& known) {
    const std::string unknown = unknownText(known);
    if (!unknown.empty() && valueOf(notes, kIncompleteNote) == nullptr) {
        notes.emplace_back(kIncompleteNote, unknown);
    }
    return notes;
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

} // namespace

std::string CaptureWriter::section(const std::string& program, const Notes& notes) {
    std::string body;
    put(body, kByteOrder, 4);
    put(body, 1, 2);
    put(body, 0, 2);
    put(body, UINT64_MAX, 8); // the section's length is not given
    putOption(body, kWriter, program);
    putNotes(body, notes);
    put(body, 0, 4);
    interfaces_ = {{0, 0}};
    return block(kSectionHeader, body) + interfaceBlock(0);
}

std::string CaptureWriter::packet(const Message& message, const Notes& notes) {
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
    if (data.size() <= kLongestPacket) {
        const size_t before = body.size();
        if (outbound || inbound) {
            putOption(body, kPacketFlags, number(outbound ? 2 : 1, 4));
        }
        putNotes(body, withUnknown(notes, message.known));
        put(body, 0, body.size() > before ? 4 : 0);
    }
    return (is_new ? interfaceBlock(offset) : "") + block(kEnhancedPacket, body);
}

} // namespace sessions
