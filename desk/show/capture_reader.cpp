#include "desk/show/capture_reader.h"

#include <cstring>
#include <limits>

namespace show {
namespace {

constexpr uint32_t kSectionHeader = 0x0a0d0d0a; ///< the same in both byte orders
constexpr uint32_t kInterfaceDescription = 1;
constexpr uint32_t kEnhancedPacket = 6;

constexpr uint16_t kTimeResolution = 9;
constexpr uint16_t kTimeOffset = 14;

constexpr uint16_t kUserLinkType = 147;

constexpr uint32_t kShortestBlock = 12;
constexpr uint32_t kLongestBlock = 16 * 1024 * 1024;

/// A length rounded up to the 4 bytes that everything in the file is aligned to.
constexpr uint64_t padded(uint32_t length) {
    return (uint64_t{length} + 3) / 4 * 4;
}

constexpr uint64_t powerOfTen(unsigned exponent) {
    uint64_t power = 1;
    for (unsigned i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}
constexpr unsigned kLargestPower = 19; ///< of 10 that 64 bits hold

} // namespace

Moment momentOf(uint64_t stamp, uint8_t resolution, int64_t offset) {
    const unsigned power = resolution & 0x7f;
    uint64_t seconds = 0;
    uint64_t nanoseconds = 0;
    if ((resolution & 0x80) != 0) {
        const uint64_t fraction = power < 64 ? stamp & ((uint64_t{1} << power) - 1) : stamp;
        seconds = power < 64 ? stamp >> power : 0;
        // 30 bits of the fraction are fine enough, and leave room to multiply.
        uint64_t thirty = 0;
        if (power <= 30) {
            thirty = fraction << (30 - power);
        } else if (power - 30 < 64) {
            thirty = fraction >> (power - 30);
        }
        nanoseconds = (thirty * 1000000000) >> 30;
    } else {
        uint64_t fraction = stamp;
        if (power <= kLargestPower) {
            seconds = stamp / powerOfTen(power);
            fraction = stamp % powerOfTen(power);
        }
        if (power <= 9) {
            nanoseconds = fraction * powerOfTen(9 - power);
        } else if (power - 9 <= kLargestPower) {
            nanoseconds = fraction / powerOfTen(power - 9);
        }
    }
    // The sum wraps around instead of overflowing: such stamps mean nothing.
    return {static_cast<int64_t>(seconds + static_cast<uint64_t>(offset)),
            static_cast<uint32_t>(nanoseconds)};
}

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
        }
    }
    return std::nullopt;
}

/// False at the end of the file and at an error.
bool CaptureReader::readBlock(Block& block) {
    static constexpr uint8_t section[] = {0x0a, 0x0d, 0x0d, 0x0a};
    start_ = position_;
    uint8_t head[12];
    const size_t count = read(head, 8);
    if (start_ == 0 &&
        (count == 0 || std::memcmp(head, section, std::min<size_t>(count, 4)) != 0)) {
        return failNoCapture();
    }
    if (count == 0) {
        return file_.bad() ? failCut() : false;
    }
    if (count < 8) {
        return failCut();
    }
    if (std::memcmp(head, section, sizeof section) != 0) {
        block.type = number32(head);
        return readBody(number32(head + 4), 8, block);
    }
    // The length cannot be read before the byte order is known.
    if (read(head + 8, 4) < 4) {
        return failCut();
    }
    if (head[8] == 0x1a && head[9] == 0x2b && head[10] == 0x3c && head[11] == 0x4d) {
        big_endian_ = true;
    } else if (head[8] == 0x4d && head[9] == 0x3c && head[10] == 0x2b && head[11] == 0x1a) {
        big_endian_ = false;
    } else {
        return start_ == 0 ? failNoCapture()
                           : fail("the section at byte " + std::to_string(start_) +
                                  " does not say its byte order");
    }
    block.type = kSectionHeader;
    return readBody(number32(head + 4), 12, block);
}

/// The rest of a block of which `read_already` bytes have been read. A byte order among them is not
/// part of the body.
bool CaptureReader::readBody(uint32_t length, size_t read_already, Block& block) {
    const size_t shortest = read_already + 4;
    if (length < kShortestBlock || length < shortest || length > kLongestBlock || length % 4 != 0) {
        return fail("the block at byte " + std::to_string(start_) + " cannot be " +
                    std::to_string(length) + " bytes long");
    }
    std::vector<uint8_t>& body = block.body;
    body.resize(length - read_already);
    if (read(body.data(), body.size()) < body.size()) {
        return failCut();
    }
    const uint32_t repeated = number32(body.data() + body.size() - 4);
    if (repeated != length) {
        return fail("the block at byte " + std::to_string(start_) + " is " +
                    std::to_string(length) + " bytes long at its beginning and " +
                    std::to_string(repeated) + " at its end");
    }
    body.resize(body.size() - 4);
    return true;
}

/// How many of the bytes there were.
size_t CaptureReader::read(uint8_t* bytes, size_t count) {
    file_.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count));
    const auto got = static_cast<size_t>(file_.gcount());
    position_ += got;
    return got;
}

bool CaptureReader::beginSection(const Block& block) {
    // Two numbers of the version, and the section's length, which is not needed.
    if (block.body.size() < 12) {
        return fail("the section header at byte " + std::to_string(start_) + " is too short");
    }
    const unsigned major = number16(block.body.data());
    if (major != 1) {
        return fail("the section at byte " + std::to_string(start_) + " is of version " +
                    std::to_string(major) + " of pcapng; this program reads version 1");
    }
    interfaces_.clear();
    return true;
}

bool CaptureReader::addInterface(const Block& block) {
    const Bytes body{block.body.data(), block.body.size()};
    if (body.size < 8) {
        return fail("the interface at byte " + std::to_string(start_) + " is too short");
    }
    const unsigned link_type = number16(body.data);
    if (link_type != kUserLinkType) {
        return fail("the interface at byte " + std::to_string(start_) + " has link type " +
                    std::to_string(link_type) + "; a capture of the DTV service has " +
                    std::to_string(kUserLinkType));
    }
    Interface interface;
    if (!readOptions(body.from(8), interface)) {
        return false;
    }
    interfaces_.push_back(interface);
    return true;
}

bool CaptureReader::readOptions(Bytes options, Interface& interface) {
    while (options.size >= 4) {
        const unsigned code = number16(options.data);
        const uint32_t length = number16(options.data + 2);
        if (code == 0) {
            break;
        }
        const Bytes value = options.from(4);
        if (padded(length) > value.size || (code == kTimeResolution && length != 1) ||
            (code == kTimeOffset && length != 8)) {
            return fail("option " + std::to_string(code) + " of the interface at byte " +
                        std::to_string(start_) + " cannot be " + std::to_string(length) +
                        " bytes long");
        }
        if (code == kTimeResolution) {
            interface.resolution = value.data[0];
        } else if (code == kTimeOffset) {
            interface.offset = static_cast<int64_t>(number64(value.data));
        }
        options = value.from(static_cast<size_t>(padded(length)));
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
    packet.offset = start_;
    packet.time = momentOf(stamp, interfaces_[interface].resolution, interfaces_[interface].offset);
    packet.original_size = number32(body.data + 16);
    packet.data.assign(data.data, data.data + captured);
    return true;
}

bool CaptureReader::fail(const std::string& what) {
    error_ = what;
    return false;
}

bool CaptureReader::failCut() {
    if (file_.bad()) {
        return fail("the file cannot be read beyond byte " + std::to_string(position_));
    }
    return fail("the file ends at byte " + std::to_string(position_) +
                ", in the middle of the block at byte " + std::to_string(start_));
}

bool CaptureReader::failNoCapture() {
    if (file_.bad()) {
        return failCut();
    }
    return fail(position_ == 0 ? "the file is empty"
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

} // namespace show
