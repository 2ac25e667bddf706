#include "replay/findings.h"

#include "replay/commands.h"

#include "desk/show/names.h"

#include <utility>

namespace replay {
namespace {

using sessions::Message;

sessions::Bytes view(const std::vector<uint8_t>& bytes) {
    return {bytes.data(), bytes.size()};
}

/// The fields of a command, with what is sent beside its record.
std::vector<FieldValue> commandFields(int id, const std::vector<uint8_t>& record, int size,
                                      int surfaces) {
    const catalogue::Message* known = catalogue::find(id);
    static const catalogue::Record no_layout;
    std::vector<FieldValue> values =
        fieldValues(known != nullptr ? *known->record : no_layout, view(record));
    values.push_back({"size", std::to_string(size)});
    values.push_back({"surfaces", std::to_string(surfaces)});
    return values;
}

std::vector<FieldValue> recordedFields(const Message& message) {
    return commandFields(message.id, message.record, message.size, message.surfaces);
}

std::vector<FieldValue> givenFields(const Given& given) {
    return commandFields(given.id, given.record, given.size, given.surfaces);
}

/// The fields in which a command differs from the recorded one.
std::vector<FieldDifference> differencesOf(const Message& recorded, Given given) {
    given.record = knownPartOf(recorded, std::move(given.record));
    return differentFields(recordedFields(recorded), givenFields(given));
}

std::string resultText(int result) {
    return result == 0 ? "accepted" : "refused, " + std::to_string(result);
}

std::string onThread(const std::string& name) {
    return " on thread " + show::shownText(name);
}

/// The result that the listener returned in the recording.
int recordedResult(const Recording& recording, const Entry& event) {
    return event.reply != kNone ? recording.entries[event.reply].message.value : 0;
}

} // namespace

std::string nameOf(Difference difference) {
    switch (difference) {
    case Difference::kOtherBytes:
        return "with other bytes";
    case Difference::kUnexpectedCommand:
        return "unexpected";
    case Difference::kMissingCommand:
        return "missing";
    case Difference::kOtherResult:
        return "with another result";
    case Difference::kUnfinishedEvent:
        return "unfinished";
    }
    return "";
}

std::string keyOf(Difference difference) {
    switch (difference) {
    case Difference::kOtherBytes:
        return "other_bytes";
    case Difference::kUnexpectedCommand:
        return "unexpected_command";
    case Difference::kMissingCommand:
        return "missing_command";
    case Difference::kOtherResult:
        return "other_result";
    case Difference::kUnfinishedEvent:
        return "unfinished_event";
    }
    return "";
}

std::string messageName(int id) {
    const catalogue::Message* known = catalogue::find(id);
    return known != nullptr ? std::string(known->name) : show::idText(id);
}

Finding findingOf(const Recording& recording, const Divergence& divergence) {
    const bool at_end = divergence.entry >= recording.entries.size();
    const Entry& entry =
        recording.entries[at_end ? recording.entries.size() - 1 : divergence.entry];
    Finding finding{entry.link.number + (at_end ? 1 : 0), "", {}};
    const std::string name = messageName(entry.message.id);
    const std::string thread = onThread(entry.message.thread_name);
    switch (divergence.difference) {
    case Difference::kOtherBytes:
        finding.what = name + thread + " has other bytes";
        finding.fields = differencesOf(entry.message, *divergence.given);
        break;
    case Difference::kUnexpectedCommand:
        finding.what = messageName(divergence.given->id) + onThread(divergence.given->thread) +
                       " came; the capture has none there";
        finding.fields = differentFields({}, givenFields(*divergence.given));
        break;
    case Difference::kMissingCommand:
        finding.what = name + thread + " did not come" +
                       (divergence.reason.empty() ? "" : ": " + divergence.reason);
        finding.fields = differentFields(recordedFields(entry.message), {});
        break;
    case Difference::kOtherResult:
        finding.what = name + thread + " had another result";
        finding.fields = {{"result", resultText(recordedResult(recording, entry)),
                           resultText(divergence.given->result)}};
        break;
    case Difference::kUnfinishedEvent:
        finding.what = "the callback before " + name + thread + " has not returned";
        break;
    }
    return finding;
}

} // namespace replay
