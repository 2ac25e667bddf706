#include "sessions/capture_reader.h"

#include "sessions/pcapng.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace sessions {
namespace {

constexpr uint32_t kShortestBlock = 12;
constexpr uint32_t kLongestBlock = 16 * 1024 * 1024;
constexpr uint32_t kShortestSection = 28;
constexpr uint32_t kShortestInterface = 20;
constexpr uint32_t kShortestPacket = 32;
/// Of a section header, an interface, or the options of a packet, after damage: random bytes that
/// look like one are rarely so short.
constexpr uint32_t kLongestDescription = 4096;

constexpr uint8_t kSectionStart[] = {0x0a, 0x0d, 0x0d, 0x0a};
constexpr uint8_t kResolutionOfLibDtv = 9; ///< nanoseconds

/// A length rounded up to the 4 bytes that everything in the file is aligned to.
constexpr uint64_t padded(uint32_t length) {
    return (uint64_t{length} + 3) / 4 * 4;
}

/// Whether the four bytes of a section header that say it say big-endian; nothing when they say
/// neither.
std::optional<bool> byteOrderOf(const uint8_t* bytes) {
    static constexpr uint8_t big[] = {0x1a, 0x2b, 0x3c, 0x4d};
    static constexpr uint8_t little[] = {0x4d, 0x3c, 0x2b, 0x1a};
    if (std::memcmp(bytes, big, sizeof big) == 0) {
        return true;
    }
    if (std::memcmp(bytes, little, sizeof little) == 0) {
        return false;
    }
    return std::nullopt;
}

} // namespace

std::optional<Packet> CaptureReader::next() {
    while (error_.empty()) {
        Block block;
        if (!readBlock(block)) {
            break;
        }
        if (block.type == kSectionHeader) {
            beginSection(block);
        } else if (block.type == kInterfaceDescription) {
            addInterface(block);
        } else if (block.type == kEnhancedPacket) {
            Packet packet;
            if (readPacket(block, packet)) {
                return packet;
            }
        } else {
            ++passed_blocks_;
        }
    }
    return std::nullopt;
}

/// False at the end of the file and at an error.
bool CaptureReader::readBlock(Block& block) {
    start_ = window_.offset();
    whole_ = false;
    window_.has(8);
    const uint8_t* head = window_.data();
    const size_t count = window_.size();
    if (start_ == 0 && (count == 0 || std::memcmp(head, kSectionStart,
                                                  std::min(count, sizeof kSectionStart)) != 0)) {
        return failNoCapture();
    }
    if (count == 0) {
        return window_.failed() ? failCut() : false;
    }
    if (count < 8) {
        return failCut();
    }
    if (!isSectionHeader()) {
        block.type = number32(head);
        return readBody(number32(head + 4), 8, block);
    }
    // The length cannot be read before the byte order is known.
    if (!window_.has(12)) {
        return failCut();
    }
    const std::optional<bool> big_endian = byteOrderOf(window_.data() + 8);
    if (!big_endian) {
        return start_ == 0 ? failNoCapture()
                           : fail("the section at byte " + std::to_string(start_) +
                                  " does not say its byte order");
    }
    big_endian_ = *big_endian;
    block.type = kSectionHeader;
    return readBody(number32(window_.data() + 4), 12, block);
}

bool CaptureReader::isSectionHeader() const {
    return std::memcmp(window_.data(), kSectionStart, sizeof kSectionStart) == 0;
}

/// The rest of a block after the `head` bytes at its beginning. A byte order among them is not part
/// of the body.
bool CaptureReader::readBody(uint32_t length, size_t head, Block& block) {
    const size_t shortest = head + 4;
    if (length < kShortestBlock || length < shortest || length > kLongestBlock || length % 4 != 0) {
        return fail("the block at byte " + std::to_string(start_) + " cannot be " +
                    std::to_string(length) + " bytes long");
    }
    if (!window_.has(length)) {
        return failCut();
    }
    const uint8_t* bytes = window_.data();
    const uint32_t repeated = number32(bytes + length - 4);
    if (repeated != length) {
        return fail("the block at byte " + std::to_string(start_) + " is " +
                    std::to_string(length) + " bytes long at its beginning and " +
                    std::to_string(repeated) + " at its end");
    }
    block.body.assign(bytes + head, bytes + length - 4);
    window_.skip(length);
    whole_ = true;
    return true;
}

std::optional<Gap> CaptureReader::resume() {
    if (error_.empty() || other_file_) {
        return std::nullopt;
    }
    if (!whole_ && window_.size() > 0) {
        window_.skip(1);
    }
    while (window_.has(kShortestBlock)) {
        const bool big_endian_before = big_endian_;
        if (canBeBlock()) {
            error_.clear();
            if (interfaces_.empty()) {
                interfaces_.push_back({kResolutionOfLibDtv, 0});
            }
            return Gap{start_, window_.offset() - start_};
        }
        big_endian_ = big_endian_before;
        window_.skip(1);
    }
    return std::nullopt;
}

/// Whether a block that is known begins here: what can be checked of it is right. There are as many
/// bytes as the shortest block has.
bool CaptureReader::canBeBlock() {
    const bool section = isSectionHeader();
    if (section) {
        const std::optional<bool> big_endian = byteOrderOf(window_.data() + 8);
        if (!big_endian) {
            return false;
        }
        big_endian_ = *big_endian;
    }
    const uint32_t type = number32(window_.data());
    const uint32_t length = number32(window_.data() + 4);
    if (length % 4 != 0) {
        return false;
    }
    if (section) {
        if (length < kShortestSection || length > kLongestDescription) {
            return false;
        }
    } else if (type == kInterfaceDescription) {
        if (length < kShortestInterface || length > kLongestDescription ||
            number16(window_.data() + 8) != kUserLinkType) {
            return false;
        }
    } else if (type != kEnhancedPacket || length < kShortestPacket ||
               !window_.has(kShortestPacket) || !canBePacket(length)) {
        return false;
    }
    return window_.has(length) && number32(window_.data() + length - 4) == length;
}

/// Whether the fields at the beginning of a packet agree with the length of its block.
bool CaptureReader::canBePacket(uint32_t length) const {
    const uint32_t interface = number32(window_.data() + 8);
    const uint32_t captured = number32(window_.data() + 20);
    const uint64_t without_options = kShortestPacket + padded(captured);
    return interface < std::max<size_t>(interfaces_.size(), 1) && length >= without_options &&
           length <= without_options + kLongestDescription;
}

bool CaptureReader::beginSection(const Block& block) {
    // Two numbers of the version, and the section's length, which is not needed.
    if (block.body.size() < 12) {
        return fail("the section header at byte " + std::to_string(start_) + " is too short");
    }
    const unsigned major = number16(block.body.data());
    if (major != 1) {
        return failForGood("the section at byte " + std::to_string(start_) + " is of version " +
                           std::to_string(major) + " of pcapng; this program reads version 1");
    }
    interfaces_.clear();
    ++section_count_;
    const Bytes options = Bytes{block.body.data(), block.body.size()}.from(12);
    countOptions(options, {kWriter});
    section_ = readNotes({options, big_endian_});
    return true;
}

bool CaptureReader::addInterface(const Block& block) {
    const Bytes body{block.body.data(), block.body.size()};
    if (body.size < 8) {
        return fail("the interface at byte " + std::to_string(start_) + " is too short");
    }
    const unsigned link_type = number16(body.data);
    if (link_type != kUserLinkType) {
        const std::string what = "the interface at byte " + std::to_string(start_) +
                                 " has link type " + std::to_string(link_type) +
                                 "; a capture of the DTV service has " +
                                 std::to_string(kUserLinkType);
        // After one of the DTV service it is more likely a packet whose type is damaged.
        return interfaces_.empty() ? failForGood(what) : fail(what);
    }
    Interface interface;
    if (!readOptions(body.from(8), interface)) {
        return false;
    }
    interfaces_.push_back(interface);
    countOptions(body.from(8), {kInterfaceName, kTimeResolution, kTimeOffset});
    return true;
}

bool CaptureReader::readOptions(Bytes bytes, Interface& interface) {
    BlockOptions options(bytes, big_endian_);
    while (const std::optional<Option> option = options.next()) {
        const std::optional<Bytes>& value = option->value;
        if (!value || (option->code == kTimeResolution && value->size != 1) ||
            (option->code == kTimeOffset && value->size != 8)) {
            return fail("option " + std::to_string(option->code) + " of the interface at byte " +
                        std::to_string(start_) + " cannot be " + std::to_string(option->length) +
                        " bytes long");
        }
        if (option->code == kTimeResolution) {
            interface.resolution = value->data[0];
        } else if (option->code == kTimeOffset) {
            interface.offset = static_cast<int64_t>(number64(value->data));
        }
    }
    return true;
}

bool CaptureReader::readPacket(const Block& block, Packet& packet) {
    const Bytes body{block.body.data(), block.body.size()};
    if (body.size < 20) {
        return fail("the packet at byte " + std::to_string(start_) + " is too short");
    }
    const uint32_t interface = number32(body.data);
    if (interface >= interfaces_.size()) {
        return fail("the packet at byte " + std::to_string(start_) + " is of interface " +
                    std::to_string(interface) + ", which the file does not describe");
    }
    const uint32_t captured = number32(body.data + 12);
    const Bytes data = body.from(20);
    if (padded(captured) > data.size) {
        return fail("the packet at byte " + std::to_string(start_) + " cannot have " +
                    std::to_string(captured) + " bytes");
    }
    const uint64_t stamp = uint64_t{number32(body.data + 4)} << 32 | number32(body.data + 8);
    const Bytes options = data.from(static_cast<size_t>(padded(captured)));
    countOptions(options, {kPacketFlags});
    packet.offset = start_;
    packet.section = section_count_;
    packet.time = momentOf(stamp, interfaces_[interface].resolution, interfaces_[interface].offset);
    packet.original_size = number32(body.data + 16);
    packet.data.assign(data.data, data.data + captured);
    packet.notes = readNotes({options, big_endian_});
    return true;
}

/// Options whose lengths are wrong are passed over as one. Of comments libDtv's own notes are
/// known.
void CaptureReader::countOptions(Bytes bytes, std::initializer_list<unsigned> known) {
    BlockOptions options(bytes, big_endian_);
    while (const std::optional<Option> option = options.next()) {
        const bool is_note =
            option->code == Option::kComment && option->value && hasKnownNotesOnly(*option->value);
        const bool is_known =
            option->value && std::find(known.begin(), known.end(), option->code) != known.end();
        passed_options_ += is_known || is_note ? 0 : 1;
    }
}

bool CaptureReader::fail(const std::string& what) {
    error_ = what;
    return false;
}

/// The file is another than this program reads: there is nothing to look for in it.
bool CaptureReader::failForGood(const std::string& what) {
    other_file_ = true;
    return fail(what);
}

bool CaptureReader::failCut() {
    const uint64_t end = window_.offset() + window_.size();
    if (window_.failed()) {
        return fail("the file cannot be read beyond byte " + std::to_string(end));
    }
    return fail("the file ends at byte " + std::to_string(end) +
                ", in the middle of the block at byte " + std::to_string(start_));
}

bool CaptureReader::failNoCapture() {
    if (window_.failed()) {
        return failCut();
    }
    return fail(window_.size() == 0 ? "the file is empty"
                                    : "this is not a pcapng file: no section header at byte 0");
}

uint16_t CaptureReader::number16(const uint8_t* bytes) const {
    const unsigned first = bytes[big_endian_ ? 1 : 0];
    const unsigned second = bytes[big_endian_ ? 0 : 1];
    return static_cast<uint16_t>(first | second << 8);
}

uint32_t CaptureReader::number32(const uint8_t* bytes) const {
    const uint32_t first = number16(bytes + (big_endian_ ? 2 : 0));
    const uint32_t second = number16(bytes + (big_endian_ ? 0 : 2));
    return first | second << 16;
}

uint64_t CaptureReader::number64(const uint8_t* bytes) const {
    const uint64_t first = number32(bytes + (big_endian_ ? 4 : 0));
    const uint64_t second = number32(bytes + (big_endian_ ? 0 : 4));
    return first | second << 32;
}

bool isCapture(const std::string& path) {
    std::error_code ignored;
    // What is read of a pipe to find out would be missing in it.
    if (path == "-" || !std::filesystem::is_regular_file(path, ignored)) {
        return false;
    }
    constexpr std::array<char, 4> kSectionStart = {0x0a, 0x0d, 0x0d, 0x0a};
    std::array<char, 4> start{};
    std::ifstream file(path, std::ios::binary);
    return file.read(start.data(), start.size()) && start == kSectionStart;
}

} // namespace sessions
