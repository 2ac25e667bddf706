// Reads the packets of a pcapng file, one after the other.
#pragma once

#include "sessions/block_options.h"
#include "sessions/bytes.h"
#include "sessions/input_window.h"
#include "sessions/moment.h"

#include <cstdint>
#include <initializer_list>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace sessions {

struct Packet {
    uint64_t offset = 0;  ///< of its block in the file, bytes
    uint32_t section = 0; ///< of the file, from 1
    Moment time;
    uint32_t original_size = 0; ///< bytes; more than there are when the file has not all of them
    std::vector<uint8_t> data;
    Notes notes; ///< of the packet's comments
};

/// Bytes of a file of which no packet could be made.
struct Gap {
    uint64_t offset = 0; ///< in the file, bytes
    uint64_t size = 0;   ///< bytes
};

/// Whether a file is a capture, by its beginning; false for what is no regular file.
bool isCapture(const std::string& path);

/// Reads sections of either byte order with any number of interfaces. Blocks and options that it
/// does not know are passed over. Any bytes may be read: at what is wrong it stops with an error,
/// after all packets before it, and resume() finds the blocks that follow. A block may be 16 MiB
/// long at most. It waits for no more of the file than the block that is read.
class CaptureReader {
public:
    /// `file` must outlive the reader. It need not be seekable.
    explicit CaptureReader(std::istream& file) : window_(file) {}

    /// The next packet, or nothing at the end of the file or at an error.
    std::optional<Packet> next();

    /// What the header of the section that was read last says of the session: docs/capture.md has
    /// the keys. Empty when it says nothing.
    const Notes& section() const { return section_; }

    /// What is wrong with the file, with the offset in bytes; empty when it was read to its end.
    const std::string& error() const { return error_; }

    /// After an error: clears it, skips what is damaged up to the next bytes that can be a section,
    /// an interface or a packet, and returns what was skipped. Nothing, and the error stays, when
    /// there are none, or when the file is not a capture of the DTV service at all. Packets that
    /// follow a lost interface are read as of libDtv's own.
    std::optional<Gap> resume();

    /// What has been passed over so far: blocks of other types, and options that libDtv does not
    /// write.
    uint64_t passedBlocks() const { return passed_blocks_; }
    uint64_t passedOptions() const { return passed_options_; }

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
    bool readBody(uint32_t length, size_t head, Block& block);
    bool isSectionHeader() const;
    bool canBeBlock();
    bool canBePacket(uint32_t length) const;
    bool beginSection(const Block& block);
    bool addInterface(const Block& block);
    bool readOptions(Bytes bytes, Interface& interface);
    bool readPacket(const Block& block, Packet& packet);
    void countOptions(Bytes bytes, std::initializer_list<unsigned> known);
    bool fail(const std::string& what);
    bool failForGood(const std::string& what);
    bool failCut();
    bool failNoCapture();
    uint16_t number16(const uint8_t* bytes) const;
    uint32_t number32(const uint8_t* bytes) const;
    uint64_t number64(const uint8_t* bytes) const;

    InputWindow window_;      ///< begins at the next block, or at the one whose length is wrong
    uint64_t start_ = 0;      ///< of the block that was read last
    bool whole_ = false;      ///< its lengths are right, so that the next one follows it
    bool other_file_ = false; ///< the error is no damage
    bool big_endian_ = false;
    uint32_t section_count_ = 0;
    uint64_t passed_blocks_ = 0;
    uint64_t passed_options_ = 0;
    Notes section_;
    std::vector<Interface> interfaces_; ///< of the section
    std::string error_;
};

} // namespace sessions
