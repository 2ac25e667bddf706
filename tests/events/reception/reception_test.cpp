// The path of one event through the listener, and what remains on its thread afterwards.
#include "harness/event_trace.h"

#include <pthread.h>
#include <unistd.h>

#include <cstdio>

namespace events {
namespace {

using namespace harness;
using Texts = std::vector<std::string>;

class Reception : public testing::Test {
protected:
    void SetUp() override {
        prepareEvents();
        log = LogRecorder::install();
    }
    std::shared_ptr<LogRecorder> log;
    CallbackRecorder callbacks;
};

TEST_F(Reception, WholeTraceOfADeliveredEvent) {
    StdoutCapture output;
    EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 02000000")), 0);
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines, "JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, "
                        "threadid = <tid>, event_id = 1000004f, recv_size = 8\n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|\n"
                        "JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already got! "
                        "index=0 threadid=<tid> env=<ptr> \n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|\n"
                        "JNIDtvSvLibListener|128|5|FUNCSTART|dtvsv_msgid_lib_common_reply|\n"
                        "JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|"
                        "dtvsv_handle = 3, result = 2\n"
                        "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, "
                        "method_id = 114, class_id = 47, attr_id = 0\n"
                        "JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject\n"
                        "JNIDtvSvLibListener|512|5|INFO     |setJavaMethod|setJavaMethod\n"
                        "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, "
                        "method_id = 45, class_id = 0, attr_id = 1\n"
                        "JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, "
                        "CallStaticMethod, type_id = 0\n"
                        "JNIDtvSvLibListener|256|5|FUNCEND  |dtvsv_msgid_lib_common_reply|"
                        "ret = 0\n"
                        "JNIDtvSvLibListener|256|5|FUNCEND  |DoListenerEvent|\n"
                        "JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|\n");
    EXPECT_EQ(callbacks.take(), Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 2)"});
    EXPECT_EQ(output.take(), "");

    // The thread id is the low 32 bits of the thread's own.
    char start[120];
    std::snprintf(start, sizeof start,
                  "pid = %d, threadid = %x, event_id = 1000004f, recv_size = 8",
                  static_cast<int>(getpid()), static_cast<unsigned>(pthread_self()));
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front().message, start);
}

TEST_F(Reception, SizeIsLoggedAsReceived) {
    EXPECT_EQ(deliver(0x10000041, {}, -2147483647 - 1), 1);
    EXPECT_TRACE(log->take(), refused(0x10000041, -2147483647 - 1, ""));
    EXPECT_EQ(deliver(0x10000041, {}, 2147483647), 1);
    EXPECT_TRACE(log->take(), refused(0x10000041, 2147483647, ""));
}

TEST_F(Reception, EnvironmentIsKeptForTheThread) {
    Calls got("GetEnv");
    Calls attached("AttachCurrentThread");
    Calls detached("DetachCurrentThread");
    for (int i = 0; i < 5; i++) {
        EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 0);
    }
    EXPECT_EQ(callbacks.take().size(), 5U);
    EXPECT_EQ(got.made() + attached.made() + detached.made(), 0);
}

TEST_F(Reception, EveryEventHasAFrameOfItsOwn) {
    Calls frames("PushLocalFrame");
    Calls frame_ends("PopLocalFrame");
    EXPECT_EQ(deliver(0x10000050, fromHex("0300 0000 00000000")), 0);
    EXPECT_EQ(frames.made(), 1);
    EXPECT_EQ(frame_ends.made(), 1);
    EXPECT_EQ(deliver(0x1000009b, {}), 1) << "a wrong size";
    EXPECT_EQ(frames.made(), 2);
    EXPECT_EQ(frame_ends.made(), 2);
    EXPECT_EQ(deliver(0x10000075, {}), 1) << "an id without a handler";
    EXPECT_EQ(frames.made(), 3);
    EXPECT_EQ(frame_ends.made(), 3);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(Reception, ThousandFailingEventsLeaveNoReference) {
    log->clear();
    for (int i = 0; i < 1000; i++) {
        // The second object cannot be built, so the first stays until the frame ends.
        FailJni fails("NewObjectV", 1, FailJni::Leaves::nothing);
        ASSERT_EQ(deliver(0x1000009b, fromHex("0300 0000 00 000000 00000000 00 000000")), 1);
        ASSERT_EQ(StrictJni::liveLocals(), 0);
    }
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 0);
    EXPECT_EQ(callbacks.take().size(), 1U);
}

TEST_F(Reception, WithoutAFrameTheEventEnds) {
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        StdoutCapture output;
        Calls described("ExceptionDescribe");
        Calls cleared("ExceptionClear");
        Calls frame_ends("PopLocalFrame");
        Calls new_objects("NewObjectV");
        {
            FailJni fails("PushLocalFrame", 0, leaves);
            EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 1);
        }
        EXPECT_EQ(takeException(), "");
        EXPECT_TRACE(log->take(), "JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|"
                                  "pid = <pid>, threadid = <tid>, event_id = 1000004f, "
                                  "recv_size = 8\n"
                                  "JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|\n"
                                  "JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already "
                                  "got! index=0 threadid=<tid> env=<ptr> \n");
        EXPECT_EQ(output.take(), "");
        EXPECT_EQ(described.made(), leaves == FailJni::Leaves::exception ? 1 : 0);
        EXPECT_EQ(cleared.made(), described.made()) << "some VMs only describe";
        EXPECT_EQ(frame_ends.made(), 0);
        EXPECT_EQ(new_objects.made(), 0);
    }
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(deliver(0x1000004f, fromHex("0300 0000 00000000")), 0);
    EXPECT_EQ(callbacks.take(), Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)"});
}

TEST_F(Reception, ThrowablesOfEveryKindAreCleared) {
    Texts expected;
    for (const char* thrown : {"java/lang/Error", "java/lang/RuntimeException",
                               "java/lang/StackOverflowError", "java/lang/OutOfMemoryError"}) {
        SCOPED_TRACE(thrown);
        Calls described("ExceptionDescribe");
        Calls cleared("ExceptionClear");
        callbacks.throwNext(thrown);
        EXPECT_EQ(deliver(0x10000089, fromHex("0300 01 02")), 0);
        EXPECT_FALSE(env()->ExceptionCheck());
        EXPECT_EQ(described.made(), 1);
        EXPECT_EQ(cleared.made(), 1) << "some VMs only describe";
        expected.push_back("onEvDtvsvBmlDispIconNotify BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(3, 1, 2)");
    }
    EXPECT_EQ(callbacks.take(), expected);
}

TEST_F(Reception, NothingIsDescribedWhenNothingWasThrown) {
    Calls described("ExceptionDescribe");
    EXPECT_EQ(deliver(0x10000089, fromHex("0300 01 02")), 0);
    EXPECT_EQ(deliver(0x10000089, {}), 1);
    EXPECT_EQ(described.made(), 0);
}

} // namespace
} // namespace events
