#include "desk/show/json_text.h"

#include "desk/show/characters.h"
#include "desk/show/names.h"

#include "sessions/known_bytes.h"

#include <cstdio>

namespace show {
namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;
using sessions::Bytes;
using sessions::Message;

Bytes bytesOf(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

void addCharacter(uint32_t point, std::string& json) {
    if (point == '"' || point == '\\') {
        json += '\\';
        json += static_cast<char>(point);
    } else if (point < 0x20 || point == 0x7f) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(point));
        json += escaped;
    } else {
        json += encodeUtf8(point);
    }
}

void addUtf8(Bytes text, std::string& json) {
    json += '"';
    while (text.size > 0) {
        size_t length = 0;
        const uint32_t point = decodeUtf8(text, length);
        addCharacter(length > 0 ? point : kReplacementCharacter, json);
        text = text.from(std::max<size_t>(length, 1));
    }
    json += '"';
}

void addUtf16(Bytes text, std::string& json) {
    json += '"';
    while (text.size >= 2) {
        size_t length = 0;
        const uint32_t point = decodeUtf16(text, length);
        addCharacter(isSurrogate(point) ? kReplacementCharacter : point, json);
        text = text.from(length);
    }
    if (text.size > 0) {
        addCharacter(kReplacementCharacter, json);
    }
    json += '"';
}

void addHex(Bytes bytes, std::string& json) {
    static constexpr char digits[] = "0123456789abcdef";
    json += '"';
    for (size_t i = 0; i < bytes.size; ++i) {
        json += digits[bytes.data[i] >> 4];
        json += digits[bytes.data[i] & 15];
    }
    json += '"';
}

/// Adds the fields of a record and of the records in it; null for what is not known.
class FieldsText {
public:
    /// `start` is the first byte of the whole record.
    FieldsText(const uint8_t* start, const std::vector<bool>& known, std::string& json)
        : start_(start), known_(known), json_(json) {}

    void addFields(const Record& layout, Bytes record) {
        const char* before = "{";
        for (const Field& field : layout.fields) {
            const Bytes bytes = record.from(field.offset).first(field.size * field.count);
            if (bytes.size == 0 || (isNumber(field) && bytes.size < field.size)) {
                continue;
            }
            json_ += before;
            json_ += jsonText(field.name) + ':';
            addValue(field, bytes);
            before = ",";
        }
        json_ += *before == '{' ? "{}" : "}";
    }

private:
    static bool isNumber(const Field& field) {
        return field.kind == Kind::kUnsigned || field.kind == Kind::kSigned;
    }

    /// Whether all bytes are known; adds null otherwise.
    bool areKnown(Bytes bytes) {
        if (known_.empty() || sessions::knownOf(known_, static_cast<size_t>(bytes.data - start_),
                                                bytes.size) == sessions::Known::kAll) {
            return true;
        }
        json_ += "null";
        return false;
    }

    void addNumbers(const Field& field, Bytes bytes) {
        const bool array = field.count > 1;
        json_ += array ? "[" : "";
        for (size_t i = 0; bytes.size >= field.size && field.size > 0; ++i) {
            json_ += i > 0 ? "," : "";
            const Bytes number = bytes.first(field.size);
            if (areKnown(number)) {
                json_ += std::to_string(sessions::numberOf(number, field.kind));
            }
            bytes = bytes.from(field.size);
        }
        json_ += array ? "]" : "";
    }

    void addRecords(const Field& field, Bytes bytes) {
        const bool array = field.count > 1;
        json_ += array ? "[" : "";
        for (size_t i = 0; i < field.count && bytes.size > 0; ++i) {
            json_ += i > 0 ? "," : "";
            addFields(*field.record, bytes.first(field.size));
            bytes = bytes.from(field.size);
        }
        json_ += array ? "]" : "";
    }

    /// `bytes` are those of the field that the record has, one at least.
    void addValue(const Field& field, Bytes bytes) {
        switch (field.kind) {
        case Kind::kUnsigned:
        case Kind::kSigned:
            addNumbers(field, bytes);
            break;
        case Kind::kBytes:
            if (areKnown(bytes)) {
                addHex(bytes, json_);
            }
            break;
        case Kind::kText:
            if (areKnown(bytes.first(untilZero(bytes, 1).size + 1))) {
                addUtf8(untilZero(bytes, 1), json_);
            }
            break;
        case Kind::kUtf16Text:
            if (areKnown(bytes.first(untilZero(bytes, 2).size + 2))) {
                addUtf16(untilZero(bytes, 2), json_);
            }
            break;
        case Kind::kRecord:
            addRecords(field, bytes);
            break;
        }
    }

    const uint8_t* const start_;
    const std::vector<bool>& known_;
    std::string& json_;
};

/// Collects the reserved bytes of a record that are not zero, and of the records in it.
class ReservedBytes {
public:
    /// `at` is where `record` begins in the whole record.
    void collect(const Record& layout, Bytes record, size_t at) {
        size_t end = 0;
        for (const Field& field : layout.fields) {
            add(record, end, field.offset, at);
            end = field.offset + field.size * field.count;
            for (size_t i = 0; field.record != nullptr && i < field.count; ++i) {
                const size_t start = field.offset + i * field.size;
                collect(*field.record, record.from(start).first(field.size), at + start);
            }
        }
        add(record, end, layout.size, at);
    }

    /// The elements of an array; empty when there are none.
    const std::string& json() const { return json_; }

private:
    void add(Bytes record, size_t begin, size_t end, size_t at) {
        if (end <= begin) {
            return;
        }
        const Bytes bytes = record.from(begin).first(end - begin);
        if (bytes.areZero()) {
            return;
        }
        json_ += (json_.empty() ? "" : ",") + ("{\"at\":" + std::to_string(at + begin));
        json_ += ",\"bytes\":";
        addHex(bytes, json_);
        json_ += '}';
    }

    std::string json_;
};

void addTime(const sessions::Moment& time, std::string& json) {
    const std::string text = sessions::utcText(time);
    if (!text.empty()) {
        json += ",\"time\":\"" + text + '"';
    } else {
        json += ",\"time\":null,\"seconds\":" + std::to_string(time.seconds) +
                ",\"nanoseconds\":" + std::to_string(time.nanoseconds);
    }
}

void addLink(const sessions::Link& link, std::string& json) {
    if (link.session) {
        json += ",\"session\":" + std::to_string(*link.session);
    }
    if (link.partner != 0) {
        json += ",\"partner\":" + std::to_string(link.partner);
        if (link.latency) {
            json += ",\"latency_ns\":" + std::to_string(*link.latency);
        }
        json += link.ambiguous ? ",\"ambiguous\":true" : ",\"ambiguous\":false";
    }
}

void addRecord(const Message& message, const Record* layout, std::string& json) {
    const Bytes record{message.record.data(), message.record.size()};
    if (layout != nullptr) {
        json += ",\"layout\":" + jsonText(layout->name) + ",\"fields\":";
        FieldsText(record.data, message.known, json).addFields(*layout, record);
    }
    json += ",\"record\":";
    addHex(record, json);
    const std::string unknown = sessions::unknownText(message.known);
    if (!unknown.empty()) {
        json += ",\"unknown\":" + jsonText(unknown);
    }
    if (message.left_out > 0) {
        json += ",\"left_out\":" + std::to_string(message.left_out);
    }
    if (layout == nullptr) {
        return;
    }
    ReservedBytes reserved;
    reserved.collect(*layout, record.first(layout->size), 0);
    if (!reserved.json().empty()) {
        json += ",\"reserved\":[" + reserved.json() + ']';
    }
    if (record.size < layout->size) {
        json += ",\"ends_at\":" + std::to_string(record.size) +
                ",\"layout_size\":" + std::to_string(layout->size);
    } else if (record.size > layout->size) {
        json += ",\"surplus\":";
        addHex(record.from(layout->size), json);
    }
}

} // namespace

std::string jsonText(std::string_view text) {
    std::string json;
    addUtf8(bytesOf(text), json);
    return json;
}

std::string jsonFields(const Record& layout, Bytes record) {
    std::string json;
    FieldsText(record.data, {}, json).addFields(layout, record.first(layout.size));
    return json;
}

std::string jsonMessage(const Message& message, const sessions::Link& link, uint64_t offset) {
    const catalogue::Message* known = catalogue::find(message.id);
    std::string json =
        "{\"number\":" + std::to_string(link.number) + ",\"offset\":" + std::to_string(offset);
    addTime(message.time, json);
    json += ",\"thread\":" + jsonText(message.thread_name) +
            ",\"thread_id\":" + std::to_string(message.thread_id);
    const std::string_view kind = nameOfKind(message.kind);
    json += ",\"kind\":" + (kind.empty() ? std::to_string(message.kind) : jsonText(kind));
    json += ",\"id\":\"" + idText(message.id) + '"';
    if (known != nullptr) {
        json += ",\"name\":" + jsonText(known->name);
    }
    json += ",\"value\":" + std::to_string(message.value) +
            ",\"size\":" + std::to_string(message.size) +
            ",\"surfaces\":" + std::to_string(message.surfaces);
    if (message.reserved != 0) {
        json += ",\"header_reserved\":" + std::to_string(message.reserved);
    }
    addLink(link, json);
    addRecord(message, layoutOf(message, known), json);
    return json + '}';
}

std::string jsonOpenCommand(const sessions::OpenCommand& command) {
    const catalogue::Message* known = catalogue::find(command.id);
    std::string json = "{\"number\":" + std::to_string(command.number);
    if (known != nullptr) {
        json += ",\"name\":" + jsonText(known->name);
    }
    if (command.session) {
        json += ",\"session\":" + std::to_string(*command.session);
    }
    return json + (command.ambiguous ? ",\"ambiguous\":true}" : ",\"ambiguous\":false}");
}

} // namespace show
