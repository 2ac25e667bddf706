// Messages as a capture. docs/capture.md describes the format.
#pragma once

#include "sessions/block_options.h"
#include "sessions/message.h"

#include <cstdint>
#include <map>
#include <string>

namespace redact {

/// Makes the bytes of a pcapng file, little-endian, with time stamps in nanoseconds. A file begins
/// with a section.
class CaptureWriter {
public:
    /// The header of a section with its notes, and the interface of its messages.
    std::string section(const sessions::Notes& notes);

    /// A message of the section with its notes, and before it an interface if its time needs one.
    std::string packet(const sessions::Message& message, const sessions::Notes& notes);

private:
    std::map<int64_t, uint32_t> interfaces_; ///< of the section, by what is added to their times
};

} // namespace redact
