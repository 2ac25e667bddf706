// One log or capture, explained.
#pragma once

#include "desk/explain/analysis.h"

#include "sessions/keyed_hash.h"
#include "sessions/log/log_reader.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace explain {

struct Explained {
    std::string name; ///< of the file
    bool is_capture = false;
    std::string error;          ///< the file could not be read to its end; empty: it could
    bool could_be_read = true;  ///< false: nothing was read of it
    uint64_t messages = 0;      ///< of a capture
    sessions::LogCounts counts; ///< of a log
    sessions::LogForm form = sessions::LogForm::kRaw; ///< of most lines of the bridge
    std::vector<Loss> losses;
    std::vector<std::string> limits; ///< what else the log cannot tell
    Analysis analysis;

    explicit Explained(int64_t slow) : analysis(slow) {}
};

/// What a file says of the service's messages; also what scripts get as the exit status.
enum class Verdict : uint8_t {
    kClean = 0,
    kFound = 1,
    kCannotTell = 2, ///< nothing was found, but lines are missing, or there are none
};
Verdict verdictOf(const Explained& explained);

struct ReadOptions {
    /// Shows placeholders in place of what other programs wrote and of texts; null: shows them.
    const sessions::HashKey* redacts_with = nullptr;
    int64_t slow = 1000000000; ///< nanoseconds; an answer that takes longer is slow
};

/// Reads a log or a capture; "-" is standard input.
std::unique_ptr<Explained> explainFile(const std::string& path, const ReadOptions& options);

} // namespace explain
