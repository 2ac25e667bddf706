#include "rounds/job.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>

namespace campaigns {
namespace {

/// A round takes microseconds, the start of a VM a second.
constexpr std::chrono::seconds kLongestSilence{60};

bool saysWhy(const std::string& line) {
    // The sanitizers' words, and those of the VM's report.
    static const char* const words[] = {"ERROR: ", "runtime error:", "SUMMARY: ", "    #",
                                        "#  SIG",  "# C  [",         "# V  [",    "cannot"};
    for (const char* const part : words) {
        if (line.find(part) != std::string::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

void Progress::keepWrong(const char* text) {
    std::strncpy(wrong, text, sizeof wrong - 1);
}

void Progress::keepTime() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    const int64_t now = time.tv_sec * 1'000'000'000LL + time.tv_nsec;
    if (began == 0) {
        began = now;
    }
    played = now - began;
}

void* sharedMemory(size_t size) {
    void* const memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        std::perror("shared memory");
        std::exit(71);
    }
    return memory;
}

Job::Job(Progress& progress, std::filesystem::path log, const std::function<void()>& work)
    : progress_(progress), log_(std::move(log)) {
    std::fflush(nullptr);
    process_ = fork();
    if (process_ == 0) {
        const int file = open(log_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (file < 0 || dup2(file, 1) < 0 || dup2(file, 2) < 0) {
            _exit(71);
        }
        close(file);
        work();
        _exit(72);
    }
    if (process_ < 0) {
        std::perror("a process for rounds");
        std::exit(2);
    }
}

Job::~Job() {
    if (!ended_) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
}

bool Job::runs() {
    if (ended_) {
        return false;
    }
    if (waitpid(process_, &status_, WNOHANG) == process_) {
        ended_ = true;
        return false;
    }
    const auto now = std::chrono::steady_clock::now();
    if (progress_.rounds != rounds_) {
        rounds_ = progress_.rounds;
        seen_ = now;
    } else if (now - seen_ > kLongestSilence) {
        hung_ = true;
        kill(process_, SIGKILL);
        waitpid(process_, &status_, 0);
        ended_ = true;
    }
    return !ended_;
}

std::string Job::wrong() const {
    if (hung_) {
        return "it did not end in " + std::to_string(kLongestSilence.count()) + " s";
    }
    if (progress_.wrong[0] != 0) {
        return progress_.wrong;
    }
    if (WIFEXITED(status_) && WEXITSTATUS(status_) == 0) {
        return "";
    }
    const std::string how =
        WIFSIGNALED(status_)
            ? std::string("the process ended by ") + strsignal(WTERMSIG(status_))
            : "the process ended with status " + std::to_string(WEXITSTATUS(status_));
    return how + lastLines();
}

/// What the sanitizers said, or the last lines.
std::string Job::lastLines() const {
    constexpr size_t kMost = 16;
    std::ifstream file(log_);
    std::string said;
    size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        if (saysWhy(line) && count++ < kMost) {
            said += "\n" + line;
        }
    }
    return said;
}

} // namespace campaigns
