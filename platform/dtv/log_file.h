// Where the lines of the log go by default: the file named by DTV_LOG_FILE, or standard error.
#pragma once

#include "write_tally.h"

#include <cstddef>

namespace dtv {

/// The file, at whose end the lines are written. Any number of threads may write at once. It is
/// created with new and never deleted.
///
/// A line is one write(2): it is in the file when write() returns, also when the process is killed
/// then, and lines of several threads and processes do not mix.
class LogFile {
public:
    /// Reads DTV_LOG_FILE. A file that cannot be opened is reported, and standard error takes its
    /// place.
    LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// Writes a line: `size` bytes, of which the last is the newline. No error reaches the caller:
    /// the first one is printed on standard error, nothing more is written, and the end of the
    /// process reports how many lines are kept.
    void write(const char* line, size_t size);

private:
    bool writeWhole(const char* line, size_t size);
    void fail(size_t done);

    int descriptor_;
    WriteTally* tally_ = nullptr; ///< of the file; null for standard error
};

} // namespace dtv
