// What keeps the library from loading and events from the Java side, and on the other side of each
// limit nothing.
#include "desk/explain/tests/short_log.h"

#include <gtest/gtest.h>

namespace explain::tests {
namespace {

using Texts = std::vector<std::string>;

TEST(Rules, NothingInAWholeSession) {
    EXPECT_EQ(findingsIn(opened() + released()), Texts{});
    EXPECT_EQ(verdictOf(*explain(logOf(opened() + released()))), Verdict::kClean);
}

TEST(Rules, LoadFailed) {
    EXPECT_EQ(findingsIn(R"(
        desk START JNI_OnLoad:124|
        desk DEBUG JNI_OnLoad:125|pid = 3109, threadid = a1dfe6c0
        desk DEBUG JNI_OnLoad:102|GetEnv failed
        desk END JNI_OnLoad:128|)"),
              (Texts{"1 error load-failed, desk, lines 3, JNI_OnLoad:102, GetEnv failed"}));
    EXPECT_EQ(findingsIn(load()), Texts{});
}

TEST(Rules, NativeMissing) {
    EXPECT_EQ(findingsIn(R"(
        desk START JNI_OnLoad:124|
        desk START registerNatives:71|
        desk DEBUG registerNatives:90|registerNatives, failed for 'tenrik/service/dtvserver/DtvServerProxy'
        desk END JNI_OnLoad:128|)"),
              (Texts{"1 error native-missing DtvServerProxy, desk, lines 3, registerNatives:90, "
                     "registerNatives, failed for 'tenrik/service/dtvserver/DtvServerProxy'"}));
}

constexpr char kBeforeClasses[] = R"(
        desk START JNI_OnLoad:124|
        desk DEBUG DtvSvLibListenerInit:84|env = 0x7f3ed4239b60
)";

TEST(Rules, ClassMissing) {
    EXPECT_EQ(
        findingsIn(std::string(kBeforeClasses) + R"(
        desk DEBUG setJavaClass:39|setJavaClass, threadid = a1dfe6c0, class_id = 47, class_name = a/b/BG_EV_DTVSV_CREATE_REPLY
        desk DEBUG setJavaClass:43|setJavaClass, Can't find class : a/b/BG_EV_DTVSV_CREATE_REPLY
        desk END JNI_OnLoad:128|)"),
        (Texts{"1 error class-missing BG_EV_DTVSV_CREATE_REPLY, desk, lines 4, setJavaClass:43, "
               "setJavaClass, Can't find class : a/b/BG_EV_DTVSV_CREATE_REPLY"}));
    EXPECT_EQ(findingsIn(std::string(kBeforeClasses) + R"(
        desk DEBUG setJavaClass:39|setJavaClass, threadid = a1dfe6c0, class_id = 47, class_name = a/b/BG_EV_DTVSV_CREATE_REPLY
        desk DEBUG setJavaClass:55|setJavaClass, clazz = 0x7f3e30066a00, m_class_info[class_id].cls = 0x7f3ed40fe9f8
        desk END JNI_OnLoad:128|)"),
              Texts{});
}

TEST(Rules, ClassWithoutAReference) {
    EXPECT_EQ(findingsIn(std::string(kBeforeClasses) + R"(
        desk DEBUG setJavaClass:48|setJavaClass, NewGlobalRef error! : class_id = 47
        desk END JNI_OnLoad:128|)"),
              (Texts{"1 error class-missing BG_EV_DTVSV_CREATE_REPLY, desk, lines 3, "
                     "setJavaClass:48, setJavaClass, NewGlobalRef error! : class_id = 47"}));
}

TEST(Rules, MethodMissing) {
    const std::string values = "class_id = 0, method_id = 45, attr_id = 1, type_id = 0, "
                               "method_name = onEvDtvsvCreateReply, signature = (LX;)V";
    EXPECT_EQ(findingsIn(kBeforeClasses + ("desk DEBUG setJavaMethod:90|setJavaMethod, "
                                           "GetMethodID error!, " +
                                           values + "\ndesk END JNI_OnLoad:128|")),
              (Texts{"1 error method-missing BGCallBack.onEvDtvsvCreateReply, desk, lines 3, "
                     "setJavaMethod:90, setJavaMethod, GetMethodID error!, " +
                     values}));
    EXPECT_EQ(findingsIn(kBeforeClasses + ("desk DEBUG setJavaMethod:76|setJavaMethod, " + values +
                                           "\ndesk END JNI_OnLoad:128|")),
              Texts{});
}

/// An event, and what getJNIEnv writes after its first line.
std::string eventWithEnvironment(const std::string& lines) {
    return R"(
        Event START recvEventFromServer:49|pid = 3109, threadid = a17ff6c0, event_id = 1000008a, recv_size = 4
        Event START getJNIEnv:42|
)" + lines;
}

TEST(Rules, ThreadTableFull) {
    EXPECT_EQ(findingsIn(opened() + eventWithEnvironment(R"(
        Event END getJNIEnv:92|
        Event DEBUG recvEventFromServer:53|env is NULL!)") +
                         released()),
              (Texts{"1 error thread-table-full BmlEndFepNotify, Event, lines 27, getJNIEnv:92"}));
}

TEST(Rules, AttachFailed) {
    EXPECT_EQ(findingsIn(opened() + eventWithEnvironment(R"(
        Event ERROR getJNIEnv:81|AttachCurrentThread() error! index=1
        Event DEBUG recvEventFromServer:53|env is NULL!)") +
                         released()),
              (Texts{"1 error attach-failed BmlEndFepNotify, Event, lines 27, getJNIEnv:81, "
                     "AttachCurrentThread() error! index=1"}));
}

TEST(Rules, AThreadThatIsNotAttachedAtTheEndOfAProcess) {
    const std::string end = R"(
        VM Thread START getJNIEnv:42|
        VM Thread ERROR getJNIEnv:81|AttachCurrentThread() error! index=1
)";
    EXPECT_EQ(findingsIn(opened() + released() + end + R"(
        VM Thread START freeJNIEnv:104|
        VM Thread DEBUG freeJNIEnv:109|free env=0x7f3e3c001430 index=0 tid=a17ff6c0 attach=0
        VM Thread END freeJNIEnv:121|)"),
              Texts{});
}

TEST(Rules, CallbackThrew) {
    const std::string trace = R"(
        java.lang.IllegalStateException: no view
            at com.example.View.show(View.java:17)
)";
    EXPECT_EQ(findingsIn(opened() + trace +
                         "at tenrik.service.dtvserver.BGCallBack.onEvDtvsvScanNotify"
                         "(BGCallBack.java:95)\n" +
                         released()),
              (Texts{"1 error callback-threw ScanNotify, lines 27, "
                     "java.lang.IllegalStateException: no view"}));
    EXPECT_EQ(findingsIn(opened() + trace + "at com.example.Main.run(Main.java:95)\n" + released()),
              Texts{});
}

/// The lines of an event of BmlEndFepNotify whose handler writes those.
std::string endFep(const std::string& lines) {
    return event("1000008a", 4,
                 "Event START dtvsv_msgid_lib_bml_end_fep_notify:192|recv_size = 4\n"
                 "Event DEBUG dtvsv_msgid_lib_bml_end_fep_notify:195|handle = 1\n" +
                     lines);
}

TEST(Rules, ObjectNotMade) {
    EXPECT_EQ(findingsIn(opened() + endFep(R"(
        Event DEBUG CallMethod:114|CallMethod, method_id = 84, class_id = 16, attr_id = 0
        Event DEBUG CallMethod:133|CallMethod, NewObject error!
        Event DEBUG dtvsv_msgid_lib_bml_end_fep_notify:47|CallMethod NG, ret = 1)") +
                         released()),
              (Texts{"1 error object-not-made BmlEndFepNotify, session 1, Event, lines 32, "
                     "CallMethod:133, CallMethod, NewObject error!"}));
    EXPECT_EQ(findingsIn(opened() + endFep(R"(
        Event DEBUG CallMethod:114|CallMethod, method_id = 84, class_id = 16, attr_id = 0
        Event INFO CallMethod:129|CallMethod, NewObject
        Event END dtvsv_msgid_lib_bml_end_fep_notify:57|ret = 0)") +
                         released()),
              Texts{});
}

TEST(Rules, ResultNotMade) {
    EXPECT_EQ(findingsIn(opened() + R"(
        desk START dtvSvLibCancelScan:129|hdl = 1
        desk DEBUG dtvSvLibCancelScan:128|SEND, dtvsv_handle = 1
        desk START getRetCode:42|(param)ret = 0
        desk DEBUG getRetCode:46|class is NULL
        desk END dtvSvLibCancelScan:141|ret = 0)" +
                         "\n" + released()),
              (Texts{"1 error result-not-made CancelScan, session 1, desk, lines 28, "
                     "getRetCode:46, class is NULL"}));
}

TEST(Rules, RecordSize) {
    EXPECT_EQ(findingsIn(opened() + event("1000008a", 3, R"(
        Event START dtvsv_msgid_lib_bml_end_fep_notify:192|recv_size = 3
        Event DEBUG dtvsv_msgid_lib_bml_end_fep_notify:33|recv_size err!, recv_size = 3)") +
                         released()),
              (Texts{"1 error record-size BmlEndFepNotify, Event, lines 30, "
                     "dtvsv_msgid_lib_bml_end_fep_notify:33, recv_size err!, recv_size = 3"}));
}

TEST(Rules, RecordCount) {
    EXPECT_EQ(findingsIn(opened() + event("10000091", 2572, R"(
        Event START dtvsv_msgid_lib_service_info_notify:113|recv_size = 2572
        Event DEBUG dtvsv_msgid_lib_service_info_notify:116|handle = 1
        Event DEBUG dtvsv_msgid_lib_service_info_notify:117|STREAM_INFO ts_id = 5, svc_cnt = 255
        Event DEBUG dtvsv_msgid_lib_service_info_notify:120|ERROR svc_cnt is over count)") +
                         released()),
              (Texts{"1 error record-count ServiceInfoNotify, session 1, Event, lines 32, "
                     "dtvsv_msgid_lib_service_info_notify:120, ERROR svc_cnt is over count"}));
}

TEST(Rules, RecordText) {
    EXPECT_EQ(findingsIn(opened() + event("10000049", 24, R"(
        Event START dtvsv_msgid_lib_bml_call_req:211|
        Event DEBUG dtvsv_msgid_lib_bml_call_req:214|handle = 1
        Event DEBUG OrgNewStringUTF:68|Failure, ret is NULL
        Event DEBUG dtvsv_msgid_lib_bml_call_req:217| phone_number is NULL)") +
                         released()),
              (Texts{"1 error record-text BmlCallReq, session 1, Event, lines 31, "
                     "OrgNewStringUTF:68, Failure, ret is NULL"}));
}

TEST(Rules, EventRefused) {
    EXPECT_EQ(findingsIn(opened() + R"(
        Event START recvEventFromServer:49|pid = 3109, threadid = a17ff6c0, event_id = 1000008a, recv_size = 4
        Event START getJNIEnv:42|
        Event INFO getJNIEnv:68|JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430 
        Event START DoListenerEvent:69|
        Event START dtvsv_msgid_lib_bml_end_fep_notify:192|recv_size = 4
        Event END recvEventFromServer:64|
)" + released()),
              (Texts{"1 error event-refused BmlEndFepNotify, Event, lines 25, "
                     "recvEventFromServer:49, pid = 3109, threadid = a17ff6c0, "
                     "event_id = 1000008a, recv_size = 4"}));
}

TEST(Rules, UnknownEvent) {
    const std::string unknown = R"(
        Event START recvEventFromServer:49|pid = 3109, threadid = a17ff6c0, event_id = 1000009f, recv_size = 4
        Event START getJNIEnv:42|
        Event INFO getJNIEnv:68|JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430 
        Event START DoListenerEvent:69|
        Event END recvEventFromServer:64|
)";
    EXPECT_EQ(findingsIn(opened() + unknown + unknown + released()),
              (Texts{"1 warning unknown-event 0x1000009f, Event, lines 25 30, "
                     "recvEventFromServer:49, pid = 3109, threadid = a17ff6c0, "
                     "event_id = 1000009f, recv_size = 4"}));
}

TEST(Rules, EventAfterRelease) {
    const std::string late = endFep("Event END dtvsv_msgid_lib_bml_end_fep_notify:57|ret = 0");
    EXPECT_EQ(findingsIn(opened() + released() + late),
              (Texts{"1 warning event-after-release BmlEndFepNotify, session 1, Event, lines 43, "
                     "recvEventFromServer:49, pid = 3109, threadid = a17ff6c0, "
                     "event_id = 1000008a, recv_size = 4"}));
    EXPECT_EQ(findingsIn(opened() + late + released()), Texts{});
}

TEST(Rules, AnEventOfANewSessionWithTheHandleOfAReleasedOne) {
    EXPECT_EQ(findingsIn(opened() + released() + session(1) +
                         endFep("Event END dtvsv_msgid_lib_bml_end_fep_notify:57|ret = 0") +
                         released()),
              Texts{});
}

TEST(Rules, EventWithoutSession) {
    const std::string stray = endFep("Event END dtvsv_msgid_lib_bml_end_fep_notify:57|ret = 0");
    EXPECT_EQ(findingsIn(load() + stray + session(2)),
              (Texts{"1 warning event-without-session BmlEndFepNotify, session 1, Event, lines 7, "
                     "recvEventFromServer:49, pid = 3109, threadid = a17ff6c0, "
                     "event_id = 1000008a, recv_size = 4"}));
    // The session may have been opened before the log begins.
    EXPECT_EQ(findingsIn(stray + session(2)), Texts{});
}

} // namespace
} // namespace explain::tests
