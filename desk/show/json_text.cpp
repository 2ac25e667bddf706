#include "desk/show/json_text.h"

#include "desk/show/characters.h"
#include "desk/show/names.h"

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

void addFields(const Record& layout, Bytes record, std::string& json);

void addNumbers(const Field& field, Bytes bytes, std::string& json) {
    const bool array = field.count > 1;
    json += array ? "[" : "";
    for (size_t i = 0; bytes.size >= field.size && field.size > 0; ++i) {
        json += i > 0 ? "," : "";
        json += std::to_string(sessions::numberOf(bytes.first(field.size), field.kind));
        bytes = bytes.from(field.size);
    }
    json += array ? "]" : "";
}

void addRecords(const Field& field, Bytes bytes, std::string& json) {
    const bool array = field.count > 1;
    json += array ? "[" : "";
    for (size_t i = 0; i < field.count && bytes.size > 0; ++i) {
        json += i > 0 ? "," : "";
        addFields(*field.record, bytes.first(field.size), json);
        bytes = bytes.from(field.size);
    }
    json += array ? "]" : "";
}

/// `bytes` are those of the field that the record has, one at least.
void addValue(const Field& field, Bytes bytes, std::string& json) {
    switch (field.kind) {
    case Kind::kUnsigned:
    case Kind::kSigned:
        addNumbers(field, bytes, json);
        break;
    case Kind::kBytes:
        addHex(bytes, json);
        break;
    case Kind::kText:
        addUtf8(untilZero(bytes, 1), json);
        break;
    case Kind::kUtf16Text:
        addUtf16(untilZero(bytes, 2), json);
        break;
    case Kind::kRecord:
        addRecords(field, bytes, json);
        break;
    }
}

bool isNumber(const Field& field) {
    return field.kind == Kind::kUnsigned || field.kind == Kind::kSigned;
}

void addFields(const Record& layout, Bytes record, std::string& json) {
    const char* before = "{";
    for (const Field& field : layout.fields) {
        const Bytes bytes = record.from(field.offset).first(field.size * field.count);
        if (bytes.size == 0 || (isNumber(field) && bytes.size < field.size)) {
            continue;
        }
        json += before;
        json += jsonText(field.name) + ':';
        addValue(field, bytes, json);
        before = ",";
    }
    json += *before == '{' ? "{}" : "}";
}

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
        addFields(*layout, record, json);
    }
    json += ",\"record\":";
    addHex(record, json);
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
    addFields(layout, record.first(layout.size), json);
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
