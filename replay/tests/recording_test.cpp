// Which files can be replayed.
#include "replay/tests/replay_test.h"

namespace {

using namespace replay;

using Files = ReplayTest;

std::string errorOf(const std::string& bytes) {
    std::istringstream file(bytes);
    std::string error;
    EXPECT_FALSE(readRecording(file, error).has_value());
    return error;
}

TEST_F(Files, AreNotReplayedWhenTheyShowNothing) {
    EXPECT_EQ(errorOf(""), "the file is empty");
    EXPECT_EQ(errorOf(writer.bytes()), "it holds no message: a replay of it would show nothing");
    add(kAnswer, 1, "one", kStartScan, {}, 3);
    add(9, 1, "one", kStartScan, {}, 3);
    EXPECT_EQ(errorOf(writer.bytes()), "it holds no message: a replay of it would show nothing");
}

TEST_F(Files, AreNotReplayedWhenTheyAreDamaged) {
    add(kCommand, 1, "one", kStartScan, {1, 0});
    const std::string whole = writer.bytes();
    EXPECT_EQ(errorOf(whole.substr(0, whole.size() - 1)),
              "the file ends at byte 131, in the middle of the block at byte 60");
    std::string other = whole;
    other[60 + 28] = 2;
    EXPECT_EQ(errorOf(other),
              "the packet at byte 60 has a message of version 2; this program reads "
              "version 1");
}

TEST_F(Files, HaveMessagesThatBelongToNothing) {
    add(kAnswer, 1, "one", kStartScan, {}, 3);
    add(kCommand, 1, "one", kStartScan, {1, 0});
    add(kRefusal, 3, "DtvEvent-1", kScanReply, {}, 3);
    add(7, 1, "one", kStartScan, {1, 0});
    start();
    on("one", [&] { EXPECT_EQ(send(kStartScan, {1, 0}), 0); });
    EXPECT_THAT(report(),
                testing::ElementsAre("replay: 1 of 4 messages, no divergence, 3 left out"));
}

TEST_F(Files, SayWhatTheSessionWas) {
    writer = CaptureWriter("city=a\nseed=20");
    add(kCommand, 1, "one", kStartScan, {1, 0});
    start();
    EXPECT_EQ(service->recording().section, (sessions::Notes{{"city", "a"}, {"seed", "20"}}));
}

} // namespace
