#include "replay/findings.h"
#include "replay/report.h"

#include "desk/show/json_text.h"
#include "desk/show/names.h"

#include <algorithm>

namespace replay {
namespace {

constexpr int kVersion = 1;

std::string member(const std::string& key, const std::string& json) {
    return ",\"" + key + "\":" + json;
}

std::string countsJson(const Divergences& divergences) {
    std::string json;
    for (size_t index = 0; index < kDifferences; ++index) {
        json += member(keyOf(static_cast<Difference>(index)),
                       std::to_string(divergences.counts[index]));
    }
    return '{' + json.substr(1) + '}';
}

std::string fieldsJson(const std::vector<FieldDifference>& fields) {
    std::string json;
    for (const FieldDifference& field : fields) {
        json += json.empty() ? "{" : ",{";
        json += "\"field\":" + show::jsonText(field.name) +
                member("recorded", show::jsonText(field.recorded)) +
                member("this_run", show::jsonText(field.this_run)) + '}';
    }
    return '[' + json + ']';
}

/// A message of the recording; its place in the file is not kept.
std::string numbersJson(const Recording& recording, size_t end) {
    std::string json;
    for (size_t index = end - std::min(end, kMessagesBefore); index < end; ++index) {
        const Entry& entry = recording.entries[index];
        json += json.empty() ? "{" : ",{";
        json += "\"number\":" + std::to_string(entry.link.number) +
                member("kind", show::jsonText(show::nameOfKind(entry.message.kind))) +
                member("name", show::jsonText(messageName(entry.message.id))) +
                member("thread", show::jsonText(entry.message.thread_name)) + '}';
    }
    return '[' + json + ']';
}

std::string firstJson(const Recording& recording, const Divergence& first) {
    const Finding finding = findingOf(recording, first);
    return "{\"number\":" + std::to_string(finding.number) +
           member("difference", show::jsonText(keyOf(first.difference))) +
           member("what", show::jsonText(finding.what)) +
           member("fields", fieldsJson(finding.fields)) +
           member("before", numbersJson(recording, first.entry)) + '}';
}

} // namespace

std::string reportJson(const std::string& file, const Recording& recording,
                       const Outcome& outcome) {
    std::string json =
        "{\"version\":" + std::to_string(kVersion) + member("file", show::jsonText(file)) +
        member("messages", std::to_string(recording.messages)) +
        member("passed", std::to_string(outcome.passed)) +
        member("left_out", std::to_string(recording.left_out + outcome.not_delivered)) +
        member("stalled", outcome.stalled ? "true" : "false") +
        member("divergences", countsJson(outcome.divergences));
    if (outcome.divergences.first) {
        json += member("first", firstJson(recording, *outcome.divergences.first));
    }
    return json + member("status", std::to_string(statusOf(outcome))) + '}';
}

} // namespace replay
