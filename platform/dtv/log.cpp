// The log of libDtv: the level mask, the formatting, and the sink.

// Logs beyond 2 GiB, also where a file offset is 32 bits wide by default.
#define _FILE_OFFSET_BITS 64

#pragma GCC visibility push(default)
#include <DtvSvCom.h>
#pragma GCC visibility pop

#include "exchange.h"
#include "write_tally.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace dtv {
namespace {

constexpr unsigned long error_level = 2;

/// The file named by DTV_LOG_FILE, at whose end the lines are written, or standard error.
class StandardSink final : public LogSink {
public:
    StandardSink() {
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

    void write(const LogLine& line) override {
        if (tally_ == nullptr) {
            writeWhole(line.text);
        } else if (!tally_->hasEnded() && writeWhole(line.text)) {
            tally_->countKept();
        } else {
            tally_->countLost();
        }
    }

private:
    /// A line and its end in one call, so that lines of several threads and processes do not mix.
    bool writeWhole(const char* text) {
        char end[] = "\n";
        iovec parts[] = {{const_cast<char*>(text), std::strlen(text)}, {end, 1}};
        iovec* part = parts;
        int count = 2;
        off_t done = 0;
        while (count > 0) {
            const ssize_t result = writev(descriptor_, part, count);
            if (result < 0) {
                if (errno == EINTR) {
                    continue;
                }
                fail(done);
                return false;
            }
            done += result;
            size_t written = static_cast<size_t>(result);
            while (count > 0 && written >= part->iov_len) {
                written -= part->iov_len;
                ++part;
                --count;
            }
            if (count > 0) {
                part->iov_base = static_cast<char*>(part->iov_base) + written;
                part->iov_len -= written;
            }
        }
        return true;
    }

    /// Ends the log after the first `done` bytes of a line. They are removed, so that nothing that
    /// another writer appends later continues them.
    void fail(off_t done) {
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
            ftruncate(descriptor_, status.st_size - done) != 0) {
            return; // then it is the last line, and not whole
        }
    }

    int descriptor_ = STDERR_FILENO;
    WriteTally* tally_ = nullptr; ///< of the file; null for standard error
};

unsigned long initialMask() {
    const char* text = std::getenv("DTV_LOG_MASK");
    if (text == nullptr || *text == '\0') {
        return error_level;
    }
    char* end = nullptr;
    const unsigned long mask = std::strtoul(text, &end, 0);
    if (*end != '\0') {
        std::fprintf(stderr, "libDtv: DTV_LOG_MASK is not a number: %s\n", text);
        return error_level;
    }
    return mask;
}

/// Never destroyed: lines are written until the process has ended.
struct Log {
    std::atomic<unsigned long> mask{initialMask()};
    std::mutex mutex; ///< guards `sink`; not held while a line is written
    const std::shared_ptr<LogSink> standard_sink = std::make_shared<StandardSink>();
    std::shared_ptr<LogSink> sink = standard_sink;
};

Log& log() {
    static Log& instance = *new Log;
    return instance;
}

void writeLine(const LogLine& line) {
    std::shared_ptr<LogSink> sink;
    {
        const std::lock_guard<std::mutex> lock(log().mutex);
        sink = log().sink;
    }
    sink->write(line);
}

} // namespace

LogSink::~LogSink() = default;

void setLogSink(std::shared_ptr<LogSink> sink) {
    if (sink == nullptr) {
        sink = log().standard_sink;
    }
    {
        const std::lock_guard<std::mutex> lock(log().mutex);
        log().sink.swap(sink);
    }
    // The old sink goes here, outside the lock: its destructor may log.
}

void setLogLevelMask(unsigned long mask) {
    log().mask.store(mask, std::memory_order_relaxed);
}

} // namespace dtv

void DtvSvCom_Log(int category, short kind, const char* module, unsigned long level_mask,
                  const char* format, ...) {
    if ((level_mask & dtv::log().mask.load(std::memory_order_relaxed)) == 0) {
        return;
    }
    char usual[512];
    std::vector<char> longer;
    const char* text = usual;

    va_list values;
    va_start(values, format);
    const int length = std::vsnprintf(usual, sizeof usual, format, values);
    va_end(values);
    if (length < 0) {
        text = format; // better than no line
    } else if (static_cast<size_t>(length) >= sizeof usual) {
        longer.resize(static_cast<size_t>(length) + 1);
        va_start(values, format);
        std::vsnprintf(longer.data(), longer.size(), format, values);
        va_end(values);
        text = longer.data();
    }
    dtv::writeLine(dtv::LogLine{category, kind, module, level_mask, format, text});
}

const char* DtvSvCom_GetMyTaskName(void) {
    static thread_local char name[16]; // the longest name a thread can have, with its end
    if (pthread_getname_np(pthread_self(), name, sizeof name) != 0) {
        name[0] = '\0';
    }
    return name;
}
