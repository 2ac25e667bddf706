// Logs beyond 2 GiB, also where a file offset is 32 bits wide by default.
#define _FILE_OFFSET_BITS 64

#include "log_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace dtv {

LogFile::LogFile() : descriptor_(STDERR_FILENO) {
    const char* path = std::getenv("DTV_LOG_FILE");
    if (path == nullptr || *path == '\0') {
        return;
    }
    const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (file < 0) {
        std::fprintf(stderr, "libDtv: cannot open the log file %s: %s\n", path,
                     std::strerror(errno));
        noteUnwritableFile();
        return;
    }
    descriptor_ = file;
    tally_ = new WriteTally("lines", path);
}

void LogFile::write(const char* line, size_t size) {
    if (tally_ == nullptr) {
        writeWhole(line, size);
    } else if (!tally_->hasEnded() && writeWhole(line, size)) {
        tally_->countKept();
    } else {
        tally_->countLost();
    }
}

/// A part that was not taken is written again: a pipe or a terminal may take a line in parts.
bool LogFile::writeWhole(const char* line, size_t size) {
    size_t done = 0;
    while (done < size) {
        const ssize_t result = ::write(descriptor_, line + done, size - done);
        if (result >= 0) {
            done += static_cast<size_t>(result);
        } else if (errno != EINTR) {
            fail(done);
            return false;
        }
    }
    return true;
}

/// Ends the log after the first `done` bytes of a line. They are removed, so that nothing that
/// another writer appends later continues them.
void LogFile::fail(size_t done) {
    const int error = errno;
    if (tally_ == nullptr) {
        return; // there is no other place to say it
    }
    const char* reason = strerrordesc_np(error);
    if (reason == nullptr) {
        reason = "it cannot be written";
    }
    if (tally_->end(reason)) {
        std::fprintf(stderr, "libDtv: the log ends, for %s cannot be written: %s\n",
                     tally_->path().c_str(), reason);
    }
    struct stat status = {};
    if (done > 0 && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) &&
        lseek(descriptor_, 0, SEEK_CUR) == status.st_size &&
        ftruncate(descriptor_, status.st_size - static_cast<off_t>(done)) != 0) {
        return; // then it is the last line, and not whole
    }
}

} // namespace dtv
