// What says that lines are missing, and that a whole log has none of it.
#include "desk/explain/tests/short_log.h"

#include <gtest/gtest.h>

namespace explain::tests {
namespace {

using Texts = std::vector<std::string>;

Verdict verdictIn(const std::string& short_lines) {
    return verdictOf(*explain(logOf(short_lines)));
}

/// A log without the lines that hold one of the texts.
std::string without(const std::string& log, const std::vector<std::string>& texts) {
    std::string kept;
    for (size_t begin = 0; begin < log.size();) {
        const size_t end = log.find('\n', begin) + 1;
        const std::string line = log.substr(begin, end - begin);
        bool drop = false;
        for (const std::string& text : texts) {
            drop = drop || line.find(text) != std::string::npos;
        }
        kept += drop ? "" : line;
        begin = end;
    }
    return kept;
}

Texts lossesWithout(const std::vector<std::string>& texts) {
    return lossesOf(*explain(without(logOf(opened() + released()), texts)));
}

TEST(Coverage, AWholeLogLacksNothing) {
    EXPECT_EQ(lossesIn(opened() + released()), Texts{});
    EXPECT_EQ(verdictIn(opened() + released()), Verdict::kClean);
}

TEST(Coverage, LevelsThatAreMissing) {
    EXPECT_EQ(lossesWithout({"DEBUG"}), (Texts{"levels-missing: there is no line of DEBUG"}));
    EXPECT_EQ(lossesWithout({"INFO"}), (Texts{"levels-missing: there is no line of INFO"}));
    EXPECT_EQ(lossesWithout({"FUNCSTART", "FUNCEND"}),
              (Texts{"levels-missing: there is no line of FUNCSTART, FUNCEND"}));
    EXPECT_EQ(lossesWithout({"FUNCEND"}), (Texts{"levels-missing: there is no line of FUNCEND"}));
    // Nothing that is reported at INFO has happened.
    EXPECT_EQ(lossesIn(load()), Texts{});
}

TEST(Coverage, LinesThatTheLogDropped) {
    const std::string dropped = "=11-21 22:00:00.000  3109  3109 I chatty  : uid=10045(u0_a45) "
                                "expire 12 lines\n";
    EXPECT_EQ(lossesIn(opened() + dropped + released()),
              (Texts{"chatty, line 25: the log dropped 12 lines or more"}));
    EXPECT_EQ(lossesIn(opened() + dropped + dropped + released()),
              (Texts{"chatty, line 25, 2 times: the log dropped 24 lines or more"}));
    EXPECT_EQ(verdictIn(opened() + dropped + released()), Verdict::kCannotTell);
}

TEST(Coverage, ALineThatIsCut) {
    const std::string whole = logOf(opened() + released());
    EXPECT_EQ(lossesOf(*explain(whole.substr(0, whole.size() - 8))),
              (Texts{"cut-line, line 42: a line is cut where the log begins or ends",
                     "begin-without-end, line 30: recvEventFromServer() begins and does not end"}));
    EXPECT_EQ(lossesOf(*explain(whole.substr(60))).front(),
              "cut-line, line 1: a line is cut where the log begins or ends");
    const std::string shortened =
        "desk DEBUG dtvSvLibControlLNA:128|SEND, LNA_MODE : dtvsv_handle = 1, lna_\n";
    EXPECT_EQ(lossesIn(opened() + shortened).front(),
              "cut-line, line 25: the end of a line is missing");
}

TEST(Coverage, ATimeWithoutALine) {
    EXPECT_EQ(lossesIn(opened() + "@60\n" + released()), Texts{});
    EXPECT_EQ(lossesIn(opened() + "@60.001\n" + released()),
              (Texts{"gap, line 25: 60.00 s without a line, or the clock was set forward"}));
    EXPECT_EQ(verdictIn(opened() + "@60.001\n" + released()), Verdict::kCannotTell);
}

TEST(Coverage, ATimeThatJumpsBack) {
    EXPECT_EQ(lossesIn("@10\n" + opened() + "@9\n" + released()), Texts{});
    EXPECT_EQ(lossesIn("@10\n" + opened() + "@8.999\n" + released()),
              (Texts{"time-jump, line 25: the clock goes back by 1.00 s"}));
}

TEST(Coverage, AnotherPartOfTheLogHasItsOwnTimes) {
    EXPECT_EQ(lossesIn("@10\n" + opened() + "=--------- beginning of system\n@5\n" + released()),
              Texts{});
}

TEST(Coverage, TheYearMayEnd) {
    std::string log = logOf(opened() + released());
    const size_t place = log.find("11-21 22", log.size() / 2);
    for (size_t at = 0; (at = log.find("11-21 22", at)) != std::string::npos; ++at) {
        log.replace(at, 5, at < place ? "12-31" : "01-01");
    }
    EXPECT_EQ(lossesOf(*explain(log)), Texts{});
}

TEST(Coverage, ABeginWithoutItsEndAndAnEndWithoutItsBegin) {
    const std::string call = "desk START getRetCode:42|(param)ret = 0\n";
    const std::string whole = opened() + released();
    const size_t end = whole.rfind("desk END getRetCode:64|");
    EXPECT_EQ(lossesIn(whole.substr(0, end) + whole.substr(whole.find('\n', end) + 1)),
              (Texts{"begin-without-end, line 27: getRetCode() begins and does not end"}));
    const size_t begin = whole.rfind("desk START getRetCode:42|");
    EXPECT_EQ(lossesIn(whole.substr(0, begin) + whole.substr(whole.find('\n', begin) + 1)),
              (Texts{"end-without-begin, line 27: getRetCode() ends and does not begin"}));
}

TEST(Coverage, ACommandWithoutItsReplyAndAReplyWithoutItsCommand) {
    EXPECT_EQ(lossesIn(opened() + command("Release", 1)),
              (Texts{"command-without-reply, line 26: a Release without its reply, or it never "
                     "came"}));
    EXPECT_EQ(lossesIn(opened() + reply("10000065", 1) + released()),
              (Texts{"reply-without-command, line 25: a ControlLNAReply without its command"}));
}

TEST(Coverage, ACreateWhoseSessionIsUsed) {
    EXPECT_EQ(
        lossesIn(load() + command("Create", "", "start_type = 0 max_delay_time = 100") +
                 event("1000008a", 4, R"(
        Event START dtvsv_msgid_lib_bml_end_fep_notify:192|recv_size = 4
        Event DEBUG dtvsv_msgid_lib_bml_end_fep_notify:195|handle = 1
        Event END dtvsv_msgid_lib_bml_end_fep_notify:57|ret = 0)") +
                 released()),
        (Texts{"command-without-reply, line 8: a Create without its reply, though its session "
               "was opened"}));
}

TEST(Coverage, LinesOfAnotherBridge) {
    EXPECT_EQ(lossesIn(opened() + "desk DEBUG dtvSvLibCreate:300|a line of a later version\n" +
                       released()),
              (Texts{"not-known, line 25: a line that this version of the bridge cannot write"}));
    EXPECT_EQ(verdictIn(opened() + "desk DEBUG dtvSvLibCreate:300|a line of a later version\n" +
                        released()),
              Verdict::kCannotTell);
}

TEST(Coverage, FindingsAreFoundInWhatThereIs) {
    EXPECT_EQ(verdictIn(opened() + "desk DEBUG dtvSvLibCreate:300|a line of a later version\n" +
                        "java.lang.IllegalStateException: no view\n"
                        "at tenrik.service.dtvserver.BGCallBack.onEvDtvsvScanNotify"
                        "(BGCallBack.java:95)\n" +
                        released()),
              Verdict::kFound);
}

TEST(Coverage, NothingOfTheBridge) {
    EXPECT_EQ(verdictIn("a line of another program\n"), Verdict::kCannotTell);
    EXPECT_EQ(verdictOf(*explain("")), Verdict::kCannotTell);
    EXPECT_EQ(verdictOf(*explain(std::string(1000, '\0'))), Verdict::kCannotTell);
}

} // namespace
} // namespace explain::tests
