// The threads that deliver events: the first of all, those the VM does not know, those that get no
// environment, and several at once. Each test needs a process in which no event has come yet.
#include "harness/event_trace.h"

#include <algorithm>

namespace events {
namespace {

using namespace harness;
using Texts = std::vector<std::string>;

class FirstEvent : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(Product::load(), "");
        log = LogRecorder::install();
        callbacks = std::make_unique<CallbackRecorder>();
    }

    /// The trace up to the environment, which is what these tests are about; the handler's
    /// follows.
    static std::string beforeEnvironment() {
        return listenerTrace("recvEventFromServer",
                             "START |pid = <pid>, threadid = <tid>, event_id = 10000089, "
                             "recv_size = 4\nSTART getJNIEnv|");
    }
    static std::string information(const std::string& message) {
        return listenerTrace("getJNIEnv", "INFO |" + message);
    }
    static std::string error(const std::string& message) {
        return listenerTrace("getJNIEnv", "ERROR |" + message);
    }
    static std::string handled() {
        return listenerTrace("dtvsv_msgid_lib_bml_disp_icon_notify", R"(
            START DoListenerEvent|
            START
            DEBUG |handle = 3, icon_type = 1, disp_permit = 2
            NEW 83 38
            STATIC 15
            END |ret = 0
            END DoListenerEvent|
            END recvEventFromServer|)");
    }
    static std::string withoutEnvironment() {
        return listenerTrace("recvEventFromServer", "DEBUG |env is NULL!");
    }
    static int event() { return deliver(0x10000089, fromHex("0300 01 02")); }
    static int eventOn(EventThread& thread) {
        int result = -1000;
        thread.run([&] { result = event(); });
        return result;
    }

    const std::string callback =
        "onEvDtvsvBmlDispIconNotify BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(3, 1, 2)";
    std::shared_ptr<LogRecorder> log;
    std::unique_ptr<CallbackRecorder> callbacks;
};

TEST_F(FirstEvent, OnAThreadTheVmKnows) {
    Calls attached("AttachCurrentThread");
    EXPECT_EQ(event(), 0);
    EXPECT_TRACE(log->take(), beforeEnvironment() +
                                  information("Got JNIEnv! threadid=<tid> env=<ptr>") + handled());
    EXPECT_EQ(callbacks->take(), Texts{callback});
    EXPECT_EQ(event(), 0);
    EXPECT_TRACE(log->take(),
                 beforeEnvironment() +
                     information("JNIEnv already got! index=0 threadid=<tid> env=<ptr> ") +
                     handled());
    EXPECT_EQ(callbacks->take(), Texts{callback});
    EXPECT_EQ(attached.made(), 0);
}

TEST_F(FirstEvent, OnAThreadTheVmDoesNotKnow) {
    EventThread thread;
    EXPECT_EQ(eventOn(thread), 0);
    EXPECT_TRACE(log->take(), beforeEnvironment() +
                                  information("GetEnv Failed but JNIEnv Attached!") + handled());
    EXPECT_EQ(eventOn(thread), 0);
    EXPECT_TRACE(log->take(),
                 beforeEnvironment() +
                     information("JNIEnv already got! index=0 threadid=<tid> env=<ptr> ") +
                     handled());
    // Another thread is attached, also one that the VM knows.
    EXPECT_EQ(event(), 0);
    EXPECT_TRACE(log->take(), beforeEnvironment() +
                                  information("JNIEnv Attached! index=1 threadid=<tid> "
                                              "env=<ptr>") +
                                  handled());
    EXPECT_EQ(event(), 0);
    EXPECT_TRACE(log->take(),
                 beforeEnvironment() +
                     information("JNIEnv already got! index=1 threadid=<tid> env=<ptr> ") +
                     handled());
    EXPECT_EQ(callbacks->take(), (Texts{callback, callback, callback, callback}));
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

TEST_F(FirstEvent, ThatCannotBeAttachedIsDropped) {
    StdoutCapture output;
    EventThread thread;
    {
        FailJni fails("AttachCurrentThread", 0, FailJni::Leaves::nothing);
        EXPECT_EQ(eventOn(thread), -1);
    }
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines,
                 beforeEnvironment() + error("AttachCurrentThread error!") + withoutEnvironment());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(output.take(), onStandardOutput(lines[2]));
    EXPECT_TRUE(callbacks->take().empty());
    EXPECT_EQ(eventOn(thread), 0) << "the next event tries again";
    EXPECT_EQ(callbacks->take(), Texts{callback});
}

TEST_F(FirstEvent, LaterThreadThatCannotBeAttachedIsDropped) {
    EXPECT_EQ(event(), 0);
    EXPECT_EQ(callbacks->take(), Texts{callback});
    log->clear();
    StdoutCapture output;
    EventThread thread;
    {
        FailJni fails("AttachCurrentThread", 0, FailJni::Leaves::nothing);
        EXPECT_EQ(eventOn(thread), -1);
    }
    std::vector<TraceLine> lines = log->take();
    EXPECT_TRACE(lines, beforeEnvironment() + error("AttachCurrentThread() error! index=1") +
                            withoutEnvironment());
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(output.take(), onStandardOutput(lines[2]));
    EXPECT_TRUE(callbacks->take().empty());
    EXPECT_EQ(eventOn(thread), 0);
    EXPECT_TRACE(log->take(), beforeEnvironment() +
                                  information("JNIEnv Attached! index=1 threadid=<tid> "
                                              "env=<ptr>") +
                                  handled());
    EXPECT_EQ(callbacks->take(), Texts{callback});
}

TEST_F(FirstEvent, TwentyFirstThreadGetsNoEnvironment) {
    StdoutCapture output;
    std::vector<std::unique_ptr<EventThread>> threads;
    for (int i = 0; i < 20; i++) {
        threads.push_back(std::make_unique<EventThread>());
        EXPECT_EQ(eventOn(*threads.back()), 0);
    }
    EXPECT_EQ(callbacks->take().size(), 20U);
    log->clear();
    EventThread late;
    for (int i = 0; i < 2; i++) {
        EXPECT_EQ(eventOn(late), -1);
        EXPECT_TRACE(log->take(), beforeEnvironment() + listenerTrace("getJNIEnv", "END") +
                                      withoutEnvironment());
    }
    EXPECT_EQ(event(), -1) << "there is no slot for this thread either";
    EXPECT_EQ(output.take(), "");
    EXPECT_TRUE(callbacks->take().empty());
    log->clear();
    EXPECT_EQ(eventOn(*threads.back()), 0);
    EXPECT_TRACE(log->take(),
                 beforeEnvironment() +
                     information("JNIEnv already got! index=19 threadid=<tid> env=<ptr> ") +
                     handled());
    EXPECT_EQ(callbacks->take(), Texts{callback});
}

TEST_F(FirstEvent, PostedEventsComeInOrderOnADeliveryThread) {
    const uint8_t first[] = {3, 0, 1, 2};
    const uint8_t second[] = {4, 0, 5, 6};
    EXPECT_TRUE(dtv::postEvent(0x10000089, first, 4));
    EXPECT_TRUE(dtv::postEvent(0x10000089, second, 3));
    EXPECT_TRUE(dtv::postEvent(0x10000089, second, 4));
    ASSERT_TRUE(dtv::waitUntilDelivered(std::chrono::seconds(10)));
    std::vector<Callback> taken = callbacks->takeAll();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[0].text, callback);
    EXPECT_EQ(taken[1].text,
              "onEvDtvsvBmlDispIconNotify BG_EV_DTVSV_BML_DISP_ICON_NOTIFY(4, 5, 6)");
    EXPECT_EQ(taken[0].thread, taken[1].thread);
    EXPECT_NE(taken[0].thread, "main");
}

TEST_F(FirstEvent, SeveralThreadsDeliverAtOnce) {
    std::vector<std::unique_ptr<EventThread>> threads;
    // One after the other into the table, which takes no lock; then all together.
    for (int i = 0; i < 3; i++) {
        threads.push_back(std::make_unique<EventThread>());
        EXPECT_EQ(eventOn(*threads.back()), 0);
    }
    callbacks->take();
    int results[3] = {-1, -1, -1};
    const int per_thread = 200;
    for (int i = 0; i < 3; i++) {
        threads[static_cast<size_t>(i)]->start([&results, i] {
            std::vector<uint8_t> record = fromHex("0000 0000 0000 0000 0000 0000 0000 0000");
            record[0] = static_cast<uint8_t>(i);
            record[8] = static_cast<uint8_t>(i);
            int sum = 0;
            for (int event = 0; event < per_thread; event++) {
                sum += deliver(0x10000098, record);
                sum += deliver(0x1000009b, record);
            }
            results[i] = sum;
        });
    }
    for (auto& thread : threads) {
        thread->wait();
    }
    EXPECT_EQ(results[0] + results[1] + results[2], 0);
    Texts taken = callbacks->take();
    EXPECT_EQ(taken.size(), 1200U);
    for (const char* expected :
         {"onEvDtvsvRecStatusNotify BG_EV_DTVSV_REC_STATUS_NOTIFY(0, 0, 0L, 0)",
          "onEvDtvsvRecStatusNotify BG_EV_DTVSV_REC_STATUS_NOTIFY(1, 0, 0L, 1)",
          "onEvDtvsvRecStatusNotify BG_EV_DTVSV_REC_STATUS_NOTIFY(2, 0, 0L, 2)",
          "onEvDtvsvPlayStatusNotify BG_EV_DTVSV_PLAY_STATUS_NOTIFY(0, "
          "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(0, 0L, 0))",
          "onEvDtvsvPlayStatusNotify BG_EV_DTVSV_PLAY_STATUS_NOTIFY(1, "
          "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(0, 1L, 0))",
          "onEvDtvsvPlayStatusNotify BG_EV_DTVSV_PLAY_STATUS_NOTIFY(2, "
          "BG_TS_DTVSVLIB_PLAY_STATUS_INFO(0, 2L, 0))"}) {
        EXPECT_EQ(std::count(taken.begin(), taken.end(), expected), per_thread) << expected;
    }
    EXPECT_EQ(StrictJni::liveLocals(), 0);
}

} // namespace
} // namespace events
