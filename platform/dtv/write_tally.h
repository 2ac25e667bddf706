// How much of what libDtv was to write to a file is in the file. What is missing is reported as the
// process ends.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace dtv {

/// Counts what is written to one file. Any number of threads may count at once. It is created with
/// new and never deleted: the report at the end of the process reads it.
///
/// The report is one line on standard error for each file that is not whole:
///
///     libDtv: FILE: No space left on device; kept 17 of 7702 lines
///
/// When the variable DTV_LOSS_STATUS is a number from 1 to 255, a process that would end with exit
/// status 0 although something is missing ends with that number. There is no report and no change
/// of status when a process does not end with exit().
class WriteTally {
public:
    /// `unit` names what is counted, in the plural, and must live as long as the process.
    WriteTally(const char* unit, std::string path);
    WriteTally(const WriteTally&) = delete;
    WriteTally& operator=(const WriteTally&) = delete;

    void countKept() { kept_.fetch_add(1, std::memory_order_relaxed); }
    void countLost() { lost_.fetch_add(1, std::memory_order_relaxed); }

    /// Nothing more is written to the file. True for the first caller; its `reason` is reported and
    /// must live as long as the process.
    bool end(const char* reason);
    bool hasEnded() const { return reason_.load(std::memory_order_relaxed) != nullptr; }

    const std::string& path() const { return path_; }

    /// Prints the line of the report; nothing when the file is whole.
    void report() const;
    const WriteTally* next() const { return next_; }

private:
    const char* const unit_;
    const std::string path_;
    std::atomic<uint64_t> kept_{0};
    std::atomic<uint64_t> lost_{0};
    std::atomic<const char*> reason_{nullptr};
    const WriteTally* next_; ///< the one that was created before
};

/// For a file that was wanted and of which nothing can be written: the exit status shows it as it
/// shows a loss. The caller prints why.
void noteUnwritableFile();

} // namespace dtv
