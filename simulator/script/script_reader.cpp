#include "script/script_reader.h"

#include "messages/command_replies.h"
#include "records/catalogue.h"
#include "script/json_reader.h"
#include "script/patch_reader.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace simulator {
namespace {

using catalogue::Message;
using std::chrono::milliseconds;

constexpr int kVersion = 1;
constexpr int64_t kLongestDelay = 3600000; ///< milliseconds: an hour
constexpr int64_t kMostCopies = 100;
constexpr int64_t kLargestByte = std::numeric_limits<uint8_t>::max();
constexpr int64_t kLowestInt = std::numeric_limits<int32_t>::min();
constexpr int64_t kHighestInt = std::numeric_limits<int32_t>::max();
constexpr int64_t kHighestUnsigned = std::numeric_limits<uint32_t>::max();

/// Reads the parts of a script. Its results are complete only when there is no mistake.
class ScriptReader {
public:
    explicit ScriptReader(JsonReader& json) : json_(json), patches_(json) {}

    Script script(const Json::Value& root) {
        Script script;
        if (!json_.object(root, {"version", "commands", "events", "records", "stop"})) {
            return script;
        }
        if (!root.isMember("version")) {
            json_.failWhole(root, "\"version\" is missing");
        } else if (!root["version"].isInt() || root["version"].asInt() != kVersion) {
            json_.fail(root["version"], "\"version\" has to be 1");
        }
        json_.each(root, "commands", [&](const Json::Value& value) {
            script.commands.push_back(commandRule(value));
        });
        json_.each(root, "events",
                   [&](const Json::Value& value) { script.events.push_back(eventRule(value)); });
        json_.each(root, "records",
                   [&](const Json::Value& value) { script.records.push_back(recordRule(value)); });
        if (root.isMember("stop")) {
            script.stop = stopRule(root["stop"]);
        }
        return script;
    }

private:
    std::optional<int32_t> int32(const Json::Value& owner, const char* name,
                                 int64_t lowest = kLowestInt, int64_t highest = kHighestInt) {
        const std::optional<int64_t> value = json_.number(owner, name, lowest, highest);
        return value ? std::optional(static_cast<int32_t>(*value)) : std::nullopt;
    }

    milliseconds delay(const Json::Value& owner) {
        return milliseconds{json_.number(owner, "delay_ms", 0, kLongestDelay).value_or(0)};
    }

    Occurrence occurrence(const Json::Value& owner) {
        const std::optional<int64_t> nth = json_.number(owner, "nth", 1, kHighestUnsigned);
        return {nth ? std::optional(static_cast<uint32_t>(*nth)) : std::nullopt};
    }

    /// The message that a member names; null when it names none of `known`.
    const Message* message(const Json::Value& owner, const char* name,
                           const std::vector<Message>& known) {
        const bool commands = &known == &catalogue::commands();
        if (!owner.isMember(name)) {
            json_.failWhole(owner, quoted(name) + " is missing");
            return nullptr;
        }
        const Json::Value& value = owner[name];
        if (!value.isString()) {
            json_.fail(value, quoted(name) + " has to be the name of " +
                                  (commands ? "a command" : "an event"));
            return nullptr;
        }
        const std::string wanted = value.asString();
        const auto found = std::find_if(known.begin(), known.end(), [&](const Message& message) {
            return message.name == wanted;
        });
        if (found == known.end()) {
            json_.fail(value,
                       quoted(wanted) + " is the name of no " + (commands ? "command" : "event"));
            return nullptr;
        }
        return &*found;
    }

    CommandRule commandRule(const Json::Value& value) {
        CommandRule rule;
        if (!json_.object(value,
                          {"command", "nth", "delay_ms", "result", "send_result", "answer"})) {
            return rule;
        }
        const Message* command = message(value, "command", catalogue::commands());
        rule.command_id = command != nullptr ? command->id : 0;
        // Null also for a synchronous command, whose reply always has a result of 32 bits.
        const CommandReply* row = findReply(rule.command_id);
        const bool one_byte = row != nullptr && row->form == ReplyForm::kTvLink;
        rule.which = occurrence(value);
        rule.delay = delay(value);
        rule.result = one_byte ? int32(value, "result", 0, kLargestByte) : int32(value, "result");
        rule.send_result = int32(value, "send_result");
        rule.answer = json_.flag(value, "answer", true);
        if (rule.send_result == 0) {
            json_.fail(value["send_result"],
                       "\"send_result\" 0 would say that the command was taken");
        }
        const bool unanswered = row != nullptr && row->form == ReplyForm::kNone;
        if (rule.result && unanswered) {
            json_.fail(value["result"], "no event answers this command: give it a \"send_result\"");
        }
        if (int{rule.result.has_value()} + int{rule.send_result.has_value()} + int{!rule.answer} >
            1) {
            json_.failWhole(
                value, "only one of \"result\", \"send_result\" and \"answer\": false makes sense");
        }
        if (rule.delay > milliseconds{0} && row != nullptr &&
            (unanswered || rule.send_result || !rule.answer)) {
            json_.fail(value["delay_ms"], "\"delay_ms\" delays an answer, and there is none");
        }
        return rule;
    }

    /// Reads an occasion; the member `after` names its command.
    Occasion occasion(const Json::Value& value, const char* after) {
        Occasion when;
        const std::optional<int64_t> at = json_.number(value, "at_ms", 0, kLongestDelay);
        if (at) {
            when.at = milliseconds{*at};
        }
        if (value.isMember("at_ms") == value.isMember(after)) {
            json_.failWhole(value, "either \"at_ms\" or " + quoted(after) + " is needed");
        } else if (value.isMember(after)) {
            const Message* command = message(value, after, catalogue::commands());
            when.command_id = command != nullptr ? command->id : 0;
            when.which = occurrence(value);
            when.delay = delay(value);
        } else {
            for (const char* member : {"nth", "delay_ms"}) {
                if (value.isMember(member)) {
                    json_.fail(value[member], quoted(member) + " goes with " + quoted(after));
                }
            }
        }
        return when;
    }

    EventRule eventRule(const Json::Value& value) {
        EventRule rule;
        if (!json_.object(
                value, {"at_ms", "after", "nth", "delay_ms", "event", "fields", "bytes", "size"})) {
            return rule;
        }
        rule.when = occasion(value, "after");
        const Message* known = nullptr;
        if (value["event"].isNumeric()) { // also an unknown one
            const std::optional<int64_t> id = json_.number(value, "event", 0, kHighestUnsigned);
            rule.event_id = static_cast<int>(id.value_or(0));
            known = eventOf(rule.event_id);
        } else if ((known = message(value, "event", catalogue::events())) == nullptr) {
            return rule;
        }
        if (known != nullptr) {
            rule.event_id = known->id;
            rule.record.resize(known->record->size);
        }
        const std::vector<Patch> given =
            patches_.patches(value, known != nullptr ? known->record : nullptr);
        // Every known record begins with the handle.
        rule.names_session =
            known == nullptr || std::any_of(given.begin(), given.end(), [](const Patch& patch) {
                return patch.offset < sizeof(uint16_t);
            });
        applyPatches(given, rule.record);
        rule.record.resize(patches_.size(value, "size").value_or(rule.record.size()));
        return rule;
    }

    static const Message* eventOf(int id) {
        const std::vector<Message>& events = catalogue::events();
        const auto found = std::find_if(events.begin(), events.end(),
                                        [id](const Message& message) { return message.id == id; });
        return found != events.end() ? &*found : nullptr;
    }

    RecordRule recordRule(const Json::Value& value) {
        RecordRule rule;
        if (!json_.object(value, {"event", "nth", "fields", "bytes", "size", "drop", "copies"})) {
            return rule;
        }
        const Message* event = message(value, "event", catalogue::events());
        if (event == nullptr) {
            return rule;
        }
        rule.event_id = event->id;
        rule.patches = patches_.patches(value, event->record);
        rule.which = occurrence(value);
        rule.size = patches_.size(value, "size");
        rule.drop = json_.flag(value, "drop", false);
        rule.copies = static_cast<int>(json_.number(value, "copies", 1, kMostCopies).value_or(0));
        if (rule.drop && rule.copies > 0) {
            json_.fail(value["copies"], "an event that is dropped has no copies");
        }
        if (!rule.drop && !rule.size && rule.patches.empty() && rule.copies == 0) {
            json_.failWhole(
                value, "nothing is done to the record: \"fields\", \"bytes\", \"size\" or \"drop\" "
                       "is needed");
        }
        return rule;
    }

    StopRule stopRule(const Json::Value& value) {
        StopRule rule;
        if (json_.object(value, {"at_ms", "from", "nth", "send_result"})) {
            rule.when = occasion(value, "from");
            rule.send_result = int32(value, "send_result").value_or(0);
        }
        return rule;
    }

    JsonReader& json_;
    PatchReader patches_;
};

} // namespace

std::optional<Script> readScript(const std::string& path, std::string& error) {
    std::string reason;
    std::optional<std::string> text = readFile(path, reason);
    if (!text) {
        error = path + ": " + reason;
        return std::nullopt;
    }
    JsonReader json(path, std::move(*text));
    Json::Value root;
    Script script;
    if (json.parse(root)) {
        script = ScriptReader(json).script(root);
    }
    error = json.error();
    return error.empty() ? std::optional(std::move(script)) : std::nullopt;
}

} // namespace simulator
