// libDtv's message header.
#include "sessions/message.h"
#include "sessions/tests/packet.h"

#include <gtest/gtest.h>

namespace {

std::string messageErrorOf(const std::string& hex) {
    std::string error;
    EXPECT_FALSE(sessions::readMessage(packetOf(hex), error).has_value());
    return error;
}

TEST(Message, SplitsItsHeaderIntoFields) {
    std::string error;
    const auto message =
        sessions::readMessage(packetOf("01020304 67120000 40000010 feffffff 0c000000"
                                       "31323334353637383930616263646566 0304",
                                       5),
                              error);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->kind, 2);
    EXPECT_EQ(message->surfaces, 3);
    EXPECT_EQ(message->reserved, 4);
    EXPECT_EQ(message->thread_id, 4711u);
    EXPECT_EQ(message->id, 0x10000040);
    EXPECT_EQ(message->value, -2);
    EXPECT_EQ(message->size, 12);
    EXPECT_EQ(message->thread_name, "1234567890abcdef") << "without a zero byte";
    EXPECT_EQ(message->record, (std::vector<uint8_t>{3, 4}));
    EXPECT_EQ(message->left_out, 5u);
}

TEST(Message, RefusesOtherHeaders) {
    const std::string rest = "010000 67120000 06000010 00000000 00000000"
                             "00000000000000000000000000000000";
    EXPECT_EQ(messageErrorOf(""), "the packet at byte 88 is empty");
    EXPECT_EQ(messageErrorOf("02" + rest),
              "the packet at byte 88 has a message of version 2; this program reads version 1");
    EXPECT_EQ(messageErrorOf("00"),
              "the packet at byte 88 has a message of version 0; this program reads version 1");
    EXPECT_EQ(messageErrorOf("01" + rest.substr(0, rest.size() - 2)),
              "the packet at byte 88 is 35 bytes long; a message begins with 36");
}

} // namespace
