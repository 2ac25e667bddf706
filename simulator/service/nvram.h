// The memory that broadcasters have in the receiver: the blocks that documents have written.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>

namespace simulator {

/// Names a block: affiliation, network, number.
using NvramBlock = std::tuple<uint8_t, uint16_t, uint8_t>;

/// What a block holds.
struct NvramContents {
    std::array<char, 44> owner; ///< the name of the transport stream
    std::array<uint8_t, 64> data;

    bool operator==(const NvramContents& other) const {
        return owner == other.owner && data == other.data;
    }
};

/// Shared by all sessions. The blocks last as long as the simulator.
class Nvram {
public:
    void write(const NvramBlock& block, const NvramContents& contents) {
        blocks_[block] = contents;
    }

    /// What was written last; empty when nothing was.
    std::optional<NvramContents> read(const NvramBlock& block) const {
        const auto found = blocks_.find(block);
        return found != blocks_.end() ? std::optional(found->second) : std::nullopt;
    }

private:
    std::map<NvramBlock, NvramContents> blocks_;
};

} // namespace simulator
