#include "script/field_path.h"

#include "messages/text.h"

#include <algorithm>
#include <limits>

namespace simulator {
namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Record;

constexpr size_t kNoIndex = std::numeric_limits<size_t>::max();

/// One part of a path, as "service[2]".
struct Part {
    std::string_view name;
    size_t index = kNoIndex;
};

std::optional<Part> partOf(std::string_view text) {
    const size_t bracket = text.find('[');
    if (bracket == std::string_view::npos) {
        return Part{text};
    }
    const std::string_view digits = text.substr(bracket + 1);
    // No array has more than three digits of elements. An index has no zeros before it.
    if (digits.size() < 2 || digits.size() > 4 || digits.back() != ']' ||
        (digits.front() == '0' && digits.size() > 2) ||
        !std::all_of(digits.begin(), digits.end() - 1,
                     [](char digit) { return digit >= '0' && digit <= '9'; })) {
        return std::nullopt;
    }
    return Part{text.substr(0, bracket), std::stoul(std::string(digits))};
}

std::string fieldsOf(const Record& record) {
    std::string names;
    for (const Field& field : record.fields) {
        names += (names.empty() ? "" : ", ") + field.name;
    }
    return names;
}

int hexDigit(char digit) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const char lower = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit - 'A' + 'a') : digit;
    const size_t value = kDigits.find(lower);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

} // namespace

std::optional<Place> locate(const Record& outermost, std::string_view path, std::string& error) {
    const Record* record = &outermost;
    size_t offset = 0;
    while (true) {
        const size_t dot = path.find('.');
        const std::optional<Part> part = partOf(path.substr(0, dot));
        if (!part) {
            error = "\"" + std::string(path) + "\" is no path of a field";
            return std::nullopt;
        }
        const auto found =
            std::find_if(record->fields.begin(), record->fields.end(),
                         [&](const Field& field) { return field.name == part->name; });
        if (found == record->fields.end()) {
            error = record->name + " has no field \"" + std::string(part->name) +
                    "\"; it has: " + fieldsOf(*record);
            return std::nullopt;
        }
        const bool indexed = part->index != kNoIndex;
        if (indexed != (found->count > 1) || (indexed && part->index >= found->count)) {
            error = found->count > 1 ? found->name + " needs an index, [0] to [" +
                                           std::to_string(found->count - 1) + "]"
                                     : found->name + " takes no index";
            return std::nullopt;
        }
        offset += found->offset + (indexed ? part->index * found->size : 0);
        const bool ends = dot == std::string_view::npos;
        if (ends != (found->kind != Kind::kRecord)) {
            error =
                ends ? found->name + " is a record; name a field of it: " + fieldsOf(*found->record)
                     : found->name + " has no fields";
            return std::nullopt;
        }
        if (ends) {
            return Place{offset, found->size, found->kind};
        }
        record = found->record;
        path.remove_prefix(dot + 1);
    }
}

std::vector<uint8_t> numberBytes(const Place& place, int64_t value, std::string& error) {
    if (place.kind != Kind::kSigned && place.kind != Kind::kUnsigned) {
        error = place.kind == Kind::kBytes ? "the field takes hexadecimal digits"
                                           : "the field takes a text";
        return {};
    }
    const int64_t range = int64_t{1} << (8 * place.size); // no number has more than four bytes
    const int64_t lowest = place.kind == Kind::kSigned ? -(range / 2) : 0;
    const int64_t highest = place.kind == Kind::kSigned ? range / 2 - 1 : range - 1;
    if (value < lowest || value > highest) {
        error = std::to_string(value) + " is outside the field's " + std::to_string(lowest) +
                " to " + std::to_string(highest);
        return {};
    }
    std::vector<uint8_t> bytes(place.size);
    auto rest = static_cast<uint64_t>(value);
    for (uint8_t& byte : bytes) {
        byte = static_cast<uint8_t>(rest & 0xFFU);
        rest >>= 8U;
    }
    return bytes;
}

std::vector<uint8_t> textBytes(const Place& place, std::string_view text, std::string& error) {
    std::vector<char> field;
    size_t needed = 0;
    switch (place.kind) {
    case Kind::kText:
        field.resize(std::max(place.size, text.size()));
        needed = writeText(field.data(), field.size(), text);
        break;
    case Kind::kUtf16Text:
        field.resize(std::max(place.size, 2 * text.size()));
        needed = 2 * writeUtf16(field.data(), field.size() / 2, text);
        break;
    case Kind::kBytes: {
        const std::optional<std::vector<uint8_t>> bytes = hexBytes(text);
        if (!bytes) {
            error = "the field takes hexadecimal digits";
            return {};
        }
        field.assign(bytes->begin(), bytes->end());
        needed = field.size();
        break;
    }
    default:
        error = "the field takes a number";
        return {};
    }
    if (needed > place.size) {
        error = "the text takes " + std::to_string(needed) + " bytes, the field has " +
                std::to_string(place.size);
        return {};
    }
    field.resize(place.size);
    return {field.begin(), field.end()};
}

std::optional<std::vector<uint8_t>> hexBytes(std::string_view digits) {
    std::vector<uint8_t> bytes;
    int high = -1;
    for (const char digit : digits) {
        if (digit == ' ') {
            continue;
        }
        const int value = hexDigit(digit);
        if (value < 0) {
            return std::nullopt;
        }
        if (high < 0) {
            high = value;
        } else {
            bytes.push_back(static_cast<uint8_t>(high * 16 + value));
            high = -1;
        }
    }
    return high < 0 ? std::optional(bytes) : std::nullopt;
}

} // namespace simulator
