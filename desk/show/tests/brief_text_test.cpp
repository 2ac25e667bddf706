// A message on one line.
#include "desk/show/brief_text.h"
#include "desk/show/quoted_text.h"
#include "sessions/tests/hex.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using show::briefLine;
using show::spanText;

sessions::Message messageOf(uint8_t kind, int id, const std::string& record, int value = 0) {
    sessions::Message message;
    message.kind = kind;
    message.thread_id = 4711;
    message.thread_name = "evening";
    message.id = id;
    message.value = value;
    message.record = fromHex(record);
    return message;
}

sessions::Link linkOf(uint64_t number, std::optional<uint16_t> session = std::nullopt,
                      uint64_t partner = 0, std::optional<int64_t> latency = std::nullopt) {
    sessions::Link link;
    link.number = number;
    link.session = session;
    link.partner = partner;
    link.latency = latency;
    return link;
}

constexpr char kTime[] = "20:14:03.123456";

TEST(BriefLine, HasWhatIsKnown) {
    EXPECT_EQ(
        briefLine(messageOf(1, 0x10000006, "0300 0000 20000000 01000000"), linkOf(1, 3), kTime),
        "     1 20:14:03.123 evening    -> SelectChannel h=3");
    EXPECT_EQ(briefLine(messageOf(3, 0x10000054, "0300 0000 fbffffff 20000000 01000000"),
                        linkOf(12, 3, 1, 6646000), kTime),
              "    12 20:14:03.123 evening    <- SelectChannelReply h=3 r=-5 #1 6.646ms");
    EXPECT_EQ(briefLine(messageOf(2, 0x10000038, "03000000 fbffffff"), linkOf(3, 3, 2, 999), kTime),
              "     3 20:14:03.123 evening    <- Release_Sync h=3 r=-5 #2 999ns");
    EXPECT_EQ(briefLine(messageOf(2, 0x1000000c, "", -1), linkOf(5, 3, 4, 1000), kTime),
              "     5 20:14:03.123 evening    <- SetScreenDisplay h=3 ret=-1 #4 1.000us");
    EXPECT_EQ(briefLine(messageOf(4, 0x10000042, "", 1), linkOf(8, std::nullopt, 7), kTime),
              "     8 20:14:03.123 evening    -> BmlPermissionReq ret=1 #7");
    EXPECT_EQ(briefLine(messageOf(3, 0x10000054, "0300"), linkOf(9, 3), kTime),
              "     9 20:14:03.123 evening    <- SelectChannelReply h=3 cut");
    EXPECT_EQ(briefLine(messageOf(9, 0x10000008, ""), linkOf(1234567), kTime),
              "1234567 20:14:03.123 evening    -- 0x10000008 kind=9");
}

TEST(BriefLine, MarksWhatIsIncomplete) {
    sessions::Message message = messageOf(3, 0x10000054, "0300 0000 00000000 20000000 01000000");
    message.known.assign(16, true);
    EXPECT_EQ(briefLine(message, linkOf(1, 3), kTime),
              "     1 20:14:03.123 evening    <- SelectChannelReply h=3 r=0");
    message.known[15] = false;
    EXPECT_EQ(briefLine(message, linkOf(1, 3), kTime),
              "     1 20:14:03.123 evening    <- SelectChannelReply h=3 r=0 incomplete");
    message.known[4] = false;
    EXPECT_EQ(briefLine(message, linkOf(1, 3), kTime),
              "     1 20:14:03.123 evening    <- SelectChannelReply h=3 incomplete");
}

TEST(BriefLine, MarksWhatIsAmbiguous) {
    sessions::Link link = linkOf(2, 3, 1, 5);
    link.ambiguous = true;
    EXPECT_EQ(briefLine(messageOf(3, 0x10000050, "0300 0000 00000000"), link, kTime),
              "     2 20:14:03.123 evening    <- ReleaseReply h=3 r=0 #1? 5ns");
}

TEST(BriefLine, HasEightyColumnsAtMost) {
    const sessions::Message longest =
        messageOf(2, 0x1000003a, "ffff 0000 00000080", std::numeric_limits<int>::min());
    const std::string line = briefLine(longest, linkOf(123456, 65535, 123455, 123456789), kTime);
    EXPECT_EQ(line, "123456 20:14:03.123 evening    <- TerminateBr~ h=65535 r=-2147483648 "
                    "ret=-21474~")
        << "all that may be long at once";
    EXPECT_EQ(show::columnsOf(line), 80u);
    EXPECT_EQ(briefLine(messageOf(3, 0x10000053, "0300 0000 00000000"),
                        linkOf(4711, 3, 4710, 6646000), kTime),
              "  4711 20:14:03.123 evening    <- TerminateBroadcastRecei~ h=3 r=0 #4710 6.646ms");
    sessions::Message named = messageOf(1, 0x10000001, "0300");
    named.thread_name = "1234567890abcdef";
    EXPECT_EQ(briefLine(named, linkOf(1, 3), kTime),
              "     1 20:14:03.123 123456789~ -> Release h=3");
    named.thread_name = "\xe6\x97\xa5\xe6\x97\xa5\xe6\x97\xa5\xe6\x97\xa5\xe6\x97\xa5"
                        "a";
    EXPECT_EQ(briefLine(named, linkOf(1, 3), kTime),
              "     1 20:14:03.123 \xe6\x97\xa5\xe6\x97\xa5\xe6\x97\xa5\xe6\x97\xa5~  -> Release "
              "h=3")
        << "two columns each";
    named.thread_name = "";
    EXPECT_EQ(briefLine(named, linkOf(1, 3), kTime),
              "     1 20:14:03.123 4711       -> Release h=3");
    named.thread_name = "\x1b[2J";
    EXPECT_EQ(briefLine(named, linkOf(1, 3), kTime),
              "     1 20:14:03.123 \\x1b[2J    -> Release h=3");
}

TEST(SpanText, HasTheUnitThatFits) {
    EXPECT_EQ(spanText(0), "0ns");
    EXPECT_EQ(spanText(999), "999ns");
    EXPECT_EQ(spanText(12345), "12.345us");
    EXPECT_EQ(spanText(999999999), "999.999ms");
    EXPECT_EQ(spanText(1000000000), "1.000s");
    EXPECT_EQ(spanText(-1500000000), "-1.500s");
    EXPECT_EQ(spanText(std::numeric_limits<int64_t>::min()), "-9223372036.854s");
}

} // namespace
