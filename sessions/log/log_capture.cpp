#include "sessions/log/log_capture.h"

#include "sessions/capture_writer.h"
#include "sessions/log/activity.h"
#include "sessions/log/log_messages.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace sessions {
namespace {

constexpr size_t kBufferSize = 1 << 20; ///< bytes

/// A file beside the one that is wanted, which takes its place when it is whole.
class Target {
public:
    explicit Target(const std::string& path) : path_(path), temporary_(path + ".XXXXXX") {
        descriptor_ = mkostemp(temporary_.data(), O_CLOEXEC);
        if (descriptor_ < 0) {
            fail();
        }
    }
    ~Target() {
        if (descriptor_ >= 0) {
            close(descriptor_);
            unlink(temporary_.c_str());
        }
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    void write(const std::string& bytes) {
        buffer_ += bytes;
        if (buffer_.size() >= kBufferSize) {
            flush();
        }
    }

    /// Gives the file its name, unless something failed.
    void keep() {
        flush();
        // As a file that is opened with the usual mode.
        const mode_t mask = umask(0);
        umask(mask);
        if (error_.empty() &&
            (fchmod(descriptor_, 0666 & ~mask) != 0 || close(std::exchange(descriptor_, -1)) != 0 ||
             std::rename(temporary_.c_str(), path_.c_str()) != 0)) {
            fail();
            unlink(temporary_.c_str());
        }
    }

    const std::string& error() const { return error_; }

private:
    void fail() {
        if (error_.empty()) {
            error_ = std::strerror(errno);
        }
    }

    void flush() {
        size_t written = 0;
        while (error_.empty() && written < buffer_.size()) {
            const ssize_t count =
                ::write(descriptor_, buffer_.data() + written, buffer_.size() - written);
            if (count < 0 && errno != EINTR) {
                fail();
            }
            written += count > 0 ? static_cast<size_t>(count) : 0;
        }
        buffer_.clear();
    }

    const std::string path_;
    std::string temporary_;
    int descriptor_ = -1;
    std::string buffer_;
    std::string error_;
};

/// Writes the messages of steps, one section for each process.
class Writer {
public:
    Writer(Target& target, LogCapture& result) : target_(target), result_(result) {}

    void take(const Step& step) {
        if (step.kind == Step::Kind::kLoad) {
            begun_ = false;
        }
        if (const std::optional<Message> message = messageOf(step)) {
            begin(step.call.begun);
            target_.write(capture_.packet(*message));
            ++result_.messages;
            result_.incomplete += std::find(message->known.begin(), message->known.end(), false) !=
                                  message->known.end();
        }
    }

    /// Has at least one section written.
    void finish() {
        if (written_ == 0) {
            begin(std::nullopt);
        }
    }

private:
    void begin(const std::optional<LogTime>& time) {
        if (begun_) {
            return;
        }
        begun_ = true;
        ++written_;
        const char* const times = !time ? "none" : time->has_year ? "local" : "local-without-year";
        target_.write(capture_.section("dtv-explain", {{"source", "log"}, {"times", times}}));
    }

    Target& target_;
    LogCapture& result_;
    CaptureWriter capture_;
    bool begun_ = false;
    int written_ = 0;
};

} // namespace

LogCapture captureLog(LineSource& log, const std::string& path) {
    LogCapture result;
    Target target(path);
    Writer writer(target, result);
    LogReader reader(log);
    Activity activity([&writer](const Step& step) { writer.take(step); },
                      [](const UnmatchedLine&) {});
    for (LogLine line; target.error().empty() && reader.next(line);) {
        activity.add(line);
    }
    activity.end();
    writer.finish();
    target.keep();
    result.counts = reader.counts();
    result.error = target.error();
    return result;
}

} // namespace sessions
