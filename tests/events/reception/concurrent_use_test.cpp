// All threads that a receiver may have, at once: twenty deliver events and eight of Java's send
// commands. The build with the thread sanitizer finds data races between them.
#include "harness/harness.h"

#include <atomic>
#include <thread>

namespace {

using namespace harness;

constexpr int eventThreads = 20;
constexpr int javaThreads = 8;
constexpr int rounds = 100;

/// One event of each kind of handler: with only a result, with a record, with an object in it.
int deliverSome(int thread) {
    const auto handle = static_cast<uint8_t>(thread);
    int failed = deliver(0x1000004f, {handle, 0, 0, 0, 1, 0, 0, 0});
    failed += deliver(0x10000089, {handle, 0, 1, 2});
    failed += deliver(0x1000006c, {handle, 0, 0, 0, 4, 0, 0, 0, 5, 0, 6, 0});
    failed += deliver(0x1000009b, {handle, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 4, 0, 0, 0});
    return failed;
}

/// Commands that wait build their answers as events build their objects. Create and
/// SetSoundVideoDelay share the bound of the delays; Java calls them one after the other.
int sendSome(int thread) {
    LocalFrame frame;
    int failed = 0;
    for (const char* native : {"DtvSvLib_StartScan", "DtvSvLib_Release_Sync",
                               "DtvSvLib_CancelScan_Sync", "DtvSvLib_PausePlay"}) {
        failed += callNative(native, {thread}) == nullptr ? 1 : 0;
    }
    jobject channel = newObject("BG_TS_DTVSVLIB_BROADCAST_INFO", "(II)V", {62, 2});
    failed += callNative("DtvSvLib_SelectChannel", {thread, channel}) == nullptr ? 1 : 0;
    return failed;
}

TEST(ConcurrentUse, OfTwentyEventThreadsAndEightJavaThreads) {
    ASSERT_EQ(Product::load(), "");
    auto service = ServiceDouble::serve();
    service->setReply(fromHex("0300 0000 0000 0000"));
    dtv::setLogLevelMask(0);
    CallbackRecorder callbacks;
    std::atomic<int> failed{0};
    std::vector<std::unique_ptr<EventThread>> threads;
    for (int i = 0; i < eventThreads; ++i) {
        // The first event of each thread is delivered alone.
        threads.push_back(std::make_unique<EventThread>());
        threads.back()->run([&failed, i] { failed += deliverSome(i); });
    }
    std::atomic<bool> go{false};
    for (int i = 0; i < eventThreads; ++i) {
        threads[static_cast<size_t>(i)]->start([&failed, &go, i] {
            while (!go) {
                std::this_thread::yield();
            }
            for (int round = 0; round < rounds; ++round) {
                failed.fetch_add(deliverSome(i), std::memory_order_relaxed);
            }
        });
    }
    std::vector<std::thread> java;
    for (int i = 0; i < javaThreads; ++i) {
        java.emplace_back([&failed, &go, i] {
            JavaVM* vm = VirtualMachine::instance().vm();
            void* attached = nullptr;
            if (vm->AttachCurrentThread(&attached, nullptr) != JNI_OK) {
                ++failed;
                return;
            }
            while (!go) {
                std::this_thread::yield();
            }
            for (int round = 0; round < rounds; ++round) {
                failed.fetch_add(sendSome(i), std::memory_order_relaxed);
            }
            vm->DetachCurrentThread();
        });
    }
    go = true;
    for (std::thread& thread : java) {
        thread.join();
    }
    for (auto& thread : threads) {
        thread->wait();
    }
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(callbacks.take().size(), 4U * eventThreads * (rounds + 1));
    EXPECT_EQ(service->take().size(), 5U * javaThreads * rounds);
}

} // namespace
