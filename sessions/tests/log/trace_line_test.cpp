// What a line of the trace says: its thread, its function, its values.
#include "sessions/log/trace_lines.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using sessions::findTraceLine;
using sessions::KnownLine;
using sessions::knownLines;
using sessions::readTraceCopy;
using sessions::readTraceLine;
using sessions::ShownValue;
using sessions::TraceLevel;
using sessions::TraceLine;
using sessions::understand;

std::string valuesOf(const TraceLine& line) {
    std::string text;
    for (size_t i = 0; i < line.values.size(); ++i) {
        const ShownValue& value = line.values[i];
        const KnownLine::Value& known = line.known->values[i];
        text += "; " + std::string(known.label) + "=";
        text += known.conversion == 's' ? "\"" + std::string(value.text) + "\""
                                        : std::to_string(value.number);
    }
    return text;
}

/// "task level function:line; label=number; label="text"", or what is wrong.
std::string lineText(const std::string& text) {
    TraceLine line;
    if (!readTraceLine(text, line)) {
        return "no line of the trace";
    }
    understand(line);
    std::string out = std::string(line.task) + " " + nameOf(line.level) + " " +
                      std::string(line.function) + ":" + std::to_string(line.source_line);
    if (line.known == nullptr) {
        return out + " not known: " + std::string(line.message);
    }
    return out + valuesOf(line) + (line.shortened ? " ..." : "");
}

/// The same of a message that a function writes as DEBUG on the thread "t".
std::string valuesText(const std::string& function, const std::string& message) {
    const std::string text =
        lineText(",TENRIK,t       ,DEBUG    ," + function + "(),   1," + message);
    const std::string start = "t DEBUG " + function + ":1";
    return text.substr(0, start.size()) == start ? text.substr(start.size()) : text;
}

TEST(TraceLine, HasThreadFunctionAndSourceLine) {
    EXPECT_EQ(lineText(",TENRIK,desk    ,FUNCSTART,JNI_OnLoad(),  66,"),
              "desk FUNCSTART JNI_OnLoad:66");
    EXPECT_EQ(lineText(",TENRIK,DtvEvent-1,FUNCEND  ,DoListenerEvent(),  88,"),
              "DtvEvent-1 FUNCEND DoListenerEvent:88");
    EXPECT_EQ(lineText(",TENRIK,        ,INFO     ,setJavaMethod(), 107,setJavaMethod"),
              " INFO setJavaMethod:107");
    EXPECT_EQ(lineText(",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),12345,SEND, "
                       "dtvsv_handle = 1"),
              "desk DEBUG dtvSvLibSelectChannel:12345; dtvsv_handle=1");
}

TEST(TraceLine, AThreadMayHaveAnyName) {
    EXPECT_EQ(lineText(",TENRIK,a,b,c   ,FUNCSTART,JNI_OnLoad(),  66,"),
              "a,b,c FUNCSTART JNI_OnLoad:66");
    EXPECT_EQ(lineText(",TENRIK,x,DEBUG ,FUNCSTART,JNI_OnLoad(),  66,"),
              "x,DEBUG FUNCSTART JNI_OnLoad:66");
    EXPECT_EQ(lineText(",TENRIK,a(),1,b ,FUNCSTART,JNI_OnLoad(),  66,"),
              "a(),1,b FUNCSTART JNI_OnLoad:66");
    EXPECT_EQ(lineText(",TENRIK,,,,,,,,,,FUNCSTART,JNI_OnLoad(),  66,"),
              ",,,,,,,, FUNCSTART JNI_OnLoad:66");
}

TEST(TraceLine, NumbersOfEachKind) {
    EXPECT_EQ(valuesText("JNI_OnLoad", "pid = 3109, threadid = a1dfe6c0"),
              "; pid=3109; threadid=2715805376");
    EXPECT_EQ(valuesText("DtvSvLibListenerInit", "env = 0x7f3ed4239b60"), "; env=139907823803232");
    EXPECT_EQ(valuesText("DtvSvLibListenerInit", "env = (nil)"), "; env=0");
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_change_audio_main_sub_notify", "handle = 7, result = -2"),
              "; handle=7; result=-2");
    EXPECT_EQ(
        valuesText("dtvSvLibSkipPlay", "SEND, SKIP_PLAY : direction = 1, skipsec = -2147483648"),
        "; direction=1; skipsec=-2147483648");
    EXPECT_EQ(lineText(",TENRIK,desk    ,FUNCSTART,dtvSvLibSelectChannel(),  94,hdl = -1"),
              "desk FUNCSTART dtvSvLibSelectChannel:94; hdl=-1");
}

TEST(TraceLine, NumbersThatAreNone) {
    for (const std::string message :
         {"pid = , threadid = 1", "pid = -, threadid = 1", "pid = 1, threadid = X",
          "pid = 1x, threadid = 1", "pid =  1, threadid = 1"}) {
        EXPECT_EQ(valuesText("JNI_OnLoad", message).find(" not known"), 0u) << message;
    }
    EXPECT_EQ(valuesText("DtvSvLibListenerInit", "env = (NIL)"), " not known: env = (NIL)");
}

TEST(TraceLine, NumbersThatNoMachineHolds) {
    // Nothing is said of their values but that there are some.
    for (const std::string number : {"9223372036854775808", "-9223372036854775808",
                                     "-9999999999999999999", "9999999999999999999"}) {
        EXPECT_EQ(valuesText("JNI_OnLoad", "pid = " + number + ", threadid = ffffffffffffffff")
                      .substr(0, 6),
                  "; pid=");
    }
}

TEST(TraceLine, TextsMayHoldWhatFollowsThem) {
    EXPECT_EQ(valuesText("dtvSvLibBMLAuthReply", "SEND, BML_AUTH_REPLY : select_type = 0, user = "
                                                 "|a|b|, pass = |c||, task_id = 102"),
              "; select_type=0; user=\"a|b\"; pass=\"c|\"; task_id=102");
    EXPECT_EQ(valuesText("dtvSvLibBMLAuthReply",
                         "SEND, BML_AUTH_REPLY : select_type = 0, user = ||, pass = |x|, pass = "
                         "|, task_id = 1|, task_id = -5"),
              "; select_type=0; user=\"\"; pass=\"x|, pass = |, task_id = 1\"; task_id=-5");
    EXPECT_EQ(valuesText("dtvSvLibBMLFepReply", "SEND, BML_FEP_REPLY : data = |x|, data_size = 3, "
                                                "end_type = 1|, data_size = 4, end_type = 0"),
              "; data=\"x|, data_size = 3, end_type = 1\"; data_size=4; end_type=0");
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_bml_call_req", "CALL_REQ : phone_number = ||||"),
              "; phone_number=\"||\"");
    EXPECT_EQ(valuesText("dtvSvLibTerminateRec",
                         "SEND, TERMINATE_REC : save_data = 1, title_size = 3, title_name = a, b"),
              "; save_data=1; title_size=3; title_name=\"a, b\"");
}

TEST(TraceLine, TextsOfManyEndsTakeNoTime) {
    std::string text = "PHONEBOOK_REQ : name = |";
    for (const std::string end : {"|, name_kana = |", "|, phone_number = |"}) {
        for (int i = 0; i < 20000; ++i) {
            text += end;
        }
    }
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_bml_phonebook_req", text + "x").find("; name="), 0u);
}

TEST(TraceLine, TextsMayBeEmptyOrNoText) {
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_bml_call_req", "CALL_REQ : phone_number = ||"),
              "; phone_number=\"\"");
    EXPECT_EQ(
        valuesText("dtvsv_msgid_lib_bml_call_req", "CALL_REQ : phone_number = |\xff\x01\xe3|"),
        "; phone_number=\"\xff\x01\xe3\"");
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_bml_call_req", "CALL_REQ : phone_number = |a\nb|"),
              "; phone_number=\"a\nb\"");
}

TEST(TraceLine, TheFunctionDecidesWhichLineItIs) {
    EXPECT_EQ(valuesText("dtvsv_msgid_lib_bml_end_fep_notify", "handle = 3"), "; handle=3");
    EXPECT_EQ(
        valuesText("dtvsv_msgid_lib_rec_info_notify", "handle = 3, rec_time = 4, rec_cap = 5"),
        "; handle=3; rec_time=4; rec_cap=5");
    EXPECT_EQ(valuesText("JNI_OnLoad", "handle = 3, rec_time = 4, rec_cap = 5"),
              " not known: handle = 3, rec_time = 4, rec_cap = 5");
    TraceLine line;
    ASSERT_TRUE(readTraceLine(",TENRIK,t       ,ERROR    ,f(),   1,CallMethod NG, ret = 1", line));
    understand(line);
    ASSERT_NE(line.known, nullptr);
    EXPECT_EQ(line.known->level, TraceLevel::kError);
    EXPECT_EQ(line.known->file, "events/event.cpp");
}

TEST(TraceLine, AShortenedLineHasTheValuesThatItShows) {
    EXPECT_EQ(valuesText("JNI_OnLoad", "pid = 3109, thr"), "; pid=3109 ...");
    EXPECT_EQ(valuesText("JNI_OnLoad", "pi"), " ...");
    EXPECT_EQ(valuesText("JNI_OnLoad", "pid = 1, threadid = "), "; pid=1 ...");
    EXPECT_EQ(valuesText("dtvSvLibBMLAuthReply",
                         "SEND, BML_AUTH_REPLY : select_type = 0, user = |ab|, pas"),
              "; select_type=0; user=\"ab|, pas\" ...");
    EXPECT_EQ(
        valuesText("dtvSvLibBMLAuthReply", "SEND, BML_AUTH_REPLY : select_type = 0, user = |"),
        "; select_type=0 ...");
    EXPECT_EQ(valuesText("dtvSvLibBMLAuthReply", "pipd"), " not known: pipd");
}

TEST(TraceLine, WhatIsNone) {
    for (const std::string text :
         {"", ",TENRIK,", ",TENRIK,desk", ",TENRIK,desk    ,", ",TENRIK,desk    ,DEBUG",
          ",TENRIK,desk    ,DEBUG    ", ",TENRIK,desk    ,DEBUG    ,f",
          ",TENRIK,desk    ,DEBUG    ,f()", ",TENRIK,desk    ,DEBUG    ,f(),",
          ",TENRIK,desk    ,DEBUG    ,f(),  66", ",TENRIK,desk    ,DEBUG    ,f(),  x,",
          ",TENRIK,desk    ,TRACE    ,f(),  66,", ",TENRIK,desk    ,debug    ,f(),  66,",
          ",TENRIK,desk    ,DEBUG   ,f(),  66,", "x,TENRIK,desk    ,DEBUG    ,f(),  66,",
          ",TENRIK,desk    ,DEBUG    ,a b(),  66,", ",TENRIK,desk    ,DEBUG    ,f(),1234567890,"}) {
        EXPECT_EQ(lineText(text), "no line of the trace") << text;
    }
}

TEST(TraceLine, LeavesNothingOfTheLineBefore) {
    TraceLine line;
    ASSERT_TRUE(readTraceLine(",TENRIK,t       ,ERROR    ,f(),   1,CallMethod NG, ret = 1", line));
    understand(line);
    EXPECT_FALSE(readTraceLine("another", line));
    EXPECT_EQ(line.task, "");
    EXPECT_EQ(line.function, "");
    EXPECT_EQ(line.message, "");
    EXPECT_EQ(line.known, nullptr);
    EXPECT_EQ(line.source_line, 0);
    EXPECT_TRUE(line.values.empty());
}

TEST(TraceLine, IsFoundInALine) {
    EXPECT_EQ(findTraceLine("a b: ,TENRIK,desk"), 5u);
    EXPECT_EQ(findTraceLine(",TENRIK,"), 0u);
    EXPECT_EQ(findTraceLine(",tenrik,"), std::string::npos);
}

TEST(TraceLine, CopiesOnStandardOutput) {
    TraceLine line;
    ASSERT_TRUE(readTraceCopy("JNIDtvSvLibListener( 3109):<DtvEvent-1>ERROR     "
                              "[dtvsv_msgid_lib_scan_notify():  58] recv_size err!, recv_size = 3",
                              line));
    EXPECT_EQ(line.task, "DtvEvent-1");
    EXPECT_EQ(line.level, TraceLevel::kError);
    EXPECT_EQ(line.function, "dtvsv_msgid_lib_scan_notify");
    EXPECT_EQ(line.source_line, 58);
    understand(line);
    ASSERT_NE(line.known, nullptr);
    EXPECT_EQ(line.number("recv_size"), 3);
    for (const std::string text :
         {"", "JNIDtvSvLibListener( 3109):<DtvEvent-1", "JNIDtvSvLibListener( 3109):<a>ERROR    ",
          "JNIDtvSvLibListener( 3109):<a>ERROR     [f(): 58",
          "Dtv_jni( 3109):<a>ERROR     [f():  58] x"}) {
        EXPECT_FALSE(readTraceCopy(text, line)) << text;
    }
}

TEST(KnownLines, AreMany) {
    EXPECT_GT(knownLines().size(), 300u);
}

TEST(KnownLines, EachFormatOfAFunctionAndLevelIsThereOnce) {
    std::set<std::string> seen;
    for (const KnownLine& line : knownLines()) {
        const std::string key = std::string(nameOf(line.level)) + "|" + std::string(line.function) +
                                "|" + std::string(line.format);
        EXPECT_TRUE(seen.insert(key).second) << key;
        EXPECT_EQ(line.literals.size(), line.values.size() + 1) << key;
        EXPECT_GT(line.source_line, 0) << key;
        for (const KnownLine::Value& value : line.values) {
            EXPECT_NE(std::string("dxps").find(value.conversion), std::string::npos) << key;
        }
    }
}

} // namespace
