#include "script/script_run.h"

#include <algorithm>
#include <utility>

namespace simulator {

ScriptRun::ScriptRun(Script script) : script_(std::move(script)) {}

ScriptRun::Arrival ScriptRun::arrive(int command_id) {
    const uint32_t number = ++counts_[command_id];
    const auto occurs = [&](const Occasion& when) {
        return !when.at && when.command_id == command_id && when.which.fits(number);
    };
    Arrival arrival{nullptr, {}, script_.stop && occurs(script_.stop->when)};
    for (const CommandRule& rule : script_.commands) {
        if (rule.command_id == command_id && rule.which.fits(number)) {
            arrival.rule = &rule;
            break;
        }
    }
    for (const EventRule& rule : script_.events) {
        if (occurs(rule.when)) {
            arrival.events.push_back(&rule);
        }
    }
    return arrival;
}

uint32_t ScriptRun::arrivals(int command_id) const {
    const auto found = counts_.find(command_id);
    return found != counts_.end() ? found->second : 0;
}

int ScriptRun::modify(int event_id, std::vector<uint8_t>& record) {
    const uint32_t number = ++counts_[event_id];
    const auto rule =
        std::find_if(script_.records.begin(), script_.records.end(), [&](const RecordRule& rule) {
            return rule.event_id == event_id && rule.which.fits(number);
        });
    if (rule == script_.records.end()) {
        return 1;
    }
    const std::vector<uint8_t> before = record;
    applyPatches(rule->patches, record);
    record.resize(rule->size.value_or(record.size()));
    if (rule->drop || rule->copies > 0 || record != before) {
        acted(&*rule);
    }
    return rule->drop ? 0 : 1 + rule->copies;
}

uint32_t ScriptRun::actedOf(const void* rule) const {
    const auto found = acted_.find(rule);
    return found != acted_.end() ? found->second : 0;
}

std::vector<ScriptRun::RuleCount> ScriptRun::ruleCounts() const {
    std::vector<RuleCount> counts;
    const auto add = [&](const std::string& place, int message_id, const void* rule) {
        counts.push_back({place, message_id, actedOf(rule)});
    };
    const auto placeOf = [](const char* key, size_t index) {
        return key + ("[" + std::to_string(index)) + "]";
    };
    for (size_t i = 0; i < script_.commands.size(); ++i) {
        add(placeOf("commands", i), script_.commands[i].command_id, &script_.commands[i]);
    }
    for (size_t i = 0; i < script_.events.size(); ++i) {
        add(placeOf("events", i), script_.events[i].event_id, &script_.events[i]);
    }
    for (size_t i = 0; i < script_.records.size(); ++i) {
        add(placeOf("records", i), script_.records[i].event_id, &script_.records[i]);
    }
    if (script_.stop) {
        add("stop", script_.stop->when.at ? 0 : script_.stop->when.command_id, &*script_.stop);
    }
    return counts;
}

} // namespace simulator
