// A process of its own that writes lines to a log file. The first line of a process opens the file,
// so the process is forked before this one writes a line.
#pragma once

#include "harness/harness.h"

#include <DtvSvCom.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace platform {

class LogFileTest : public testing::Test {
protected:
    LogFileTest() {
        if (mkdtemp(folder_.data()) == nullptr) {
            throw std::runtime_error("no folder for the test's log");
        }
        path = folder_ + "/log";
    }
    ~LogFileTest() override {
        std::remove(path.c_str());
        std::remove(folder_.c_str());
    }

    /// Starts a process that runs `body` with `path` as its log and every level let through. It
    /// ends with status 1 when an expectation of `body` has failed.
    pid_t start(const std::function<void()>& body) const {
        const pid_t process = fork();
        if (process == 0) {
            setenv("DTV_LOG_FILE", path.c_str(), 1);
            setenv("DTV_LOG_MASK", "0xffff", 1);
            body();
            std::fflush(stdout);
            _exit(testing::Test::HasFailure() ? 1 : 0);
        }
        EXPECT_GT(process, 0);
        return process;
    }

    /// The status that waitpid() gives.
    static int statusOf(pid_t process) {
        int status = -1;
        EXPECT_EQ(waitpid(process, &status, 0), process);
        return status;
    }

    /// The lines of the file. The last one is what follows the last newline, if there is any.
    std::vector<std::string> lines() const {
        std::ifstream stream(path, std::ios::binary);
        std::vector<std::string> all;
        for (std::string line; std::getline(stream, line);) {
            all.push_back(line);
        }
        return all;
    }

    std::string path;

private:
    std::string folder_ = testing::TempDir() + "/log_XXXXXX";
};

/// Runs `body` with the numbers from 0 on `count` threads and waits for their end.
inline void onThreads(int count, const std::function<void(int)>& body) {
    std::vector<std::thread> threads;
    for (int number = 0; number < count; ++number) {
        threads.emplace_back(body, number);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// The line with which a writer says what it has written: "WRITER NUMBER xxx", of a length that
/// depends on the number.
inline std::string lineOf(int writer, int number) {
    return std::to_string(writer) + " " + std::to_string(number) + " " +
           std::string(static_cast<size_t>(number % 200), 'x');
}

inline void writeLineOf(int writer, int number) {
    DtvSvCom_Log(2, 5, "module", 1024, "%d %d %s", writer, number,
                 std::string(static_cast<size_t>(number % 200), 'x').c_str());
}

} // namespace platform
