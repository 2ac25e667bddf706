#include "simulator/script.h"

#include "simulator/catalogue.h"
#include "simulator/commands.h"
#include "simulator/field_path.h"

#include <json/json.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <string_view>

namespace simulator {
namespace {

using catalogue::Message;
using std::chrono::milliseconds;

constexpr int kVersion = 1;
constexpr int64_t kLongestDelay = 3600000; ///< milliseconds: an hour
constexpr int64_t kLargestRecord = 65536;  ///< bytes

/// Reads the parts of a script; after the first mistake nothing but that counts.
class Reader {
public:
    Reader(std::string path, std::string text) : path_(std::move(path)), text_(std::move(text)) {}

    std::optional<Script> read(std::string& error) {
        Script script;
        Json::Value root;
        if (parse(root) && object(root, {"version", "commands", "events", "records", "stop"})) {
            if (!root.isMember("version") || root["version"] != kVersion) {
                fail(root.isMember("version") ? root["version"] : root, "\"version\" has to be 1");
            }
            each(root, "commands",
                 [&](const Json::Value& value) { script.commands.push_back(commandRule(value)); });
            each(root, "events",
                 [&](const Json::Value& value) { script.events.push_back(eventRule(value)); });
            each(root, "records",
                 [&](const Json::Value& value) { script.records.push_back(recordRule(value)); });
            if (root.isMember("stop")) {
                script.stop = stopRule(root["stop"]);
            }
        }
        if (!error_.empty()) {
            error = error_;
            return std::nullopt;
        }
        return script;
    }

private:
    bool parse(Json::Value& root) {
        Json::CharReaderBuilder builder;
        Json::CharReaderBuilder::strictMode(&builder.settings_);
        const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
        std::string errors;
        try {
            if (reader->parse(text_.data(), text_.data() + text_.size(), &root, &errors)) {
                return true;
            }
        } catch (const std::exception& failure) { // too deep a nesting
            error_ = path_ + ":1: " + failure.what();
            return false;
        }
        // The first of its messages: "* Line 3, Column 5\n  What is wrong.\n".
        const size_t line = errors.find("Line ");
        const size_t comma = errors.find(',');
        const size_t reason = errors.find("\n  ");
        error_ = path_ + ":" +
                 (line < comma ? errors.substr(line + 5, comma - line - 5) : std::string("1")) +
                 ": " +
                 (reason != std::string::npos
                      ? errors.substr(reason + 3, errors.find('\n', reason + 3) - reason - 3)
                      : errors);
        return false;
    }

    void fail(const Json::Value& value, const std::string& reason) {
        if (error_.empty()) {
            const auto end = text_.begin() + value.getOffsetStart();
            error_ = path_ + ":" + std::to_string(1 + std::count(text_.begin(), end, '\n')) + ": " +
                     reason;
        }
    }

    /// Whether the value is an object of these members and no other.
    bool object(const Json::Value& value, std::initializer_list<std::string_view> members) {
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
                fail(value[name], "\"" + name + "\" is not known here; known are: " + known);
                return false;
            }
        }
        return true;
    }

    template <class Take>
    void each(const Json::Value& owner, const char* name, Take take) {
        if (!owner.isMember(name)) {
            return;
        }
        if (!owner[name].isArray()) {
            fail(owner[name], std::string("\"") + name + "\" has to be a list");
            return;
        }
        for (const Json::Value& value : owner[name]) {
            take(value);
        }
    }

    /// A member that is a whole number within limits; empty when there is none.
    std::optional<int64_t> number(const Json::Value& owner, const char* name, int64_t lowest,
                                  int64_t highest) {
        if (!owner.isMember(name)) {
            return std::nullopt;
        }
        const Json::Value& value = owner[name];
        if (!value.isInt64() || value.asInt64() < lowest || value.asInt64() > highest) {
            fail(value, std::string("\"") + name + "\" has to be a whole number from " +
                            std::to_string(lowest) + " to " + std::to_string(highest));
            return std::nullopt;
        }
        return value.asInt64();
    }

    std::optional<int32_t> int32(const Json::Value& owner, const char* name) {
        const std::optional<int64_t> value = number(
            owner, name, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max());
        return value ? std::optional(static_cast<int32_t>(*value)) : std::nullopt;
    }

    milliseconds delay(const Json::Value& owner) {
        return milliseconds{number(owner, "delay_ms", 0, kLongestDelay).value_or(0)};
    }

    Occurrence occurrence(const Json::Value& owner) {
        const std::optional<int64_t> nth =
            number(owner, "nth", 1, std::numeric_limits<uint32_t>::max());
        return {nth ? std::optional(static_cast<uint32_t>(*nth)) : std::nullopt};
    }

    bool flag(const Json::Value& owner, const char* name, bool otherwise) {
        if (!owner.isMember(name)) {
            return otherwise;
        }
        if (!owner[name].isBool()) {
            fail(owner[name], std::string("\"") + name + "\" has to be true or false");
            return otherwise;
        }
        return owner[name].asBool();
    }

    /// The message that a member names; null when it names none.
    const Message* message(const Json::Value& owner, const char* name,
                           const std::vector<Message>& known) {
        if (!owner.isMember(name)) {
            fail(owner, std::string("\"") + name + "\" is missing");
            return nullptr;
        }
        const Json::Value& value = owner[name];
        const Message* found = value.isString() ? catalogue::find(value.asString()) : nullptr;
        if (found == nullptr || found < known.data() || found >= known.data() + known.size()) {
            fail(value, (value.isString() ? "\"" + value.asString() + "\"" : "this") +
                            " is the name of no " +
                            (&known == &catalogue::commands() ? "command" : "event"));
            return nullptr;
        }
        return found;
    }

    CommandRule commandRule(const Json::Value& value) {
        CommandRule rule;
        if (!object(value, {"command", "nth", "delay_ms", "result", "send_result", "answer"})) {
            return rule;
        }
        const Message* command = message(value, "command", catalogue::commands());
        rule.command_id = command != nullptr ? command->id : 0;
        rule.which = occurrence(value);
        rule.delay = delay(value);
        rule.result = int32(value, "result");
        rule.send_result = int32(value, "send_result");
        rule.answer = flag(value, "answer", true);
        if (rule.send_result == 0) {
            fail(value["send_result"], "\"send_result\" 0 says that the command was taken");
        }
        const CommandRow* row = findCommand(rule.command_id);
        if (rule.result && row != nullptr && row->form == ReplyForm::kNone) {
            fail(value["result"], "no event answers this command: give it a \"send_result\"");
        }
        if (int{rule.result.has_value()} + int{rule.send_result.has_value()} + int{!rule.answer} >
            1) {
            fail(value,
                 "only one of \"result\", \"send_result\" and \"answer\": false makes sense");
        }
        return rule;
    }

    Occasion occasion(const Json::Value& value, const char* command_member) {
        Occasion when;
        const std::optional<int64_t> at = number(value, "at_ms", 0, kLongestDelay);
        if (at) {
            when.at = milliseconds{*at};
        }
        if (value.isMember("at_ms") == value.isMember(command_member)) {
            fail(value, std::string("one of \"at_ms\" and \"") + command_member + "\" is needed");
        } else if (value.isMember(command_member)) {
            const Message* command = message(value, command_member, catalogue::commands());
            when.command_id = command != nullptr ? command->id : 0;
            when.which = occurrence(value);
            when.delay = delay(value);
        } else if (value.isMember("nth") || value.isMember("delay_ms")) {
            fail(value, std::string("\"nth\" and \"delay_ms\" go with \"") + command_member + "\"");
        }
        return when;
    }

    /// The bytes that "fields" and "bytes" give for a record.
    std::vector<Patch> patches(const Json::Value& owner, const catalogue::Record* record) {
        std::vector<Patch> patches;
        if (owner.isMember("fields")) {
            const Json::Value& fields = owner["fields"];
            if (record == nullptr || !fields.isObject()) {
                fail(fields, record == nullptr ? "an event that is not known has no fields"
                                               : "\"fields\" has to be an object");
                return patches;
            }
            for (const std::string& path : fields.getMemberNames()) {
                patches.push_back(fieldPatch(*record, path, fields[path]));
            }
        }
        if (owner.isMember("bytes")) {
            const Json::Value& bytes = owner["bytes"];
            if (!object(bytes, {"offset", "hex"})) {
                return patches;
            }
            const std::optional<std::vector<uint8_t>> given =
                bytes["hex"].isString() ? hexBytes(bytes["hex"].asString()) : std::nullopt;
            if (!given) {
                fail(bytes, "\"hex\" has to be hexadecimal digits, two for each byte");
                return patches;
            }
            const int64_t offset = number(bytes, "offset", 0, kLargestRecord).value_or(0);
            patches.push_back({static_cast<size_t>(offset), *given});
        }
        return patches;
    }

    Patch fieldPatch(const catalogue::Record& record, const std::string& path,
                     const Json::Value& value) {
        std::string reason;
        const std::optional<Place> place = locate(record, path, reason);
        std::vector<uint8_t> bytes;
        if (place && value.isInt64()) {
            bytes = numberBytes(*place, value.asInt64(), reason);
        } else if (place && value.isString()) {
            bytes = textBytes(*place, value.asString(), reason);
        } else if (place) {
            reason = "a whole number or a text is wanted here";
        }
        if (!reason.empty()) {
            fail(value, (place ? path + ": " : "") + reason);
        }
        return {place ? place->offset : 0, std::move(bytes)};
    }

    std::optional<size_t> size(const Json::Value& owner) {
        const std::optional<int64_t> size = number(owner, "size", 0, kLargestRecord);
        return size ? std::optional(static_cast<size_t>(*size)) : std::nullopt;
    }

    EventRule eventRule(const Json::Value& value) {
        EventRule rule;
        if (!object(value,
                    {"at_ms", "after", "nth", "delay_ms", "event", "fields", "bytes", "size"})) {
            return rule;
        }
        rule.when = occasion(value, "after");
        const catalogue::Record* record = nullptr;
        const Json::Value& event = value["event"];
        if (event.isUInt()) { // also one that nobody knows
            rule.event_id = static_cast<int>(event.asUInt());
        } else if (const Message* known = message(value, "event", catalogue::events())) {
            rule.event_id = known->id;
            record = known->record;
            rule.record.resize(record->size);
        }
        rule.names_session = record == nullptr || value.isMember("bytes") ||
                             (value["fields"].isObject() && value["fields"].isMember("handle"));
        applyPatches(patches(value, record), rule.record);
        rule.record.resize(size(value).value_or(rule.record.size()));
        return rule;
    }

    RecordRule recordRule(const Json::Value& value) {
        RecordRule rule;
        if (!object(value, {"event", "nth", "fields", "bytes", "size", "drop"})) {
            return rule;
        }
        if (const Message* event = message(value, "event", catalogue::events())) {
            rule.event_id = event->id;
            rule.patches = patches(value, event->record);
        }
        rule.which = occurrence(value);
        rule.size = size(value);
        rule.drop = flag(value, "drop", false);
        if (!rule.drop && !rule.size && rule.patches.empty()) {
            fail(value,
                 "nothing is done to the record: \"fields\", \"bytes\", \"size\" or \"drop\" "
                 "is needed");
        }
        return rule;
    }

    StopRule stopRule(const Json::Value& value) {
        StopRule rule;
        if (object(value, {"at_ms", "from", "nth", "send_result"})) {
            rule.when = occasion(value, "from");
            rule.send_result = int32(value, "send_result").value_or(0);
        }
        return rule;
    }

    const std::string path_;
    const std::string text_;
    std::string error_;
};

} // namespace

void applyPatches(const std::vector<Patch>& patches, std::vector<uint8_t>& record) {
    for (const Patch& patch : patches) {
        record.resize(std::max(record.size(), patch.offset + patch.bytes.size()));
        std::copy(patch.bytes.begin(), patch.bytes.end(),
                  record.begin() + static_cast<std::ptrdiff_t>(patch.offset));
    }
}

std::optional<Script> readScript(const std::string& path, std::string& error) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        error = path + ": " + std::strerror(errno != 0 ? errno : EIO);
        return std::nullopt;
    }
    return Reader(path, std::move(text)).read(error);
}

} // namespace simulator
