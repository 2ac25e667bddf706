// A secret in every text and byte field of every message: none is found in the copy.
#include "desk/redact/copy.h"

#include "desk/show/brief_text.h"
#include "desk/show/json_text.h"
#include "desk/show/message.h"
#include "sessions/capture_reader.h"
#include "sessions/capture_writer.h"
#include "sessions/pairing.h"
#include "sessions/redaction.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace {

using catalogue::Field;
using catalogue::Record;
using sessions::HashKey;
using sessions::Link;
using sessions::Message;
using Kind = Message::Kind;
using Messages = std::vector<Message>;

/// What the table of public fields is expected to have.
const std::set<std::string> kPublic = {
    "BMLStartTvLinkReq.affiliation_id",
    "BMLReadNvramReply.ts_name",
    "BmlWriteNvramReq.ts_name",
    "BmlEnrolTvlinkReq.affiliation_id",
    "ScanNotify.network.ts_name",
    "ScanNotify.network.nw_name",
    "NetworkInfoNotify.network.ts_name",
    "NetworkInfoNotify.network.nw_name",
    "ServiceInfoNotify.service.name",
    "ReceiveEpgInfoNotify.current.content_nibble",
    "ReceiveEpgInfoNotify.current.user_nibble",
    "ReceiveEpgInfoNotify.current.name",
    "ReceiveEpgInfoNotify.current.text",
    "ReceiveEpgInfoNotify.next.content_nibble",
    "ReceiveEpgInfoNotify.next.user_nibble",
    "ReceiveEpgInfoNotify.next.name",
    "ReceiveEpgInfoNotify.next.text",
    "ReceiveEpgInfoNotify.after.content_nibble",
    "ReceiveEpgInfoNotify.after.user_nibble",
    "ReceiveEpgInfoNotify.after.name",
    "ReceiveEpgInfoNotify.after.text",
};

/// How long a part of a secret must be not to be found by chance, in bytes.
constexpr size_t kWindow = 10;
constexpr size_t kWideWindow = 20;

/// What a message's bytes are, and which of its secrets must not be found.
struct Planted {
    Message message;
    std::vector<bool> stays; ///< of each byte of the record, whether the copy has it as it was
    std::vector<std::string> secrets; ///< of one byte a character
    std::vector<std::string> wide_secrets;
    size_t fields = 0; ///< texts and bytes that are not public
};

/// How the texts of a record are filled.
enum class Filling {
    kWhole,   ///< to the end of the field
    kTwoTexts ///< a text, its end, and another text after it
};

/// Fills records with secrets.
class Planter {
public:
    Planted plant(const catalogue::Message& known, Kind kind, Filling filling) {
        Planted planted;
        const bool answer = kind == Kind::kAnswer;
        const Record& layout = answer ? *known.reply : *known.record;
        planted.message = header(kind, known.id);
        planted.message.record.resize(layout.size);
        planted.stays.resize(layout.size, true);
        plantRecord(std::string(known.name) + (answer ? ".answer." : "."), layout, 0, filling,
                    planted);
        planted.message.size = static_cast<int32_t>(layout.size);
        return planted;
    }

    /// A record that no layout describes.
    Planted plantUnknown(Kind kind, int id) {
        Planted planted;
        planted.message = header(kind, id);
        plantSurplus(100, planted);
        return planted;
    }

    /// Bytes after the record.
    void plantSurplus(size_t size, Planted& planted) {
        const size_t begin = planted.message.record.size();
        planted.message.record.resize(begin + size);
        planted.stays.resize(begin + size);
        plantBytes(begin, size, false, planted);
    }

    /// As much of the record as is left after a cut anywhere; secrets of which a part is left stay.
    void cut(Planted& planted) {
        const size_t size = draw(planted.message.record.size());
        planted.message.record.resize(size);
        planted.stays.resize(size);
    }

    size_t draw(size_t below) {
        return std::uniform_int_distribution<size_t>(0, below - 1)(random_);
    }

private:
    Message header(Kind kind, int id) {
        Message message;
        message.time = {1774998843, static_cast<uint32_t>(draw(1000000000))};
        message.kind = static_cast<uint8_t>(kind);
        message.id = id;
        message.thread_id = static_cast<uint32_t>(10 + draw(3));
        message.thread_name = "evening";
        message.value = static_cast<int32_t>(draw(3)) - 1;
        message.surfaces = static_cast<uint8_t>(draw(256));
        return message;
    }

    void plantRecord(const std::string& path, const Record& layout, size_t start, Filling filling,
                     Planted& planted) {
        size_t end = 0;
        for (const Field& field : layout.fields) {
            plantBytes(start + end, field.offset - end, false, planted);
            end = field.offset + field.size * field.count;
            for (size_t i = 0; i < field.count; ++i) {
                plantField(path, field, start + field.offset + i * field.size, filling, planted);
            }
        }
        plantBytes(start + end, layout.size - end, false, planted);
    }

    void plantField(const std::string& path, const Field& field, size_t offset, Filling filling,
                    Planted& planted) {
        const bool is_public = kPublic.count(path + field.name) != 0;
        switch (field.kind) {
        case catalogue::Kind::kRecord:
            plantRecord(path + field.name + '.', *field.record, offset, filling, planted);
            return;
        case catalogue::Kind::kBytes:
            plantBytes(offset, field.size, is_public, planted);
            break;
        case catalogue::Kind::kText:
        case catalogue::Kind::kUtf16Text:
            plantText(offset, field.size, field.kind == catalogue::Kind::kUtf16Text, is_public,
                      filling, planted);
            break;
        default:
            for (size_t i = 0; i < field.size; ++i) {
                // Few handles, so that messages belong together.
                planted.message.record[offset + i] = static_cast<uint8_t>(
                    field.name == "handle" ? (i == 0 ? 1 + draw(2) : 0) : draw(256));
            }
            return;
        }
        planted.fields += is_public ? 0 : 1;
    }

    /// None is zero, so that each can be looked for.
    void plantBytes(size_t offset, size_t size, bool is_public, Planted& planted) {
        std::string secret;
        for (size_t i = 0; i < size; ++i) {
            secret += static_cast<char>(1 + draw(255));
        }
        put(secret, offset, is_public, planted);
        if (!is_public) {
            planted.secrets.push_back(secret);
        }
    }

    std::string letters(size_t count, bool wide) {
        std::string text;
        for (size_t i = 0; i < count; ++i) {
            text += static_cast<char>((draw(2) == 0 ? 'A' : 'a') + static_cast<int>(draw(26)));
            if (wide) {
                text += '\0';
            }
        }
        return text;
    }

    void plantText(size_t offset, size_t size, bool wide, bool is_public, Filling filling,
                   Planted& planted) {
        const size_t unit = wide ? 2 : 1;
        const size_t first = filling == Filling::kWhole ? size / unit : size / unit / 2;
        const std::string text = letters(first, wide);
        put(text, offset, is_public, planted);
        std::vector<std::string>& secrets = wide ? planted.wide_secrets : planted.secrets;
        if (!is_public) {
            secrets.push_back(text);
        }
        if (filling == Filling::kTwoTexts) {
            const std::string rest = letters(size / unit - first - 1, wide);
            put(rest, offset + text.size() + unit, false, planted);
            secrets.push_back(rest);
        }
    }

    static void put(const std::string& bytes, size_t offset, bool stays, Planted& planted) {
        std::copy(bytes.begin(), bytes.end(),
                  planted.message.record.begin() + static_cast<long>(offset));
        for (size_t i = 0; i < bytes.size(); ++i) {
            planted.stays[offset + i] = stays || bytes[i] == 0;
        }
    }

    std::mt19937 random_{20};
};

std::vector<Planted> plantAll() {
    Planter planter;
    std::vector<Planted> all;
    const auto plantEach = [&](const catalogue::Message& known, Kind kind) {
        for (const Filling filling : {Filling::kWhole, Filling::kTwoTexts}) {
            all.push_back(planter.plant(known, kind, filling));
            all.push_back(planter.plant(known, kind, filling));
            planter.plantSurplus(40, all.back());
            all.push_back(planter.plant(known, kind, filling));
            planter.cut(all.back());
        }
    };
    for (const catalogue::Message& known : catalogue::commands()) {
        plantEach(known, Kind::kCommand);
        if (known.reply != nullptr) {
            plantEach(known, Kind::kAnswer);
        } else {
            all.push_back(planter.plantUnknown(Kind::kAnswer, known.id));
        }
    }
    for (const catalogue::Message& known : catalogue::events()) {
        plantEach(known, Kind::kEvent);
        all.push_back(planter.plantUnknown(Kind::kRefusedEvent, known.id));
        all.push_back(planter.plantUnknown(static_cast<Kind>(7), known.id));
    }
    all.push_back(planter.plantUnknown(Kind::kCommand, 0x10000008));
    all.push_back(planter.plantUnknown(Kind::kEvent, 0x10000075));
    return all;
}

Messages messagesOf(const std::vector<Planted>& all) {
    Messages messages;
    for (const Planted& planted : all) {
        messages.push_back(planted.message);
    }
    return messages;
}

std::string captureOf(const Messages& messages) {
    sessions::CaptureWriter writer;
    std::string bytes = writer.section("libDtv");
    for (const Message& message : messages) {
        bytes += writer.packet(message);
    }
    return bytes;
}

/// The bytes of the copy of a capture.
std::string copyOf(const std::string& capture, const HashKey& key) {
    const std::string path = testing::TempDir() + "redact_secrets_test.pcapng";
    std::istringstream file(capture);
    sessions::Redaction redaction(key);
    const redact::Copied copied = redact::copyCapture(
        file, path, redaction, [](const std::string& what) { ADD_FAILURE() << what; });
    EXPECT_EQ(copied.state, redact::Copied::State::kWhole);
    EXPECT_EQ(copied.blocks + copied.options, 0u);
    std::ifstream copy(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << copy.rdbuf();
    std::filesystem::remove(path);
    return bytes.str();
}

Messages readAll(const std::string& capture) {
    std::istringstream file(capture);
    sessions::CaptureReader reader(file);
    Messages messages;
    while (const auto packet = reader.next()) {
        std::string error;
        const auto message = sessions::readMessage(*packet, error);
        EXPECT_EQ(error, "");
        if (message) {
            messages.push_back(*message);
        }
    }
    EXPECT_EQ(reader.error(), "");
    return messages;
}

std::string hexOf(const std::string& bytes, const char* between) {
    std::string text;
    for (const char byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(byte));
        text += (text.empty() ? "" : between) + std::string(digits);
    }
    return text;
}

/// What dtv-show prints, in its three forms.
std::vector<std::string> shownForms(const Messages& messages) {
    std::vector<std::string> forms(3);
    sessions::Pairing pairing;
    for (const Message& message : messages) {
        const Link link = pairing.add(message);
        for (const std::string& line : show::messageLines(message, "20:14:03.123456")) {
            forms[0] += line + '\n';
        }
        forms[1] += show::briefLine(message, link, "20:14:03.123456") + '\n';
        forms[2] += show::jsonMessage(message, link, 0) + '\n';
    }
    return forms;
}

/// Parts of secrets, in each way in which they may be written.
class Wanted {
public:
    void add(const std::string& secret, size_t window) {
        for (size_t i = 0; i + window <= secret.size(); ++i) {
            const std::string part = secret.substr(i, window);
            for (const std::string& form :
                 {part, hexOf(part, ""), hexOf(part, " "), narrow(part)}) {
                if (!form.empty() && parts_.count(form) == 0) {
                    texts_.push_back(form);
                    parts_.insert(texts_.back());
                    sizes_.insert(form.size());
                }
            }
        }
    }

    /// The first that a text has; empty when it has none.
    std::string firstIn(std::string_view text) const {
        for (const size_t size : sizes_) {
            for (size_t i = 0; i + size <= text.size(); ++i) {
                const auto found = parts_.find(text.substr(i, size));
                if (found != parts_.end()) {
                    return std::string(*found);
                }
            }
        }
        return {};
    }

private:
    /// As a text of 16-bit units is printed; empty for another.
    static std::string narrow(const std::string& part) {
        std::string text;
        for (size_t i = 0; i + 1 < part.size(); i += 2) {
            if (part[i] == 0 || part[i + 1] != 0) {
                return {};
            }
            text += part[i];
        }
        return text;
    }

    std::deque<std::string> texts_;
    std::unordered_set<std::string_view> parts_; ///< of the texts
    std::set<size_t> sizes_;
};

Wanted wantedOf(const Planted& planted) {
    Wanted wanted;
    for (const std::string& secret : planted.secrets) {
        wanted.add(secret, kWindow);
    }
    for (const std::string& secret : planted.wide_secrets) {
        wanted.add(secret, kWideWindow);
    }
    return wanted;
}

TEST(Secrets, AreInNoneOfTheFormsOfTheCopy) {
    const std::vector<Planted> all = plantAll();
    Wanted wanted;
    size_t fields = 0;
    std::set<int> known;
    for (const Planted& planted : all) {
        fields += planted.fields;
        if (catalogue::find(planted.message.id) != nullptr) {
            known.insert(planted.message.id);
        }
        for (const std::string& secret : planted.secrets) {
            wanted.add(secret, kWindow);
        }
        for (const std::string& secret : planted.wide_secrets) {
            wanted.add(secret, kWideWindow);
        }
    }
    const std::string before = captureOf(messagesOf(all));
    const std::string after = copyOf(before, *sessions::randomHashKey());
    EXPECT_NE(wanted.firstIn(before), "");
    EXPECT_EQ(wanted.firstIn(after), "") << "bytes";
    const std::vector<std::string> forms = shownForms(readAll(after));
    EXPECT_EQ(wanted.firstIn(forms[0]), "") << "text";
    EXPECT_EQ(wanted.firstIn(forms[1]), "") << "brief";
    EXPECT_EQ(wanted.firstIn(forms[2]), "") << "JSON";
    std::printf("%zu messages, %zu texts and byte fields\n", all.size(), fields);
    EXPECT_EQ(known.size(), 148u);
    EXPECT_GT(fields, 150u);
}

TEST(Secrets, WouldBeFound) {
    for (const Planted& planted : plantAll()) {
        const bool has_any =
            std::any_of(planted.secrets.begin(), planted.secrets.end(),
                        [](const std::string& secret) { return secret.size() >= kWindow; });
        const size_t size = planted.message.record.size();
        const catalogue::Message* known = catalogue::find(planted.message.id);
        const Record* layout = sessions::layoutOf(planted.message, known);
        if (!has_any || (layout != nullptr && size < layout->size)) {
            continue;
        }
        const Wanted wanted = wantedOf(planted);
        const std::vector<std::string> forms = shownForms({planted.message});
        EXPECT_NE(wanted.firstIn(captureOf({planted.message})), "") << forms[0];
        EXPECT_NE(wanted.firstIn(forms[2]), "") << forms[0];
    }
}

TEST(Secrets, LeaveNumbersPublicFieldsAndLengths) {
    const std::vector<Planted> all = plantAll();
    const Messages copy = readAll(copyOf(captureOf(messagesOf(all)), {5, 6}));
    ASSERT_EQ(copy.size(), all.size());
    for (size_t i = 0; i < all.size(); ++i) {
        const Message& before = all[i].message;
        const Message& after = copy[i];
        SCOPED_TRACE(i);
        EXPECT_EQ(after.time.seconds, before.time.seconds);
        EXPECT_EQ(after.time.nanoseconds, before.time.nanoseconds);
        EXPECT_EQ(after.kind, before.kind);
        EXPECT_EQ(after.surfaces, before.surfaces);
        EXPECT_EQ(after.thread_id, before.thread_id);
        EXPECT_EQ(after.thread_name, before.thread_name);
        EXPECT_EQ(after.id, before.id);
        EXPECT_EQ(after.value, before.value);
        EXPECT_EQ(after.size, before.size);
        ASSERT_EQ(after.record.size(), before.record.size());
        for (size_t at = 0; at < before.record.size(); ++at) {
            if (all[i].stays[at]) {
                ASSERT_EQ(after.record[at], before.record[at]) << "byte " << at;
            } else {
                ASSERT_NE(after.record[at], 0) << "byte " << at;
            }
        }
    }
}

/// A byte alone may come out as it was by chance; not with each of many keys.
TEST(Secrets, ChangeEachByte) {
    const std::vector<Planted> all = plantAll();
    const std::string capture = captureOf(messagesOf(all));
    std::vector<std::vector<bool>> changed;
    for (const Planted& planted : all) {
        changed.emplace_back(planted.message.record.size());
    }
    for (uint64_t key = 0; key < 6; ++key) {
        const Messages copy = readAll(copyOf(capture, {key, ~key}));
        ASSERT_EQ(copy.size(), all.size());
        for (size_t i = 0; i < all.size(); ++i) {
            for (size_t at = 0; at < changed[i].size(); ++at) {
                if (copy[i].record[at] != all[i].message.record[at]) {
                    changed[i][at] = true;
                }
            }
        }
    }
    for (size_t i = 0; i < all.size(); ++i) {
        for (size_t at = 0; at < changed[i].size(); ++at) {
            ASSERT_EQ(changed[i][at], !all[i].stays[at]) << "message " << i << ", byte " << at;
        }
    }
}

TEST(Secrets, LeaveThePairing) {
    const Messages before = messagesOf(plantAll());
    const Messages after = readAll(copyOf(captureOf(before), {7, 8}));
    ASSERT_EQ(after.size(), before.size());
    sessions::Pairing one;
    sessions::Pairing other;
    size_t paired = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        const Link expected = one.add(before[i]);
        const Link actual = other.add(after[i]);
        EXPECT_EQ(actual.partner, expected.partner);
        EXPECT_EQ(actual.session, expected.session);
        EXPECT_EQ(actual.latency, expected.latency);
        EXPECT_EQ(actual.ambiguous, expected.ambiguous);
        paired += expected.partner != 0 ? 1 : 0;
    }
    EXPECT_GT(paired, 20u);
    EXPECT_EQ(one.open().size(), other.open().size());
}

} // namespace
