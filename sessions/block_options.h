// The options of a pcapng block, and what libDtv says in comments.
#pragma once

#include "sessions/bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sessions {

struct Option {
    static constexpr unsigned kComment = 1;

    unsigned code = 0;
    uint32_t length = 0; ///< bytes, as it says
    /// Nothing when there are not that many bytes: no option can follow then.
    std::optional<Bytes> value;
};

/// Reads the options one after the other, up to the last one or to one that is damaged.
class BlockOptions {
public:
    /// `bytes` are those of the block from its first option on.
    BlockOptions(Bytes bytes, bool big_endian) : rest_(bytes), big_endian_(big_endian) {}

    std::optional<Option> next();

private:
    unsigned number16(const uint8_t* bytes) const;

    Bytes rest_;
    const bool big_endian_;
};

/// The lines of the form `key=value` in the comments of a section or of a packet, in their order.
/// Other lines are none of libDtv's.
using Notes = std::vector<std::pair<std::string, std::string>>;

/// The notes in the comments among these options.
Notes readNotes(BlockOptions options);

/// Whether a comment has nothing but notes with the keys of docs/capture.md.
bool hasKnownNotesOnly(Bytes comment);

/// The value of the first line with that key; null when there is none.
const std::string* valueOf(const Notes& notes, std::string_view key);

} // namespace sessions
