#include "records/watch.h"

#include "records/player.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace hostile {
namespace {

/// A record takes microseconds, the start of a VM a second.
constexpr std::chrono::seconds kLongestSilence{60};

bool saysWhy(const std::string& line) {
    for (const char* const part :
         {"ERROR: ", "runtime error:", "SUMMARY: ", "    #", "error", "Cannot"}) {
        if (line.find(part) != std::string::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

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
        std::perror("a process for records");
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
    if (progress_.records != records_) {
        records_ = progress_.records;
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

void Totals::add(const Progress& progress) {
    records += progress.records;
    delivered += progress.delivered;
    traced += progress.traced;
    seconds += static_cast<double>(progress.played) / 1e9;
    addEdges(progress.edges, progress.edge_count);
}

void Totals::add(const Totals& others) {
    records += others.records;
    delivered += others.delivered;
    traced += others.traced;
    seconds += others.seconds;
    addEdges(others.edges.data(), others.edges.size());
}

void Totals::addEdges(const uint8_t* taken, size_t count) {
    edges.resize(std::max(edges.size(), count));
    edge_count = edges.size();
    for (size_t i = 0; i < count; ++i) {
        edges[i] |= taken[i];
    }
}

size_t Totals::edgesTaken() const {
    return static_cast<size_t>(
        std::count_if(edges.begin(), edges.end(), [](uint8_t taken) { return taken != 0; }));
}

} // namespace hostile
