// Round trips from Java to the simulated service and back, on eight threads that send and twenty
// that deliver. They take place in a process of their own, so that one that crashes becomes a
// finding.
#include "rounds/run.h"
#include "soak/child.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace {

/// Set in the process in which the round trips take place.
constexpr const char* kInside = "DTV_SOAK_INSIDE";
/// Seconds that a run may take beyond those it was given, and a run that was given none.
constexpr double kGrace = 110;
constexpr double kLongest = 4 * 3600;
/// Bytes of the output of a process that crashed that a finding has.
constexpr size_t kShown = 4000;

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The name in the last line "round NAME".
std::string lastRound(const std::string& output) {
    std::istringstream lines(output);
    std::string name = "open";
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("round ", 0) == 0) {
            name = line.substr(6);
        }
    }
    return name;
}

/// What is of use in the output of a process that crashed: from the first line of a report on.
std::string reportIn(const std::string& output) {
    size_t begin = output.size();
    for (const char* mark : {"WARNING: ThreadSanitizer", "# A fatal error", "FATAL", "terminate"}) {
        begin = std::min(begin, output.find(mark));
    }
    if (begin == output.size()) {
        begin = output.size() > kShown ? output.size() - kShown : 0;
    }
    return output.substr(begin, kShown);
}

/// Waits for the process, and kills it when it takes longer. False when it was killed.
bool waitFor(pid_t child, double seconds, int& status) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (Clock::now() >= end) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

/// Becomes the process in which the round trips take place; it writes to this file.
[[noreturn]] void becomeInside(char** argv, const char* output) {
    const int file = open(output, O_WRONLY | O_TRUNC);
    if (file < 0 || dup2(file, 1) < 0 || dup2(file, 2) < 0) {
        std::_Exit(2);
    }
    close(file);
    setenv(kInside, "1", 1);
    setenv("TSAN_OPTIONS",
           "handle_segv=0:ignore_noninstrumented_modules=1:halt_on_error=1:exitcode=66:"
           "suppressions=" SOAK_SUPPRESSIONS,
           1);
    execv("/proc/self/exe", argv);
    std::_Exit(2);
}

} // namespace

int main(int argc, char** argv) {
    campaigns::Run run(argc, argv);
    if (std::getenv(kInside) != nullptr) {
        return soak::playStages(run);
    }
    char path[] = "/tmp/campaign_soak_XXXXXX";
    const int made = mkstemp(path);
    if (made < 0) {
        std::perror("soak: /tmp");
        return 2;
    }
    close(made);
    const pid_t child = fork();
    if (child < 0) {
        std::perror("soak");
        return 2;
    }
    if (child == 0) {
        becomeInside(argv, path);
    }
    int status = 0;
    const bool in_time =
        waitFor(child, run.seconds() > 0 ? run.seconds() * 1.2 + kGrace : kLongest, status);
    const std::string output = contents(path);
    std::remove(path);
    std::fputs(output.c_str(), stdout);
    if (in_time && WIFEXITED(status) && WEXITSTATUS(status) <= 2) {
        return WEXITSTATUS(status); // its report is written
    }
    std::string how = "did not end in time";
    if (in_time) {
        how = WIFEXITED(status) ? "ended with status " + std::to_string(WEXITSTATUS(status))
                                : std::string("ended by ") + strsignal(WTERMSIG(status));
    }
    run.played(lastRound(output), how + "\n" + reportIn(output));
    return run.end();
}
