// The end of delivery, which is final for a process.
#include "platform/calling_listener.h"

#include "harness/harness.h"

#include <unistd.h>

#include <atomic>
#include <thread>

namespace {

using namespace platform;
using android::sp;

TEST(StoppedDelivery, DoesNotDeliverAFirstEventThatWaits) {
    Point inside;
    std::atomic<bool> other_began{false};
    int result = 0;
    const sp<CallingListener> listener = new CallingListener([&](int event) {
        if (event == 1) {
            inside.reach();
            usleep(200000);
        } else {
            other_began = true;
        }
    });
    std::thread first([] { deliver(1); });
    ASSERT_TRUE(inside.wait());
    std::thread other([&] { result = deliver(2); });
    usleep(50000);
    dtv::stopDelivery();
    other.join();
    first.join();
    EXPECT_FALSE(other_began);
    EXPECT_EQ(result, dtv::noListener);
}

} // namespace
