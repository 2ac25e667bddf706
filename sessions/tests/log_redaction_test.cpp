// What is left of a log that can be given to others.
#include "sessions/log_redaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using sessions::HashKey;
using sessions::LineSource;
using sessions::LogLine;
using sessions::LogReader;
using sessions::LogRedaction;
using sessions::OtherLines;
using sessions::Redaction;
using testing::ElementsAre;

constexpr HashKey kKey{1, 2};

/// The lines of the copy of a log with these lines.
std::vector<std::string> redacted(const std::vector<std::string>& lines,
                                  OtherLines others = OtherLines::kReplaced) {
    const std::string path = testing::TempDir() + "log_redaction_test." + std::to_string(getpid());
    std::ofstream file(path, std::ios::binary);
    for (const std::string& line : lines) {
        file << line << '\n';
    }
    file.close();
    LineSource source(path);
    LogReader reader(source);
    reader.keepLines();
    Redaction redaction(kKey);
    LogRedaction redacting(redaction, others);
    std::vector<std::string> copy;
    LogLine line;
    while (reader.next(line)) {
        const std::vector<std::string> part = redacting.redact(line, reader.lines());
        copy.insert(copy.end(), part.begin(), part.end());
    }
    unlink(path.c_str());
    return copy;
}

std::string redactedLine(const std::string& line) {
    const std::vector<std::string> copy = redacted({line});
    return copy.size() == 1 ? copy.front() : std::to_string(copy.size()) + " lines";
}

/// The placeholder of a text.
std::string letters(const std::string& text) {
    Redaction redaction(kKey);
    return redaction.redactedText({}, {}, text);
}

TEST(LogRedaction, ReplacesTheTextsOfTheBridgesLines) {
    EXPECT_EQ(redactedLine(",TENRIK,desk    ,DEBUG    ,dtvSvLibBMLAuthReply(),  87,SEND, "
                           "BML_AUTH_REPLY : select_type = 0, user = |Maria|, pass = |1234|, "
                           "task_id = 102"),
              ",TENRIK,desk    ,DEBUG    ,dtvSvLibBMLAuthReply(),  87,SEND, BML_AUTH_REPLY : "
              "select_type = 0, user = |" +
                  letters("Maria") + "|, pass = |" + letters("1234") + "|, task_id = 102");
    EXPECT_EQ(redactedLine(",TENRIK,desk    ,DEBUG    ,dtvSvLibTerminateRec(),  37,SEND, "
                           "TERMINATE_REC : save_data = 1, title_size = 5, title_name = Maria"),
              ",TENRIK,desk    ,DEBUG    ,dtvSvLibTerminateRec(),  37,SEND, TERMINATE_REC : "
              "save_data = 1, title_size = 5, title_name = " +
                  letters("Maria"));
}

TEST(LogRedaction, LeavesNumbersAndPublicTexts) {
    for (const std::string line :
         {",TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_scan_notify(),  46,NETWORK_INFO : ts_id = "
          "1, ts_name_size = 6, ts_name = |TV Sul|, nw_id = 2, nw_name_size = 4, nw_name = |Rede|, "
          "remocon_id = 3, partialsvc_cnt = 4",
          ",TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_bml_write_nvram_req(),  90,WRITE_NVRAM_REQ "
          ": affiliation_id = 1, network_id = 2, ts_name = |TV Sul|, block_no = 3",
          ",TENRIK,desk    ,DEBUG    ,setJavaClass(),  43,setJavaClass, Can't find class : "
          "tenrik/service/dtvserver/BGCallBack",
          ",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  12,SEND, dtvsv_handle = 3"}) {
        EXPECT_EQ(redactedLine(line), line);
    }
    EXPECT_EQ(redactedLine(",TENRIK,DtvEvent-1,DEBUG    ,anybody(),  46,NETWORK_INFO : ts_id = 1, "
                           "ts_name_size = 6, ts_name = |TV Sul|, nw_id = 2, nw_name_size = 4, "
                           "nw_name = |Rede|, remocon_id = 3, partialsvc_cnt = 4"),
              ",TENRIK,DtvEvent-1,DEBUG    ,anybody(),  46,NETWORK_INFO : ts_id = 1, "
              "ts_name_size = 6, ts_name = |" +
                  letters("TV Sul") + "|, nw_id = 2, nw_name_size = 4, nw_name = |" +
                  letters("Rede") + "|, remocon_id = 3, partialsvc_cnt = 4")
        << "of no known message";
}

TEST(LogRedaction, ReplacesWhatNoKnownLineExplains) {
    EXPECT_EQ(redactedLine(",TENRIK,desk    ,DEBUG    ,other(),  12,Maria = 3"),
              ",TENRIK,desk    ,DEBUG    ,other(),  12," + letters("Maria = 3"));
    EXPECT_EQ(redactedLine(",TENRIK,Maria"), ",TENRIK," + letters("Maria"));
    EXPECT_EQ(redactedLine("Maria,TENRIK,desk    ,DEBUG    ,other(),  12,1"),
              letters("Maria") + ",TENRIK,desk    ,DEBUG    ,other(),  12," + letters("1"));
    EXPECT_EQ(redactedLine("JNIDtvSvLibListener(   12):<desk    >ERROR     [other():  12] Maria"),
              "JNIDtvSvLibListener(   12):<desk    >ERROR     [other():  12] " + letters("Maria"));
}

TEST(LogRedaction, ReplacesTheTextsOfAShortenedLine) {
    EXPECT_EQ(redactedLine(",TENRIK,desk    ,DEBUG    ,dtvSvLibBMLAuthReply(),  87,SEND, "
                           "BML_AUTH_REPLY : select_type = 0, user = |Maria|, pass = |12"),
              ",TENRIK,desk    ,DEBUG    ,dtvSvLibBMLAuthReply(),  87,SEND, BML_AUTH_REPLY : "
              "select_type = 0, user = |" +
                  letters("Maria") + "|, pass = |" + letters("12"));
}

TEST(LogRedaction, ReplacesATextOfSeveralLinesAsOne) {
    const std::string whole = letters("Dear Maria,\ncome at 8.\n\nJo");
    const std::string start = ",TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_bml_mail_req(), 179,"
                              "MAIL_REQ : title = |A|, send_address = |b|, data = |";
    const std::string masked = ",TENRIK,DtvEvent-1,DEBUG    ,dtvsv_msgid_lib_bml_mail_req(), 179,"
                               "MAIL_REQ : title = |" +
                               letters("A") + "|, send_address = |" + letters("b") + "|, data = |";
    EXPECT_THAT(redacted({start + "Dear Maria,", "come at 8.", "", "Jo|"}),
                ElementsAre(masked + whole.substr(0, 11), whole.substr(12, 10), "",
                            whole.substr(24, 2) + "|"));
    EXPECT_THAT(
        redacted({"D/Dtv_jni(  12): " + start + "Dear Maria,", "D/Dtv_jni(  12): come at 8.",
                  "D/Dtv_jni(  12): ", "D/Dtv_jni(  12): Jo|"}),
        ElementsAre("D/Dtv_jni(  12): " + masked + whole.substr(0, 11),
                    "D/Dtv_jni(  12): " + whole.substr(12, 10),
                    "D/Dtv_jni(  12): ", "D/Dtv_jni(  12): " + whole.substr(24, 2) + "|"));
}

TEST(LogRedaction, LeavesTheHeadersOfOtherPrograms) {
    EXPECT_THAT(
        redacted({"I/Mailer( 123): to Maria", "I/Mailer: to Maria", "I( 123) to Maria  (Mailer)",
                  "I( 123: 45) to Maria", "11-21 22:13:37.123 I/Mailer( 123): to Maria",
                  "11-21 22:13:37.123  123   45 I Mailer  : to Maria",
                  "[ 11-21 22:13:37.123  123:   45 I/Mailer ]", "to Maria", ""}),
        ElementsAre("I/Mailer( 123): " + letters("to Maria"), "I/Mailer: " + letters("to Maria"),
                    "I( 123) " + letters("to Maria") + "  (Mailer)",
                    "I( 123: 45) " + letters("to Maria"),
                    "11-21 22:13:37.123 I/Mailer( 123): " + letters("to Maria"),
                    "11-21 22:13:37.123  123   45 I Mailer  : " + letters("to Maria"),
                    "[ 11-21 22:13:37.123  123:   45 I/Mailer ]", letters("to Maria"), ""));
}

TEST(LogRedaction, LeavesWhatTheLogSaysOfItself) {
    EXPECT_THAT(
        redacted({"--------- beginning of main", "--------- beginning of Maria",
                  "------ SYSTEM LOG (Maria) ------",
                  "11-21 22:13:37.123  123   45 I chatty  : uid=10045(u0_a45) maria.app expire 12 "
                  "lines",
                  "I( 123: 45) chatty: uid=1 identical 3 lines, Maria",
                  "I( 123: 45) uid=1 Maria expire 3 lines"}),
        ElementsAre(
            "--------- beginning of main", "--------- " + letters("beginning of Maria"),
            "------ " + letters("SYSTEM LOG (Maria) ------"),
            "11-21 22:13:37.123  123   45 I chatty  : uid=" + letters("10045(u0_a45) maria.app ") +
                "expire 12 line" + letters("s"),
            "I( 123: 45) chatty" + letters(": uid=1 ") + "identical 3 line" + letters("s, Maria"),
            "I( 123: 45) uid=" + letters("1 Maria ") + "expire 3 line" + letters("s")));
}

TEST(LogRedaction, LeavesWhatAStackTraceSaysOfTheJavaSide) {
    EXPECT_THAT(
        redacted({"Exception in thread \"Maria\" java.lang.IllegalStateException: no Maria",
                  "\tat app.Maria.call(Maria.java:12)",
                  "\tat tenrik.service.dtvserver.BGCallBack.onEvDtvsvScanNotify(BGCallBack.java:9)",
                  "  at tenrik.service.dtvserver.BGCallBack.on\xc3\xa9(Maria.java:9)",
                  "Caused by: maria.MariaError", "an Errorless day"}),
        ElementsAre(
            "Exception" + letters(" in thread \"Maria\" ") + "java.lang.IllegalStateException" +
                letters(": no Maria"),
            "\tat " + letters("app.Maria.call(Maria.java:12)"),
            "\tat tenrik.service.dtvserver.BGCallBack.onEvDtvsvScanNotify(BGCallBack.java:9)",
            "  at " + letters("tenrik.service.dtvserver.BGCallBack.on\xc3\xa9(Maria.java:9)"),
            letters("Caused by: maria.Maria") + "Error", letters("an Errorless day")));
}

TEST(LogRedaction, KeepsOtherProgramsWhenItIsAskedTo) {
    const std::string start = "D/Dtv_jni(  12): ,TENRIK,desk    ,DEBUG    ,other(),  12,";
    EXPECT_THAT(
        redacted({"I/Mailer( 123): to Jo", start + "Maria", "D/Dtv_jni(  12): Maria", "Maria",
                  "I/Mailer( 123): to Jo", "I( 123: 45) to Jo", "I(  12: 45) Maria"},
                 OtherLines::kKept),
        ElementsAre("I/Mailer( 123): to Jo", start + letters("Maria"),
                    "D/Dtv_jni(  12): " + letters("Maria"), letters("Maria"),
                    "I/Mailer( 123): to Jo", "I( 123: 45) to Jo",
                    "I(  12: 45) " + letters("Maria")));
}

/// Functions that write the lines of others, by a part of the line.
const std::multimap<std::string, std::string> kWriters = {
    {"bookmark_url", "dtvSvLibBMLStartTvLinkReq"},
    {"TERMINATE_REC", "dtvSvLibTerminateRec"},
    {"TERMINATE_REC", "dtvSvLibTerminateRecSync"},
    {"TERMINATE_REC", "unknown"},
    {"NETWORK_INFO", "dtvsv_msgid_lib_scan_notify"},
    {"NETWORK_INFO", "dtvsv_msgid_lib_network_info_notify"},
    {"PRG_INFO", "dtvsv_msgid_lib_receive_epg_info_notify"},
};

/// What stays of the values of the trace, by the function that writes them.
const std::set<std::string> kStays = {
    "setJavaClass.class_name",
    "setJavaClass.class",
    "setJavaMethod.method_name",
    "setJavaMethod.signature",
    "registerNatives.for",
    "dtvSvLibBMLReadNvramReply.ts_name",
    "dtvsv_msgid_lib_bml_write_nvram_req.ts_name",
    "dtvsv_msgid_lib_scan_notify.ts_name",
    "dtvsv_msgid_lib_scan_notify.nw_name",
    "dtvsv_msgid_lib_network_info_notify.ts_name",
    "dtvsv_msgid_lib_network_info_notify.nw_name",
    "dtvsv_msgid_lib_receive_epg_info_notify.name",
    "dtvsv_msgid_lib_receive_epg_info_notify.text",
};

/// The functions that a line is tried with.
std::vector<std::string> writersOf(const sessions::KnownLine& line) {
    if (!line.function.empty()) {
        return {std::string(line.function)};
    }
    std::vector<std::string> writers;
    for (const auto& [part, function] : kWriters) {
        if (line.format.find(part) != std::string_view::npos) {
            writers.push_back(function);
        }
    }
    return writers;
}

TEST(LogRedaction, FindsNoSecretInAnyLineOfTheBridge) {
    size_t texts = 0;
    for (const sessions::KnownLine& known : sessions::knownLines()) {
        const bool has_text =
            std::any_of(known.values.begin(), known.values.end(),
                        [](const auto& value) { return value.conversion == 's'; });
        const std::vector<std::string> writers = writersOf(known);
        EXPECT_TRUE(!has_text || !writers.empty()) << known.format;
        for (const std::string& writer : writers) {
            std::string before = ",TENRIK,desk    ," + std::string(nameOf(known.level));
            before.resize(sizeof ",TENRIK,desk    ,DEBUG    " - 1, ' ');
            before += ',' + writer + "(),  12,";
            std::string after = before;
            for (size_t i = 0; i < known.literals.size(); ++i) {
                before += known.literals[i];
                after += known.literals[i];
                if (i == known.values.size()) {
                    break;
                }
                const sessions::KnownLine::Value& value = known.values[i];
                const std::string secret = "secret" + std::to_string(i);
                const bool is_text = value.conversion == 's';
                const bool stays = kStays.count(writer + '.' + std::string(value.label)) != 0;
                texts += is_text ? 1 : 0;
                before += is_text ? secret : "12";
                after += !is_text ? "12" : stays ? secret : letters(secret);
            }
            EXPECT_EQ(redactedLine(before), after);
        }
    }
    EXPECT_GT(texts, 30u);
}

} // namespace
