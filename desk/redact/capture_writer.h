// Messages as a capture. docs/capture.md describes the format.
#pragma once

#include "sessions/message.h"

#include <cstdint>
#include <map>
#include <string>

namespace redact {

/// Makes the bytes of a pcapng file, little-endian, with time stamps in nanoseconds. A file begins
/// with a section.
class CaptureWriter {
public:
    /// The header of a section, and the interface of its messages.
    std::string section();

    /// A message of the section, and before it an interface if its time needs one.
    std::string packet(const sessions::Message& message);

private:
    std::map<int64_t, uint32_t> interfaces_; ///< of the section, by what is added to their times
};

} // namespace redact
