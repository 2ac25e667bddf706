// The calls and events that the lines of a trace show when lines are missing.
#include "sessions/tests/log/activity_steps.h"

namespace {

using Steps = std::vector<std::string>;

const std::string kWhole = R"(
    desk START dtvSvLibCreate|
    desk DEBUG dtvSvLibCreate|SEND, start_type = 0 max_delay_time = 100
    desk START getRetCode|(param)ret = 0
    desk END getRetCode|
    desk END dtvSvLibCreate|ret = 0
    Event START recvEventFromServer|pid = 3109, threadid = a17ff6c0, event_id = 1000004f, recv_size = 8
    Event START getJNIEnv|
    Event INFO getJNIEnv|Got JNIEnv! threadid=a17ff6c0 env=0x7f3e3c001430
    Event START DoListenerEvent|
    Event START dtvsv_msgid_lib_common_reply|
    Event DEBUG dtvsv_msgid_lib_common_reply|dtvsv_handle = 1, result = 0
    Event DEBUG CallMethod|CallMethod, method_id = 114, class_id = 47, attr_id = 0
    Event INFO CallMethod|CallMethod, NewObject
    Event INFO setJavaMethod|setJavaMethod
    Event DEBUG CallMethod|CallMethod, method_id = 45, class_id = 0, attr_id = 1
    Event DEBUG CallMethod|CallMethod, CallStaticMethod, type_id = 0
    Event END dtvsv_msgid_lib_common_reply|ret = 0
    Event END DoListenerEvent|
    Event END recvEventFromServer|
    desk START dtvSvLibStartScan|hdl = 1
    desk DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 1
    desk START getRetCode|(param)ret = 0
    desk END getRetCode|
    desk END dtvSvLibStartScan|ret = 0
    desk START dtvSvLibCancelScan_Sync|hdl = 1
    desk DEBUG dtvSvLibCancelScan_Sync|SEND, dtvsv_handle = 1
    desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_size = 8
    desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_data.handle = 0
    desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_data.return_value = 1
    desk END dtvSvLibCancelScan_Sync|ret = 0
    desk START makeComReplyObjSync|
    desk START makeComSubReplyObjSync|message_id = 0x1000000e
    desk DEBUG makeComSubReplyObjSync|retvalue = 0
    desk DEBUG makeComSubReplyObjSync|com_data->handle = 1
    desk DEBUG makeComSubReplyObjSync|com_data->return_value = 0
    desk DEBUG CallMethod|CallMethod, method_id = 218, class_id = 137, attr_id = 0
    desk INFO CallMethod|CallMethod, NewObject
    desk INFO setJavaMethod|setJavaMethod
    desk END makeComSubReplyObjSync|
    desk END makeComReplyObjSync|)";

/// The lines without those of a level.
std::string without(const std::string& lines, const std::vector<std::string>& levels) {
    std::istringstream input(lines);
    std::string kept;
    for (std::string line; std::getline(input, line);) {
        bool keep = true;
        for (const std::string& level : levels) {
            keep = keep && line.find(" " + level + " ") == std::string::npos;
        }
        kept += keep ? line + "\n" : "";
    }
    return kept;
}

/// The lines without the `count` lines from the one with that number, from 1.
std::string lacking(const std::string& lines, int number, int count = 1) {
    std::istringstream input(lines.substr(1));
    std::string kept;
    int at = 0;
    for (std::string line; std::getline(input, line);) {
        ++at;
        kept += at < number || at >= number + count ? line + "\n" : "another program's\n";
    }
    return kept;
}

TEST(PartialActivity, TheWholeLacksNothing) {
    EXPECT_EQ(stepsOf(kWhole),
              (Steps{"command Create", "end Create 1-5", "event CreateReply h=1",
                     "end CreateReply h=1 6-19", "command StartScan h=1", "end StartScan h=1 20-24",
                     "command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
                     "end CancelScan_Sync h=1 25-40"}));
}

TEST(PartialActivity, WithoutDebug) {
    EXPECT_EQ(
        stepsOf(without(kWhole, {"DEBUG"})),
        (Steps{"command Create", "end Create 1-4", "event CreateReply", "end CreateReply 5-14",
               "command StartScan h=1", "end StartScan h=1 15-18", "command CancelScan_Sync h=1",
               "answer CancelScan_Sync h=1 ret=0", "end CancelScan_Sync h=1 19-26"}));
}

TEST(PartialActivity, WithoutInfo) {
    EXPECT_EQ(stepsOf(without(kWhole, {"INFO"})),
              (Steps{"command Create", "end Create 1-5", "event CreateReply h=1",
                     "end CreateReply h=1 6-16", "command StartScan h=1", "end StartScan h=1 17-21",
                     "command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
                     "end CancelScan_Sync h=1 22-35"}));
}

TEST(PartialActivity, DebugAlone) {
    EXPECT_EQ(
        stepsOf(without(kWhole, {"START", "END", "INFO", "ERROR"})),
        (Steps{"command Create", "event h=1", "end Create 1-1 no begin no end",
               "command StartScan h=1", "end StartScan h=1 6-6 no begin no end",
               "end h=1 2-5 no begin no end", "command CancelScan_Sync h=1",
               "answer CancelScan_Sync h=1", "end CancelScan_Sync h=1 7-14 no begin no end"}));
}

TEST(PartialActivity, AShortenedFault) {
    EXPECT_EQ(stepsOf(R"(
        desk START JNI_OnLoad|
        desk DEBUG setJavaMethod|setJavaMethod, GetMethodID error!, class_id = 1, meth
        desk END JNI_OnLoad|)"),
              (Steps{"load", "end 1-3 fault 2"}));
}

TEST(PartialActivity, ErrorsAlone) {
    EXPECT_EQ(stepsOf(R"(
        Event ERROR dtvsv_msgid_lib_select_channel_reply|recv_size err!, recv_size = 3
        Event ERROR getJNIEnv|AttachCurrentThread() error! index=3)"),
              (Steps{"event SelectChannelReply", "refused event SelectChannelReply",
                     "end SelectChannelReply 1-1 no begin no end fault 1", "event", "refused event",
                     "end 2-2 no begin no end fault 2"}));
}

TEST(PartialActivity, WithoutEnds) {
    EXPECT_EQ(
        stepsOf(without(kWhole, {"END"})),
        (Steps{"command Create", "event CreateReply h=1", "3 lacks its end",
               "end Create 1-3 no end", "command StartScan h=1", "17 lacks its end",
               "end StartScan h=1 15-17 no end", "8 lacks its end",
               "end CreateReply h=1 4-14 no end", "24 lacks its end", "command CancelScan_Sync h=1",
               "answer CancelScan_Sync h=1", "end CancelScan_Sync h=1 18-30 no end"}));
}

TEST(PartialActivity, AnEventAfterOneWithoutItsEnd) {
    const size_t begin = kWhole.find("    Event");
    const std::string event = "\n" + kWhole.substr(begin, kWhole.find("    desk", begin) - begin);
    EXPECT_EQ(stepsOf(lacking(event, 14) + event),
              (Steps{"event CreateReply h=1", "1 lacks its end", "end CreateReply h=1 1-13 no end",
                     "event CreateReply h=1", "end CreateReply h=1 15-28"}));
    // Without any ends, no event is taken for one within the other.
    EXPECT_EQ(
        stepsOf(without(event + event + event, {"END"})),
        (Steps{"event CreateReply h=1", "5 lacks its end", "end CreateReply h=1 1-11 no end",
               "event CreateReply h=1", "16 lacks its end", "end CreateReply h=1 12-22 no end",
               "event CreateReply h=1", "27 lacks its end", "end CreateReply h=1 23-33 no end"}));
}

TEST(PartialActivity, WithoutBegins) {
    EXPECT_EQ(
        stepsOf(without(kWhole, {"START"})),
        (Steps{"command Create", "end Create 1-3 no begin", "event h=1", "end h=1 5-13 no begin",
               "command StartScan h=1", "end StartScan h=1 14-16 no begin",
               "command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
               "end CancelScan_Sync h=1 17-29 no begin"}));
}

/// The steps that the whole does not have.
std::string changes(const Steps& whole, const Steps& steps) {
    std::string text;
    for (const std::string& step : steps) {
        if (std::find(whole.begin(), whole.end(), step) == whole.end()) {
            text += (text.empty() ? "" : "; ") + step;
        }
    }
    return text;
}

TEST(PartialActivity, ALineThatIsLost) {
    // Each begin without its end and each end without its begin is named, and no other call is
    // concerned. The first line of all may be missing because the log begins there.
    const Steps whole = stepsOf(kWhole);
    std::string all;
    for (int number = 1; number <= 40; ++number) {
        const std::string lost = changes(whole, stepsOf(lacking(kWhole, number)));
        all += lost.empty() ? "" : std::to_string(number) + ": " + lost + "\n";
    }
    EXPECT_EQ(
        all,
        "1: end Create 2-5 no begin\n"
        "3: 4 lacks its begin\n"
        "4: 3 lacks its end\n"
        "5: 1 lacks its end; end Create 1-4 no end\n"
        "6: 9 lacks its begin; event h=1; end h=1 9-19 no begin\n"
        "9: 18 lacks its begin\n"
        "10: 17 lacks its begin\n"
        "11: event CreateReply; end CreateReply 6-19\n"
        "17: 10 lacks its end\n"
        "18: 9 lacks its end\n"
        "19: 6 lacks its end; end CreateReply h=1 6-18 no end\n"
        "20: 21 lacks its begin; end StartScan h=1 21-24 no begin\n"
        "22: 23 lacks its begin\n"
        "23: 22 lacks its end\n"
        "24: 20 lacks its end; end StartScan h=1 20-23 no end\n"
        "25: 26 lacks its begin; end CancelScan_Sync h=1 26-40 no begin\n"
        "30: 25 lacks its end; answer CancelScan_Sync h=1; end CancelScan_Sync h=1 25-40 no end\n"
        "31: 40 lacks its begin\n"
        "32: 39 lacks its begin\n"
        "39: 32 lacks its end\n"
        "40: 31 lacks its end; end CancelScan_Sync h=1 25-39\n");
}

} // namespace
