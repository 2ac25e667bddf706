// A capture that was cut or overwritten: nothing before the damage is lost, and nothing beyond its
// bytes is read.
#include "desk/show/message.h"
#include "sessions/capture_reader.h"
#include "sessions/tests/hex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

/// A command, an event and its refusal, each with the options that libDtv writes.
const std::vector<uint8_t> kCapture = fromHex(R"(
    0a0d0d0a 2c000000 4d3c2b1a 01000000 ffffffffffffffff 04000600 6c69624474760000
        00000000 2c000000
    01000000 2c000000 93000000 00000100 02000600 6c69624474760000 09000100 09000000
        00000000 2c000000
    06000000 54000000 00000000 60f7e918 31027662 26000000 26000000
        01010000 01710000 01000010 00000000 02000000 73616d706c6500000000000000000000
        03000000 02000400 02000000 00000000 54000000
    06000000 58000000 00000000 60f7e918 3102776a 2c000000 2c000000
        01030000 02710000 50000010 00000000 08000000 4474764576656e742d31000000000000
        0300000000000000 02000400 01000000 00000000 58000000
    06000000 50000000 00000000 60f7e918 3102786a 24000000 24000000
        01040000 02710000 50000010 01000000 00000000 4474764576656e742d31000000000000
        02000400 02000000 00000000 50000000)");

/// Where its blocks begin, and where it ends.
constexpr size_t kEdges[] = {0, 44, 88, 172, 260, 340};

struct DamagedFile {
    size_t messages = 0;
    std::string lines;
    std::string error;
};

DamagedFile readDamaged(const std::vector<uint8_t>& bytes) {
    std::istringstream file(asString(bytes));
    sessions::CaptureReader reader(file);
    DamagedFile contents;
    while (const auto packet = reader.next()) {
        const auto message = sessions::readMessage(*packet, contents.error);
        if (!message) {
            return contents;
        }
        ++contents.messages;
        for (const std::string& line : show::messageLines(*message, "-")) {
            contents.lines += line + '\n';
        }
    }
    contents.error = reader.error();
    return contents;
}

std::vector<uint8_t> withNumberAt(size_t offset, uint32_t number) {
    std::vector<uint8_t> bytes = kCapture;
    for (size_t i = 0; i < 4; ++i) {
        bytes.at(offset + i) = static_cast<uint8_t>(number >> (8 * i));
    }
    return bytes;
}

TEST(DamagedFile, IsWholeBeforeTheDamage) {
    const DamagedFile whole = readDamaged(kCapture);
    EXPECT_EQ(whole.error, "");
    EXPECT_EQ(whole.messages, 3u);
    EXPECT_EQ(whole.lines, "-  sample (28929)  -> Release 0x10000001, 2 bytes, TS_HANDLE_REQ\n"
                           "    handle  3\n"
                           "-  DtvEvent-1 (28930)  <- ReleaseReply 0x10000050, 8 bytes,\n"
                           "                 TS_COMMON_REPLY\n"
                           "    handle  3\n"
                           "    result  0\n"
                           "-  DtvEvent-1 (28930)  -> ReleaseReply 0x10000050 returned 1\n");
}

TEST(DamagedFile, KeepsTheMessagesBeforeACut) {
    const DamagedFile whole = readDamaged(kCapture);
    for (size_t size = 0; size < kCapture.size(); ++size) {
        SCOPED_TRACE(size);
        const DamagedFile cut =
            readDamaged({kCapture.begin(), kCapture.begin() + static_cast<long>(size)});
        const size_t* after = std::upper_bound(std::begin(kEdges), std::end(kEdges), size);
        const size_t begin = *(after - 1);
        const auto blocks = static_cast<size_t>(after - std::begin(kEdges) - 1);
        EXPECT_EQ(cut.messages, blocks < 2 ? 0 : blocks - 2);
        EXPECT_EQ(cut.lines, whole.lines.substr(0, cut.lines.size()));
        EXPECT_EQ(cut.error, size == 0       ? "the file is empty"
                             : size == begin ? ""
                                             : "the file ends at byte " + std::to_string(size) +
                                                   ", in the middle of the block at byte " +
                                                   std::to_string(begin));
    }
}

TEST(DamagedFile, ChecksEveryLength) {
    // The two lengths of each block, then those inside: the block that has it, and its offset.
    struct Length {
        size_t messages_before;
        size_t offset;
    };
    const Length lengths[] = {{0, 4},   {0, 40},  {0, 48},  {0, 84},  {0, 92},  {0, 168}, {1, 176},
                              {1, 256}, {2, 264}, {2, 336}, {0, 108}, {1, 192}, {2, 280}};
    for (const Length& length : lengths) {
        for (const uint32_t number :
             {0u, 1u, 12u, 0xffffu, 0x01000000u, 0x7fffffffu, 0xffffffffu}) {
            SCOPED_TRACE(std::to_string(length.offset) + ": " + std::to_string(number));
            const DamagedFile damaged = readDamaged(withNumberAt(length.offset, number));
            EXPECT_EQ(damaged.messages, length.messages_before);
            EXPECT_NE(damaged.error, "");
        }
    }
}

TEST(DamagedFile, BoundsTheLengthsOfOptions) {
    for (const size_t offset : {62u, 74u}) { // of if_name and if_tsresol
        for (const unsigned number : {0u, 2u, 0xffffu}) {
            std::vector<uint8_t> bytes = kCapture;
            bytes[offset] = static_cast<uint8_t>(number);
            bytes[offset + 1] = static_cast<uint8_t>(number >> 8);
            SCOPED_TRACE(std::to_string(offset) + ": " + std::to_string(number));
            const DamagedFile damaged = readDamaged(bytes);
            EXPECT_TRUE(damaged.messages == 0 || damaged.messages == 3) << damaged.messages;
            EXPECT_EQ(damaged.messages == 0, !damaged.error.empty());
        }
    }
    // The options of a packet are not read.
    EXPECT_EQ(readDamaged(withNumberAt(156, 0xffff0002)).messages, 3u);
}

TEST(DamagedFile, AcceptsAnySizeThatIsOnlyReported) {
    // The size before a cut, and the size that the sender gave.
    for (const size_t offset : {112u, 132u}) {
        for (const uint32_t number : {0u, 1u, 0x80000000u, 0xffffffffu}) {
            const DamagedFile damaged = readDamaged(withNumberAt(offset, number));
            EXPECT_EQ(damaged.messages, 3u);
            EXPECT_EQ(damaged.error, "");
        }
    }
    EXPECT_THAT(readDamaged(withNumberAt(112, 0xffffffff)).lines,
                testing::StartsWith("-  sample (28929)  -> Release 0x10000001,\n"
                                    "                 4294967259 bytes, told 2, TS_HANDLE_REQ\n"
                                    "    handle  3\n"
                                    "    the capture lacks the 4294967257 bytes that follow\n"));
}

TEST(DamagedFile, IsReadSafelyWithAnyByteChanged) {
    for (size_t offset = 0; offset < kCapture.size(); ++offset) {
        const auto* after = std::upper_bound(std::begin(kEdges), std::end(kEdges), offset);
        const auto blocks = static_cast<size_t>(after - std::begin(kEdges) - 1);
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            std::vector<uint8_t> bytes = kCapture;
            bytes[offset] = static_cast<uint8_t>(value);
            const DamagedFile damaged = readDamaged(bytes);
            EXPECT_GE(damaged.messages, blocks < 2 ? 0 : blocks - 2) << offset;
            EXPECT_LE(damaged.messages, 3u);
        }
    }
}

/// Everything that is found when the reader resumes after each error.
struct Resumed {
    std::vector<uint64_t> messages; ///< where their packets begin
    std::vector<std::pair<uint64_t, uint64_t>> gaps;
    std::string error; ///< the last one, when nothing follows it
};

/// Adds the messages up to the end or the next error.
void addMessages(sessions::CaptureReader& reader, Resumed& found) {
    while (const auto packet = reader.next()) {
        std::string error;
        if (sessions::readMessage(*packet, error)) {
            found.messages.push_back(packet->offset);
        }
    }
}

Resumed readOn(const std::vector<uint8_t>& bytes) {
    std::istringstream file(asString(bytes));
    sessions::CaptureReader reader(file);
    Resumed found;
    addMessages(reader, found);
    found.error = reader.error();
    while (const auto gap = reader.resume()) {
        EXPECT_NE(found.error, "");
        EXPECT_GT(gap->size, 0u);
        found.gaps.emplace_back(gap->offset, gap->size);
        addMessages(reader, found);
        found.error = reader.error();
    }
    EXPECT_EQ(reader.error(), found.error) << "the error stays when nothing follows";
    return found;
}

using Gaps = std::vector<std::pair<uint64_t, uint64_t>>;
using Offsets = std::vector<uint64_t>;

TEST(DamagedFile, IsReadOnAfterAWrongLength) {
    for (const uint32_t number : {0u, 1u, 12u, 0xffffu, 0x01000000u, 0x7fffffffu, 0xffffffffu}) {
        SCOPED_TRACE(number);
        // The two lengths of the second message, then one of the first.
        for (const size_t offset : {176u, 256u}) {
            const Resumed found = readOn(withNumberAt(offset, number));
            EXPECT_EQ(found.messages, (Offsets{88, 260}));
            EXPECT_EQ(found.gaps, (Gaps{{172, 88}}));
            EXPECT_EQ(found.error, "");
        }
        const Resumed found = readOn(withNumberAt(92, number));
        EXPECT_EQ(found.messages, (Offsets{172, 260}));
        EXPECT_EQ(found.gaps, (Gaps{{88, 84}}));
    }
}

TEST(DamagedFile, IsReadOnAfterPacketsThatCannotBe) {
    // Another interface, and more bytes than the block has: the block itself is complete.
    for (const size_t offset : {180u, 192u}) {
        const Resumed found = readOn(withNumberAt(offset, 0x00ffffff));
        EXPECT_EQ(found.messages, (Offsets{88, 260}));
        EXPECT_EQ(found.gaps, (Gaps{{172, 88}}));
    }
}

TEST(DamagedFile, IsReadOnWhereBytesAreMissingOrAdded) {
    for (size_t size = 1; size < 84; ++size) {
        SCOPED_TRACE(size);
        std::vector<uint8_t> bytes = kCapture;
        bytes.erase(bytes.begin() + 88, bytes.begin() + 88 + static_cast<long>(size));
        Resumed found = readOn(bytes);
        EXPECT_EQ(found.messages, (Offsets{172 - size, 260 - size}));
        EXPECT_EQ(found.gaps, (Gaps{{88, 84 - size}}));

        bytes = kCapture;
        bytes.insert(bytes.begin() + 172, size, 0xa5);
        found = readOn(bytes);
        EXPECT_EQ(found.messages, (Offsets{88, 172 + size, 260 + size}));
        EXPECT_EQ(found.gaps, (Gaps{{172, size}}));
    }
}

TEST(DamagedFile, IsReadOnWithoutItsBeginning) {
    for (const size_t lost : {1u, 43u, 45u, 87u}) {
        SCOPED_TRACE(lost);
        const Resumed found = readOn({kCapture.begin() + static_cast<long>(lost), kCapture.end()});
        EXPECT_EQ(found.messages, (Offsets{88 - lost, 172 - lost, 260 - lost}));
        EXPECT_EQ(found.gaps.size(), 1u);
    }
    // The interface is lost: the time stamps are libDtv's nanoseconds.
    std::vector<uint8_t> bytes = kCapture;
    bytes[48] = 1;
    std::istringstream file(asString(bytes));
    sessions::CaptureReader reader(file);
    EXPECT_FALSE(reader.next());
    ASSERT_TRUE(reader.resume());
    const auto packet = reader.next();
    ASSERT_TRUE(packet);
    std::istringstream whole(asString(kCapture));
    const auto wanted = sessions::CaptureReader(whole).next();
    ASSERT_TRUE(wanted);
    EXPECT_EQ(packet->time.seconds, wanted->time.seconds);
    EXPECT_EQ(packet->time.nanoseconds, wanted->time.nanoseconds);
}

TEST(DamagedFile, IsNotReadOnWhenNothingFollows) {
    const Resumed text = readOn(std::vector<uint8_t>(1000, 'x'));
    EXPECT_EQ(text.error, "this is not a pcapng file: no section header at byte 0");
    EXPECT_TRUE(text.gaps.empty());
    const Resumed cut = readOn({kCapture.begin(), kCapture.begin() + 200});
    EXPECT_EQ(cut.messages, Offsets{88});
    EXPECT_EQ(cut.error, "the file ends at byte 200, in the middle of the block at byte 172");
    EXPECT_TRUE(cut.gaps.empty());
    // Another kind of file is no damage.
    std::vector<uint8_t> other = kCapture;
    other[52] = 1;
    EXPECT_TRUE(readOn(other).messages.empty());
    EXPECT_NE(readOn(other).error, "");
}

TEST(DamagedFile, LosesOneMessageAtMostToOneByte) {
    for (size_t offset = 88; offset < kCapture.size(); ++offset) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            std::vector<uint8_t> bytes = kCapture;
            bytes[offset] = static_cast<uint8_t>(value);
            EXPECT_GE(readOn(bytes).messages.size(), 2u) << offset << ' ' << value;
        }
    }
}

} // namespace
