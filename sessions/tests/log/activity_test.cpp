// The calls and events that the lines of a trace show, whole ones first.
#include "sessions/tests/log/activity_steps.h"

namespace {

using Steps = std::vector<std::string>;

constexpr char kCreate[] = R"(
    desk START dtvSvLibCreate|
    desk DEBUG dtvSvLibCreate|SEND, start_type = 0 max_delay_time = 100
    desk START getRetCode|(param)ret = 0
    desk END getRetCode|
    desk END dtvSvLibCreate|ret = 0)";
constexpr char kCreateReply[] = R"(
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
    Event END recvEventFromServer|)";

TEST(Activity, ACommandAndTheEventThatReportsIt) {
    EXPECT_EQ(stepsOf(std::string(kCreate) + kCreateReply),
              (Steps{"command Create", "end Create 1-5", "event CreateReply h=1",
                     "end CreateReply h=1 6-19"}));
}

TEST(Activity, AReplyBeforeItsCommandHasReturned) {
    const std::string whole = kCreate;
    const size_t place = whole.find("    desk START getRetCode");
    EXPECT_EQ(stepsOf(whole.substr(0, place) + (kCreateReply + 1) + "\n" + whole.substr(place)),
              (Steps{"command Create", "event CreateReply h=1", "end CreateReply h=1 3-16",
                     "end Create 1-19"}));
}

TEST(Activity, ARefusedArgument) {
    EXPECT_EQ(stepsOf(R"(
        desk START dtvSvLibSelectChannel|hdl = 1
        desk START getRetCode|(param)ret = 5
        desk END getRetCode|
        desk DEBUG dtvSvLibSelectChannel|physical_channel is too large : 63, ret = 5
        desk START dtvSvLibStartScan|hdl = 1
        desk DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 1
        desk START getRetCode|(param)ret = 0
        desk END getRetCode|
        desk END dtvSvLibStartScan|ret = 0)"),
              (Steps{"end SelectChannel h=1 1-4 no end refused fault 4", "command StartScan h=1",
                     "end StartScan h=1 5-9"}));
}

TEST(Activity, ACommandThatWasNotTaken) {
    EXPECT_EQ(
        stepsOf(R"(
        desk START dtvSvLibStartScan|hdl = 1
        desk DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 1
        desk START getRetCode|(param)ret = 1
        desk END getRetCode|
        desk END dtvSvLibStartScan|ret = -1)"),
        (Steps{"command StartScan h=1", "answer StartScan h=1 ret=-1", "end StartScan h=1 1-5"}));
}

constexpr char kSynchronous[] = R"(
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

TEST(Activity, ASynchronousCommand) {
    EXPECT_EQ(stepsOf(kSynchronous),
              (Steps{"command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
                     "end CancelScan_Sync h=1 1-16"}));
    EXPECT_EQ(stepsOf(std::string(kSynchronous) + kSynchronous),
              (Steps{"command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
                     "end CancelScan_Sync h=1 1-16", "command CancelScan_Sync h=1",
                     "answer CancelScan_Sync h=1 ret=0", "end CancelScan_Sync h=1 17-32"}));
}

TEST(Activity, ASynchronousCommandWithAnEmptyAnswer) {
    EXPECT_EQ(stepsOf(R"(
        desk START dtvSvLibCancelScan_Sync|hdl = 1
        desk DEBUG dtvSvLibCancelScan_Sync|SEND, dtvsv_handle = 1
        desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_size = 0
        desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_data.handle = 0
        desk DEBUG dtvSvLibCancelScan_Sync|RECV, reply_data.return_value = 0
        desk END dtvSvLibCancelScan_Sync|return DTVSVLIB_RESULT_ABORT_NG
        desk START makeComReplyObjSync|
        desk START makeComReplyObjSync|make param NG message_id = 0x1000000e
        desk DEBUG CallMethod|CallMethod, method_id = 218, class_id = 137, attr_id = 0
        desk INFO CallMethod|CallMethod, NewObject
        desk INFO setJavaMethod|setJavaMethod
        desk END makeComReplyObjSync|)"),
              (Steps{"command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=0",
                     "end CancelScan_Sync h=1 1-12 aborted"}));
}

TEST(Activity, ASynchronousCommandThatWasNotTaken) {
    EXPECT_EQ(stepsOf(R"(
        desk START dtvSvLibCancelScan_Sync|hdl = 1
        desk DEBUG dtvSvLibCancelScan_Sync|SEND, dtvsv_handle = 1
        desk START makeComReplyObjSync|
        desk START makeComReplyObjSync|make param NG message_id = 0x1000000e
        desk DEBUG CallMethod|CallMethod, method_id = 218, class_id = 137, attr_id = 0
        desk INFO CallMethod|CallMethod, NewObject
        desk INFO setJavaMethod|setJavaMethod
        desk END makeComReplyObjSync|
        desk END dtvSvLibCancelScan_Sync|ret = -1)"),
              (Steps{"command CancelScan_Sync h=1", "answer CancelScan_Sync h=1 ret=-1",
                     "end CancelScan_Sync h=1 1-9"}));
}

/// A reply whose callback calls a native method, on the thread of the event.
std::string callbackWith(const std::string& within) {
    const std::string whole = kCreateReply;
    const size_t place = whole.find("    Event END dtvsv_msgid_lib_common_reply");
    return whole.substr(0, place) + within + "\n" + whole.substr(place);
}

TEST(Activity, ACommandWithinACallback) {
    EXPECT_EQ(stepsOf(callbackWith(R"(
        Event START dtvSvLibStartScan|hdl = 1
        Event DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 1
        Event START getRetCode|(param)ret = 0
        Event END getRetCode|
        Event END dtvSvLibStartScan|ret = 0)")),
              (Steps{"event CreateReply h=1", "command StartScan h=1", "end StartScan h=1 12-16",
                     "end CreateReply h=1 1-19"}));
}

TEST(Activity, ASynchronousCommandWithinACallback) {
    std::string within = kSynchronous;
    for (size_t at = within.find("desk"); at != std::string::npos; at = within.find("desk")) {
        within.replace(at, 4, "Event");
    }
    EXPECT_EQ(stepsOf(callbackWith(within)),
              (Steps{"event CreateReply h=1", "command CancelScan_Sync h=1",
                     "answer CancelScan_Sync h=1 ret=0", "end CancelScan_Sync h=1 12-27",
                     "end CreateReply h=1 1-30"}));
}

TEST(Activity, ARefusedCommandWithinACallback) {
    EXPECT_EQ(stepsOf(callbackWith(R"(
        Event START dtvSvLibSelectChannel|hdl = 1
        Event START getRetCode|(param)ret = 5
        Event END getRetCode|
        Event DEBUG dtvSvLibSelectChannel|physical_channel is too large : 63, ret = 5)")),
              (Steps{"event CreateReply h=1", "end SelectChannel h=1 12-15 no end refused fault 15",
                     "end CreateReply h=1 1-18"}));
}

TEST(Activity, AnEventThatWasNotTaken) {
    EXPECT_EQ(stepsOf(R"(
        Event START recvEventFromServer|pid = 1, threadid = 1, event_id = 10000054, recv_size = 3
        Event START getJNIEnv|
        Event INFO getJNIEnv|JNIEnv already got! index=0 threadid=1 env=0x1 
        Event START DoListenerEvent|
        Event START dtvsv_msgid_lib_select_channel_reply|
        Event ERROR dtvsv_msgid_lib_select_channel_reply|recv_size err!, recv_size = 3
        Event END recvEventFromServer|)"),
              (Steps{"event SelectChannelReply", "refused event SelectChannelReply",
                     "end SelectChannelReply 1-7 fault 6"}));
}

TEST(Activity, AnEventOfAThreadThatTheTableHasNoRoomFor) {
    EXPECT_EQ(stepsOf(R"(
        Event START recvEventFromServer|pid = 1, threadid = 1, event_id = 10000054, recv_size = 16
        Event START getJNIEnv|
        Event END getJNIEnv|
        Event DEBUG recvEventFromServer|env is NULL!)"),
              (Steps{"event SelectChannelReply", "refused event SelectChannelReply",
                     "end SelectChannelReply 1-4 no end fault 3 fault 4"}));
}

TEST(Activity, AnEventThatTheBridgeDoesNotKnow) {
    EXPECT_EQ(stepsOf(R"(
        Event START recvEventFromServer|pid = 1, threadid = 1, event_id = 10000999, recv_size = 16
        Event START getJNIEnv|
        Event INFO getJNIEnv|JNIEnv already got! index=0 threadid=1 env=0x1 
        Event START DoListenerEvent|
        Event END recvEventFromServer|)"),
              (Steps{"event", "refused event", "end 1-5"}));
}

TEST(Activity, TwoThreads) {
    // Each thread's own order is kept, whatever lies between.
    const std::string one = traceOf(kCreate);
    std::string other = one;
    for (size_t at = other.find("desk"); at != std::string::npos; at = other.find("desk")) {
        other.replace(at, 4, "task");
    }
    std::string mixed;
    for (size_t i = 0, j = 0; i < one.size();
         i = one.find('\n', i) + 1, j = other.find('\n', j) + 1) {
        mixed += one.substr(i, one.find('\n', i) + 1 - i);
        mixed += other.substr(j, other.find('\n', j) + 1 - j);
    }
    EXPECT_EQ(stepsIn(mixed),
              (Steps{"command Create", "command Create", "end Create 1-9", "end Create 2-10"}));
}

TEST(Activity, ThreadsOfOneNameAreKnownByTheirNumbers) {
    const std::string one = traceOf(kCreate);
    std::string mixed;
    for (size_t i = 0; i < one.size(); i = one.find('\n', i) + 1) {
        const std::string line = one.substr(i, one.find('\n', i) + 1 - i);
        mixed += "I( 1234: 1250) " + line + "I( 1234: 1251) " + line;
    }
    EXPECT_EQ(stepsIn(mixed),
              (Steps{"command Create", "command Create", "end Create 1-9", "end Create 2-10"}));
}

constexpr char kLoad[] = R"(
    desk START JNI_OnLoad|
    desk DEBUG JNI_OnLoad|pid = 3109, threadid = a1dfe6c0
    desk START registerNatives|
    desk END registerNatives|ret = 0
    desk DEBUG DtvSvLibListenerInit|env = 0x1
    desk END JNI_OnLoad|)";

TEST(Activity, TheLibraryIsLoaded) {
    EXPECT_EQ(stepsOf(kLoad), (Steps{"load", "end 1-6"}));
}

TEST(Activity, TheProcessBeginsAgain) {
    // What was open before never ends.
    EXPECT_EQ(stepsOf(std::string(kLoad) + kCreate + R"(
                      desk START dtvSvLibStartScan|hdl = 1
                      desk DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 1)" +
                      kLoad + kCreate),
              (Steps{"load", "end 1-6", "command Create", "end Create 7-11", "12 lacks its end",
                     "command StartScan h=1", "end StartScan h=1 12-13 no end", "load", "end 14-19",
                     "command Create", "end Create 20-24"}));
}

} // namespace
