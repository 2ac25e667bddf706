// Messages as a capture. docs/capture.md describes the format.
#pragma once

#include "sessions/block_options.h"
#include "sessions/message.h"

#include <cstdint>
#include <map>
#include <string>

namespace sessions {

/// Makes the bytes of a pcapng file, little-endian, with time stamps in nanoseconds. A file begins
/// with a section.
class CaptureWriter {
public:
    /// The header of a section with its notes, and the interface of its messages. `program` writes
    /// the file.
    std::string section(const std::string& program, const Notes& notes = {});

    /// A message of the section with its notes, and before it an interface if its time needs one.
    /// When not all bytes of the record are known, a note says which are not.
    std::string packet(const Message& message, const Notes& notes = {});

private:
    std::map<int64_t, uint32_t> interfaces_; ///< of the section, by what is added to their times
};

} // namespace sessions
