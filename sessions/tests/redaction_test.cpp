// What is left of a message that can be given to others.
#include "sessions/redaction.h"

#include "sessions/tests/hex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

namespace {

using sessions::HashKey;
using sessions::Message;
using sessions::Redaction;

constexpr HashKey kKey{1, 2};

constexpr int kAuthReply = 0x10000021;
constexpr int kFepReply = 0x10000024;
constexpr int kTerminateRecSync = 0x10000040;
constexpr int kWriteNvramReq = 0x10000044;
constexpr int kCallReq = 0x10000049;
constexpr int kPhonebookReq = 0x10000048;
constexpr int kPermissionReq = 0x10000042;
constexpr int kScanNotify = 0x1000007f;
constexpr int kEpgInfo = 0x10000093;
constexpr int kStartScan = 0x10000002;

Message messageOf(Message::Kind kind, int id, std::vector<uint8_t> record) {
    Message message;
    message.kind = static_cast<uint8_t>(kind);
    message.id = id;
    message.size = static_cast<int32_t>(record.size());
    message.record = std::move(record);
    return message;
}

/// A record of that size with a text at an offset.
std::vector<uint8_t> recordWith(size_t size, size_t offset, const std::string& text) {
    std::vector<uint8_t> record(size);
    std::copy(text.begin(), text.end(), record.begin() + static_cast<long>(offset));
    return record;
}

std::vector<uint8_t> redacted(Message::Kind kind, int id, std::vector<uint8_t> record) {
    Redaction redaction(kKey);
    Message message = messageOf(kind, id, std::move(record));
    redaction.redact(message);
    return message.record;
}

std::string textAt(const std::vector<uint8_t>& record, size_t offset, size_t size) {
    return {record.begin() + static_cast<long>(offset),
            record.begin() + static_cast<long>(offset + size)};
}

bool isLetters(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char c) { return c < 0x80 && std::isalpha(c) != 0; });
}

TEST(Redaction, ReplacesATextUpToItsEnd) {
    const auto record = redacted(Message::Kind::kCommand, kAuthReply,
                                 recordWith(404, 5, "geheim") /* pass, 260 bytes */);
    EXPECT_NE(textAt(record, 5, 6), "geheim");
    EXPECT_TRUE(isLetters(textAt(record, 5, 6)));
    EXPECT_EQ(textAt(record, 11, 393), std::string(393, '\0'));
    EXPECT_EQ(textAt(record, 0, 5), std::string(5, '\0'));
}

TEST(Redaction, ReplacesWhatIsAfterTheEndOfAText) {
    const auto record = redacted(Message::Kind::kCommand, kAuthReply,
                                 recordWith(404, 5, std::string("ab\0\0older secret\0", 17)));
    EXPECT_TRUE(isLetters(textAt(record, 5, 2)));
    EXPECT_EQ(textAt(record, 7, 2), std::string(2, '\0'));
    EXPECT_TRUE(isLetters(textAt(record, 9, 12)));
    EXPECT_NE(textAt(record, 9, 12), "older secret");
    EXPECT_EQ(textAt(record, 21, 244), std::string(244, '\0'));
}

TEST(Redaction, LeavesNumbersAndPublicTexts) {
    std::vector<uint8_t> before = recordWith(116, 6, std::string("TV Sul\0rest", 11));
    before[0] = 3;    // handle
    before[1] = 0x41; // "A", but a number
    before[2] = 0x42;
    before[3] = 0x43; // reserved
    before[50] = 0x44;
    before[51] = 0x45;  // data
    before[115] = 0x46; // reserved
    const auto record = redacted(Message::Kind::kEvent, kWriteNvramReq, before);
    EXPECT_EQ(textAt(record, 0, 3), textAt(before, 0, 3));
    EXPECT_NE(record[3], 0);
    EXPECT_EQ(textAt(record, 6, 7), std::string("TV Sul\0", 7));
    EXPECT_NE(textAt(record, 13, 4), "rest");
    EXPECT_TRUE(isLetters(textAt(record, 13, 4)));
    EXPECT_EQ(record[50], 0x44);
    EXPECT_NE(record[51], 0);
    EXPECT_EQ(textAt(record, 52, 63), std::string(63, '\0'));
    EXPECT_NE(record[115], 0);
}

TEST(Redaction, LeavesThePublicTextsOfRecordsInRecords) {
    const std::string name("\xe6\x97\xa5\xe6\x9c\xac", 6);
    EXPECT_EQ(redacted(Message::Kind::kEvent, kScanNotify, recordWith(132, 16, name)),
              recordWith(132, 16, name));
    // The name of the last of the eight programmes, in 16-bit units: one, the end, another.
    std::vector<uint8_t> guide(6380);
    const size_t place = 1292 + 7 * 636 + 48;
    const std::vector<uint8_t> units = fromHex("e565 0000 e565 4100");
    std::copy(units.begin(), units.end(), guide.begin() + static_cast<long>(place));
    const auto record = redacted(Message::Kind::kEvent, kEpgInfo, guide);
    EXPECT_EQ(textAt(record, place, 4), textAt(guide, place, 4));
    EXPECT_TRUE(
        isLetters({static_cast<char>(record[place + 4]), static_cast<char>(record[place + 6])}));
    EXPECT_EQ(record[place + 5], 0);
    EXPECT_EQ(record[place + 7], 0);
    EXPECT_TRUE(std::equal(record.begin() + place + 8, record.end(), guide.begin() + place + 8));
}

TEST(Redaction, ReplacesBytesUpToTheLastThatIsNotZero) {
    std::vector<uint8_t> before(116);
    before[52] = 7;
    before[60] = 8;
    const auto record = redacted(Message::Kind::kEvent, kWriteNvramReq, before);
    for (size_t i = 51; i <= 60; ++i) {
        EXPECT_NE(record[i], 0) << i << ": a zero among bytes is content";
    }
    EXPECT_EQ(textAt(record, 61, 55), std::string(55, '\0'));
}

TEST(Redaction, LeavesRecordsOfZerosAndNumbers) {
    EXPECT_EQ(redacted(Message::Kind::kCommand, kFepReply, std::vector<uint8_t>(1936)),
              std::vector<uint8_t>(1936));
    const std::vector<uint8_t> answer = fromHex("0300 0000 fbffffff 0700 0800");
    EXPECT_EQ(redacted(Message::Kind::kAnswer, kTerminateRecSync, answer), answer);
}

TEST(Redaction, ReplacesRecordsWithoutALayout) {
    const std::string secret = "a secret of 20 bytes";
    const std::vector<uint8_t> record(secret.begin(), secret.end());
    struct {
        Message::Kind kind;
        int id;
    } const cases[] = {{Message::Kind::kCommand, 0x10000008},
                       {Message::Kind::kAnswer, kStartScan},
                       {Message::Kind::kRefusedEvent, kScanNotify},
                       {static_cast<Message::Kind>(9), kScanNotify}};
    for (const auto& one : cases) {
        const std::vector<uint8_t> after = redacted(one.kind, one.id, record);
        ASSERT_EQ(after.size(), record.size());
        EXPECT_NE(textAt(after, 0, 8), secret.substr(0, 8));
        EXPECT_NE(textAt(after, 12, 8), secret.substr(12));
    }
}

TEST(Redaction, ReplacesWhatFollowsTheLayout) {
    std::vector<uint8_t> before = recordWith(14, 2, "older secret");
    const auto record = redacted(Message::Kind::kCommand, kStartScan, before);
    EXPECT_EQ(textAt(record, 0, 2), std::string(2, '\0'));
    EXPECT_NE(textAt(record, 2, 12), "older secret");
}

TEST(Redaction, ReplacesRecordsThatAreCut) {
    const std::vector<uint8_t> whole = recordWith(404, 5, "geheim und lang");
    for (size_t size = 0; size <= 24; ++size) {
        const std::vector<uint8_t> cut(whole.begin(), whole.begin() + static_cast<long>(size));
        const auto record = redacted(Message::Kind::kCommand, kAuthReply, cut);
        ASSERT_EQ(record.size(), size);
        for (size_t i = 0; i < size; ++i) {
            EXPECT_EQ(record[i] == 0, cut[i] == 0);
        }
        if (size >= 11) {
            EXPECT_NE(textAt(record, 5, 6), "geheim");
        }
    }
    // Half a unit of a public text is public, half a unit after its end is not.
    std::vector<uint8_t> guide(16 + 48 + 3);
    guide[64] = guide[66] = 0x41;
    EXPECT_EQ(redacted(Message::Kind::kEvent, kEpgInfo, guide), guide);
    guide[64] = 0;
    std::set<uint8_t> last;
    for (uint64_t key = 0; key < 10; ++key) {
        Redaction redaction(HashKey{key, key});
        Message message = messageOf(Message::Kind::kEvent, kEpgInfo, guide);
        redaction.redact(message);
        last.insert(message.record.back());
    }
    EXPECT_GT(last.size(), 1u);
}

TEST(Redaction, GivesEqualValuesEqualPlaceholders) {
    Redaction redaction(kKey);
    Message phonebook =
        messageOf(Message::Kind::kEvent, kPhonebookReq, recordWith(1310, 778, "+55 11 5555-0199"));
    Message call =
        messageOf(Message::Kind::kEvent, kCallReq, recordWith(102, 2, "+55 11 5555-0199"));
    Message other =
        messageOf(Message::Kind::kEvent, kCallReq, recordWith(102, 2, "+55 11 5555-0198"));
    for (Message* message : {&phonebook, &call, &other}) {
        redaction.redact(*message);
    }
    const std::string placeholder = textAt(call.record, 2, 16);
    EXPECT_EQ(textAt(phonebook.record, 778, 16), placeholder);
    EXPECT_NE(textAt(other.record, 2, 16), placeholder);
    EXPECT_EQ(redaction.redactedText("BmlCallReq", "phone_number", "+55 11 5555-0199"),
              placeholder);
    EXPECT_EQ(redaction.redactedText("ScanNotify", "network.ts_name", "TV Sul"), "TV Sul");
    EXPECT_EQ(redaction.count(), 4u);
}

TEST(Redaction, LeavesTheHeaderButForItsReservedByte) {
    Redaction redaction(kKey);
    Message message = messageOf(Message::Kind::kEvent, kPermissionReq, {3, 0, 0, 0, 1});
    message.time = {5, 6};
    message.surfaces = 7;
    message.reserved = 8;
    message.thread_id = 9;
    message.value = 10;
    message.size = 11;
    message.left_out = 12;
    message.thread_name = "DtvEvent-1";
    redaction.redact(message);
    EXPECT_EQ(message.time.seconds, 5);
    EXPECT_EQ(message.time.nanoseconds, 6u);
    EXPECT_EQ(message.surfaces, 7);
    EXPECT_EQ(message.reserved, 0);
    EXPECT_EQ(message.thread_id, 9u);
    EXPECT_EQ(message.value, 10);
    EXPECT_EQ(message.size, 11);
    EXPECT_EQ(message.left_out, 12u);
    EXPECT_EQ(message.thread_name, "DtvEvent-1");
    EXPECT_EQ(message.record, (std::vector<uint8_t>{3, 0, 0, 0, 1}));
}

TEST(PublicNotes, AreThoseOfTheDesk) {
    using sessions::Notes;
    const Notes desk{{"city", "br-sp-SaoPaulo"},
                     {"seed", "-20"},
                     {"clock", "1774998843"},
                     {"version", "1.0"},
                     {"incomplete", "1"}};
    uint64_t dropped = 0;
    EXPECT_EQ(sessions::publicNotes(desk, dropped), desk);
    EXPECT_EQ(dropped, 0u);
    EXPECT_EQ(sessions::publicNotes({{"author", "Maria"},
                                     {"city", "/home/maria/br"},
                                     {"seed", "Maria"},
                                     {"version", std::string(65, '1')},
                                     {"clock", "5"}},
                                    dropped),
              (Notes{{"clock", "5"}}));
    EXPECT_EQ(dropped, 3u) << "the reader counts other keys";
    EXPECT_EQ(sessions::publicNotes({{"incomplete", "Maria"}}, dropped),
              (Notes{{"incomplete", ""}}));
    EXPECT_EQ(dropped, 4u);
}

/// The names of all texts and bytes of a record.
void addNames(const std::string& path, const catalogue::Record& layout,
              std::set<std::string>& names) {
    for (const catalogue::Field& field : layout.fields) {
        if (field.kind == catalogue::Kind::kRecord) {
            addNames(path + field.name + '.', *field.record, names);
        } else if (field.kind != catalogue::Kind::kUnsigned &&
                   field.kind != catalogue::Kind::kSigned) {
            names.insert(path + field.name);
        }
    }
}

TEST(PublicFields, AreFieldsThatThereAre) {
    std::set<std::string> there;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            addNames(std::string(message.name) + '.', *message.record, there);
            if (message.reply != nullptr) {
                addNames(std::string(message.name) + ".answer.", *message.reply, there);
            }
        }
    }
    std::set<std::string> rows;
    for (const sessions::PublicField& field : sessions::publicFields()) {
        const std::string name = std::string(field.message) + '.' + std::string(field.field);
        EXPECT_EQ(there.count(name), 1u) << name;
        EXPECT_TRUE(rows.insert(name).second) << name << " is there twice";
        EXPECT_FALSE(field.what_is.empty());
    }
}

} // namespace
