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
    /// The header of a section, and the interface of its messages. Of the notes those that a replay
    /// needs are there: city, seed, clock and version.
    std::string section(const sessions::Notes& notes = {});

    /// A message of the section, and before it an interface if its time needs one. `notes` are
    /// those of its packet: that its record is incomplete stays.
    std::string packet(const sessions::Message& message, const sessions::Notes& notes = {});

private:
    std::map<int64_t, uint32_t> interfaces_; ///< of the section, by what is added to their times
};

} // namespace redact
