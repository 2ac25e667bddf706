// Which environment an event's thread gets: slot 0, the slots after it, the twenty-first thread,
// and a VM that refuses.
#include "harness/harness.h"

#include <cstdio>

namespace {

using namespace harness;

int deliverCreateReply() {
    return deliver(0x1000004f, {3, 0, 0, 0, 0, 0, 0, 0});
}

std::string low32(pthread_t thread) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(thread));
    return text;
}

std::string pointer(const void* value) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", value);
    return text;
}

/// getJNIEnv's lines since the last call, as "level word|message".
std::vector<std::string> getEnvLines(const std::shared_ptr<LogRecorder>& log) {
    std::vector<std::string> lines;
    for (const TraceLine& line : log->takeOf("getJNIEnv")) {
        EXPECT_EQ(line.fault, "");
        EXPECT_EQ(line.module, "JNIDtvSvLibListener");
        lines.push_back(line.level + "|" + line.message);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(EnvironmentTable, FirstThreadIsServedByGetEnv) {
    ASSERT_EQ(Product::load(), "");
    auto log = LogRecorder::install();
    int asked = StrictJni::calls("GetEnv");
    EXPECT_EQ(deliverCreateReply(), 0);
    std::string own = "threadid=" + low32(pthread_self()) + " env=" + pointer(env());
    EXPECT_EQ(getEnvLines(log), (Lines{"FUNCSTART|", "INFO     |Got JNIEnv! " + own}));
    EXPECT_EQ(StrictJni::calls("GetEnv"), asked + 1);
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 0);

    // A thread that has a slot gets the same environment again, without a call to the VM.
    EXPECT_EQ(deliverCreateReply(), 0);
    EXPECT_EQ(getEnvLines(log),
              (Lines{"FUNCSTART|", "INFO     |JNIEnv already got! index=0 " + own + " "}));
    EXPECT_EQ(StrictJni::calls("GetEnv"), asked + 1);
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 0);
}

TEST(EnvironmentTable, FirstThreadThatTheVmDoesNotKnowIsAttachedIntoSlot0) {
    ASSERT_EQ(Product::load(), "");
    auto log = LogRecorder::install();
    EventThread thread;
    int result = -1;
    std::string own;
    thread.run([&] {
        result = deliverCreateReply();
        own = "threadid=" + low32(pthread_self()) + " env=" + pointer(env());
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(getEnvLines(log),
              (Lines{"FUNCSTART|", "INFO     |GetEnv Failed but JNIEnv Attached!"}));
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 1);
    thread.run([&] { result = deliverCreateReply(); });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(getEnvLines(log),
              (Lines{"FUNCSTART|", "INFO     |JNIEnv already got! index=0 " + own + " "}));

    // The next thread is attached without a call of GetEnv, although the VM knows it.
    int asked = StrictJni::calls("GetEnv");
    EXPECT_EQ(deliverCreateReply(), 0);
    EXPECT_EQ(getEnvLines(log),
              (Lines{"FUNCSTART|", "INFO     |JNIEnv Attached! index=1 threadid=" +
                                       low32(pthread_self()) + " env=" + pointer(env())}));
    EXPECT_EQ(StrictJni::calls("GetEnv"), asked);
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 2);
}

TEST(EnvironmentTable, TwentyThreadsHaveASlotAndTheNextHasNone) {
    ASSERT_EQ(Product::load(), "");
    CallbackRecorder callbacks;
    auto log = LogRecorder::install();
    ASSERT_EQ(deliverCreateReply(), 0);
    log->clear();
    callbacks.take();
    EventThread threads[20];
    for (int i = 0; i < 19; ++i) {
        int result = -2;
        std::string own;
        threads[i].run([&] {
            result = deliverCreateReply();
            own = "threadid=" + low32(pthread_self()) + " env=" + pointer(env());
        });
        EXPECT_EQ(result, 0) << i;
        EXPECT_EQ(getEnvLines(log), (Lines{"FUNCSTART|", "INFO     |JNIEnv Attached! index=" +
                                                             std::to_string(i + 1) + " " + own}));
    }
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 19);
    EXPECT_EQ(callbacks.take().size(), 19U);

    for (int attempt = 0; attempt < 2; ++attempt) {
        int result = -2;
        bool attached = true;
        threads[19].run([&] {
            result = deliverCreateReply();
            void* own = nullptr;
            attached = VirtualMachine::instance().vm()->GetEnv(&own, JNI_VERSION_1_4) == JNI_OK;
        });
        EXPECT_EQ(result, -1);
        EXPECT_FALSE(attached);
        EXPECT_TRACE(log->take(), R"(
            JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, threadid = <tid>, event_id = 1000004f, recv_size = 8
            JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
            JNIDtvSvLibListener|256|5|FUNCEND  |getJNIEnv|
            JNIDtvSvLibListener|1024|5|DEBUG    |recvEventFromServer|env is NULL!
        )");
    }
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 19);
    EXPECT_TRUE(callbacks.take().empty());

    // The threads that have a slot keep it.
    int result = -2;
    threads[18].run([&] { result = deliverCreateReply(); });
    EXPECT_EQ(result, 0);
    Lines lines = getEnvLines(log);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1].substr(0, 38), "INFO     |JNIEnv already got! index=19");
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), 0);
}

TEST(EnvironmentTable, PlatformThreadIsAttachedAgain) {
    ASSERT_EQ(Product::load(), "");
    ASSERT_EQ(deliverCreateReply(), 0);
    CallbackRecorder callbacks;
    auto log = LogRecorder::install();
    const uint8_t record[8] = {3, 0, 0, 0, 0, 0, 0, 0};
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(dtv::postEvent(0x1000004f, record, 8));
        ASSERT_TRUE(dtv::waitUntilDelivered(std::chrono::seconds(10)));
    }
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 1);
    EXPECT_TRACE(log->takeOf("getJNIEnv"), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=1 threadid=<tid> env=<ptr>
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already got! index=1 threadid=<tid> env=<ptr> )"
                                           "\n");
    std::vector<Callback> taken = callbacks.takeAll();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].thread, "DtvEvent-1");
    EXPECT_EQ(taken[1].thread, "DtvEvent-1");
}

TEST(EnvironmentTable, ThreadOfSlot0ThatCannotBeAttached) {
    ASSERT_EQ(Product::load(), "");
    CallbackRecorder callbacks;
    auto log = LogRecorder::install();
    EventThread thread;
    int result = 0;
    {
        FailJni fail("AttachCurrentThread");
        thread.run([&] { result = deliverCreateReply(); });
    }
    EXPECT_EQ(result, -1);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, threadid = <tid>, event_id = 1000004f, recv_size = 8
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread error!
        JNIDtvSvLibListener|1024|5|DEBUG    |recvEventFromServer|env is NULL!
    )");
    EXPECT_TRUE(callbacks.take().empty());
    // Slot 0 stays free: the next thread is served through it.
    EXPECT_EQ(deliverCreateReply(), 0);
    Lines lines = getEnvLines(log);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1].substr(0, 20), "INFO     |Got JNIEnv");
    EXPECT_EQ(callbacks.take().size(), 1U);
}

TEST(EnvironmentTable, LaterThreadThatCannotBeAttached) {
    ASSERT_EQ(Product::load(), "");
    CallbackRecorder callbacks;
    ASSERT_EQ(deliverCreateReply(), 0);
    callbacks.take();
    auto log = LogRecorder::install();
    EventThread first;
    EventThread second;
    int result = 0;
    {
        FailJni fail("AttachCurrentThread");
        first.run([&] { result = deliverCreateReply(); });
    }
    EXPECT_EQ(result, -1);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|recvEventFromServer|pid = <pid>, threadid = <tid>, event_id = 1000004f, recv_size = 8
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread() error! index=1
        JNIDtvSvLibListener|1024|5|DEBUG    |recvEventFromServer|env is NULL!
    )");
    EXPECT_TRUE(callbacks.take().empty());
    // The slot stays free for the next thread.
    second.run([&] { result = deliverCreateReply(); });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(getEnvLines(log)[1].substr(0, 33), "INFO     |JNIEnv Attached! index=");
    {
        FailJni fail("AttachCurrentThread");
        first.run([&] { result = deliverCreateReply(); });
    }
    EXPECT_EQ(result, -1);
    EXPECT_EQ(getEnvLines(log),
              (Lines{"FUNCSTART|", "ERROR    |AttachCurrentThread() error! index=2"}));
}

TEST(EnvironmentTable, ThreadAttachedByAnotherIsStillAttachedByTheBridge) {
    ASSERT_EQ(Product::load(), "");
    ASSERT_EQ(deliverCreateReply(), 0);
    EventThread thread;
    int result = -2;
    bool same = false;
    thread.run([&] {
        void* before = nullptr;
        JavaVM* vm = VirtualMachine::instance().vm();
        ASSERT_EQ(vm->AttachCurrentThread(&before, nullptr), JNI_OK);
        result = deliverCreateReply();
        same = env() == before;
    });
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(same);
    EXPECT_EQ(StrictJni::calls("AttachCurrentThread"), 1);
}

TEST(TaskName, IsThatOfTheThreadPaddedToEightColumns) {
    ASSERT_EQ(Product::load(), "");
    auto log = LogRecorder::install();
    const char* names[] = {"a", "seven77", "eight888", "fifteen_letters"};
    const char* padded[] = {"a       ", "seven77 ", "eight888", "fifteen_letters"};
    for (size_t i = 0; i < 4; ++i) {
        EventThread thread;
        thread.run([&] {
            pthread_setname_np(pthread_self(), names[i]);
            EXPECT_EQ(deliver(0x10000041, {}), 1);
        });
        std::vector<TraceLine> lines = log->take();
        ASSERT_FALSE(lines.empty());
        for (const TraceLine& line : lines) {
            // The VM renames a thread when it attaches it; FUNCSTART is written before that.
            if (line.function == "recvEventFromServer" && line.level == "FUNCSTART") {
                EXPECT_EQ(line.task, padded[i]);
                EXPECT_EQ(line.text.substr(0, 8 + std::string(padded[i]).size()),
                          std::string(",TENRIK,") + padded[i]);
            }
        }
    }
}

} // namespace
