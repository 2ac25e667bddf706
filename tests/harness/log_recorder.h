// Keeps the bridge's trace and compares it with what a test writes down.
#pragma once

#include <dtv/exchange.h>

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace harness {

/// One trace line as it came, and its parts.
struct TraceLine {
    int category;
    int kind;
    std::string module;
    unsigned long mask;
    std::string format;
    std::string text;
    pthread_t thread;

    // The parts of `text`.
    std::string task;     ///< as padded, at least 8 characters
    std::string level;    ///< 9 characters
    std::string function; ///< without its parentheses
    int line = 0;
    std::string message;
    std::string fault; ///< what is wrong with the line's layout, or empty

    /// "Dtv_jni|128|5|FUNCSTART|dtvSvLibCreate|the message": module, mask, kind, level word (9
    /// characters), function, message. Bytes other than printable ASCII as \xNN.
    std::string literal() const;
};

class LogRecorder : public dtv::LogSink {
public:
    /// Becomes the sink of libDtv's log, with every level let through.
    static std::shared_ptr<LogRecorder> install();

    /// The lines since the last call, of all threads, in the order in which they were written.
    std::vector<TraceLine> take();
    /// The lines of one function only; those of others are dropped.
    std::vector<TraceLine> takeOf(const std::string& function);
    void clear();

    /// Also passes each line to `observer`, on the thread that writes it and while it writes.
    void onLine(std::function<void(const TraceLine&)> of_each);

    void write(const dtv::LogLine& line) override;

private:
    std::function<void(const TraceLine&)> observer;
    std::mutex mutex;
    std::vector<TraceLine> lines;
};

/// Compares lines with literals, one a line; blanks before a literal and empty lines do not count,
/// blanks at its end do. In a literal `<pid>` matches this process's number, `<tid>` a hexadecimal
/// thread id, `<ptr>` an address as %p prints it (null too), `<int>` any decimal number. Each
/// line's category, level word, mask, kind and prefix must also be those of a trace line.
testing::AssertionResult traceIs(const char* lines_text, const char* expected_text,
                                 const std::vector<TraceLine>& lines, const std::string& expected);

#define EXPECT_TRACE(lines, expected) EXPECT_PRED_FORMAT2(::harness::traceIs, lines, expected)

/// Whether `actual` is equal to `expected`, in which placeholders may be used.
bool matches(const std::string& expected, const std::string& actual);

/// Splits a trace line into its parts.
TraceLine parseTrace(const dtv::LogLine& line);

} // namespace harness
