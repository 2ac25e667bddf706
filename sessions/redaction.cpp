#include "sessions/redaction.h"

#include <algorithm>
#include <iterator>

namespace sessions {
namespace {

using catalogue::Field;
using catalogue::Record;

bool isNumber(const Field& field) {
    return field.kind == catalogue::Kind::kUnsigned || field.kind == catalogue::Kind::kSigned;
}

/// How many bytes there are up to the last that is not zero.
size_t sizeWithoutZeros(const uint8_t* bytes, size_t size) {
    while (size > 0 && bytes[size - 1] == 0) {
        --size;
    }
    return size;
}

constexpr size_t kLongestNote = 64; ///< bytes
constexpr const char* kDigits = "0123456789-";
constexpr const char* kRanges = "0123456789-,";
constexpr const char* kWord = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._+";

/// A key of docs/capture.md, and the characters of its values: others may be anybody's words.
struct PublicNote {
    std::string_view key;
    const char* characters;
};
constexpr std::string_view kIncomplete = "incomplete";
constexpr PublicNote kPublicNotes[] = {
    {"city", kWord},   {"seed", kDigits}, {"clock", kDigits},     {"version", kWord},
    {"source", kWord}, {"times", kWord},  {kIncomplete, kRanges},
};

bool isOf(const std::string& value, const char* characters) {
    // The list of the bytes that are not known may be long, and has numbers alone.
    return (value.size() <= kLongestNote || characters == kRanges) &&
           value.find_first_not_of(characters) == std::string::npos;
}

/// How many bytes there are before the first that is not zero.
size_t zerosBefore(const uint8_t* bytes, size_t size) {
    return static_cast<size_t>(
        std::find_if(bytes, bytes + size, [](uint8_t byte) { return byte != 0; }) - bytes);
}

} // namespace

const std::vector<PublicField>& publicFields() {
    static const std::vector<PublicField> fields = {
#define PUBLIC_FIELD(message, field, what_is) {#message, #field, #what_is},
#include "sessions/public_fields.def"
    };
    return fields;
}

bool isPublic(std::string_view message, std::string_view field) {
    const std::vector<PublicField>& fields = publicFields();
    return std::any_of(fields.begin(), fields.end(), [&](const PublicField& one) {
        return one.message == message && one.field == field;
    });
}

Notes publicNotes(const Notes& notes, uint64_t& dropped) {
    Notes kept;
    for (const auto& [key, value] : notes) {
        const auto* const known =
            std::find_if(std::begin(kPublicNotes), std::end(kPublicNotes),
                         [&key = key](const PublicNote& note) { return note.key == key; });
        if (known == std::end(kPublicNotes)) {
            continue;
        }
        if (isOf(value, known->characters)) {
            kept.emplace_back(key, value);
            continue;
        }
        ++dropped;
        // Whatever its value, it says that bytes are missing.
        if (key == kIncomplete) {
            kept.emplace_back(key, "");
        }
    }
    return kept;
}

void Redaction::redact(Message& message) {
    message.reserved = 0;
    const catalogue::Message* known = catalogue::find(message.id);
    const Record* layout = layoutOf(message, known);
    uint8_t* record = message.record.data();
    const size_t size = message.record.size();
    size_t end = 0;
    if (layout != nullptr) {
        for (const Part& part : partsOf(*known, message.is(Message::Kind::kAnswer))) {
            if (part.offset >= size) {
                break;
            }
            const size_t there = std::min(part.size, size - part.offset);
            if (part.kind == catalogue::Kind::kText) {
                redactText(record + part.offset, there, part.is_public);
            } else if (part.kind == catalogue::Kind::kUtf16Text) {
                redactWideText(record + part.offset, there, part.is_public);
            } else if (!part.is_public) {
                redactBytes(record + part.offset, there);
            }
        }
        end = std::min(layout->size, size);
    }
    redactBytes(record + end, size - end);
}

std::string Redaction::redactedText(std::string_view message, std::string_view field,
                                    std::string_view text) {
    if (text.empty() || isPublic(message, field)) {
        return std::string(text);
    }
    ++count_;
    return placeholders_.letters({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

const std::vector<Redaction::Part>& Redaction::partsOf(const catalogue::Message& known,
                                                       bool answer) {
    const auto [found, is_new] = parts_.try_emplace({known.id, answer});
    if (is_new) {
        addParts(known.name, answer ? "answer." : "", answer ? *known.reply : *known.record, 0,
                 found->second);
    }
    return found->second;
}

/// In the order of their offsets. `path` is that of the record, up to its last dot.
void Redaction::addParts(std::string_view message, const std::string& path, const Record& layout,
                         size_t start, std::vector<Part>& parts) {
    size_t end = 0;
    const auto addReserved = [&](size_t to) {
        if (end < to) {
            parts.push_back({start + end, to - end, catalogue::Kind::kBytes, false});
        }
    };
    for (const Field& field : layout.fields) {
        addReserved(field.offset);
        end = field.offset + field.size * field.count;
        for (size_t i = 0; i < field.count && !isNumber(field); ++i) {
            const size_t offset = start + field.offset + i * field.size;
            if (field.kind == catalogue::Kind::kRecord) {
                addParts(message, path + field.name + '.', *field.record, offset, parts);
            } else {
                parts.push_back(
                    {offset, field.size, field.kind, isPublic(message, path + field.name)});
            }
        }
    }
    addReserved(layout.size);
}

void Redaction::redactText(uint8_t* bytes, size_t size, bool is_public) {
    const auto length = static_cast<size_t>(std::find(bytes, bytes + size, uint8_t{0}) - bytes);
    if (!is_public) {
        put(placeholders_.letters({bytes, length}), bytes);
    }
    // What the memory held before the text.
    uint8_t* rest = bytes + length;
    const size_t zeros = zerosBefore(rest, size - length);
    const size_t end = sizeWithoutZeros(rest, size - length);
    if (zeros < end) {
        put(placeholders_.letters({rest + zeros, end - zeros}), rest + zeros);
    }
}

void Redaction::redactWideText(uint8_t* bytes, size_t size, bool is_public) {
    const auto isZero = [bytes](size_t unit) {
        return bytes[2 * unit] == 0 && bytes[2 * unit + 1] == 0;
    };
    const size_t units = size / 2;
    size_t length = 0;
    while (length < units && !isZero(length)) {
        ++length;
    }
    const bool ends = length < units;
    if (!is_public) {
        put(placeholders_.wideLetters({bytes, 2 * length}), bytes);
    }
    size_t rest = length;
    while (rest < units && isZero(rest)) {
        ++rest;
    }
    size_t end = units;
    while (end > rest && isZero(end - 1)) {
        --end;
    }
    put(placeholders_.wideLetters({bytes + 2 * rest, 2 * (end - rest)}), bytes + 2 * rest);
    // Half a unit, where the record ends.
    if (size % 2 != 0 && (ends || !is_public)) {
        redactBytes(bytes + size - 1, 1);
    }
}

void Redaction::redactBytes(uint8_t* bytes, size_t size) {
    put(placeholders_.bytes({bytes, sizeWithoutZeros(bytes, size)}), bytes);
}

void Redaction::put(const std::string& placeholder, uint8_t* bytes) {
    std::copy(placeholder.begin(), placeholder.end(), bytes);
    count_ += placeholder.empty() ? 0 : 1;
}

} // namespace sessions
