// The environment table's operations that only the listener's owner calls.
#include "binding/listener.h"

#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

namespace {

using namespace harness;

bool attached() {
    void* own = nullptr;
    return VirtualMachine::instance().vm()->GetEnv(&own, JNI_VERSION_1_4) == JNI_OK;
}

std::string low32(pthread_t thread) {
    char text[16];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned>(thread));
    return text;
}

/// The number after "index=" in a line.
std::string indexIn(const std::string& message) {
    size_t at = message.find("index=") + 6;
    return message.substr(at, message.find(' ', at) - at);
}

class ListenerEnvironment : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(loadProbe(), "");
        log = LogRecorder::install();
    }
    std::shared_ptr<LogRecorder> log;
};

TEST_F(ListenerEnvironment, IsTheThreadsOwn) {
    Listener listener = Listener::made();
    EXPECT_TRACE(log->take(), "") << "setVM logs nothing";
    EXPECT_EQ(listener.getJNIEnv(), env());
    EventThread thread;
    thread.run([&] {
        JNIEnv* given = listener.getJNIEnv();
        EXPECT_EQ(given, env());
    });
    EXPECT_EQ(listener.getJNIEnv(), env());
}

TEST_F(ListenerEnvironment, FreeEmptiesTheTableAndDetachesTheCallerAlone) {
    Listener listener = Listener::made();
    EventThread first;
    EventThread second;
    JNIEnv* first_env = nullptr;
    JNIEnv* second_env = nullptr;
    std::string first_thread;
    std::string second_thread;
    first.run([&] {
        first_env = listener.getJNIEnv();
        first_thread = low32(pthread_self());
    });
    second.run([&] {
        second_env = listener.getJNIEnv();
        second_thread = low32(pthread_self());
    });
    log->clear();
    int detached = StrictJni::calls("DetachCurrentThread");
    bool first_attached = true;
    first.run([&] {
        listener.freeJNIEnv();
        first_attached = attached();
    });
    bool second_attached = false;
    second.run([&] { second_attached = attached(); });
    EXPECT_FALSE(first_attached);
    EXPECT_TRUE(second_attached);
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), detached + 2);

    std::vector<TraceLine> lines = log->take();
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].literal(), "JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|");
    std::string index = indexIn(lines[1].message);
    EXPECT_EQ(lines[1].literal(),
              "JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=" + pointer(first_env) +
                  " index=" + index + " tid=" + first_thread + " attach=1");
    EXPECT_EQ(lines[2].literal(),
              "JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=" + pointer(second_env) +
                  " index=" + index + " tid=" + second_thread + " attach=1")
        << "index is one fixed value";
    EXPECT_EQ(lines[3].literal(), "JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|");

    // Nothing is left to be freed, and slot 0 is assigned again.
    listener.freeJNIEnv();
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), detached + 2);
    EXPECT_EQ(listener.getJNIEnv(), env());
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|Got JNIEnv! threadid=<tid> env=<ptr>
    )");
}

TEST_F(ListenerEnvironment, FreeDoesNotDetachAThreadThatWasAttachedBefore) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env());
    int detached = StrictJni::calls("DetachCurrentThread");
    log->clear();
    listener.freeJNIEnv();
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), detached);
    EXPECT_TRUE(attached());
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=0
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
}

TEST_F(ListenerEnvironment, DetachEmptiesTheSlotThatTheBridgeAttached) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env());
    EventThread thread;
    std::string own;
    thread.run([&] {
        JNIEnv* given = listener.getJNIEnv();
        log->clear();
        listener.detachJNIEnv(given);
        EXPECT_FALSE(attached());
        own = pointer(given) + " index=";
    });
    std::vector<TraceLine> lines = log->take();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].literal(), "JNIDtvSvLibListener|128|5|FUNCSTART|detachJNIEnv|env=" +
                                      own.substr(0, own.find(' ')));
    std::string detach = "JNIDtvSvLibListener|1024|5|DEBUG    |detachJNIEnv|detach env=" + own;
    EXPECT_EQ(lines[1].literal().substr(0, detach.size()), detach);
    EXPECT_TRUE(matches("detach env=<ptr> index=<int> tid=<tid>", lines[1].message));
    EXPECT_EQ(lines[1].message.substr(lines[1].message.find("tid=")),
              "tid=" + low32(lines[1].thread));
    EXPECT_EQ(lines[2].literal(), "JNIDtvSvLibListener|256|5|FUNCEND  |detachJNIEnv|");
    std::string index = indexIn(lines[1].message);

    // Its slot is free: the next thread gets it.
    EventThread next;
    next.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=1 threadid=<tid> env=<ptr>
    )");
    // The table has no entry of the thread any more: it is attached again.
    thread.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=2 threadid=<tid> env=<ptr>
    )");
    next.run([&] { listener.freeJNIEnv(); });
    for (const TraceLine& line : log->take()) {
        if (line.level == "DEBUG    ") {
            EXPECT_EQ(indexIn(line.message), index) << "the same fixed value everywhere";
        }
    }
}

TEST_F(ListenerEnvironment, DetachActsOnTheCaller) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env());
    EventThread owner;
    EventThread other;
    JNIEnv* owned = nullptr;
    owner.run([&] { owned = listener.getJNIEnv(); });
    bool other_attached = true;
    other.run([&] {
        listener.getJNIEnv();
        listener.detachJNIEnv(owned);
        other_attached = attached();
    });
    EXPECT_FALSE(other_attached);
    bool owner_attached = false;
    owner.run([&] { owner_attached = attached(); });
    EXPECT_TRUE(owner_attached);
    log->clear();
    owner.run([&] { EXPECT_EQ(listener.getJNIEnv(), owned); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=1 threadid=<tid> env=<ptr>
    )");
}

TEST_F(ListenerEnvironment, DetachOfAThreadThatTheBridgeDidNotAttachOnlyLogs) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env()) << "slot 0, not attached by the bridge";
    log->clear();
    int detached = StrictJni::calls("DetachCurrentThread");
    int elsewhere = 0;
    for (JNIEnv* unknown :
         {env(), static_cast<JNIEnv*>(nullptr), reinterpret_cast<JNIEnv*>(&elsewhere)}) {
        listener.detachJNIEnv(unknown);
        std::vector<TraceLine> lines = log->take();
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_EQ(lines[0].literal(),
                  "JNIDtvSvLibListener|128|5|FUNCSTART|detachJNIEnv|env=" + pointer(unknown));
        EXPECT_EQ(lines[1].literal(), "JNIDtvSvLibListener|256|5|FUNCEND  |detachJNIEnv|");
    }
    EXPECT_EQ(StrictJni::calls("DetachCurrentThread"), detached);
    EXPECT_EQ(listener.getJNIEnv(), env());
    EXPECT_TRUE(matches("JNIEnv already got! index=0 threadid=<tid> env=<ptr> ",
                        log->take().back().message));
}

TEST_F(ListenerEnvironment, DetachFindsTheLastSlot) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env());
    EventThread threads[20];
    JNIEnv* last = nullptr;
    for (int i = 0; i < 19; ++i) {
        threads[i].run([&] { last = listener.getJNIEnv(); });
        ASSERT_NE(last, nullptr);
    }
    threads[19].run([&] { EXPECT_EQ(listener.getJNIEnv(), nullptr); });
    threads[18].run([&] { listener.detachJNIEnv(last); });
    log->clear();
    threads[19].run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=19 threadid=<tid> env=<ptr>
    )");
    threads[0].run([&] { listener.freeJNIEnv(); });
    EXPECT_EQ(log->take().size(), 22U) << "all twenty slots";
}

/// While slot 0 is free every caller is served through it, also one that owns another slot.
TEST_F(ListenerEnvironment, FreedSlot0ServesAThreadThatOwnsAnotherSlot) {
    Listener listener = Listener::made();
    EventThread first;
    EventThread second;
    JNIEnv* first_env = nullptr;
    JNIEnv* second_env = nullptr;
    first.run([&] { first_env = listener.getJNIEnv(); });
    second.run([&] { second_env = listener.getJNIEnv(); });
    first.run([&] { listener.detachJNIEnv(first_env); });
    log->clear();
    Calls asked("GetEnv");
    Calls attached_again("AttachCurrentThread");
    second.run([&] { EXPECT_EQ(listener.getJNIEnv(), second_env); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|Got JNIEnv! threadid=<tid> env=<ptr>
    )");
    EXPECT_EQ(asked.made(), 1);
    EXPECT_EQ(attached_again.made(), 0);
    // It has two slots now; the first is found.
    second.run([&] { EXPECT_EQ(listener.getJNIEnv(), second_env); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv already got! index=0 threadid=<tid> env=<ptr> 
    )");
    EventThread third;
    third.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=2 threadid=<tid> env=<ptr>
    )");
    // Detaching the thread frees slot 1, which the bridge attached. Slot 0 came from GetEnv.
    second.run([&] { listener.detachJNIEnv(second_env); });
    log->clear();
    first.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|JNIEnv Attached! index=1 threadid=<tid> env=<ptr>
    )");
}

/// Twenty threads take all slots and end. A thread that ran all the time gets none afterwards.
TEST_F(ListenerEnvironment, SlotStaysTakenAfterItsThreadHasEnded) {
    Listener listener = Listener::made();
    std::mutex mutex;
    std::condition_variable changed;
    int started = 0;
    bool others_ended = false;
    JNIEnv* late_env = reinterpret_cast<JNIEnv*>(&mutex);
    std::thread late([&] {
        std::unique_lock lock(mutex);
        ++started;
        changed.notify_all();
        changed.wait(lock, [&] { return others_ended; });
        late_env = listener.getJNIEnv();
    });
    std::vector<std::thread> threads;
    for (int i = 0; i < 20; ++i) {
        std::unique_lock lock(mutex);
        const int before = started;
        threads.emplace_back([&] {
            std::unique_lock own(mutex);
            EXPECT_NE(listener.getJNIEnv(), nullptr);
            ++started;
            changed.notify_all();
            // All run at the same time, so that no two have the same thread id.
            changed.wait(own, [&] { return started == 21; });
            own.unlock();
            VirtualMachine::instance().vm()->DetachCurrentThread();
        });
        changed.wait(lock, [&] { return started > before || started == 21; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    log->clear();
    {
        std::lock_guard lock(mutex);
        others_ended = true;
        changed.notify_all();
    }
    late.join();
    EXPECT_EQ(late_env, nullptr);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|256|5|FUNCEND  |getJNIEnv|
    )");
}

TEST_F(ListenerEnvironment, AsksTheVmForVersion1_4AndAttachesWithoutArguments) {
    Listener listener = Listener::made();
    std::vector<std::string> asked;
    ObservedJni observed([&asked](const JniCall& call) {
        std::string text = call.function;
        for (long long number : call.numbers) {
            text += " " + std::to_string(number);
        }
        asked.push_back(text);
    });
    EventThread first;
    EventThread second;
    first.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    second.run([&] { EXPECT_NE(listener.getJNIEnv(), nullptr); });
    EXPECT_EQ(asked, (std::vector<std::string>{"GetEnv 65540", "AttachCurrentThread 0",
                                               "AttachCurrentThread 0"}));
}

TEST_F(ListenerEnvironment, DestructionWithoutAnEnvironmentReleasesNothing) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.setJavaClass(0, "java/lang/String"), 0);
    int deleted = StrictJni::globalsDeleted();
    log->clear();
    EventThread thread;
    thread.run([&] {
        FailJni fail("AttachCurrentThread");
        listener.drop();
    });
    EXPECT_EQ(StrictJni::globalsDeleted(), deleted);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread error!
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
}

TEST_F(ListenerEnvironment, DestructionOnAThreadOfItsOwnAttachesAndDetachesIt) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.setJavaClass(0, "java/lang/String"), 0);
    int deleted = StrictJni::globalsDeleted();
    log->clear();
    EventThread thread;
    bool after = true;
    thread.run([&] {
        listener.drop();
        after = attached();
    });
    EXPECT_FALSE(after);
    EXPECT_EQ(StrictJni::globalsDeleted(), deleted + 1);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|512|5|INFO     |getJNIEnv|GetEnv Failed but JNIEnv Attached!
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=1
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
}

/// Java frames may be below: such a thread is the VM's to detach.
TEST_F(ListenerEnvironment, EndOnAThreadThatTheVmKnewBeforeDetachesNothing) {
    Listener listener = Listener::made();
    EventThread thread;
    thread.run([&] { ASSERT_NE(listener.getJNIEnv(), nullptr); });
    log->clear();
    Calls detached("DetachCurrentThread");
    listener.drop();
    EXPECT_EQ(detached.made(), 0);
    EXPECT_TRUE(attached());
    EXPECT_EQ(log->takeOf("freeJNIEnv").size(), 4U) << "its own entry goes all the same";
}

/// Before a load has named the VM, and in a process whose load was refused, there is none.
TEST_F(ListenerEnvironment, WithoutAVmThereIsNoEnvironment) {
    Listener listener = Listener::made();
    listener.setVM(nullptr);
    Calls asked("GetEnv");
    Calls attaching("AttachCurrentThread");
    EXPECT_EQ(listener.getJNIEnv(), nullptr);
    EXPECT_EQ(asked.made() + attaching.made(), 0);
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|getJNIEnv|
        JNIDtvSvLibListener|2|6|ERROR    |getJNIEnv|AttachCurrentThread error!
    )");
}

TEST_F(ListenerEnvironment, WithoutAVmNoThreadIsDetached) {
    Listener listener = Listener::made();
    ASSERT_EQ(listener.getJNIEnv(), env());
    EventThread first;
    EventThread second;
    JNIEnv* second_env = nullptr;
    first.run([&] { ASSERT_NE(listener.getJNIEnv(), nullptr); });
    second.run([&] { second_env = listener.getJNIEnv(); });
    Calls detached("DetachCurrentThread");
    listener.setVM(nullptr);
    log->clear();
    second.run([&] {
        listener.detachJNIEnv(second_env);
        EXPECT_TRUE(attached());
    });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|detachJNIEnv|env=<ptr>
        JNIDtvSvLibListener|1024|5|DEBUG    |detachJNIEnv|detach env=<ptr> index=<int> tid=<tid>
        JNIDtvSvLibListener|256|5|FUNCEND  |detachJNIEnv|
    )");
    first.run([&] {
        listener.freeJNIEnv();
        EXPECT_TRUE(attached());
    });
    EXPECT_TRACE(log->take(), R"(
        JNIDtvSvLibListener|128|5|FUNCSTART|freeJNIEnv|
        JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=0
        JNIDtvSvLibListener|1024|5|DEBUG    |freeJNIEnv|free env=<ptr> index=<int> tid=<tid> attach=1
        JNIDtvSvLibListener|256|5|FUNCEND  |freeJNIEnv|
    )");
    EXPECT_EQ(detached.made(), 0);
    listener.setVM(VirtualMachine::instance().vm());
    EXPECT_EQ(listener.getJNIEnv(), env()) << "slot 0 is free again";
}

} // namespace
