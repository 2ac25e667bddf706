// The threads that deliver posted events. Every test of this binary uses three of them.
#include "platform/listener_double.h"

#include "harness/harness.h"

#include <unistd.h>

#include <chrono>

namespace {

using namespace platform;
using android::sp;
using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(DeliveryThreads, AreAsManyAsRequested) {
    sp<ListenerDouble> listener = new ListenerDouble;
    dtv::setDeliveryThreads(3);
    dtv::setDeliveryThreads(2); // the number only grows
    listener->before = [] { usleep(1000); };
    for (int i = 0; i < 300; ++i) {
        ASSERT_TRUE(dtv::postEvent(5, &i, 4));
    }
    EXPECT_FALSE(dtv::waitUntilDelivered(milliseconds(1)));
    ASSERT_TRUE(dtv::waitUntilDelivered(seconds(20)));
    EXPECT_EQ(listener->events.size(), 300u);
    EXPECT_EQ(listener->threads.size(), 3u);
    EXPECT_EQ(listener->task_names.size(), 3u);
}

} // namespace
