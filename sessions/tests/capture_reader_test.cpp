// Packets out of pcapng files.
#include "sessions/capture_reader.h"
#include "sessions/tests/hex.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using sessions::CaptureReader;
using sessions::Moment;
using sessions::momentOf;
using sessions::Packet;

constexpr char kSection[] = "0a0d0d0a 1c000000 4d3c2b1a 0100 0000 ffffffffffffffff 1c000000 ";
/// Nanoseconds.
constexpr char kInterface[] = "01000000 20000000 9300 0000 00000100 0900 0100 09000000 "
                              "00000000 20000000 ";
/// One byte, 1 s and 2 ns after the beginning.
constexpr char kPacket[] = "06000000 24000000 00000000 00000000 02ca9a3b 01000000 01000000 "
                           "aa000000 24000000 ";

struct Contents {
    std::vector<Packet> packets;
    std::string error;
    uint64_t passed_blocks = 0;
    uint64_t passed_options = 0;
};

Contents read(const std::string& hex) {
    std::istringstream file(asString(fromHex(hex)));
    CaptureReader reader(file);
    Contents contents;
    while (auto packet = reader.next()) {
        contents.packets.push_back(*packet);
    }
    contents.error = reader.error();
    contents.passed_blocks = reader.passedBlocks();
    contents.passed_options = reader.passedOptions();
    EXPECT_FALSE(reader.next().has_value()) << "the end stays the end";
    return contents;
}

std::string errorOf(const std::string& hex) {
    const Contents contents = read(hex);
    EXPECT_EQ(contents.packets.size(), 0u);
    return contents.error;
}

TEST(CaptureReader, ReadsLittleEndianSections) {
    const Contents file = read(std::string(kSection) + kInterface + kPacket + kPacket);
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 2u);
    EXPECT_EQ(file.packets[0].offset, 60u);
    EXPECT_EQ(file.packets[0].time.seconds, 1);
    EXPECT_EQ(file.packets[0].time.nanoseconds, 2u);
    EXPECT_EQ(file.packets[0].original_size, 1u);
    EXPECT_EQ(file.packets[0].data, std::vector<uint8_t>{0xaa});
    EXPECT_EQ(file.packets[1].offset, 96u);
}

/// A section whose comments are "city=a\nx\n=y\nseed=" and "seed=20=1".
constexpr char kNotedSection[] = "0a0d0d0a 48000000 4d3c2b1a 0100 0000 ffffffffffffffff "
                                 "0100 0f00 636974793d610a780a3d790a736565 00 "
                                 "0400 0200 61620000 "
                                 "0100 0900 736565643d32303d31 000000 48000000 ";

TEST(CaptureReader, ReadsTheNotesOfASection) {
    std::istringstream file(asString(fromHex(std::string(kNotedSection) + kInterface + kPacket +
                                             kSection + kInterface + kPacket)));
    CaptureReader reader(file);
    EXPECT_TRUE(reader.section().empty());
    ASSERT_TRUE(reader.next().has_value());
    EXPECT_EQ(reader.section(), (sessions::Notes{{"city", "a"}, {"seed", "20=1"}}));
    EXPECT_EQ(*sessions::valueOf(reader.section(), "seed"), "20=1");
    EXPECT_EQ(sessions::valueOf(reader.section(), "clock"), nullptr);
    ASSERT_TRUE(reader.next().has_value());
    EXPECT_TRUE(reader.section().empty()) << "they end with their section";
    EXPECT_FALSE(reader.next().has_value());
    EXPECT_EQ(reader.error(), "");
}

TEST(CaptureReader, ReadsTheNotesOfAPacket) {
    const Contents file = read(std::string(kSection) + kInterface +
                               "06000000 2c000000 00000000 00000000 02ca9a3b 01000000 01000000 "
                               "aa000000 0100 0300 613d6200 2c000000" +
                               kPacket);
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 2u);
    EXPECT_EQ(file.packets[0].notes, (sessions::Notes{{"a", "b"}}));
    EXPECT_TRUE(file.packets[1].notes.empty());
}

TEST(CaptureReader, PassesOverDamagedOptionsOfSectionsAndPackets) {
    const Contents file =
        read("0a0d0d0a 20000000 4d3c2b1a 0100 0000 ffffffffffffffff 0100 0900 20000000 " +
             std::string(kInterface) +
             "06000000 28000000 00000000 00000000 02ca9a3b 01000000 01000000 "
             "aa000000 0100 0500 28000000");
    EXPECT_EQ(file.error, "");
    EXPECT_EQ(file.packets.size(), 1u);
}

TEST(CaptureReader, ReadsBigEndianSections) {
    const Contents file = read("0a0d0d0a 0000001c 1a2b3c4d 0001 0000 ffffffffffffffff 0000001c"
                               "00000001 00000020 0093 0000 00010000 0009 0001 03000000"
                               "00000000 00000020"
                               "00000006 00000028 00000000 00000001 00000000 00000005 00000009"
                               "0102030405000000 00000028");
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 1u);
    EXPECT_EQ(file.packets[0].time.seconds, 4294967) << "2^32 ms";
    EXPECT_EQ(file.packets[0].time.nanoseconds, 296000000u);
    EXPECT_EQ(file.packets[0].original_size, 9u);
    EXPECT_EQ(file.packets[0].data, (std::vector<uint8_t>{1, 2, 3, 4, 5}));
}

TEST(CaptureReader, ReadsSectionsOfBothOrdersInOneFile) {
    const Contents file = read(std::string(kSection) + kInterface + kPacket +
                               "0a0d0d0a 0000001c 1a2b3c4d 0001 0000 ffffffffffffffff 0000001c"
                               "00000001 00000014 0093 0000 00000000 00000014"
                               "00000006 00000020 00000000 00000000 001e8480 00000000 00000000"
                               "00000020" +
                               kSection + kInterface + kPacket);
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 3u);
    EXPECT_EQ(file.packets[1].time.seconds, 2) << "microseconds when no resolution is given";
    EXPECT_TRUE(file.packets[1].data.empty());
    EXPECT_EQ(file.packets[2].time.nanoseconds, 2u);
    EXPECT_EQ(file.packets[0].section, 1u);
    EXPECT_EQ(file.packets[1].section, 2u);
    EXPECT_EQ(file.packets[2].section, 3u);
}

TEST(CaptureReader, SkipsUnknownBlocksAndOptions) {
    const Contents file =
        read(std::string(kSection) + "ad0b0000 10000000 01020304 10000000" +
             // A comment and a name before the resolution.
             "01000000 2c000000 9300 0000 00000000 0100 0300 61626300 0200 0100 78000000"
             "0900 0100 03000000 2c000000" +
             "0b000080 0c000000 0c000000" +
             // Flags, an unknown option and no end of the options.
             "06000000 38000000 00000000 00000000 05000000 02000000 02000000 aabb0000"
             "0200 0400 01000000 e703 0500 0102030405000000 38000000"
             "05000000 0c000000 0c000000");
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 1u);
    EXPECT_EQ(file.packets[0].data, (std::vector<uint8_t>{0xaa, 0xbb}));
    EXPECT_EQ(file.packets[0].time.nanoseconds, 5000000u);
    EXPECT_EQ(file.passed_blocks, 3u);
    EXPECT_EQ(file.passed_options, 2u) << "the comment of the interface, option 999 of the packet";
}

TEST(CaptureReader, CountsWhatItPassesOver) {
    const Contents plain = read(std::string(kSection) + kInterface + kPacket);
    EXPECT_EQ(plain.passed_blocks, 0u);
    EXPECT_EQ(plain.passed_options, 0u);
    // The section's writer and its comment, and options of a packet that are cut.
    const Contents other = read("0a0d0d0a 30000000 4d3c2b1a 0100 0000 ffffffffffffffff"
                                "0400 0200 61620000 0100 0100 63000000 00000000 30000000" +
                                std::string(kInterface) +
                                "06000000 28000000 00000000 00000000 05000000 00000000 00000000"
                                "0100 0900 01020304 28000000");
    EXPECT_EQ(other.error, "");
    EXPECT_EQ(other.packets.size(), 1u);
    EXPECT_EQ(other.passed_options, 2u);
}

TEST(CaptureReader, KeepsTheTimesOfInterfacesApart) {
    const Contents file =
        read(std::string(kSection) + kInterface +
             // Halves of a second, an hour ahead.
             "01000000 2c000000 9300 0000 00000000 0900 0100 81000000"
             "0e00 0800 100e000000000000 00000000 2c000000" +
             "06000000 20000000 01000000 00000000 03000000 00000000 00000000 20000000" + kPacket);
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.packets.size(), 2u);
    EXPECT_EQ(file.packets[0].time.seconds, 3601);
    EXPECT_EQ(file.packets[0].time.nanoseconds, 500000000u);
    EXPECT_EQ(file.packets[1].time.seconds, 1);
}

TEST(CaptureReader, UnderstandsEveryResolution) {
    const auto moment = [](uint64_t stamp, uint8_t resolution, int64_t offset = 0) {
        const Moment found = momentOf(stamp, resolution, offset);
        return std::make_pair(found.seconds, found.nanoseconds);
    };
    const auto is = [](int64_t seconds, uint32_t nanoseconds) {
        return std::make_pair(seconds, nanoseconds);
    };
    EXPECT_EQ(moment(7, 0), is(7, 0));
    EXPECT_EQ(moment(1234567, 6), is(1, 234567000));
    EXPECT_EQ(moment(1999999999, 9), is(1, 999999999));
    EXPECT_EQ(moment(1999999999999, 12), is(1, 999999999));
    EXPECT_EQ(moment(18000000000000000000u, 19), is(1, 800000000));
    EXPECT_EQ(moment(18000000000000000000u, 20), is(0, 180000000));
    EXPECT_EQ(moment(18000000000000000000u, 28), is(0, 1));
    EXPECT_EQ(moment(18000000000000000000u, 29), is(0, 0));
    EXPECT_EQ(moment(18000000000000000000u, 127), is(0, 0));
    EXPECT_EQ(moment(7, 0x80), is(7, 0));
    EXPECT_EQ(moment(0xffffffffffffffff, 0xa0), is(4294967295, 999999999));
    EXPECT_EQ(moment(0xc000000000000000, 0xbf), is(1, 500000000));
    EXPECT_EQ(moment(0xc000000000000000, 0xc0), is(0, 750000000));
    EXPECT_EQ(moment(0xc000000000000000, 0xff), is(0, 0));
    EXPECT_EQ(moment(10, 0, -11), is(-1, 0));
    EXPECT_EQ(moment(0xffffffffffffffff, 0, -1).first, -2) << "it wraps around";
}

TEST(CaptureReader, RefusesOtherFiles) {
    const std::string no_capture = "this is not a pcapng file: no section header at byte 0";
    EXPECT_EQ(errorOf(""), "the file is empty");
    EXPECT_EQ(errorOf("d4c3b2a1 02000400 00000000 00000000 ffff0000 93000000"), no_capture);
    EXPECT_EQ(errorOf("0a0d0d0b"), no_capture);
    EXPECT_EQ(errorOf("0b"), no_capture);
    EXPECT_EQ(errorOf(kInterface), no_capture);
    EXPECT_EQ(errorOf("0a0d0d0a 1c000000 4d3c2b1b 0100 0000 ffffffffffffffff 1c000000"),
              no_capture);
    EXPECT_EQ(errorOf("0a0d0d0a 1c000000 4d3c2b1a 0200 0000 ffffffffffffffff 1c000000"),
              "the section at byte 0 is of version 2 of pcapng; this program reads version 1");
    EXPECT_EQ(errorOf(std::string(kSection) + "0a0d0d0a 1c000000 00000000"),
              "the section at byte 28 does not say its byte order");
    EXPECT_EQ(errorOf(std::string(kSection) + "01000000 14000000 0100 0000 00000000 14000000"),
              "the interface at byte 28 has link type 1; a capture of the DTV service has 147");
}

TEST(CaptureReader, ReportsWhatIsWrongAndWhere) {
    const std::string section = kSection;
    EXPECT_EQ(errorOf("0a0d0d0a 14000000 4d3c2b1a 01000000 14000000"),
              "the section header at byte 0 is too short");
    EXPECT_EQ(errorOf(section + "05000000 08000000"),
              "the block at byte 28 cannot be 8 bytes long");
    EXPECT_EQ(errorOf(section + "05000000 0d000000 00 0d000000"),
              "the block at byte 28 cannot be 13 bytes long");
    EXPECT_EQ(errorOf(section + "05000000 04000001 00000000"),
              "the block at byte 28 cannot be 16777220 bytes long");
    EXPECT_EQ(errorOf(section + "05000000 00000001 00000000"),
              "the file ends at byte 40, in the middle of the block at byte 28");
    EXPECT_EQ(errorOf(section + "05000000 0c000000 10000000"),
              "the block at byte 28 is 12 bytes long at its beginning and 16 at its end");
    EXPECT_EQ(errorOf(section + "01000000 10000000 93000000 10000000"),
              "the interface at byte 28 is too short");
    EXPECT_EQ(errorOf(section + "01000000 1c000000 9300 0000 00000000 0200 0500 61000000 1c000000"),
              "option 2 of the interface at byte 28 cannot be 5 bytes long");
    EXPECT_EQ(errorOf(section + "01000000 1c000000 9300 0000 00000000 0900 0200 06000000 1c000000"),
              "option 9 of the interface at byte 28 cannot be 2 bytes long");
    EXPECT_EQ(errorOf(section + "01000000 1c000000 9300 0000 00000000 0e00 0400 06000000 1c000000"),
              "option 14 of the interface at byte 28 cannot be 4 bytes long");
    EXPECT_EQ(errorOf(section + kPacket),
              "the packet at byte 28 is of interface 0, which the file does not describe");
    EXPECT_EQ(errorOf(section + kInterface + kSection + kPacket),
              "the packet at byte 88 is of interface 0, which the file does not describe")
        << "interfaces end with their section";
    EXPECT_EQ(errorOf(section + kInterface + "06000000 10000000 00000000 10000000"),
              "the packet at byte 60 is too short");
    EXPECT_EQ(errorOf(section + kInterface +
                      "06000000 24000000 00000000 00000000 00000000 05000000 05000000 aabbccdd "
                      "24000000"),
              "the packet at byte 60 cannot have 5 bytes");
}

} // namespace
