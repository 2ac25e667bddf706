// Whole reports.
#include "desk/explain/report_json.h"
#include "desk/explain/report_text.h"
#include "desk/explain/tests/short_log.h"

#include "desk/show/quoted_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace explain::tests {
namespace {

std::string textOf(const Explained& explained, const std::string& only = {}) {
    std::ostringstream out;
    writeText(out, explained, Selection{only});
    return out.str();
}

std::string jsonOf(const Explained& explained, const std::string& only = {}) {
    std::ostringstream out;
    writeJson(out, explained, Selection{only});
    return out.str();
}

std::string ndjsonOf(const Explained& explained) {
    std::ostringstream out;
    writeNdjson(out, explained);
    return out.str();
}

/// A session in which nothing fails.
std::unique_ptr<Explained> cleanLog() {
    return explain(logOf(opened() + "@1\n" + released()));
}

/// A reply that is missing, an argument that is refused, and a line that is cut.
std::unique_ptr<Explained> faultyLog() {
    return explain(logOf(opened() + R"(
        desk START dtvSvLibSelectChannel:129|hdl = 1
        desk START getRetCode:42|(param)ret = 5
        desk END getRetCode:64|
        desk DEBUG dtvSvLibSelectChannel:68|physical_channel is too large : 63, ret = 5
        @0.25
        desk START dtvSvLibControlLNA:129|hdl = 1
        desk DEBUG dtvSvLibControlLNA:110|SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1
        desk START getRetCode:42|(param)ret = 0
        desk END getRetCode:64|
        desk END dtvSvLibControlLNA:141|ret = 0
        @0.5
)" + released()));
}

TEST(Report, TextOfALogInWhichNothingFails) {
    EXPECT_EQ(textOf(*cleanLog()), R"(evening.log
42 lines, 42 of the bridge, 42 understood
form: threadtime, from 11-21 22:00:00.000 to 11-21 22:00:01.000

What it cannot tell
  - its times have no year

What happened
  the library was loaded at line 1
  session 1: opened at line 12, 1 command, 1 event, released at line 30

Nothing was found.

How long answers took
  command count      median        95 %     longest   line
  Create      1        0 us        0 us        0 us      8
  Release     1        0 us        0 us        0 us     26
)");
}

TEST(Report, TextOfFindings) {
    EXPECT_EQ(textOf(*faultyLog()), R"(evening.log
51 lines, 51 of the bridge, 51 understood
form: threadtime, from 11-21 22:00:00.000 to 11-21 22:00:00.500

What it cannot tell
  ! command-without-reply: a ControlLNA without its reply, or it never came
    (line 30)
  - its times have no year

What happened
  the library was loaded at line 1
  session 1: opened at line 12, 2 commands, 1 event, released at line 39

What was found: 2 causes
  1 error no-reply: ControlLNA, session 1, on desk
    line 30
    SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1
    written by dtvSvLibControlLNA():110
    Each command with a reply event is answered with one: this one was not.
    next: the service's own log at that time; whether Java waits for it
  2 provoked argument-refused: SelectChannel, session 1, on desk
    line 28
    physical_channel is too large : 63, ret = 5
    written by dtvSvLibSelectChannel():68
    The bridge checks what Java hands over: the call answers PARAM_NG and
    nothing is sent.
    next: the caller of the native method, with the values in the line

How long answers took
  command count      median        95 %     longest   line
  Create      1        0 us        0 us        0 us      8
  Release     1        0 us        0 us        0 us     35
)");
}

TEST(Report, JsonOfFindings) {
    EXPECT_EQ(jsonOf(*faultyLog()), R"({
 "begin" : "11-21 22:00:00.000",
 "end" : "11-21 22:00:00.500",
 "file" : "evening.log",
 "findings" : 
 [
  {
   "cause_of" : [],
   "caused_by" : null,
   "count" : 1,
   "function" : "dtvSvLibControlLNA",
   "id" : 1,
   "last_line" : 30,
   "lines" : 
   [
    30
   ],
   "means" : "Each command with a reply event is answered with one: this one was not.",
   "next" : "the service's own log at that time; whether Java waits for it",
   "rule" : "no-reply",
   "session" : 1,
   "severity" : "error",
   "source_line" : 110,
   "subject" : "ControlLNA",
   "text" : "SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1",
   "thread" : "desk"
  },
  {
   "cause_of" : [],
   "caused_by" : null,
   "count" : 1,
   "function" : "dtvSvLibSelectChannel",
   "id" : 2,
   "last_line" : 28,
   "lines" : 
   [
    28
   ],
   "means" : "The bridge checks what Java hands over: the call answers PARAM_NG and nothing is sent.",
   "next" : "the caller of the native method, with the values in the line",
   "rule" : "argument-refused",
   "session" : 1,
   "severity" : "provoked",
   "source_line" : 68,
   "subject" : "SelectChannel",
   "text" : "physical_channel is too large : 63, ret = 5",
   "thread" : "desk"
  }
 ],
 "form" : "threadtime",
 "kind" : "log",
 "latencies" : 
 [
  {
   "command" : "Create",
   "count" : 1,
   "longest_line" : 8,
   "longest_ns" : 0,
   "median_ns" : 0,
   "p95_ns" : 0
  },
  {
   "command" : "Release",
   "count" : 1,
   "longest_line" : 35,
   "longest_ns" : 0,
   "median_ns" : 0,
   "p95_ns" : 0
  }
 ],
 "levels" : 
 {
  "DEBUG" : 14,
  "ERROR" : 0,
  "FUNCEND" : 15,
  "FUNCSTART" : 18,
  "INFO" : 4
 },
 "limits" : 
 [
  "its times have no year"
 ],
 "lines" : 51,
 "loads" : 
 [
  1
 ],
 "losses" : 
 [
  {
   "count" : 1,
   "kind" : "command-without-reply",
   "line" : 30,
   "text" : "a ControlLNA without its reply, or it never came"
  }
 ],
 "more_sessions" : 0,
 "of_bridge" : 51,
 "sessions" : 
 [
  {
   "commands" : 2,
   "events" : 1,
   "first" : 12,
   "last" : 39,
   "opened" : 12,
   "playbacks" : 0,
   "recordings" : 0,
   "released" : 39,
   "selections" : 0,
   "session" : 1
  }
 ],
 "shortened" : 0,
 "status" : 1,
 "understood" : 51,
 "verdict" : "found",
 "version" : 1
}
)");
}

TEST(Report, NdjsonOfFindings) {
    EXPECT_EQ(
        ndjsonOf(*faultyLog()),
        R"({"begin":"11-21 22:00:00.000","end":"11-21 22:00:00.500","file":"evening.log","form":"threadtime","kind":"log","levels":{"DEBUG":14,"ERROR":0,"FUNCEND":15,"FUNCSTART":18,"INFO":4},"lines":51,"losses":["command-without-reply"],"of_bridge":51,"shortened":0,"status":1,"type":"log","understood":51,"verdict":"found","version":1}
{"commands":2,"events":1,"file":"evening.log","first":12,"last":39,"opened":12,"playbacks":0,"recordings":0,"released":39,"selections":0,"session":1,"type":"session","version":1}
{"cause_of":[],"caused_by":null,"count":1,"file":"evening.log","function":"dtvSvLibControlLNA","id":1,"last_line":30,"lines":[30],"means":"Each command with a reply event is answered with one: this one was not.","next":"the service's own log at that time; whether Java waits for it","rule":"no-reply","session":1,"severity":"error","source_line":110,"subject":"ControlLNA","text":"SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1","thread":"desk","type":"finding","version":1}
{"cause_of":[],"caused_by":null,"count":1,"file":"evening.log","function":"dtvSvLibSelectChannel","id":2,"last_line":28,"lines":[28],"means":"The bridge checks what Java hands over: the call answers PARAM_NG and nothing is sent.","next":"the caller of the native method, with the values in the line","rule":"argument-refused","session":1,"severity":"provoked","source_line":68,"subject":"SelectChannel","text":"physical_channel is too large : 63, ret = 5","thread":"desk","type":"finding","version":1}
)");
}

TEST(Report, OfALogWithoutALineOfTheBridge) {
    const auto explained = explain("something else\n");
    EXPECT_EQ(textOf(*explained), R"(evening.log
1 line, 0 of the bridge, 0 understood

No line is of the bridge: there is nothing to explain.
)");
    EXPECT_EQ(
        ndjsonOf(*explained),
        R"({"file":"evening.log","form":"raw","kind":"log","levels":{"DEBUG":0,"ERROR":0,"FUNCEND":0,"FUNCSTART":0,"INFO":0},"lines":1,"of_bridge":0,"shortened":0,"status":2,"type":"log","understood":0,"verdict":"cannot tell","version":1}
)");
}

TEST(Report, TakesWhatIsAskedFor) {
    const auto explained = faultyLog();
    const auto findings = [&](const std::string& only) {
        const std::string text = textOf(*explained, only);
        return std::pair(text.find(" no-reply: ") != std::string::npos,
                         text.find(" argument-refused: ") != std::string::npos);
    };
    EXPECT_EQ(findings(""), std::pair(true, true));
    EXPECT_EQ(findings("no-reply"), std::pair(true, false));
    EXPECT_EQ(findings("provoked"), std::pair(false, true));
    EXPECT_EQ(findings("SelectChannel"), std::pair(false, true));
    EXPECT_EQ(findings("warning"), std::pair(false, false));
}

/// The lines of a report that are wider than 80 columns.
std::vector<std::string> wideLines(const std::string& report) {
    std::vector<std::string> wide;
    std::istringstream input(report);
    for (std::string line; std::getline(input, line);) {
        if (show::columnsOf(line) > 80) {
            wide.push_back(line);
        }
    }
    return wide;
}

TEST(Report, IsEightyColumnsWideAtMost) {
    const std::string name(300, 'x');
    const std::string japanese = "番組の名前が長い場合の表示を確かめるための文字列である";
    const std::string hostile = "\x1b[2J\x01\xff\t" + japanese + japanese + name;
    std::string log = logOf(
        load() +
        "desk START JNI_OnLoad:124|\ndesk DEBUG setJavaClass:43|setJavaClass, Can't find "
        "class : " +
        hostile + "\ndesk END JNI_OnLoad:128|\n" + session(1) + "java.lang.Error: " + hostile +
        "\nat " + name + ".BGCallBack." + name + "(" + name + ")\njava.lang.Error: " + hostile +
        "\nat " + name + ".DtvServerProxy.DtvSvLib_" + hostile + "(Native Method)\n" + released());
    for (int i = 0; i < 30; ++i) {
        log += logOf("@" + std::to_string(i) + "\n" + name +
                     " START dtvSvLibControlLNA:129|hdl = " + std::to_string(60000 + i) + "\n" +
                     name + " DEBUG dtvSvLibControlLNA:128|SEND, LNA_MODE : dtvsv_handle = " +
                     std::to_string(60000 + i) + ", lna_mode = 1\n" + name +
                     " END dtvSvLibControlLNA:141|ret = -1\n");
    }
    const auto explained = explain(log);
    explained->name = "/" + hostile;
    const std::string report = textOf(*explained);
    EXPECT_EQ(wideLines(report), std::vector<std::string>{});
    EXPECT_NE(report.find("callback-threw"), std::string::npos);
    EXPECT_NE(report.find("native-threw"), std::string::npos);
    EXPECT_NE(report.find("class-missing"), std::string::npos);
    for (const char c : report) {
        EXPECT_TRUE(static_cast<unsigned char>(c) >= ' ' || c == '\n') << report;
    }
}

TEST(Report, TheSentencesOfEveryRuleFit) {
    for (const RuleText& rule : allRules()) {
        EXPECT_FALSE(std::string(rule.sentence).empty());
        EXPECT_EQ(std::string(rule.sentence).back(), '.') << rule.name;
        EXPECT_NE(std::string(rule.next).back(), '.') << rule.name;
    }
}

} // namespace
} // namespace explain::tests
