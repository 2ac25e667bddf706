// What Java gets of random records of each event. With DTV_EVENT_TREES the records and the trees
// are kept in the file of that name, so that what shows Java's objects elsewhere can be compared
// with the bridge: a line has the id, the record in hexadecimal, a colon and the callback.
#include "trace/random_values.h"

#include <cstdlib>
#include <fstream>

namespace {

using namespace harness;

constexpr int kRecords = 20; ///< of each event
constexpr int kUndelivered = 2;

TEST(EventTrees, ReachJava) {
    ASSERT_EQ(Product::load(), "");
    const char* const path = std::getenv("DTV_EVENT_TREES");
    std::ofstream kept;
    if (path != nullptr) {
        kept.open(path);
        ASSERT_TRUE(kept);
    }
    trace_test::Random random(7);
    size_t delivered = 0;
    for (const catalogue::Message& event : catalogue::events()) {
        CallbackRecorder callbacks;
        for (int time = 0; time < kRecords; ++time) {
            LocalFrame frame;
            const std::vector<uint8_t> record = trace_test::randomRecord(*event.record, random);
            deliver(event.id, record);
            for (const std::string& callback : callbacks.take()) {
                kept << event.id << ' ' << hex(record) << " : " << callback << '\n';
                delivered += time == 0 ? 1 : 0;
            }
        }
    }
    // Two events end without a callback.
    EXPECT_EQ(delivered, catalogue::events().size() - kUndelivered);
    if (path != nullptr) {
        kept.close();
        EXPECT_TRUE(kept);
    }
}

} // namespace
