// What of two traces is compared.
#include "desk/show/trace_compare.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using show::comparableLine;
using show::TraceComparison;

TraceComparison compare(const std::string& first, const std::string& second) {
    std::istringstream files[] = {std::istringstream(first), std::istringstream(second)};
    return show::compareTraces(files[0], files[1]);
}

TEST(TraceCompare, LeavesOutProcessesThreadsAndAddresses) {
    EXPECT_EQ(comparableLine(",T,desk,DEBUG    ,JNI_OnLoad(),  67,pid = 3109, threadid = a1dfe6c0"),
              ",T,desk,DEBUG    ,JNI_OnLoad(),  67,pid = NUMBER, threadid = NUMBER");
    EXPECT_EQ(comparableLine("tid=12 env = 0x7f00, cls= (nil), clazz =0x0"),
              "tid=NUMBER env = ADDRESS, cls= ADDRESS, clazz =ADDRESS");
    EXPECT_EQ(comparableLine("Listener( 3109):<VM Thread>ERROR     [f():  80] x"),
              "Listener(PID):<VM Thread>ERROR     [f():  80] x");
}

TEST(TraceCompare, KeepsEverythingElse) {
    for (const char* line :
         {"", "handle = 3", "valid = 7", "grid=5", "my_env = 0x12", "env  = 0x12", "env = 12",
          "env = 0x", "pid = 12x", "pid = ", "pid", "(12):", "( ):<", "tid == 5",
          "size = 0x12, ret = (nil)", "\xff\x80 pid", "env = 0X12", "pid = A1"}) {
        EXPECT_EQ(comparableLine(line), line);
    }
}

TEST(TraceCompare, IgnoresSourceLinesWhenRequested) {
    const show::TraceCompareOptions options{true};
    EXPECT_EQ(comparableLine(",T,desk,FUNCSTART,JNI_OnLoad(),  66,", options),
              ",T,desk,FUNCSTART,JNI_OnLoad(),LINE,");
    EXPECT_EQ(comparableLine("L(1):<a>ERROR     [f():  80] 81", options),
              "L(PID):<a>ERROR     [f():LINE] 81");
    EXPECT_EQ(comparableLine("f(), 66", options), "f(), 66");
    EXPECT_EQ(comparableLine("f(), x,", options), "f(), x,");
}

TEST(TraceCompare, FindsTheFirstDifference) {
    const TraceComparison same = compare("a\npid = 1\n", "a\npid = 2\n");
    EXPECT_FALSE(same.difference);
    EXPECT_EQ(same.same_lines, 2u);

    const TraceComparison other = compare("a\npid = 1\nb\n", "a\npid = 2\nc\n");
    ASSERT_TRUE(other.difference);
    EXPECT_EQ(other.same_lines, 2u);
    EXPECT_EQ(other.difference->line, 3u);
    EXPECT_EQ(other.difference->first, "b");
    EXPECT_EQ(other.difference->second, "c");
}

TEST(TraceCompare, FindsThatOneTraceIsShorter) {
    const TraceComparison shorter = compare("a\n", "a\nb\n");
    ASSERT_TRUE(shorter.difference);
    EXPECT_EQ(shorter.difference->line, 2u);
    EXPECT_EQ(shorter.difference->first, std::nullopt);
    EXPECT_EQ(shorter.difference->second, "b");
    EXPECT_TRUE(compare("a\nb\n", "a\n").difference);

    const TraceComparison cut = compare("a\nb\n", "a\nb");
    ASSERT_TRUE(cut.difference);
    EXPECT_EQ(cut.difference->second, "b (the file ends within this line)");
    EXPECT_FALSE(compare("", "").difference);
}

} // namespace
