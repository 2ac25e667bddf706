// The lines of the bridge among those of other programs, in each form, whole and damaged.
#include "sessions/log/log_reader.h"
#include "sessions/tests/log/text_file.h"

namespace {

using sessions::LineSource;
using sessions::LogCounts;
using sessions::LogForm;
using sessions::LogLine;
using sessions::LogLineKind;
using sessions::LogReader;
using sessions::TraceLevel;

constexpr const char* kKinds[] = {"trace",   "notknown", "shortened", "copy",
                                  "dropped", "section",  "foreign"};

struct ReadLog {
    std::vector<std::string> lines;
    LogCounts counts;
};

/// Each line as "first-last kind form|text", with what else is known of it.
ReadLog readLog(const std::string& bytes) {
    const TextFile file(bytes);
    LineSource source(file.path());
    LogReader reader(source);
    ReadLog log;
    for (LogLine line; reader.next(line);) {
        std::string text = std::to_string(line.first);
        text += line.last != line.first ? "-" + std::to_string(line.last) : "";
        text += std::string(" ") + kKinds[static_cast<size_t>(line.kind)] + " " +
                nameOf(line.header.form) + (line.cut ? " cut" : "");
        if (line.dropped > 0) {
            text += " " + std::to_string(line.dropped) + (line.identical ? " identical" : "");
        }
        const bool of_trace = line.kind <= LogLineKind::kCopy && line.trace.known != nullptr;
        text += of_trace ? "|" + std::string(line.trace.message) : "|" + std::string(line.text);
        log.lines.push_back(text);
    }
    log.counts = reader.counts();
    return log;
}

using Texts = std::vector<std::string>;

constexpr char kLine[] = ",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  50,SEND, ";
constexpr char kSend[] =
    ",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  50,SEND, dtvsv_handle = 1";

TEST(LogReader, TakesTheLinesOfTheTraceOutOfOthers) {
    const ReadLog log = readLog(std::string("11-21 22:13:37.123  999  999 I Other : text\n") +
                                "11-21 22:13:37.124  1234  1250 I Dtv_jni : " + kSend + "\n" +
                                "11-21 22:13:37.125  999  999 I Other : a,TENRIK line\n");
    EXPECT_EQ(log.lines,
              (Texts{"1 foreign threadtime|text", "2 trace threadtime|SEND, dtvsv_handle = 1",
                     "3 foreign threadtime|a,TENRIK line"}));
    EXPECT_EQ(log.counts.lines, 3u);
    EXPECT_EQ(log.counts.of_bridge, 1u);
    EXPECT_EQ(log.counts.understood, 1u);
    EXPECT_EQ(log.counts.shortened, 0u);
    EXPECT_EQ(log.counts.of_level[static_cast<size_t>(TraceLevel::kDebug)], 1u);
    EXPECT_EQ(log.counts.of_form[static_cast<size_t>(LogForm::kThreadTime)], 1u);
}

/// A line of the bridge in a form, as logcat writes it: each line of its text has the header, but
/// in the long form.
std::string inForm(LogForm form, const std::string& text,
                   const std::string& header_tag = "Dtv_jni") {
    std::string before;
    std::string after;
    switch (form) {
    case LogForm::kBrief:
        before = "I/" + header_tag + " ( 1234): ";
        break;
    case LogForm::kTag:
        before = "I/" + header_tag + " : ";
        break;
    case LogForm::kProcess:
        before = "I( 1234) ";
        after = "  (" + header_tag + ")";
        break;
    case LogForm::kThread:
        before = "I( 1234: 1250) ";
        break;
    case LogForm::kTime:
        before = "11-21 22:13:37.124 I/" + header_tag + " ( 1234): ";
        break;
    case LogForm::kThreadTime:
        before = "11-21 22:13:37.124  1234  1250 I " + header_tag + " : ";
        break;
    case LogForm::kLong:
        return "[ 11-21 22:13:37.124  1234: 1250 I/" + header_tag + "  ]\n" + text + "\n\n";
    case LogForm::kOther:
        before = "1;22:13:37;";
        break;
    case LogForm::kRaw:
        break;
    }
    std::string lines = before;
    for (const char c : text) {
        lines += c == '\n' ? after + "\n" + before : std::string(1, c);
    }
    return lines + after + "\n";
}

constexpr LogForm kForms[] = {LogForm::kRaw,        LogForm::kBrief,  LogForm::kTag,
                              LogForm::kProcess,    LogForm::kThread, LogForm::kTime,
                              LogForm::kThreadTime, LogForm::kLong,   LogForm::kOther};

/// The lines of the bridge alone, without their numbers.
Texts ofBridge(const ReadLog& log) {
    Texts lines;
    for (const std::string& line : log.lines) {
        if (line.find(" foreign ") == std::string::npos) {
            lines.push_back(line.substr(line.find(' ') + 1));
        }
    }
    return lines;
}

TEST(LogReader, ReadsEachForm) {
    for (const LogForm form : kForms) {
        const std::string trace = std::string("trace ") + nameOf(form) + "|";
        for (const bool carriage_returns : {false, true}) {
            std::string text = inForm(form, kSend) + inForm(form, "another's text", "Other") +
                               inForm(form, std::string(kLine) + "dtvsv_handle = 2");
            for (size_t at = 0; carriage_returns && at < text.size(); ++at) {
                if (text[at] == '\n') {
                    text.insert(at++, 1, '\r');
                }
            }
            EXPECT_EQ(ofBridge(readLog(text)),
                      (Texts{trace + "SEND, dtvsv_handle = 1", trace + "SEND, dtvsv_handle = 2"}))
                << nameOf(form);
        }
    }
}

constexpr char kTextLine[] =
    ",TENRIK,desk    ,DEBUG    ,dtvsv_msgid_lib_bml_call_req(),  50,CALL_REQ "
    ": phone_number = |1\n\n3|";
constexpr char kLastText[] =
    ",TENRIK,desk    ,DEBUG    ,dtvSvLibTerminateRec(),  55,SEND, TERMINATE_REC "
    ": save_data = 1, title_size = 5, title_name = 1\n3\n5";

TEST(LogReader, JoinsTheLinesOfAText) {
    for (const LogForm form : kForms) {
        if (form == LogForm::kOther) {
            continue; // what stands before a text is not known
        }
        const std::string trace = std::string("trace ") + nameOf(form) + "|";
        EXPECT_EQ(
            ofBridge(readLog(inForm(form, kTextLine) + inForm(form, kSend))),
            (Texts{trace + "CALL_REQ : phone_number = |1\n\n3|", trace + "SEND, dtvsv_handle = 1"}))
            << nameOf(form);
    }
}

TEST(LogReader, JoinsTheLinesOfATextAtTheEnd) {
    for (const LogForm form : kForms) {
        if (form == LogForm::kOther) {
            continue; // what stands before a text is not known
        }
        const std::string trace = std::string("trace ") + nameOf(form) + "|";
        EXPECT_EQ(
            ofBridge(readLog(inForm(form, kLastText) + inForm(form, "text", "Other") +
                             inForm(form, kSend))),
            (Texts{trace +
                       "SEND, TERMINATE_REC : save_data = 1, title_size = 5, title_name = 1\n3\n5",
                   trace + "SEND, dtvsv_handle = 1"}))
            << nameOf(form);
    }
}

TEST(LogReader, CountsTheLinesThatWereJoined) {
    const ReadLog log =
        readLog(inForm(LogForm::kThreadTime, kTextLine) + inForm(LogForm::kThreadTime, kSend));
    EXPECT_EQ(log.lines, (Texts{"1-3 trace threadtime|CALL_REQ : phone_number = |1\n\n3|",
                                "4 trace threadtime|SEND, dtvsv_handle = 1"}));
    EXPECT_EQ(log.counts.lines, 4u);
    EXPECT_EQ(log.counts.of_bridge, 2u);
    EXPECT_EQ(log.counts.understood, 2u);
}

TEST(LogReader, JoinsWhatWasWrapped) {
    const std::string header = "11-21 22:13:37.124  1234  1250 I Dtv_jni : ";
    const std::string line =
        ",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  40,SEND, BROADCAST_INFO : "
        "physical_channel = 32, service_no = 12";
    const Texts whole{"1-2 trace threadtime|SEND, BROADCAST_INFO : physical_channel = 32, "
                      "service_no = 12",
                      "3 foreign threadtime|next"};
    const std::string next = "11-21 22:13:37.125  999  999 I Other : next\n";
    for (size_t at = 40; at < line.size(); ++at) {
        if (line[at] != ' ') {
            EXPECT_EQ(
                readLog(header + line.substr(0, at) + "\n" + line.substr(at) + "\n" + next).lines,
                whole)
                << at;
        }
    }
    // Mail programs drop the blank at which they wrap.
    const size_t blank = line.find(" service_no");
    EXPECT_EQ(
        readLog(header + line.substr(0, blank) + "\n" + line.substr(blank + 1) + "\n" + next).lines,
        whole);
}

TEST(LogReader, JoinsWhatWasWrappedTwice) {
    const std::string line = kSend;
    EXPECT_EQ(
        readLog(line.substr(0, 50) + "\n" + line.substr(50, 20) + "\n" + line.substr(70) + "\n")
            .lines,
        (Texts{"1-3 trace raw|SEND, dtvsv_handle = 1"}));
}

TEST(LogReader, SaysThatALineIsShortened) {
    const ReadLog log = readLog(std::string(kLine) + "dtvsv_han\n" + kSend + "\n");
    EXPECT_EQ(log.lines,
              (Texts{"1 shortened raw|SEND, dtvsv_han", "2 trace raw|SEND, dtvsv_handle = 1"}));
    EXPECT_EQ(log.counts.of_bridge, 2u);
    EXPECT_EQ(log.counts.understood, 1u);
    EXPECT_EQ(log.counts.shortened, 1u);
}

TEST(LogReader, SaysThatALineIsNotKnown) {
    const ReadLog log =
        readLog(",TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  50,of another version\n"
                ",TENRIK,what is this\n");
    EXPECT_EQ(log.lines,
              (Texts{"1 notknown raw|,TENRIK,desk    ,DEBUG    ,dtvSvLibSelectChannel(),  50,of "
                     "another version",
                     "2 notknown raw|,TENRIK,what is this"}));
    EXPECT_EQ(log.counts.of_bridge, 2u);
    EXPECT_EQ(log.counts.understood, 0u);
    EXPECT_EQ(log.counts.shortened, 0u);
}

TEST(LogReader, MarksTheCutEnds) {
    const std::string line = kSend;
    EXPECT_EQ(
        readLog("DEBUG    ,dtvSvLibSelectChannel(),  50,SEND, dtvsv_handle = 1\n" + line + "\n" +
                line.substr(0, 60))
            .lines,
        (Texts{"1 foreign raw cut|DEBUG    ,dtvSvLibSelectChannel(),  50,SEND, dtvsv_handle = 1",
               "2 trace raw|SEND, dtvsv_handle = 1", "3 shortened raw cut|SEND"}));
    EXPECT_EQ(
        readLog(line + "\n" + line.substr(0, 20)).lines,
        (Texts{"1 trace raw|SEND, dtvsv_handle = 1", "2 notknown raw cut|" + line.substr(0, 20)}));
    // Its number may have had more digits.
    EXPECT_EQ(readLog("text, of(another)\n" + line).lines,
              (Texts{"1 foreign raw|text, of(another)", "2 trace raw cut|SEND, dtvsv_handle = 1"}));
}

TEST(LogReader, MarksACutHeader) {
    const std::string text = ",TENRIK,desk    ,FUNCEND  ,getRetCode(),  64,";
    const std::string whole = "11-21 22:13:37.123  3109  3110 W Dtv_jni : " + text + "\n";
    EXPECT_EQ(readLog(whole.substr(9) + whole).lines,
              (Texts{"1 trace other cut|", "2 trace threadtime|"}));
    EXPECT_EQ(readLog(whole + whole).lines, (Texts{"1 trace threadtime|", "2 trace threadtime|"}));
    const std::string header = "[ 11-21 22:13:37.123 3109: 3110 W/Dtv_jni ]\n";
    EXPECT_EQ(readLog(" 64,\n" + header + text + "\n").lines.front(), "1 foreign raw cut| 64,");
    const std::string process = "W( 3109) " + text + "  (Dtv_jni)";
    EXPECT_EQ(readLog(process + "\n" + process.substr(0, process.find("  (Dtv"))).lines.back(),
              "2 trace process cut|");
}

TEST(LogReader, ReadsALineWithoutItsBlanksAtTheEnd) {
    const std::string line = ",TENRIK,DtvEvent-1,INFO     ,getJNIEnv(),  68,"
                             "JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430";
    EXPECT_EQ(
        readLog(line + "\n").lines,
        (Texts{"1 trace raw|JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430"}));
}

TEST(LogReader, ReadsTheLogsNotesOfLoss) {
    const ReadLog log = readLog(
        "11-21 22:13:37.123  1234  1250 I chatty  : uid=10045(u0_a45) expire 12 lines\n"
        "11-21 22:13:37.123  1234  1250 I chatty  : uid=1000(system) Binder:1_2 identical 1 line\n"
        "I/chatty  ( 1234): uid=1000 expire 3 lines\n"
        "uid=1000 chatty expire 4 lines\n"
        "11-21 22:13:37.123  1234  1250 I Other   : expire 5 lines\n"
        "11-21 22:13:37.123  1234  1250 I chatty  : expire no lines\n"
        "11-21 22:13:37.123  1234  1250 I chatty  : expire 5\n");
    EXPECT_EQ(
        log.lines,
        (Texts{"1 dropped threadtime 12|uid=10045(u0_a45) expire 12 lines",
               "2 dropped threadtime 1 identical|uid=1000(system) Binder:1_2 identical 1 line",
               "3 dropped brief 3|uid=1000 expire 3 lines",
               "4 dropped raw 4|uid=1000 chatty expire 4 lines",
               "5 foreign threadtime|expire 5 lines", "6 foreign threadtime|expire no lines",
               "7 foreign threadtime|expire 5"}));
    EXPECT_EQ(log.counts.of_bridge, 0u);
    EXPECT_EQ(log.counts.lines, 7u);
}

TEST(LogReader, ReadsABugReport) {
    const std::string line = kSend;
    const ReadLog log = readLog("========================================================\n"
                                "== dumpstate: 2026-11-21 22:13:37\n"
                                "------ MEMORY INFO (/proc/meminfo) ------\n"
                                "MemTotal: 12345 kB\n"
                                "------ SYSTEM LOG (logcat -v threadtime -d *:v) ------\n"
                                "--------- beginning of main\n"
                                "11-21 22:13:37.124  1234  1250 I Dtv_jni : " +
                                line +
                                "\n"
                                "--------- beginning of system\n"
                                "11-21 22:13:37.125  1234  1250 I Dtv_jni : " +
                                line.substr(0, 70) +
                                "\n"
                                "------ EVENT LOG (logcat -b events) ------\n");
    EXPECT_EQ(log.lines[4], "5 section raw|------ SYSTEM LOG (logcat -v threadtime -d *:v) ------");
    EXPECT_EQ(log.lines[5], "6 section raw|--------- beginning of main");
    EXPECT_EQ(log.lines[6], "7 trace threadtime|SEND, dtvsv_handle = 1");
    EXPECT_EQ(log.lines[7], "8 section raw|--------- beginning of system");
    EXPECT_EQ(log.lines[8], "9 shortened threadtime|SEND, dtvsv_ha");
    EXPECT_EQ(log.lines[9], "10 section raw|------ EVENT LOG (logcat -b events) ------");
    EXPECT_EQ(log.counts.lines, 10u);
}

TEST(LogReader, CountsACopyOnce) {
    const std::string copy = "JNIDtvSvLibListener( 3109):<DtvEvent-1>ERROR     "
                             "[dtvsv_msgid_lib_scan_notify():  58] recv_size err!, recv_size = 3\n";
    const ReadLog log =
        readLog(copy + "JNIDtvSvLibListener( 3109):<DtvEvent-1>ERROR     [f():  58] ?\n");
    EXPECT_EQ(log.lines[0], "1 copy raw|recv_size err!, recv_size = 3");
    EXPECT_EQ(log.counts.of_bridge, 2u);
    EXPECT_EQ(log.counts.understood, 1u);
    EXPECT_EQ(log.counts.of_level[static_cast<size_t>(TraceLevel::kError)], 0u);
}

TEST(LogReader, ForeignLinesInTheLongFormHaveTheirHeader) {
    const TextFile file("[ 11-21 22:13:37.124  1234: 1250 I/Other  ]\none\ntwo\n\n" +
                        inForm(LogForm::kLong, kSend));
    LineSource source(file.path());
    LogReader reader(source);
    Texts lines;
    for (LogLine line; reader.next(line);) {
        lines.push_back(std::to_string(line.header.pid) + ":" + std::to_string(line.header.tid) +
                        " " + std::string(line.header.tag) + " " +
                        std::to_string(line.header.time ? line.header.time->nanoseconds : 0) + "|" +
                        std::string(line.text));
    }
    const std::string other = "1234:1250 Other 974844817124000000|";
    const std::string own = "1234:1250 Dtv_jni 974844817124000000|";
    EXPECT_EQ(lines, (Texts{other, other + "one", other + "two", other, own, own + kSend, own}));
}

TEST(LogReader, ReadsZeroBytesAndNothing) {
    EXPECT_EQ(readLog("").lines, Texts{});
    EXPECT_EQ(readLog("\n").lines, (Texts{"1 foreign raw|"}));
    const ReadLog log = readLog(std::string(4, '\0') + kSend + "\n");
    EXPECT_EQ(log.lines, (Texts{"1 trace other|SEND, dtvsv_handle = 1"}));
}

} // namespace
