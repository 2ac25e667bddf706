// What the service and the Java side do wrong, and on the other side of each limit nothing.
#include "desk/explain/tests/short_log.h"

#include <gtest/gtest.h>

namespace explain::tests {
namespace {

using Texts = std::vector<std::string>;

const std::string kReleaseReply = "10000050";
const std::string kDecodeScreenReply = "1000005d";
const std::string kLnaReply = "10000065";

/// Commands with a reply event that need nothing before them.
std::string lna(int handle) {
    return command("ControlLNA", "hdl = " + std::to_string(handle),
                   "LNA_MODE : dtvsv_handle = " + std::to_string(handle) + ", lna_mode = 1");
}

std::string tunerLog(int handle) {
    return command("SetTunerLog", "hdl = " + std::to_string(handle),
                   "TUNER_LOG : dtvsv_handle = " + std::to_string(handle) + ", set_log = 1");
}

TEST(CommandRules, ServiceStopped) {
    EXPECT_EQ(
        findingsIn(opened() + lna(1) + tunerLog(1)).front(),
        "1 error service-stopped ControlLNA, session 1, desk, lines 26, dtvSvLibControlLNA:128, "
        "the last event is at line 12; 2 commands had no answer");
    // One command without an answer may be lost by itself.
    EXPECT_EQ(findingsIn(opened() + lna(1)), Texts{});
    // An event comes after them: the service runs.
    for (const std::string& finding :
         findingsIn(opened() + lna(1) + tunerLog(1) + reply("1000008d", 1))) {
        EXPECT_EQ(finding.find("service-stopped"), std::string::npos) << finding;
    }
}

std::string notTaken(int ret) {
    return R"(
        desk START dtvSvLibStartScan:129|hdl = 1
        desk DEBUG dtvSvLibStartScan:128|SEND, dtvsv_handle = 1
        desk START getRetCode:42|(param)ret = 1
        desk END getRetCode:64|
        desk END dtvSvLibStartScan:141|ret = )" +
           std::to_string(ret) + "\n";
}

TEST(CommandRules, CommandNotTaken) {
    EXPECT_EQ(findingsIn(opened() + notTaken(-1) + released()),
              (Texts{"1 error command-not-taken StartScan, session 1, desk, lines 29, "
                     "dtvSvLibStartScan:141, ret = -1"}));
    EXPECT_EQ(findingsIn(opened() + notTaken(-1) + notTaken(1) + released()),
              (Texts{"1 error command-not-taken StartScan, session 1, desk, lines 29 34, "
                     "dtvSvLibStartScan:141, ret = -1"}));
    EXPECT_EQ(findingsIn(opened() + command("SetFirstComponent", 1) + released()), Texts{});
}

TEST(CommandRules, NoReply) {
    const std::string never =
        "1 error no-reply ControlLNA, session 1, desk, lines 26, "
        "dtvSvLibControlLNA:128, SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1";
    EXPECT_EQ(findingsIn(opened() + lna(1) + released()), Texts{never});
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 1) + released()), Texts{});
    // That of another session is none.
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 2) + released()).front(), never);
}

TEST(CommandRules, ACommandAtTheEndOfTheLogMayBeAnsweredLater) {
    const std::string slowest = "@1\n" + lna(1) + "@1.5\n" + reply(kLnaReply, 1) + "@2\n" + lna(1);
    const std::string call = "desk START dtvSvLibCancelScan:129|hdl = 1\n"
                             "desk DEBUG dtvSvLibCancelScan:128|SEND, dtvsv_handle = 1\n"
                             "desk END dtvSvLibCancelScan:141|ret = 0\n";
    // Others were answered after half a second.
    EXPECT_EQ(findingsIn(opened() + slowest + "@2.5\n" + call), Texts{});
    EXPECT_EQ(findingsIn(opened() + slowest + "@2.501\n" + call).size(), 1U);
    EXPECT_EQ(findingsIn(opened() + slowest), Texts{});
}

std::string synchronous(const std::string& answer) {
    return R"(
        desk START dtvSvLibCancelScan_Sync:129|hdl = 1
        desk DEBUG dtvSvLibCancelScan_Sync:128|SEND, dtvsv_handle = 1
)" + answer;
}

std::string answerOf(int value) {
    return synchronous(R"(
        desk DEBUG dtvSvLibCancelScan_Sync:65|RECV, reply_size = 8
        desk DEBUG dtvSvLibCancelScan_Sync:29|RECV, reply_data.handle = 1
        desk DEBUG dtvSvLibCancelScan_Sync:30|RECV, reply_data.return_value = 0
        desk END dtvSvLibCancelScan_Sync:141|ret = 0
        desk START makeComReplyObjSync:112|
        desk START makeComSubReplyObjSync:68|message_id = 0x10000039
        desk DEBUG makeComSubReplyObjSync:70|retvalue = 0
        desk DEBUG makeComSubReplyObjSync:71|com_data->handle = 1
        desk DEBUG makeComSubReplyObjSync:72|com_data->return_value = )" +
                       std::to_string(value) + R"(
        desk END makeComSubReplyObjSync:99|
        desk END makeComReplyObjSync:116|
)");
}

TEST(CommandRules, EmptyAnswer) {
    const std::string empty = synchronous(R"(
        desk DEBUG dtvSvLibCancelScan_Sync:65|RECV, reply_size = 0
        desk DEBUG dtvSvLibCancelScan_Sync:29|RECV, reply_data.handle = 0
        desk DEBUG dtvSvLibCancelScan_Sync:30|RECV, reply_data.return_value = 0
        desk END dtvSvLibCancelScan_Sync:68|return DTVSVLIB_RESULT_ABORT_NG
        desk START makeComReplyObjSync:112|
        desk START makeComReplyObjSync:121|make param NG message_id = 0x10000039
        desk END makeComReplyObjSync:116|
)");
    const std::vector<std::string> scan = {command("StartScan", 1), event("10000051", 12, R"(
        Event START dtvsv_msgid_lib_start_scan_reply:62|
        Event DEBUG dtvsv_msgid_lib_start_scan_reply:64|handle = 1, result = 0, channnel_num = 50
        Event END dtvsv_msgid_lib_start_scan_reply:57|ret = 0
)")};
    EXPECT_EQ(findingsIn(opened() + scan[0] + scan[1] + empty + released()),
              (Texts{"1 error empty-answer CancelScan_Sync, session 1, desk, lines 47, "
                     "makeComReplyObjSync:116"}));
    EXPECT_EQ(findingsIn(opened() + scan[0] + scan[1] + answerOf(0) + released()), Texts{});
    // The result of a synchronous command.
    EXPECT_EQ(findingsIn(opened() + scan[0] + scan[1] + answerOf(3) + released()),
              (Texts{"1 error command-failed CancelScan_Sync, session 1, desk, lines 51, "
                     "makeComReplyObjSync:116, return_value = 3"}));
}

TEST(CommandRules, CommandFailedAndArgumentRejected) {
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 1, -1) + released()),
              (Texts{"1 error command-failed ControlLNA, session 1, Event, lines 30, "
                     "recvEventFromServer:49, result = -1"}));
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 1, 5) + released()),
              (Texts{"1 provoked argument-rejected ControlLNA, session 1, Event, lines 30, "
                     "recvEventFromServer:49, result = 5"}));
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 1, 0) + released()), Texts{});
}

TEST(CommandRules, OneFindingForEachResultOfACommand) {
    EXPECT_EQ(findingsIn(opened() + lna(1) + reply(kLnaReply, 1, 2) + lna(1) +
                         reply(kLnaReply, 1, 3) + lna(1) + reply(kLnaReply, 1, 2) + released()),
              (Texts{"1 error command-failed ControlLNA, session 1, Event, lines 30 66, "
                     "recvEventFromServer:49, result = 2",
                     "2 error command-failed ControlLNA, session 1, Event, lines 48, "
                     "recvEventFromServer:49, result = 3"}));
}

std::string answeredAfter(const std::string& seconds) {
    return opened() + "@1\n" + lna(1) + "@" + seconds + "\n" + reply(kLnaReply, 1) + released();
}

TEST(CommandRules, SlowReply) {
    EXPECT_EQ(findingsIn(answeredAfter("2")),
              (Texts{"1 warning slow-reply ControlLNA, session 1, desk, lines 26, "
                     "dtvSvLibControlLNA:128, answered after 1.00 s at line 30"}));
    EXPECT_EQ(findingsIn(answeredAfter("1.999")), Texts{});
    EXPECT_EQ(findingsOf(*explain(logOf(answeredAfter("2")), 1.001)), Texts{});
    EXPECT_EQ(findingsOf(*explain(logOf(answeredAfter("1.5")), 0.5)).size(), 1U);
}

TEST(CommandRules, ALatencyAcrossAJumpInTimeIsNotKnown) {
    // 61 seconds without a line, or the clock was set.
    EXPECT_EQ(findingsIn(answeredAfter("62")), Texts{});
    EXPECT_EQ(explain(logOf(answeredAfter("62")))->analysis.latencies().count("ControlLNA"), 0U);
}

TEST(CommandRules, OfEqualCommandsThatWaitTheYoungestMayBeAnswered) {
    // The first reply comes 1.5 s after the first command, 0.5 s after the second.
    EXPECT_EQ(findingsIn(opened() + "@1\n" + lna(1) + "@2\n" + lna(1) + "@2.5\n" +
                         reply(kLnaReply, 1) + "@2.6\n" + reply(kLnaReply, 1) + released()),
              Texts{});
}

TEST(CommandRules, FieldMissing) {
    EXPECT_EQ(findingsIn(opened() + R"(
        desk START dtvSvLibSelectChannel:129|hdl = 1
        desk START getRetCode:42|(param)ret = 5
        desk END getRetCode:64|
        desk DEBUG dtvSvLibSelectChannel:68|physical_channel fieldID is NULL, ret = 5
)" + released()),
              (Texts{"1 error java-field-missing SelectChannel, session 1, desk, lines 28, "
                     "dtvSvLibSelectChannel:68, physical_channel fieldID is NULL, ret = 5"}));
    EXPECT_EQ(findingsIn(opened() + R"(
        desk START dtvSvLibCancelScan:129|hdl = 1
        desk DEBUG dtvSvLibCancelScan:128|SEND, dtvsv_handle = 1
        desk START getRetCode:42|(param)ret = 0
        desk DEBUG getRetCode:56|RESULT's field_id is NULL, ret = 0
        desk END dtvSvLibCancelScan:141|ret = 0
)" + released()),
              (Texts{"1 error java-field-missing BG_TE_DTVSVLIB_RESULT, session 1, desk, lines 28, "
                     "getRetCode:56, RESULT's field_id is NULL, ret = 0"}));
}

TEST(CommandRules, SurfaceRefused) {
    EXPECT_EQ(findingsIn(opened() + R"(
        desk START dtvSvLibSetScreenDisplay:129|hdl = 1
        desk START setScreenDrawingInfo:38|
        desk START setSurface:103|
        desk DEBUG setSurface:121|surface_object is NULL, ret = 1
        desk START getRetCode:42|(param)ret = 5
        desk END getRetCode:64|
)" + released()),
              (Texts{"1 error surface-refused SetScreenDisplay, session 1, desk, lines 28, "
                     "setSurface:121, surface_object is NULL, ret = 1"}));
}

TEST(CommandRules, NativeThrew) {
    const std::string error = "java.lang.NoSuchFieldError: mSurface\n";
    const std::string frame =
        "at tenrik.service.dtvserver.DtvServerProxy.DtvSvLib_SetScreenDisplay";
    EXPECT_EQ(findingsIn(opened() + error + frame + "(Native Method)\n" + released()),
              (Texts{"1 error native-threw SetScreenDisplay, lines 26, "
                     "java.lang.NoSuchFieldError: mSurface"}));
    EXPECT_EQ(findingsIn(opened() + error + frame + "(DtvServerProxy.java:12)\n" + released()),
              Texts{});
}

TEST(CommandRules, CommandAfterRelease) {
    const std::string found =
        "1 provoked command-after-release ControlLNA, session 1, desk, lines 44, "
        "dtvSvLibControlLNA:128, SEND, LNA_MODE : dtvsv_handle = 1, lna_mode = 1";
    EXPECT_EQ(findingsIn(opened() + released() + lna(1) + reply(kLnaReply, 1)), Texts{found});
    EXPECT_EQ(findingsIn(opened() + released() + session(1) + lna(1) + reply(kLnaReply, 1)),
              Texts{});
}

TEST(CommandRules, CommandWithoutSession) {
    EXPECT_EQ(findingsIn(opened() + lna(2) + reply(kLnaReply, 2) + released()),
              (Texts{"1 provoked command-without-session ControlLNA, session 2, desk, lines 26, "
                     "dtvSvLibControlLNA:128, SEND, LNA_MODE : dtvsv_handle = 2, lna_mode = 1"}));
    // A log that begins later does not show which sessions there are.
    EXPECT_EQ(findingsIn(session(1) + lna(2) + reply(kLnaReply, 2) + released()), Texts{});
}

TEST(CommandRules, CommandOutOfPlace) {
    const std::string pause = command("PausePlay", "hdl = 1", "PAUSE_PLAY : dtvsv_handle = 1");
    EXPECT_EQ(findingsIn(opened() + pause + reply("1000006f", 1, 1) + released()),
              (Texts{"1 provoked command-out-of-place PausePlay, session 1, desk, lines 26, "
                     "dtvSvLibPausePlay:128, SEND, PAUSE_PLAY : dtvsv_handle = 1",
                     "2 provoked command-failed PausePlay, session 1, Event, lines 30, "
                     "recvEventFromServer:49, result = 1 <- 1: the same command"}));
    // The service takes it: then it was not out of place.
    EXPECT_EQ(findingsIn(opened() + pause + reply("1000006f", 1) + released()), Texts{});
}

TEST(CommandRules, ArgumentRefused) {
    const std::string refused = R"(
        desk START dtvSvLibSelectChannel:129|hdl = 1
        desk START getRetCode:42|(param)ret = 5
        desk END getRetCode:64|
        desk DEBUG dtvSvLibSelectChannel:68|physical_channel is too large : 63, ret = 5
)";
    EXPECT_EQ(findingsIn(opened() + refused + refused + released()),
              (Texts{"1 provoked argument-refused SelectChannel, session 1, desk, lines 28 32, "
                     "dtvSvLibSelectChannel:68, physical_channel is too large : 63, ret = 5"}));
    EXPECT_EQ(verdictOf(*explain(logOf(opened() + refused + released()))), Verdict::kFound);
}

TEST(CommandRules, CommandsWithoutAnEndOfThem) {
    std::string log = logOf(session(1));
    const std::string one = logOf(lna(1));
    for (int i = 0; i < 20000; ++i) {
        log += one;
    }
    const auto explained = explain(log);
    const std::vector<Finding>& findings = explained->analysis.findings();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(nameOf(findings.front().severity) + (" " + findings.front().key.subject),
              "error ControlLNA");
    EXPECT_STREQ(textOf(findings.front().key.rule).name, "service-stopped");
    EXPECT_EQ(findings.front().first.line, 20U);
}

TEST(CommandRules, ManyFindingsArePutTogether) {
    std::string log = load();
    for (int i = 0; i < 2000; ++i) {
        char id[16];
        std::snprintf(id, sizeof id, "2%07x", i);
        log += event(id, 4, "");
    }
    const auto explained = explain(logOf(log));
    const std::vector<Finding>& findings = explained->analysis.findings();
    ASSERT_EQ(findings.size(), 501U);
    uint64_t all = 0;
    for (const Finding& finding : findings) {
        all += finding.count;
    }
    EXPECT_EQ(all, 2000U);
    EXPECT_EQ(findings.back().key.subject, "(others)");
    EXPECT_EQ(findings.back().count, 1500U);
}

TEST(CommandRules, KeepsTheLinesOfTheFirstTwenty) {
    std::string many = opened();
    for (int i = 0; i < 25; ++i) {
        many += notTaken(-1);
    }
    const auto explained = explain(logOf(many + released()));
    const std::vector<Finding>& findings = explained->analysis.findings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 25U);
    EXPECT_EQ(findings[0].lines.size(), 20U);
    EXPECT_EQ(findings[0].lines.back(), 24U + 20 * 5);
    EXPECT_EQ(findings[0].last_line, 24U + 25 * 5);
}

} // namespace
} // namespace explain::tests
