// A process that plays rounds, watched by the one that started it: a round that ends the process is
// a finding, and so is one that does not end.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

namespace campaigns {

/// What a process that plays shares with the one that watches it. In memory that both have; zero at
/// first.
struct Progress {
    std::atomic<uint64_t> rounds;
    std::atomic<bool> stop; ///< the player is to end
    /// Nanoseconds of processor time, of all threads: when the first round began, and from then on.
    std::atomic<int64_t> began;
    std::atomic<int64_t> played;
    /// What is wrong with the round that is played, ended by a zero byte.
    char wrong[1000];

    void keepWrong(const char* text);
    /// To be called by the player before the first round, and now and then.
    void keepTime();
};

/// Memory that the processes share which are started from now on. Never freed. Ends the process
/// when there is none.
void* sharedMemory(size_t size);

/// The status of a process that said in Progress::wrong what it has found.
constexpr int kFound = 77;

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
    uint64_t rounds_ = 0; ///< when it was seen to play last
    std::chrono::steady_clock::time_point seen_ = std::chrono::steady_clock::now();
};

} // namespace campaigns
