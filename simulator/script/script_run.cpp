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

bool ScriptRun::modify(int event_id, std::vector<uint8_t>& record) {
    const uint32_t number = ++counts_[event_id];
    const auto rule =
        std::find_if(script_.records.begin(), script_.records.end(), [&](const RecordRule& rule) {
            return rule.event_id == event_id && rule.which.fits(number);
        });
    if (rule == script_.records.end()) {
        return true;
    }
    applyPatches(rule->patches, record);
    record.resize(rule->size.value_or(record.size()));
    return !rule->drop;
}

} // namespace simulator
