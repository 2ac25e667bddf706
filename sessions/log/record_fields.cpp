#include "sessions/log/record_fields.h"

#include "sessions/log/text.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace sessions {
namespace {

struct Alias {
    std::string_view record; ///< name of its layout; empty: any
    std::string_view text;   ///< in the format; empty: any
    std::string_view label;
    std::string_view path;
};

constexpr Alias kAliases[] = {
#define LABEL(label, field) {"", "", label, field},
#define LABEL_OF(record, text, label, path) {record, text, label, path},
#include "sessions/log/field_names.def"
};

constexpr Alias kParts[] = {
#define PART_OF(text, path) {"", text, "", path},
#include "sessions/log/field_names.def"
};

bool applies(const Alias& alias, const KnownLine& line, const catalogue::Record& layout) {
    return (alias.record.empty() || alias.record == layout.name) &&
           contains(line.format, alias.text);
}

std::string nameOf(std::string_view label, const KnownLine& line, const catalogue::Record& layout) {
    for (const Alias& alias : kAliases) {
        if (alias.label == label && applies(alias, line, layout)) {
            return std::string(alias.path);
        }
    }
    return std::string(label);
}

/// "expire_date[6]": the name and the place in the array, 0 when none is named.
std::pair<std::string_view, size_t> splitIndex(std::string_view step) {
    const size_t bracket = step.find('[');
    if (bracket == std::string_view::npos) {
        return {step, 0};
    }
    size_t index = 0;
    for (size_t at = bracket + 1; at < step.size() && step[at] != ']'; ++at) {
        index = index * 10 + static_cast<size_t>(step[at] - '0');
    }
    return {step.substr(0, bracket), index};
}

/// The field with that path, or one without a path.
ShownField fieldAt(const catalogue::Record& layout, std::string_view path) {
    ShownField shown;
    const catalogue::Record* record = &layout;
    size_t offset = 0;
    for (std::string_view rest = path;;) {
        const size_t dot = rest.find('.');
        const auto [name, index] = splitIndex(rest.substr(0, dot));
        const auto field = std::find_if(
            record->fields.begin(), record->fields.end(),
            [&name = name](const catalogue::Field& each) { return each.name == name; });
        if (field == record->fields.end()) {
            return shown;
        }
        const bool is_byte = field->kind == catalogue::Kind::kBytes && name.size() < rest.size();
        offset += field->offset + index * (is_byte ? 1 : field->size);
        if (dot == std::string_view::npos) {
            shown.path = path;
            shown.offset = offset;
            shown.size = is_byte ? 1 : field->size;
            shown.kind = is_byte ? catalogue::Kind::kUnsigned : field->kind;
            return shown;
        }
        if (field->record == nullptr) {
            return shown;
        }
        record = field->record;
        rest.remove_prefix(dot + 1);
    }
}

/// The field with that name in a part of the record that the line shows, or of the whole.
ShownField fieldNamed(const std::string& name, const KnownLine& line,
                      const catalogue::Record& layout) {
    for (const Alias& part : kParts) {
        if (!applies(part, line, layout)) {
            continue;
        }
        ShownField field = fieldAt(layout, std::string(part.path) + "." + name);
        if (!field.path.empty()) {
            return field;
        }
    }
    return fieldAt(layout, name);
}

std::vector<ShownField> findFields(const KnownLine& line, const catalogue::Record& layout) {
    std::vector<ShownField> fields;
    for (const KnownLine::Value& value : line.values) {
        fields.push_back(fieldNamed(nameOf(value.label, line, layout), line, layout));
    }
    return fields;
}

} // namespace

const std::vector<ShownField>& fieldsShown(const KnownLine& line, const catalogue::Record& layout) {
    thread_local std::map<std::pair<const KnownLine*, const catalogue::Record*>,
                          std::vector<ShownField>>
        found;
    const auto key = std::make_pair(&line, &layout);
    const auto entry = found.find(key);
    return entry != found.end() ? entry->second
                                : found.emplace(key, findFields(line, layout)).first->second;
}

const catalogue::Message* commandOf(std::string_view function) {
    static const std::unordered_map<std::string_view, const catalogue::Message*> commands{
#define NATIVE(command, function, parameters, result) {#function, catalogue::find(#command)},
#include "commands/native_table.def"
    };
    const auto found = commands.find(function);
    return found != commands.end() ? found->second : nullptr;
}

constexpr std::string_view kHandler = "dtvsv_msgid_lib_";

const catalogue::Message* eventOf(std::string_view function) {
    static const std::unordered_map<std::string_view, const catalogue::Message*> events{
#define EVENT(id, name, record, handler, java_class) {#handler, catalogue::find(id)},
#include "records/message_table.def"
    };
    if (!beginsWith(function, kHandler)) {
        return nullptr;
    }
    const auto found = events.find(function.substr(kHandler.size()));
    return found != events.end() ? found->second : nullptr;
}

bool handlesReplies(std::string_view function) {
    return function == "dtvsv_msgid_lib_common_reply";
}

RecordInLines::RecordInLines(const catalogue::Record& layout, size_t size)
    : layout_(&layout), bytes_(size), known_(size) {}

void RecordInLines::take(const TraceLine& line) {
    if (line.known == nullptr || layout_ == nullptr) {
        return;
    }
    const std::vector<ShownField>& fields = fieldsShown(*line.known, *layout_);
    // The last value of a line that was shortened may lack its end.
    const size_t whole = line.values.size() - (line.shortened && !line.values.empty() ? 1 : 0);
    for (size_t i = 0; i < whole; ++i) {
        put(fields[i], line.values[i]);
    }
}

void RecordInLines::put(const ShownField& field, const ShownValue& value) {
    const size_t end = std::min(field.offset + field.size, bytes_.size());
    if (field.path.empty() || field.offset >= end) {
        return;
    }
    const size_t room = end - field.offset;
    if (field.kind == catalogue::Kind::kText) {
        // What follows a text's end is not shown, and nothing reads it: zero.
        const size_t length = std::min(value.text.size(), room);
        std::memcpy(bytes_.data() + field.offset, value.text.data(), length);
        std::fill_n(bytes_.begin() + static_cast<ptrdiff_t>(field.offset + length), room - length,
                    uint8_t{0});
        std::fill_n(known_.begin() + static_cast<ptrdiff_t>(field.offset), room, true);
        return;
    }
    if (field.kind != catalogue::Kind::kUnsigned && field.kind != catalogue::Kind::kSigned) {
        return;
    }
    for (size_t i = 0; i < room; ++i) {
        bytes_[field.offset + i] = static_cast<uint8_t>(value.number >> (8 * i));
        known_[field.offset + i] = true;
    }
}

} // namespace sessions
