// The log of libDtv: the level mask, the text of a line, and the sink.
#pragma GCC visibility push(default)
#include <DtvSvCom.h>
#pragma GCC visibility pop

#include "exchange.h"
#include "line_format.h"
#include "log_file.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>

namespace dtv {
namespace {

constexpr unsigned long error_level = 2;

/// The levels that are let through: every line until the log is there, which then has the last
/// word. Constant-initialised, so that a filtered line costs no more than the test.
std::atomic<unsigned long> level_mask{~0ul};

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
    Log() { level_mask.store(initialMask(), std::memory_order_relaxed); }

    LogFile file;
    /// Whether lines go to `sink`. Without one no line takes the lock: the file is never replaced.
    std::atomic<bool> has_sink{false};
    std::mutex mutex; ///< guards `sink`; not held while a line is written
    std::shared_ptr<LogSink> sink;
};

Log& log() {
    static Log& instance = *new Log;
    return instance;
}

/// The text of a line.
class LineText {
public:
    LineText(const char* format, va_list values) __attribute__((format(printf, 2, 0)));
    LineText(const LineText&) = delete;
    LineText& operator=(const LineText&) = delete;

    const char* text() const { return text_; }

    /// Writes the text to a file, with a newline in place of its end.
    void writeTo(LogFile& file) {
        text_[length_] = '\n';
        file.write(text_, length_ + 1);
    }

private:
    size_t makeRoom(size_t size);

    char usual_[1024];
    std::unique_ptr<char[]> longer_;
    char* text_ = usual_;
    size_t length_;
};

LineText::LineText(const char* format, va_list values) {
    int length = formatLine(usual_, sizeof usual_, format, values);
    if (length >= 0) {
        length_ = static_cast<size_t>(length);
        return;
    }
    va_list again;
    va_copy(again, values);
    length = std::vsnprintf(usual_, sizeof usual_, format, again);
    va_end(again);
    if (length < 0) {
        // The format as it is: better than no line.
        const size_t size = std::strlen(format) + 1;
        const size_t room = makeRoom(size);
        std::memcpy(text_, format, std::min(size, room));
        text_[room - 1] = '\0';
    } else if (static_cast<size_t>(length) >= sizeof usual_) {
        const size_t room = makeRoom(static_cast<size_t>(length) + 1);
        std::vsnprintf(text_, room, format, values);
    }
    length_ = std::strlen(text_);
}

/// Has `text_` point to room for `size` bytes, or to the usual one when there is no memory for
/// that: the line is cut then. Returns how many bytes there are.
size_t LineText::makeRoom(size_t size) {
    if (size > sizeof usual_) {
        longer_.reset(new (std::nothrow) char[size]);
    }
    if (longer_ == nullptr) {
        return sizeof usual_;
    }
    text_ = longer_.get();
    return size;
}

/// Writes a line whose level may be let through. Kept out of DtvSvCom_Log(), so that a filtered
/// line does not pay for its frame.
__attribute__((noinline, format(printf, 5, 0))) void writeLine(int category, short kind,
                                                               const char* module,
                                                               unsigned long level,
                                                               const char* format, va_list values) {
    Log& log = dtv::log();
    if ((level & level_mask.load(std::memory_order_relaxed)) == 0) {
        return; // the first line of the process
    }
    LineText text(format, values);
    if (!log.has_sink.load(std::memory_order_acquire)) {
        text.writeTo(log.file);
        return;
    }
    std::shared_ptr<LogSink> sink;
    {
        const std::lock_guard<std::mutex> lock(log.mutex);
        sink = log.sink;
    }
    if (sink != nullptr) {
        sink->write(LogLine{category, kind, module, level, format, text.text()});
    } else {
        text.writeTo(log.file); // the sink has been removed meanwhile
    }
}

} // namespace

LogSink::~LogSink() = default;

void setLogSink(std::shared_ptr<LogSink> sink) {
    {
        const std::lock_guard<std::mutex> lock(log().mutex);
        log().sink.swap(sink);
        log().has_sink.store(log().sink != nullptr, std::memory_order_release);
    }
    // The old sink goes here, outside the lock: its destructor may log.
}

void setLogLevelMask(unsigned long mask) {
    log(); // whose start sets the mask as well
    level_mask.store(mask, std::memory_order_relaxed);
}

} // namespace dtv

void DtvSvCom_Log(int category, short kind, const char* module, unsigned long level_mask,
                  const char* format, ...) {
    if ((level_mask & dtv::level_mask.load(std::memory_order_relaxed)) == 0) {
        return;
    }
    va_list values;
    va_start(values, format);
    dtv::writeLine(category, kind, module, level_mask, format, values);
    va_end(values);
}
