#include "script/json_reader.h"

#include "messages/text.h"
#include "script/json_check.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

namespace simulator {
namespace {

constexpr size_t kLongestQuotation = 60; ///< bytes
constexpr size_t kLongestReason = 400;   ///< bytes
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr size_t kNowhere = std::string_view::npos;
constexpr size_t kLargestFile = 1048576; ///< bytes

std::string withoutByteOrderMark(std::string text) {
    if (std::string_view(text).substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        text.erase(0, kByteOrderMark.size());
    }
    return text;
}

/// At most `longest` bytes of a text, on one line.
std::string printable(std::string_view text, size_t longest) {
    std::string shown(text.substr(0, fittingBytes(text, longest)));
    for (char& character : shown) {
        const auto code = static_cast<unsigned char>(character);
        if (code < ' ' || code == 0x7F) {
            character = '?';
        }
    }
    return shown + (shown.size() < text.size() ? "..." : "");
}

/// The line of a byte, from 1 up. A line ends with CR, LF, or both, as in the JSON library.
size_t lineOf(std::string_view text, size_t offset) {
    size_t line = 1;
    for (size_t at = 0; at < offset; ++at) {
        const bool half = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        line += (text[at] == '\r' && !half) || text[at] == '\n' ? 1 : 0;
    }
    return line;
}

} // namespace

std::string quoted(std::string_view text) {
    return "\"" + printable(text, kLongestQuotation) + "\"";
}

std::optional<std::string> readFile(const std::string& path, std::string& reason) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rbe"),
                                                               &std::fclose);
    if (file == nullptr) {
        reason = std::strerror(errno);
        return std::nullopt;
    }
    std::string text(kLargestFile + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) {
        reason = std::strerror(errno);
        return std::nullopt;
    }
    if (text.size() > kLargestFile) {
        reason = "larger than " + std::to_string(kLargestFile) + " bytes";
        return std::nullopt;
    }
    return text;
}

JsonReader::JsonReader(std::string path, std::string text)
    : path_(std::move(path)), text_(withoutByteOrderMark(std::move(text))), order_(kNowhere) {}

bool JsonReader::parse(Json::Value& root) {
    // The JSON library takes a zero byte for the end, and does not check UTF-8.
    const size_t zero = text_.find('\0');
    if (zero != kNowhere) {
        return refuse(zero, "a zero byte has no place in JSON");
    }
    const size_t no_character = firstInvalidUtf8(text_);
    if (no_character != kNowhere) {
        return refuse(no_character, "this is not UTF-8");
    }
    const size_t first = text_.find_first_not_of(" \t\r\n");
    if (first != kNowhere && text_[first] != '{') {
        return refuse(first, "an object is wanted here");
    }
    const JsonViolation violation = firstViolation(text_);
    if (violation.offset != kNowhere) {
        return refuse(violation.offset, violation.reason);
    }

    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    std::string errors;
    if (reader->parse(text_.data(), text_.data() + text_.size(), &root, &errors)) {
        return true;
    }
    // The first of its messages: "* Line 3, Column 5\n  What is wrong.\n".
    constexpr std::string_view kBeforeLine = "* Line ";
    constexpr std::string_view kBeforeReason = "\n  ";
    line_ = 1;
    if (errors.compare(0, kBeforeLine.size(), kBeforeLine) == 0) {
        std::from_chars(errors.data() + kBeforeLine.size(), errors.data() + errors.size(), line_);
    }
    const size_t before = errors.find(kBeforeReason);
    const size_t begin = before == kNowhere ? 0 : before + kBeforeReason.size();
    reason_ = printable(errors.substr(begin, errors.find('\n', begin) - begin), kLongestReason);
    order_ = 0;
    return false;
}

std::string JsonReader::error() const {
    return reason_.empty() ? "" : path_ + ":" + std::to_string(line_) + ": " + reason_;
}

void JsonReader::fail(const Json::Value& value, const std::string& reason) {
    const auto offset = static_cast<size_t>(value.getOffsetStart());
    note(offset, offset, reason);
}

void JsonReader::failWhole(const Json::Value& object, const std::string& reason) {
    note(static_cast<size_t>(object.getOffsetLimit()), static_cast<size_t>(object.getOffsetStart()),
         reason);
}

bool JsonReader::refuse(size_t offset, const std::string& reason) {
    note(offset, offset, reason);
    return false;
}

void JsonReader::note(size_t order, size_t offset, const std::string& reason) {
    if (order < order_) {
        order_ = order;
        line_ = lineOf(text_, offset);
        reason_ = printable(reason, kLongestReason);
    }
}

bool JsonReader::object(const Json::Value& value, std::initializer_list<std::string_view> members) {
    if (!value.isObject()) {
        fail(value, "an object is wanted here");
        return false;
    }
    for (const std::string& name : value.getMemberNames()) {
        if (std::find(members.begin(), members.end(), name) == members.end()) {
            std::string known;
            for (const std::string_view member : members) {
                known += (known.empty() ? "" : ", ") + std::string(member);
            }
            fail(value[name], quoted(name) + " is not known here; known are: " + known);
        }
    }
    return true;
}

bool JsonReader::isList(const Json::Value& owner, const char* name) {
    if (!owner.isMember(name)) {
        return false;
    }
    if (!owner[name].isArray()) {
        fail(owner[name], quoted(name) + " has to be a list");
        return false;
    }
    return true;
}

std::optional<int64_t> JsonReader::number(const Json::Value& owner, const char* name,
                                          int64_t lowest, int64_t highest) {
    if (!owner.isMember(name)) {
        return std::nullopt;
    }
    const Json::Value& value = owner[name];
    if (!value.isInt64() || value.asInt64() < lowest || value.asInt64() > highest) {
        fail(value, quoted(name) + " has to be a whole number from " + std::to_string(lowest) +
                        " to " + std::to_string(highest));
        return std::nullopt;
    }
    return value.asInt64();
}

bool JsonReader::flag(const Json::Value& owner, const char* name, bool otherwise) {
    if (!owner.isMember(name)) {
        return otherwise;
    }
    if (!owner[name].isBool()) {
        fail(owner[name], quoted(name) + " has to be true or false");
        return otherwise;
    }
    return owner[name].asBool();
}

} // namespace simulator
