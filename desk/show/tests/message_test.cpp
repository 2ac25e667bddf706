// What is printed of a message.
#include "desk/show/message.h"
#include "sessions/tests/packet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

using show::localTime;
using testing::ElementsAre;

std::vector<std::string> linesOf(const std::string& hex, uint32_t left_out = 0) {
    std::string error;
    const auto message = sessions::readMessage(packetOf(hex, left_out), error);
    EXPECT_EQ(error, "");
    return message ? show::messageLines(*message, "20:14:03.123456") : std::vector<std::string>{};
}

constexpr char kEvening[] = "6576656e696e67000000000000000000";

TEST(Message, ShowsCommands) {
    EXPECT_THAT(linesOf(std::string("01010000 67120000 06000010 00000000 0c000000") + kEvening +
                        "03000000 20000000 00000000"),
                ElementsAre("20:14:03.123456  evening (4711)  -> SelectChannel 0x10000006, "
                            "12 bytes,",
                            "                 TS_BROADCAST_INFO_REQ",
                            "    handle            3", //
                            "    physical_channel  32", "    service_no        0"));
    EXPECT_THAT(
        linesOf(std::string("01010200 67120000 01000010 00000000 02000000") + kEvening + "0300"),
        ElementsAre(
            "20:14:03.123456  evening (4711)  -> Release 0x10000001, 2 bytes, TS_HANDLE_REQ,",
            "                 2 surfaces", //
            "    handle  3"));
}

TEST(Message, ShowsAnswers) {
    EXPECT_THAT(linesOf(std::string("01020000 67120000 38000010 00000000 08000000") + kEvening +
                        "03000000 ffffffff"),
                ElementsAre("20:14:03.123456  evening (4711)  <- Release_Sync 0x10000038 "
                            "returned 0, 8 bytes,",
                            "                 TS_COMMON_SYNC_REPLY",
                            "    handle        3", //
                            "    return_value  -1"));
    EXPECT_THAT(linesOf(std::string("01020000 67120000 38000010 00000000 00000000") + kEvening),
                ElementsAre("20:14:03.123456  evening (4711)  <- Release_Sync 0x10000038 "
                            "returned 0, 0 bytes"));
    EXPECT_THAT(linesOf(std::string("01020000 67120000 01000010 ffffffff 00000000") + kEvening),
                ElementsAre("20:14:03.123456  evening (4711)  <- Release 0x10000001 returned -1"));
}

TEST(Message, ShowsEventsAndVerdicts) {
    const std::string delivery = "4474764576656e742d31000000000000";
    EXPECT_THAT(linesOf("01030000 70120000 54000010 00000000 02000000" + delivery + "0300"),
                ElementsAre("20:14:03.123456  DtvEvent-1 (4720)  <- SelectChannelReply "
                            "0x10000054, 2 bytes,",
                            "                 TS_SERVICE_REPLY", //
                            "    handle            3", "    the record ends here, 2 of 16 bytes"));
    EXPECT_THAT(linesOf("01030000 70120000 54000010 00000000 00000000" + delivery),
                ElementsAre("20:14:03.123456  DtvEvent-1 (4720)  <- SelectChannelReply "
                            "0x10000054, 0 bytes",
                            "    the record ends here, 0 of 16 bytes"));
    EXPECT_THAT(linesOf("01030000 70120000 99000010 00000000 fbffffff" + delivery),
                ElementsAre("20:14:03.123456  DtvEvent-1 (4720)  <- CaptionFatalErrorNotify "
                            "0x10000099,",
                            "                 size -5, no record"));
    EXPECT_THAT(linesOf("01030000 70120000 99000010 00000000 02000000" + delivery),
                ElementsAre("20:14:03.123456  DtvEvent-1 (4720)  <- CaptionFatalErrorNotify "
                            "0x10000099,",
                            "                 size 2, no record"));
    EXPECT_THAT(linesOf("01040000 70120000 99000010 01000000 00000000" + delivery),
                ElementsAre("20:14:03.123456  DtvEvent-1 (4720)  -> CaptionFatalErrorNotify "
                            "0x10000099",
                            "                 returned 1"));
}

TEST(Message, ShowsUnknownMessages) {
    const std::string unnamed = "00000000000000000000000000000000";
    EXPECT_THAT(linesOf("01010000 67120000 08000010 00000000 02000000" + unnamed + "0341"),
                ElementsAre("20:14:03.123456  (4711)  -> 0x10000008, unknown message, 2 bytes",
                            "    0000  03 41"
                            "                                            .A"));
    EXPECT_THAT(linesOf("01090000 67120000 01000010 00000000 02000000" + unnamed + "0300"),
                ElementsAre("20:14:03.123456  (4711)  -- Release 0x10000001, unknown kind 9, "
                            "2 bytes",
                            "    0000  03 00"
                            "                                            .."));
}

TEST(Message, ReportsWhatTheCaptureLacks) {
    const std::string unnamed = "00000000000000000000000000000000";
    EXPECT_THAT(linesOf("01010000 67120000 01000010 00000000 0a000000" + unnamed + "0300", 8),
                ElementsAre("20:14:03.123456  (4711)  -> Release 0x10000001, 10 bytes, "
                            "TS_HANDLE_REQ",
                            "    handle  3", //
                            "    the capture lacks the 8 bytes that follow"));
    EXPECT_THAT(
        linesOf("01020000 67120000 38000010 00000000 14000000" + unnamed + "0300000007000000"),
        ElementsAre("20:14:03.123456  (4711)  <- Release_Sync 0x10000038 returned 0,",
                    "                 8 bytes, told 20, TS_COMMON_SYNC_REPLY",
                    "    handle        3", //
                    "    return_value  7"));
}

TEST(Message, ShowsNoControlCharacterOfAThread) {
    EXPECT_THAT(linesOf("01010000 01000000 01000010 00000000 02000000"
                        "1b5b324a e5a482 e5 0000000000000000 0300"),
                ElementsAre("20:14:03.123456  \\x1b[2J\xe5\xa4\x82\\xe5 (1)  -> Release "
                            "0x10000001, 2 bytes,",
                            "                 TS_HANDLE_REQ", //
                            "    handle  3"));
}

TEST(LocalTime, FollowsTheTimeZone) {
    setenv("TZ", "BRT3", 1);
    tzset();
    EXPECT_EQ(localTime({0, 0}).date, "1969-12-31");
    EXPECT_EQ(localTime({0, 0}).time, "21:00:00.000000");
    EXPECT_EQ(localTime({1774998843, 123456789}).date, "2026-03-31");
    EXPECT_EQ(localTime({1774998843, 123456789}).time, "20:14:03.123456");
    setenv("TZ", "UTC", 1);
    tzset();
    EXPECT_EQ(localTime({1774998843, 999999999}).time, "23:14:03.999999");
    EXPECT_EQ(localTime({-1, 0}).time, "23:59:59.000000");
    EXPECT_EQ(localTime({9223372036854775807, 0}).time, "9223372036854775807");
    EXPECT_EQ(localTime({9223372036854775807, 0}).date, "no date");
}

} // namespace
