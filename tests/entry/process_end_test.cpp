// In whatever way the process ends, the bridge causes no failure: the exit code is the program's
// own, and the listener's destructor writes its lines.
#include "harness/log_recorder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Ended {
    std::string how; ///< "exit 37", "signal 6"
    std::string output;
    std::vector<std::string> trace; ///< "level word|function|message"
};

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The part of a log line after its task.
std::string traceOf(const std::string& text) {
    dtv::LogLine line = {2, 5, "", 0, "", text.c_str()};
    harness::TraceLine parsed = harness::parseTrace(line);
    return parsed.level + "|" + parsed.function + "|" + parsed.message;
}

/// Becomes the child, with these arguments; on another architecture than the machine's through its
/// emulator.
[[noreturn]] void execute(std::initializer_list<const char*> arguments) {
    std::vector<std::string> words;
    std::istringstream command(PROCESS_END_COMMAND);
    for (std::string word; std::getline(command, word, '|');) {
        if (!word.empty()) {
            words.push_back(word);
        }
    }
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> line;
    for (std::string& word : words) {
        line.push_back(word.data());
    }
    line.push_back(nullptr);
    execvp(line[0], line.data());
    std::_Exit(2);
}

Ended run(const char* load, const char* events, const char* end) {
    char folder[] = "/tmp/process_end_XXXXXX";
    EXPECT_NE(mkdtemp(folder), nullptr);
    std::string log = std::string(folder) + "/log";
    std::string output = std::string(folder) + "/output";
    pid_t child = fork();
    if (child == 0) {
        setenv("DTV_LOG_FILE", log.c_str(), 1);
        setenv("DTV_LOG_MASK", "0xffff", 1);
        setenv("DTV_TEST_VM_OPTIONS", "-Djava.class.path=" PROCESS_END_CLASS_PATH, 1);
        if (std::freopen(output.c_str(), "w", stdout) == nullptr || dup2(1, 2) < 0) {
            std::_Exit(2);
        }
        execute({load, events, end});
    }
    Ended ended;
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    ended.how = WIFEXITED(status) ? "exit " + std::to_string(WEXITSTATUS(status))
                                  : "signal " + std::to_string(WTERMSIG(status));
    ended.output = contents(output);
    std::istringstream lines(contents(log));
    for (std::string line; std::getline(lines, line);) {
        ended.trace.push_back(traceOf(line));
    }
    std::remove(log.c_str());
    std::remove(output.c_str());
    rmdir(folder);
    return ended;
}

/// What was written after the load and the events.
std::vector<std::string> lastLines(const std::vector<std::string>& trace) {
    size_t begin = 0;
    for (size_t i = 0; i < trace.size(); ++i) {
        if (trace[i] == "FUNCEND  |JNI_OnLoad|" || trace[i] == "FUNCEND  |recvEventFromServer|") {
            begin = i + 1;
        }
    }
    return {trace.begin() + static_cast<std::ptrdiff_t>(begin), trace.end()};
}

const char* const start = "FUNCSTART|getJNIEnv|";
const char* const found = "INFO     |getJNIEnv|Got JNIEnv! threadid=<tid> env=<ptr>";
const char* const known =
    "INFO     |getJNIEnv|JNIEnv already got! index=0 threadid=<tid> env=<ptr> ";
const char* const attached = "INFO     |getJNIEnv|GetEnv Failed but JNIEnv Attached!";
const char* const attached_1 =
    "INFO     |getJNIEnv|JNIEnv Attached! index=1 threadid=<tid> env=<ptr>";
const char* const refused = "ERROR    |getJNIEnv|AttachCurrentThread error!";
const char* const refused_1 = "ERROR    |getJNIEnv|AttachCurrentThread() error! index=1";
const char* const free_start = "FUNCSTART|freeJNIEnv|";
const char* const free_0 = "DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=0";
const char* const free_1 = "DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=1";
const char* const free_end = "FUNCEND  |freeJNIEnv|";

struct Way {
    const char* name;
    const char* load;
    const char* events;
    const char* end;
    std::vector<const char*> lines; ///< of the listener's destructor
};

class ProcessEnd : public testing::TestWithParam<Way> {};

TEST_P(ProcessEnd, IsQuiet) {
    const Way& way = GetParam();
    Ended ended = run(way.load, way.events, way.end);
    EXPECT_EQ(ended.how, "exit 37");
    EXPECT_EQ(ended.output.find("fatal error"), std::string::npos);
    std::vector<std::string> lines = lastLines(ended.trace);
    bool same = lines.size() == way.lines.size();
    for (size_t i = 0; same && i < lines.size(); ++i) {
        same = harness::matches(way.lines[i], lines[i]);
    }
    EXPECT_TRUE(same);
    if (HasFailure()) {
        std::printf("%s", ended.output.c_str());
        for (const std::string& line : lines) {
            std::printf("  %s\n", line.c_str());
        }
    }
}

const Way ways[] = {
    {"ReturnBehindTheVm", "loaded", "none", "destroy", {start, refused, free_start, free_end}},
    {"ReturnBehindTheVmWithEventsOnMain",
     "loaded",
     "main",
     "destroy",
     {start, known, free_start, free_0, free_end}},
    {"ReturnBehindTheVmWithEventsOnAForeignThread",
     "loaded",
     "foreign",
     "destroy",
     {start, refused_1, free_start, free_1, free_end}},
    {"ReturnBehindTheVmWithEventsPosted",
     "loaded",
     "posted",
     "destroy",
     {start, refused_1, free_start, free_0, free_end}},
    {"ExitBehindTheVm",
     "loaded",
     "main",
     "destroy-and-exit",
     {start, known, free_start, free_0, free_end}},
    {"ReturnWithTheVm", "loaded", "none", "return", {start, found, free_start, free_0, free_end}},
    {"ReturnWithTheVmAndEventsPosted",
     "loaded",
     "posted",
     "return",
     {start, attached_1, free_start, free_0, free_1, free_end}},
    {"ExitWithTheVm", "loaded", "none", "exit", {start, found, free_start, free_0, free_end}},
    {"ExitWithTheVmAndEventsOnMain",
     "loaded",
     "main",
     "exit",
     {start, known, free_start, free_0, free_end}},
    {"ExitWithTheVmAndEventsOnAForeignThread",
     "loaded",
     "foreign",
     "exit",
     {start, attached_1, free_start, free_1, free_1, free_end}},
    {"ExitOnTheEventsThread",
     "loaded",
     "foreign",
     "exit-on-foreign",
     {start, known, free_start, free_1, free_end}},
    {"ExitOnAThreadThatNobodyKnows",
     "loaded",
     "none",
     "exit-on-unknown",
     {start, attached, free_start, free_1, free_end}},
    {"ExitOnAThreadThatNobodyKnowsWithEvents",
     "loaded",
     "main",
     "exit-on-unknown",
     {start, attached_1, free_start, free_0, free_1, free_end}},
    {"SystemExit", "loaded", "none", "system-exit", {start, refused, free_start, free_end}},
    {"SystemExitWithEventsOnMain",
     "loaded",
     "main",
     "system-exit",
     {start, refused_1, free_start, free_0, free_end}},
    {"SystemExitWithEventsPosted",
     "loaded",
     "posted",
     "system-exit",
     {start, refused_1, free_start, free_0, free_end}},
    {"SystemExitOnTheEventsThread",
     "loaded",
     "foreign",
     "system-exit-on-foreign",
     {start, refused_1, free_start, free_1, free_end}},
    {"ExitAfterARefusedLoad", "refused", "none", "exit", {}},
    {"SystemExitAfterARefusedLoad", "refused", "none", "system-exit", {}},
    {"ReturnBehindTheVmAfterARefusedLoad", "refused", "none", "destroy", {}},
};
INSTANTIATE_TEST_SUITE_P(Ways, ProcessEnd, testing::ValuesIn(ways),
                         [](const auto& test) { return test.param.name; });

/// Ends whose last lines depend on what the other threads were doing.
class BusyProcessEnd : public testing::TestWithParam<Way> {};

TEST_P(BusyProcessEnd, HasItsExitCode) {
    const Way& way = GetParam();
    for (int i = 0; i < 2; ++i) {
        Ended ended = run(way.load, way.events, way.end);
        EXPECT_EQ(ended.how, "exit 37") << ended.output;
        EXPECT_EQ(ended.output.find("fatal error"), std::string::npos) << ended.output;
    }
}

const Way busyWays[] = {
    {"Exit", "loaded", "flood", "exit", {}},
    {"Return", "loaded", "flood", "return", {}},
    {"ExitOnAThreadThatNobodyKnows", "loaded", "flood", "exit-on-unknown", {}},
    {"SystemExit", "loaded", "flood", "system-exit", {}},
    {"ExitWithEventsEverywhere", "loaded", "everywhere", "exit", {}},
    {"SystemExitWithEventsEverywhere", "loaded", "everywhere", "system-exit", {}},
    {"DestroyWithEventsEverywhere", "loaded", "everywhere", "destroy", {}},
    {"SystemExitInACallback", "loaded", "main", "system-exit-in-callback", {}},
    {"SystemExitInACallbackOfAPlatformThread",
     "loaded",
     "posted",
     "system-exit-in-posted-callback",
     {}},
};
INSTANTIATE_TEST_SUITE_P(Ways, BusyProcessEnd, testing::ValuesIn(busyWays),
                         [](const auto& test) { return test.param.name; });

TEST(ProcessEndOutput, OneCopyOfTheErrorLineWhenTheVmHasGone) {
    Ended ended = run("loaded", "none", "destroy");
    EXPECT_EQ(ended.how, "exit 37");
    size_t at = ended.output.find("JNIDtvSvLibListener(");
    ASSERT_NE(at, std::string::npos) << ended.output;
    std::string copy = ended.output.substr(at);
    EXPECT_EQ(copy.substr(copy.find("):<") + 2, 40), "<process_end_chi>ERROR     [getJNIEnv():")
        << copy;
    EXPECT_EQ(copy.substr(copy.find("] ")), "] AttachCurrentThread error!\n");
}

} // namespace
