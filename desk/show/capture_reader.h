// Reads the packets of a pcapng file, one after the other.
#pragma once

#include "desk/show/bytes.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace show {

/// A moment since the beginning of 1970, UTC.
struct Moment {
    int64_t seconds = 0;
    uint32_t nanoseconds = 0; ///< less than 10^9
};

struct Packet {
    uint64_t offset = 0; ///< of its block in the file, bytes
    Moment time;
    uint32_t original_size = 0; ///< bytes; more than there are when the file has not all of them
    std::vector<uint8_t> data;
};

/// Reads sections of either byte order with any number of interfaces. Blocks and options that it
/// does not know are passed over. Any bytes may be read: what is wrong ends the file with an error,
/// after all packets before it. A block may be 16 MiB long at most.
class CaptureReader {
public:
    /// `file` must outlive the reader. It need not be seekable.
    explicit CaptureReader(std::istream& file) : file_(file) {}

    /// The next packet, or nothing at the end of the file or at an error.
    std::optional<Packet> next();

    /// What is wrong with the file, with the offset in bytes; empty when it was read to its end.
    const std::string& error() const { return error_; }

private:
    struct Block {
        uint32_t type = 0;
        std::vector<uint8_t> body; ///< without the lengths
    };

    /// What an interface says about the time stamps of its packets.
    struct Interface {
        uint8_t resolution = 6; ///< negative power of 10, or of 2 with the highest bit set
        int64_t offset = 0;     ///< seconds to be added
    };

    bool readBlock(Block& block);
    bool readBody(uint32_t length, size_t read, Block& block);
    size_t read(uint8_t* bytes, size_t count);
    bool beginSection(const Block& block);
    bool addInterface(const Block& block);
    bool readOptions(Bytes options, Interface& interface);
    bool readPacket(const Block& block, Packet& packet);
    bool fail(const std::string& what);
    bool failCut();
    bool failNoCapture();
    uint16_t number16(const uint8_t* bytes) const;
    uint32_t number32(const uint8_t* bytes) const;
    uint64_t number64(const uint8_t* bytes) const;

    std::istream& file_;
    uint64_t position_ = 0; ///< bytes read
    uint64_t start_ = 0;    ///< of the block that is being read
    bool big_endian_ = false;
    std::vector<Interface> interfaces_; ///< of the section
    std::string error_;
};

/// A time stamp of an interface with that resolution (see if_tsresol of pcapng).
Moment momentOf(uint64_t stamp, uint8_t resolution, int64_t offset);

} // namespace show
