// What stands before the text of a line, in each form that logcat writes.
#include "sessions/log/line_header.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using sessions::LineHeader;
using sessions::readHeader;

/// "form time pid tid priority tag|text", and what the form has not as "-".
std::string headerText(std::string_view line) {
    const LineHeader header = readHeader(line);
    std::string text = nameOf(header.form);
    text += header.time ? " " + std::to_string(header.time->nanoseconds) +
                              (header.time->has_year ? "y" : "")
                        : " -";
    text += header.pid >= 0 ? " " + std::to_string(header.pid) : " -";
    text += header.tid >= 0 ? " " + std::to_string(header.tid) : " -";
    text += header.priority != 0 ? std::string(" ") + header.priority : " -";
    return text + " " + std::string(header.tag) + "|" + std::string(header.text);
}

TEST(LineHeader, Brief) {
    EXPECT_EQ(headerText("I/Dtv_jni ( 1234): the text"), "brief - 1234 - I Dtv_jni|the text");
    EXPECT_EQ(headerText("E/JNIDtvSvLibListener(12345): "),
              "brief - 12345 - E JNIDtvSvLibListener|");
    EXPECT_EQ(headerText("I/Dtv_jni (10045: 1234): of a user"),
              "brief - 1234 - I Dtv_jni|of a user");
}

TEST(LineHeader, Process) {
    EXPECT_EQ(headerText("I( 1234) the text  (Dtv_jni)"), "process - 1234 - I Dtv_jni|the text");
    EXPECT_EQ(headerText("I( 1234) a text (in two)  (Dtv_jni )"),
              "process - 1234 - I Dtv_jni|a text (in two)");
    EXPECT_EQ(headerText("I( 1234) (no tag)"), "process - 1234 - I |(no tag)");
}

TEST(LineHeader, Tag) {
    EXPECT_EQ(headerText("I/Dtv_jni : the text"), "tag - - - I Dtv_jni|the text");
    EXPECT_EQ(headerText("W/a tag: a text: in two"), "tag - - - W a tag|a text: in two");
}

TEST(LineHeader, Thread) {
    EXPECT_EQ(headerText("I( 1234: 1250) the text"), "thread - 1234 1250 I |the text");
    EXPECT_EQ(headerText("I( 1234:0x4e2) the text"), "thread - 1234 1250 I |the text");
    EXPECT_EQ(headerText("I(10045: 1234: 1250) of a user"), "thread - 1234 1250 I |of a user");
}

TEST(LineHeader, Raw) {
    EXPECT_EQ(headerText("the text"), "raw - - - - |the text");
    EXPECT_EQ(headerText(""), "raw - - - - |");
    EXPECT_EQ(headerText(",TENRIK,desk    ,DEBUG    ,f(),   1,"),
              "raw - - - - |,TENRIK,desk    ,DEBUG    ,f(),   1,");
}

TEST(LineHeader, Time) {
    EXPECT_EQ(headerText("11-21 22:13:37.123 I/Dtv_jni ( 1234): the text"),
              "time 974844817123000000 1234 - I Dtv_jni|the text");
    EXPECT_EQ(headerText("11-21 22:13:37.123 I/Dtv_jni (10045: 1234): of a user"),
              "time 974844817123000000 1234 - I Dtv_jni|of a user");
    EXPECT_EQ(headerText("11-21 22:13:37.123 I/without a number: text"),
              "time 974844817123000000 - - I without a number|text");
}

TEST(LineHeader, ThreadTime) {
    EXPECT_EQ(headerText("11-21 22:13:37.123  1234  1250 I Dtv_jni : the text"),
              "threadtime 974844817123000000 1234 1250 I Dtv_jni|the text");
    EXPECT_EQ(headerText("11-21 22:13:37.123 10045  1234  1250 I Dtv_jni : of a user"),
              "threadtime 974844817123000000 1234 1250 I Dtv_jni|of a user");
    EXPECT_EQ(headerText("11-21 22:13:37.123 u0_a45  1234  1250 I Dtv_jni : of a user"),
              "threadtime 974844817123000000 1234 1250 I Dtv_jni|of a user");
    EXPECT_EQ(headerText("11-21 22:13:37.123 system  1234  1250 I Dtv_jni : of a user"),
              "threadtime 974844817123000000 1234 1250 I Dtv_jni|of a user");
}

TEST(LineHeader, Long) {
    EXPECT_EQ(headerText("[ 11-21 22:13:37.123  1234: 1250 I/Dtv_jni  ]"),
              "long 974844817123000000 1234 1250 I Dtv_jni|");
    EXPECT_EQ(headerText("[ 11-21 22:13:37.123 10045: 1234: 1250 I/Dtv_jni  ]"),
              "long 974844817123000000 1234 1250 I Dtv_jni|");
    EXPECT_EQ(headerText("[ 11-21 22:13:37.123 u0_a45: 1234: 1250 I/Dtv_jni  ]"),
              "long 974844817123000000 1234 1250 I Dtv_jni|");
    EXPECT_EQ(headerText("[ 11-21 22:13:37.123  1234:0x4e2 I/Dtv_jni  ]"),
              "long 974844817123000000 1234 1250 I Dtv_jni|");
    EXPECT_EQ(headerText("[ 11-21 22:13:37.123  1234: 1250 I/Dtv_jni  ] more"),
              "raw - - - - |[ 11-21 22:13:37.123  1234: 1250 I/Dtv_jni  ] more");
}

TEST(LineHeader, TimesOfEachPrecision) {
    const auto time = [](const std::string& time_text) {
        return headerText(time_text + "  1234  1250 I Dtv_jni : text");
    };
    const std::string rest = " 1234 1250 I Dtv_jni|text";
    EXPECT_EQ(time("2026-11-21 22:13:37.123"), "threadtime 1795299217123000000y" + rest);
    EXPECT_EQ(time("11-21 22:13:37.123456"), "threadtime 974844817123456000" + rest);
    EXPECT_EQ(time("11-21 22:13:37.123456789"), "threadtime 974844817123456789" + rest);
    EXPECT_EQ(time("11-21 22:13:37.123 +0900"), "threadtime 974844817123000000" + rest);
    EXPECT_EQ(time("2026-11-21 22:13:37.123456 -0330"), "threadtime 1795299217123456000y" + rest);
    EXPECT_EQ(time("         1795299217.123"), "threadtime 1795299217123000000y" + rest);
    EXPECT_EQ(time("  1234.567"), "threadtime 1234567000000y" + rest);
    EXPECT_EQ(time("02-29 00:00:00.000"), "threadtime 951782400000000000" + rest);
    EXPECT_EQ(time("1969-12-31 23:59:59.999"), "threadtime -1000000y" + rest);
}

TEST(LineHeader, NoTime) {
    for (const std::string time :
         {"13-21 22:13:37.123", "00-21 22:13:37.123", "11-32 22:13:37.123", "11-00 22:13:37.123",
          "11-21 24:13:37.123", "11-21 22:60:37.123", "11-21 22:13:61.123", "11-21 22:13:37",
          "11-21 22:13:37.", "11/21 22:13:37.123", "11-21T22:13:37.123", "10000-11-21 22:13:37.1",
          "99999999999.123", "9999999999.123", "0001-11-21 22:13:37.1", "9999-11-21 22:13:37.1",
          ".5"}) {
        const std::string line = time + "  1234  1250 I Dtv_jni : text";
        EXPECT_EQ(headerText(line), "raw - - - - |" + line);
    }
}

TEST(LineHeader, EveryPriority) {
    for (const char priority : std::string("VDIWEFSA")) {
        EXPECT_EQ(readHeader(std::string(1, priority) + "/tag( 1): ").priority, priority);
    }
    EXPECT_EQ(headerText("X/tag( 1): text"), "raw - - - - |X/tag( 1): text");
}

TEST(LineHeader, AlmostHeadersAreText) {
    for (const std::string line :
         {"I/", "I(", "I/tag", "I/tag(", "I/tag(12", "I/tag(12)", "I( 12", "I( 12:", "I( 12: 13",
          "[ 11-21 22:13:37.123", "[ 11-21 22:13:37.123  1: 2 I/t", "11-21", "11-21 22:13:37.123",
          "11-21 22:13:37.123 1 2", "11-21 22:13:37.123 1 2 I", "11-21 22:13:37.123 1 2 I tag", " ",
          "["}) {
        EXPECT_EQ(headerText(line), "raw - - - - |" + line);
    }
}

} // namespace
