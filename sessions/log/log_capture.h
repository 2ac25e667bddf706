// A capture made of a log.
#pragma once

#include "sessions/log/log_reader.h"

#include <cstdint>
#include <string>

namespace sessions {

struct LogCapture {
    uint64_t messages = 0;   ///< in the capture
    uint64_t incomplete = 0; ///< those of them of which the log does not have all bytes
    LogCounts counts;
    /// Why there is no capture, or empty. What is wrong with the log itself is said by
    /// LineSource::error(): there is a capture of what could be read then.
    std::string error;
};

/// Reads a log to its end and writes the messages that its lines show to a file, in the order of
/// docs/log-capture.md. Bytes that the log does not have are zero, and the packet says so. The file
/// has its name when it is whole: before, and after a failure, what was there is as it was. What is
/// there and is no regular file is not replaced.
LogCapture captureLog(LineSource& log, const std::string& path);

} // namespace sessions
