// What remains on an event's thread: no local reference and no exception, whatever happened.
#include "entry/java_tables.h"
#include "harness/harness.h"

#include <gmock/gmock.h>

#include <functional>

namespace {

using namespace harness;
using Texts = std::vector<std::string>;

int createReply() {
    return deliver(0x1000004f, fromHex("0300 0000 00000000"));
}

/// Built of two objects, one in the other.
int terminateRecReply() {
    return deliver(0x1000006c, fromHex("0300 0000 00000000 0700 0900"));
}

bool pending() {
    return env()->ExceptionCheck();
}

class EventFrame : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { ASSERT_EQ(Product::load(), ""); }

    /// On the main thread or, with the parameter, on one that the VM does not know.
    void onThread(const std::function<void()>& work) {
        if (GetParam()) {
            if (thread == nullptr) {
                thread = std::make_unique<EventThread>();
            }
            thread->run(work);
        } else {
            work();
        }
    }

    std::unique_ptr<EventThread> thread;
};

TEST_P(EventFrame, EveryEventHasAFrameOfItsOwn) {
    CallbackRecorder callbacks;
    Calls pushed("PushLocalFrame");
    Calls popped("PopLocalFrame");
    onThread([] {
        EXPECT_EQ(createReply(), 0);
        EXPECT_EQ(terminateRecReply(), 0);
        EXPECT_EQ(deliver(0x10000041, {}), 1) << "an id without a handler";
    });
    EXPECT_EQ(pushed.made(), 3);
    EXPECT_EQ(popped.made(), 3);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_EQ(callbacks.take(),
              (Texts{"onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)",
                     "onEvDtvsvTerminateRecReply BG_EV_DTVSV_TERMINATE_REC_REPLY(3, 0, "
                     "BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(7, 9))"}));
}

TEST_P(EventFrame, CallbackThatThrowsCountsAsCalled) {
    CallbackRecorder callbacks;
    auto log = LogRecorder::install();
    callbacks.throwNext();
    int described = StrictJni::calls("ExceptionDescribe");
    onThread([] {
        EXPECT_EQ(createReply(), 0);
        EXPECT_FALSE(pending());
    });
    EXPECT_EQ(StrictJni::calls("ExceptionDescribe"), described + 1);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    std::vector<TraceLine> lines = log->take();
    lines.erase(lines.begin(), lines.begin() + 3); // where the environment comes from
    EXPECT_TRACE(lines, R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|
        JNIDtvSvLibListener|128|5|FUNCSTART|dtvsv_msgid_lib_common_reply|
        JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|dtvsv_handle = 3, result = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 114, class_id = 47, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|512|5|INFO     |setJavaMethod|setJavaMethod
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 45, class_id = 0, attr_id = 1
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, CallStaticMethod, type_id = 0
        JNIDtvSvLibListener|256|5|FUNCEND  |dtvsv_msgid_lib_common_reply|ret = 0
        JNIDtvSvLibListener|256|5|FUNCEND  |DoListenerEvent|
        JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|
    )");
    onThread([] { EXPECT_EQ(createReply(), 0); });
    EXPECT_EQ(callbacks.take().size(), 2U) << "the thread delivers further events";
}

TEST_P(EventFrame, CallbackThatThrowsAnErrorIsNoDifferent) {
    CallbackRecorder callbacks;
    callbacks.throwNext("java/lang/StackOverflowError");
    onThread([] {
        EXPECT_EQ(terminateRecReply(), 0);
        EXPECT_FALSE(pending());
        EXPECT_EQ(terminateRecReply(), 0);
    });
    EXPECT_EQ(callbacks.take().size(), 2U);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_P(EventFrame, ConstructorThatThrowsIsAFailedConstruction) {
    CallbackRecorder callbacks;
    auto log = LogRecorder::install();
    onThread([] {
        FailJni fail("NewObjectV", 0, FailJni::Leaves::exception);
        EXPECT_EQ(createReply(), 1);
        EXPECT_FALSE(pending());
    });
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    std::vector<TraceLine> lines = log->take();
    lines.erase(lines.begin(), lines.begin() + 3);
    EXPECT_TRACE(lines, R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|DoListenerEvent|
        JNIDtvSvLibListener|128|5|FUNCSTART|dtvsv_msgid_lib_common_reply|
        JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|dtvsv_handle = 3, result = 0
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, method_id = 114, class_id = 47, attr_id = 0
        JNIDtvSvLibListener|512|5|INFO     |CallMethod|CallMethod, NewObject
        JNIDtvSvLibListener|1024|5|DEBUG    |CallMethod|CallMethod, NewObject error!
        JNIDtvSvLibListener|1024|5|DEBUG    |dtvsv_msgid_lib_common_reply|CallMethod NG, ret = 1
        JNIDtvSvLibListener|256|5|FUNCEND  |recvEventFromServer|
    )");
    onThread([] { EXPECT_EQ(createReply(), 0); });
    EXPECT_EQ(callbacks.take().size(), 1U);
}

TEST_P(EventFrame, ReferencesOfAFailedHandlerEndWithTheEvent) {
    CallbackRecorder callbacks;
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        onThread([&] {
            FailJni fail("NewObjectV", 1, leaves);
            EXPECT_EQ(terminateRecReply(), 1);
            EXPECT_FALSE(pending());
        });
        EXPECT_EQ(StrictJni::liveLocals(), 0);
    }
    EXPECT_TRUE(callbacks.take().empty());
    onThread([] { EXPECT_EQ(terminateRecReply(), 0); });
    EXPECT_EQ(callbacks.take().size(), 1U);
}

TEST_P(EventFrame, FrameThatCannotBePushedEndsTheEvent) {
    CallbackRecorder callbacks;
    onThread([] { ASSERT_EQ(createReply(), 0); });
    callbacks.take();
    int popped = StrictJni::calls("PopLocalFrame");
    auto log = LogRecorder::install();
    for (auto leaves : {FailJni::Leaves::exception, FailJni::Leaves::nothing}) {
        onThread([&] {
            FailJni fail("PushLocalFrame", 0, leaves);
            EXPECT_EQ(createReply(), 1);
            EXPECT_FALSE(pending());
        });
        EXPECT_TRACE(
            log->take(),
            "JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, threadid "
            "= <tid>, event_id = 1000004f, recv_size = 8\n"
            "JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|\n"
            "JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already got! index=<int> "
            "threadid=<tid> env=<ptr> \n");
    }
    EXPECT_TRUE(callbacks.take().empty());
    EXPECT_EQ(StrictJni::calls("PopLocalFrame"), popped) << "what was not pushed is not popped";
    onThread([] { EXPECT_EQ(createReply(), 0); });
    EXPECT_EQ(callbacks.take().size(), 1U);
}

TEST_P(EventFrame, ManyEventsHoldNoMoreReferencesThanOne) {
    CallbackRecorder callbacks;
    onThread([] { EXPECT_EQ(terminateRecReply(), 0); });
    StrictJni::resetPeakLocals();
    onThread([] {
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(terminateRecReply(), 0);
        }
    });
    EXPECT_EQ(callbacks.take().size(), 2001U);
    EXPECT_EQ(StrictJni::liveLocals(), 0);
    EXPECT_LE(StrictJni::peakLocals(), 2);
    EXPECT_EQ(StrictJni::globalsMade(), expected::classCount);
}

INSTANTIATE_TEST_SUITE_P(Threads, EventFrame, testing::Bool(), [](const auto& test) {
    return test.param ? "ForeignThread" : "JavaThread";
});

} // namespace
