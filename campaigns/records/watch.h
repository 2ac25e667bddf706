// A process that plays records, watched by the one that started it.
#pragma once

#include "records/progress.h"

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace hostile {

class Job {
public:
    /// Starts a process that does `work`, which does not return. What it prints goes to the file.
    Job(Progress& progress, std::filesystem::path log, const std::function<void()>& work);
    ~Job();
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Whether the process runs. One that has played nothing for a minute is ended.
    bool runs();

    /// Of a process that has ended: what it found, or how it ended. Empty when all was well.
    std::string wrong() const;

private:
    std::string lastLines() const;

    Progress& progress_;
    const std::filesystem::path log_;
    pid_t process_;
    int status_ = 0;
    bool ended_ = false;
    bool hung_ = false;
    uint64_t records_ = 0; ///< when it was seen to play last
    std::chrono::steady_clock::time_point seen_ = std::chrono::steady_clock::now();
};

/// What processes have played together.
struct Totals {
    uint64_t records = 0;
    uint64_t delivered = 0;
    uint64_t traced = 0;
    double seconds = 0; ///< of processor time
    size_t edge_count = 0;
    std::vector<uint8_t> edges;

    void add(const Progress& progress);
    void add(const Totals& others);
    size_t edgesTaken() const;

private:
    void addEdges(const uint8_t* taken, size_t count);
};

} // namespace hostile
