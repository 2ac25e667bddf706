#include "rounds/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace campaigns {
namespace {

using testing::ExitedWithCode;

/// A run as if the program had been started with these arguments.
Run runWith(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "build/campaigns/torture/campaign_torture");
    std::vector<char*> words;
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    return Run(static_cast<int>(words.size()), words.data());
}

std::string textOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

class RunTest : public testing::Test {
protected:
    void TearDown() override { std::remove(report.c_str()); }
    std::string report = testing::TempDir() + "run_test_report.json";
};

TEST_F(RunTest, TakesItsOptions) {
    auto run = runWith(
        {"--seed", "18446744073709551615", "--seconds", "2.5", "--jobs", "3", "--repeat", "a/b"});
    EXPECT_EQ(run.seed(), 18446744073709551615U);
    EXPECT_EQ(run.seconds(), 2.5);
    EXPECT_EQ(run.jobs(), 3);
    EXPECT_EQ(run.repeated(), "a/b");
    EXPECT_TRUE(run.wants("a/b"));
    EXPECT_FALSE(run.wants("a"));
}

TEST_F(RunTest, PlaysAllRoundsWhenNoTimeIsGiven) {
    auto run = runWith({});
    EXPECT_EQ(run.seed(), 1U);
    EXPECT_EQ(run.jobs(), 1);
    EXPECT_TRUE(run.hasTime());
    EXPECT_TRUE(run.wants("any"));
}

TEST_F(RunTest, EndsWithItsTime) {
    auto run = runWith({"--seconds", "0.01"});
    while (run.elapsed() < 0.01) {
    }
    EXPECT_FALSE(run.hasTime());
    EXPECT_FALSE(run.wants("any"));
}

TEST_F(RunTest, RefusesWrongOptions) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> wrong = {
        {{"--seed"}, "torture: --seed needs a value, or is unknown"},
        {{"--seed", "-1"}, "torture: --seed -1: it is a number, 0 or more"},
        {{"--seed", "18446744073709551616"}, "it is a number, 0 or more"},
        {{"--seconds", "x"}, "torture: --seconds x: it is a number, 0 or more"},
        {{"--seconds", ""}, "it is a number, 0 or more"},
        {{"--jobs", "2x"}, "torture: --jobs 2x: it is a number, 0 or more"},
        {{"--what", "1"}, "torture: unknown option --what"},
    };
    for (const auto& [arguments, text] : wrong) {
        EXPECT_EXIT(runWith(arguments), ExitedWithCode(2), text);
    }
}

TEST_F(RunTest, ReportsWhatWasPlayed) {
    auto run = runWith({"--report", report});
    run.played("a", "");
    run.played("b", "it was \"3\"\nand 4");
    run.played(3000000000U);
    run.note("speed", 12.5);
    run.note("natives", 65);
    run.note("machine", "a \"desk\"");
    run.note("speed", 13);
    run.leftOut("nothing of c");
    testing::internal::CaptureStdout();
    run.played("c", "wrong");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "c: wrong\n");
    EXPECT_EQ(run.findings(), 2);
    EXPECT_EQ(run.end(), 1);
    EXPECT_EQ(textOf(report), R"({
  "rounds": 3000000003,
  "notes": {
    "speed": 13,
    "natives": 65,
    "machine": "a \"desk\""
  },
  "findings": [{"round":"b","text":"it was \"3\"\nand 4"},{"round":"c","text":"wrong"}],
  "left_out": ["nothing of c"]
}
)");
}

TEST_F(RunTest, EndsWithoutFindings) {
    auto run = runWith({});
    run.played("a", "");
    EXPECT_EQ(run.end(), 0);
}

TEST_F(RunTest, SaysThatThereIsNoSuchRound) {
    EXPECT_EXIT(runWith({"--repeat", "a", "--seed", "7"}).end(), ExitedWithCode(2),
                "torture: --repeat a: seed 7 has no such round");
}

TEST_F(RunTest, SaysThatTheReportCannotBeWritten) {
    EXPECT_EXIT(runWith({"--report", "/dev/full"}).end(), ExitedWithCode(2), "No space left");
    EXPECT_EXIT(runWith({"--report", "/no/folder"}).end(), ExitedWithCode(2), "No such file");
}

TEST_F(RunTest, HasRandomNumbersOfItsSeed) {
    EXPECT_EQ(runWith({"--seed", "7"}).random("a")(), runWith({"--seed", "7"}).random("a")());
    EXPECT_NE(runWith({"--seed", "7"}).random("a")(), runWith({"--seed", "7"}).random("b")());
    EXPECT_NE(runWith({"--seed", "7"}).random("a")(), runWith({"--seed", "8"}).random("a")());
}

} // namespace
} // namespace campaigns
