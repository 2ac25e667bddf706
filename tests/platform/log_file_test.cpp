// The log file: every line that was handed over is in it, whole, and no other.
#include "platform/log_child.h"

#include "dtv/exchange.h"

#include <sys/mman.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <new>

namespace {

using namespace platform;

/// Sorts lines of lineOf() by their writers and expects that each wrote its numbers in order.
/// Returns how many lines each writer has.
std::vector<int> countByWriter(const std::vector<std::string>& lines, int writers) {
    std::vector<int> counts(static_cast<size_t>(writers));
    for (const std::string& line : lines) {
        const size_t writer = static_cast<size_t>(std::atoi(line.c_str()));
        if (writer >= counts.size()) {
            ADD_FAILURE() << "line of no writer: " << line;
            return counts;
        }
        EXPECT_EQ(line, lineOf(static_cast<int>(writer), counts[writer]));
        ++counts[writer];
    }
    return counts;
}

/// What a process that is killed has written, as it says itself.
struct Written {
    static constexpr int kThreads = 4;
    std::atomic<int> lines[kThreads];
};

TEST_F(LogFileTest, HasEveryLineOfAProcessThatWasKilled) {
    void* const memory =
        mmap(nullptr, sizeof(Written), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    for (int round = 0; round < 5; ++round) {
        std::remove(path.c_str());
        Written& written = *new (memory) Written{};
        const pid_t process = start([&] {
            onThreads(Written::kThreads, [&](int thread) {
                for (int number = 0;; ++number) {
                    writeLineOf(thread, number);
                    written.lines[thread].store(number + 1);
                }
            });
        });
        for (const std::atomic<int>& count : written.lines) {
            for (int waited = 0; count < 500 && waited < 20000; ++waited) {
                usleep(1000);
            }
        }
        kill(process, SIGKILL);
        const int status = statusOf(process);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;

        std::vector<std::string> all = lines();
        ASSERT_FALSE(all.empty());
        // The line that was being written at that moment may end early: it is the last one.
        const std::string last = all.back();
        const auto writer = std::atoi(last.c_str());
        all.pop_back();
        std::vector<int> counts = countByWriter(all, Written::kThreads);
        ASSERT_LT(static_cast<size_t>(writer), counts.size());
        int& count = counts[static_cast<size_t>(writer)];
        if (last == lineOf(writer, count)) {
            ++count;
        }
        for (size_t thread = 0; thread < counts.size(); ++thread) {
            EXPECT_GE(counts[thread], 500);
            // One more may have been written before the thread could say so.
            EXPECT_GE(counts[thread], written.lines[thread]);
            EXPECT_LE(counts[thread], written.lines[thread] + 1);
        }
    }
    munmap(memory, sizeof(Written));
}

TEST_F(LogFileTest, TakesTheLinesOfSeveralProcesses) {
    constexpr int kProcesses = 3;
    constexpr int kThreads = 2;
    constexpr int kLines = 1000;
    std::vector<pid_t> processes;
    for (int process = 0; process < kProcesses; ++process) {
        processes.push_back(start([process] {
            onThreads(kThreads, [process](int thread) {
                for (int number = 0; number < kLines; ++number) {
                    writeLineOf(process * kThreads + thread, number);
                }
            });
        }));
    }
    for (const pid_t process : processes) {
        EXPECT_EQ(statusOf(process), 0);
    }
    EXPECT_EQ(countByWriter(lines(), kProcesses * kThreads),
              std::vector<int>(kProcesses * kThreads, kLines));
}

TEST_F(LogFileTest, IsContinuedByTheNextProcess) {
    for (const int writer : {0, 1}) {
        EXPECT_EQ(statusOf(start([writer] { writeLineOf(writer, 0); })), 0);
    }
    EXPECT_EQ(lines(), (std::vector<std::string>{lineOf(0, 0), lineOf(1, 0)}));
}

TEST_F(LogFileTest, HasLinesOfEveryLengthAndConversion) {
    const std::vector<size_t> lengths = {0, 1, 1022, 1023, 1024, 1025, 4096, 100000};
    EXPECT_EQ(
        statusOf(start([&] {
            for (const size_t length : lengths) {
                DtvSvCom_Log(2, 5, "module", 2, "%s", std::string(length, 'y').c_str());
                DtvSvCom_Log(2, 5, "module", 2, "%.1f%s", 0.5, std::string(length, 'y').c_str());
            }
            DtvSvCom_Log(2, 5, "module", 2, "%.3s|%05d|%lld|%X", "abcdef", -7, 1ll << 40, 0xabcu);
        })),
        0);
    std::vector<std::string> expected;
    for (const size_t length : lengths) {
        expected.emplace_back(length, 'y');
        expected.push_back("0.5" + std::string(length, 'y'));
    }
    expected.emplace_back("abc|-0007|1099511627776|ABC");
    EXPECT_EQ(lines(), expected);
}

TEST_F(LogFileTest, HasNoLineThatIsFilteredOut) {
    EXPECT_EQ(statusOf(start([] {
                  setenv("DTV_LOG_MASK", "512", 1);
                  DtvSvCom_Log(2, 5, "module", 1024, "filtered before the log was there");
                  DtvSvCom_Log(2, 5, "module", 512, "first");
                  dtv::setLogLevelMask(~0ul);
                  DtvSvCom_Log(2, 5, "module", 1, "second");
                  dtv::setLogLevelMask(0);
                  DtvSvCom_Log(2, 5, "module", ~0ul, "filtered");
              })),
              0);
    EXPECT_EQ(lines(), (std::vector<std::string>{"first", "second"}));
}

TEST_F(LogFileTest, HasALevelMaskBeforeTheFirstLine) {
    EXPECT_EQ(statusOf(start([] {
                  dtv::setLogLevelMask(512);
                  DtvSvCom_Log(2, 5, "module", 1024, "filtered");
                  DtvSvCom_Log(2, 5, "module", 512, "first");
              })),
              0);
    EXPECT_EQ(lines(), std::vector<std::string>{"first"});
}

/// Counts lines. None may come once it has been destroyed.
class CountingSink : public dtv::LogSink {
public:
    explicit CountingSink(std::atomic<int>& total) : total_(total) {}
    ~CountingSink() override { alive_ = false; }
    void write(const dtv::LogLine&) override {
        EXPECT_TRUE(alive_);
        ++total_;
        EXPECT_TRUE(alive_) << "destroyed while it is used";
    }

private:
    std::atomic<bool> alive_{true};
    std::atomic<int>& total_;
};

/// Counts of a process, as it says itself.
struct Shares {
    std::atomic<int> written{0};
    std::atomic<int> in_sinks{0};
};

/// Replaces the sink, each time after it has got a line.
void replaceSinks(Shares& shares) {
    for (int round = 0; round < 100; ++round) {
        for (int sink = 0; sink < 2; ++sink) {
            const int before = shares.in_sinks;
            dtv::setLogSink(std::make_shared<CountingSink>(shares.in_sinks));
            while (shares.in_sinks == before) {
                std::this_thread::yield();
            }
        }
        dtv::setLogSink(nullptr);
    }
}

TEST_F(LogFileTest, SharesTheLinesWithSinksThatComeAndGo) {
    void* const memory =
        mmap(nullptr, sizeof(Shares), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    Shares& shares = *new (memory) Shares;
    EXPECT_EQ(statusOf(start([&] {
                  std::atomic<bool> done{false};
                  std::thread replacer([&] {
                      replaceSinks(shares);
                      done = true;
                  });
                  onThreads(4, [&](int thread) {
                      for (int number = 0; !done || number < 1000; ++number) {
                          DtvSvCom_Log(2, 5, "module", 2, "%d %d", thread, number);
                          ++shares.written;
                      }
                  });
                  replacer.join();
              })),
              0);
    EXPECT_EQ(lines().size() + static_cast<size_t>(shares.in_sinks),
              static_cast<size_t>(shares.written));
    munmap(memory, sizeof(Shares));
}

} // namespace
