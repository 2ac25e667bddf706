// Sinks of the log that are replaced, and the name of the task.
#include "harness/harness.h"

#include "dtv/exchange.h"

#include <DtvSvCom.h>

#include <pthread.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

class CallingSink : public dtv::LogSink {
public:
    CallingSink(std::function<void(const dtv::LogLine&)> body, std::function<void()> end)
        : body_(std::move(body)), end_(std::move(end)) {}
    ~CallingSink() override {
        if (end_) {
            end_();
        }
    }
    void write(const dtv::LogLine& line) override { body_(line); }

private:
    std::function<void(const dtv::LogLine&)> body_;
    std::function<void()> end_;
};

class LogSinks : public testing::Test {
protected:
    ~LogSinks() override { dtv::setLogSink(nullptr); }
    static void set(std::function<void(const dtv::LogLine&)> body,
                    std::function<void()> end = nullptr) {
        dtv::setLogSink(std::make_shared<CallingSink>(std::move(body), std::move(end)));
    }
};

TEST_F(LogSinks, GetEveryLineOfFourThreadsWhileTheyAreReplaced) {
    constexpr int kThreads = 4;
    std::atomic<int> lines{0};
    std::atomic<int> sinks{0};
    const auto add = [&] {
        ++sinks;
        const auto alive = std::make_shared<std::atomic<bool>>(true);
        set(
            [&lines, alive](const dtv::LogLine& line) {
                EXPECT_EQ(std::string(line.text).substr(0, 5), "line ");
                EXPECT_TRUE(*alive) << "used after its end";
                ++lines;
            },
            [&sinks, alive] {
                *alive = false;
                --sinks;
            });
    };
    add();
    std::atomic<int> written{0};
    std::atomic<bool> done{false};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&] {
            for (int number = 0; !done; ++number) {
                DtvSvCom_Log(2, 6, "module", 2, "line %d", number);
                ++written;
            }
        });
    }
    for (int round = 0; round < 500; ++round) {
        const int before = lines;
        add();
        while (lines == before) {
            std::this_thread::yield();
        }
    }
    done = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(lines, written);
    EXPECT_EQ(sinks, 1) << "the old ones are gone";
    dtv::setLogSink(nullptr);
    EXPECT_EQ(sinks, 0);
}

TEST_F(LogSinks, MayReplaceThemselves) {
    std::vector<std::string> texts;
    bool gone = false;
    set(
        [&](const dtv::LogLine& line) {
            texts.push_back(std::string("old: ") + line.text);
            set([&](const dtv::LogLine& next) {
                texts.push_back(std::string("new: ") + next.text);
            });
            EXPECT_FALSE(gone) << "destroyed while it is used";
        },
        [&] { gone = true; });
    DtvSvCom_Log(2, 6, "module", 2, "first");
    EXPECT_TRUE(gone);
    DtvSvCom_Log(2, 6, "module", 2, "second");
    EXPECT_EQ(texts, (std::vector<std::string>{"old: first", "new: second"}));
}

TEST_F(LogSinks, MayWriteLinesWhenTheyEnd) {
    std::vector<std::string> texts;
    set([](const dtv::LogLine&) {}, [] { DtvSvCom_Log(2, 6, "module", 2, "the end"); });
    set([&](const dtv::LogLine& line) { texts.emplace_back(line.text); });
    EXPECT_EQ(texts, std::vector<std::string>{"the end"});
}

TEST_F(LogSinks, GetTheFieldsAsTheyWereHandedOver) {
    const char* const module = "a module";
    const char* const format = "%.3s %d";
    bool written = false;
    set([&](const dtv::LogLine& line) {
        EXPECT_EQ(line.category, -3);
        EXPECT_EQ(line.kind, 6);
        EXPECT_EQ(line.module, module);
        EXPECT_EQ(line.level_mask, 2u);
        EXPECT_EQ(line.format, format);
        EXPECT_STREQ(line.text, "abc 5");
        written = true;
    });
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    DtvSvCom_Log(-3, 6, module, 2, format, "abcdef", 5);
#pragma GCC diagnostic pop
    EXPECT_TRUE(written);
}

/// Waits until the name of the calling task is `name`.
bool becomes(const std::string& name) {
    const steady_clock::time_point limit = steady_clock::now() + seconds(20);
    while (DtvSvCom_GetMyTaskName() != name) {
        if (steady_clock::now() > limit) {
            return false;
        }
    }
    return true;
}

TEST(TaskName, FollowsARename) {
    std::thread task([] {
        for (const char* name : {"one", "", "a name of 15 byt", "two"}) {
            const std::string expected = std::string(name).substr(0, 15);
            pthread_setname_np(pthread_self(), expected.c_str());
            EXPECT_TRUE(becomes(expected)) << DtvSvCom_GetMyTaskName();
        }
    });
    task.join();
}

TEST(TaskName, FollowsARenameByAnotherThread) {
    std::atomic<bool> started{false};
    std::thread task([&] {
        EXPECT_TRUE(becomes("before"));
        started = true;
        EXPECT_TRUE(becomes("after"));
    });
    pthread_setname_np(task.native_handle(), "before");
    while (!started) {
        std::this_thread::yield();
    }
    pthread_setname_np(task.native_handle(), "after");
    task.join();
}

TEST(TaskName, IsThatOfTheThreadThatAsks) {
    std::vector<std::thread> tasks;
    for (int number = 0; number < 4; ++number) {
        tasks.emplace_back([number] {
            const std::string name = "task " + std::to_string(number);
            pthread_setname_np(pthread_self(), name.c_str());
            for (int i = 0; i < 10000; ++i) {
                EXPECT_EQ(DtvSvCom_GetMyTaskName(), name) << "it asks for the first time";
            }
        });
    }
    for (std::thread& task : tasks) {
        task.join();
    }
}

} // namespace
