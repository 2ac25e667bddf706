#include "replay/fields.h"

#include "desk/show/characters.h"
#include "desk/show/quoted_text.h"
#include "sessions/message.h"

#include <algorithm>
#include <cstdio>

namespace replay {
namespace {

using catalogue::Field;
using catalogue::Kind;
using sessions::Bytes;

std::string hexText(Bytes bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size; ++i) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", bytes.data[i]);
        text += digits;
    }
    return text;
}

std::string quoted(const std::vector<show::Glyph>& glyphs) {
    std::string text = "\"";
    for (const show::Glyph& glyph : glyphs) {
        text += glyph.text;
    }
    return text + '"';
}

std::string numbersText(const Field& field, Bytes bytes) {
    std::string text;
    for (; bytes.size >= field.size && field.size > 0; bytes = bytes.from(field.size)) {
        const Bytes number = bytes.first(field.size);
        text += text.empty() ? "" : ", ";
        text += field.kind == Kind::kSigned ? std::to_string(sessions::numberOf(number, field.kind))
                                            : std::to_string(number.number());
    }
    return bytes.size > 0 ? text + (text.empty() ? "" : ", ") + "only " + hexText(bytes) : text;
}

std::string valueText(const Field& field, Bytes bytes) {
    switch (field.kind) {
    case Kind::kText:
        return quoted(show::utf8Glyphs(show::untilZero(bytes, 1)));
    case Kind::kUtf16Text:
        return quoted(show::utf16Glyphs(show::untilZero(bytes, 2)));
    case Kind::kUnsigned:
    case Kind::kSigned:
        return numbersText(field, bytes);
    default:
        return hexText(bytes);
    }
}

/// Lists the fields of a record, and of the records in it.
class Lister {
public:
    explicit Lister(std::vector<FieldValue>& values) : values_(values) {}

    void list(const catalogue::Record& layout, Bytes record, const std::string& prefix) {
        size_t end = 0;
        for (const Field& field : layout.fields) {
            listReserved(record, end, field.offset, prefix);
            end = field.offset + field.size * field.count;
            const Bytes bytes = record.from(field.offset).first(end - field.offset);
            if (bytes.size > 0) {
                listField(field, bytes, prefix + field.name);
            }
        }
        listReserved(record, end, layout.size, prefix);
    }

private:
    void listField(const Field& field, Bytes bytes, const std::string& name) {
        if (field.kind != Kind::kRecord) {
            values_.push_back({name, valueText(field, bytes)});
            return;
        }
        for (size_t i = 0; i < field.count && bytes.size > 0; ++i) {
            const std::string index = field.count > 1 ? '[' + std::to_string(i) + ']' : "";
            list(*field.record, bytes.first(field.size), name + index + '.');
            bytes = bytes.from(field.size);
        }
    }

    void listReserved(Bytes record, size_t begin, size_t end, const std::string& prefix) {
        const Bytes bytes = end > begin ? record.from(begin).first(end - begin) : Bytes{};
        if (!bytes.areZero()) {
            values_.push_back({prefix + "reserved at " + std::to_string(begin), hexText(bytes)});
        }
    }

    std::vector<FieldValue>& values_;
};

std::string valueNamed(const std::vector<FieldValue>& values, const std::string& name) {
    const auto found = std::find_if(values.begin(), values.end(), [&name](const FieldValue& value) {
        return value.name == name;
    });
    return found != values.end() ? found->value : "";
}

} // namespace

std::vector<FieldValue> fieldValues(const catalogue::Record& layout, Bytes record) {
    std::vector<FieldValue> values;
    Lister(values).list(layout, record.first(layout.size), "");
    if (record.size > layout.size) {
        values.push_back({"surplus", hexText(record.from(layout.size))});
    }
    return values;
}

std::vector<FieldDifference> differentFields(const std::vector<FieldValue>& recorded,
                                             const std::vector<FieldValue>& this_run) {
    std::vector<FieldDifference> differences;
    for (const FieldValue& value : recorded) {
        const std::string other = valueNamed(this_run, value.name);
        if (value.value != other) {
            differences.push_back({value.name, value.value, other});
        }
    }
    for (const FieldValue& value : this_run) {
        if (valueNamed(recorded, value.name).empty() && !value.value.empty()) {
            differences.push_back({value.name, "", value.value});
        }
    }
    return differences;
}

} // namespace replay
