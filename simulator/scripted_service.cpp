#include "scripted_service.h"

#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

namespace simulator {

ScriptedService::ScriptedService(Service& service, Script script, OnEvent on_event)
    : service_(service), run_(std::move(script)) {
    service_.setEventFilter(
        [this, on_event = std::move(on_event)](int event_id, std::vector<uint8_t>& record) {
            const int times = run_.modify(event_id, record);
            if (times > 0 && on_event) {
                on_event(event_id, record);
            }
            return times;
        });
    scheduleTimedRules();
}

void ScriptedService::scheduleTimedRules() {
    Timeline& timeline = service_.timeline();
    for (const EventRule& rule : run_.script().events) {
        if (rule.when.at) {
            timeline.at(timeline.ahead(*rule.when.at), [this, &rule] {
                const std::lock_guard<std::mutex> lock(service_.mutex());
                send(rule, std::nullopt);
            });
        }
    }
    const std::optional<StopRule>& stop_rule = run_.script().stop;
    if (stop_rule && stop_rule->when.at) {
        timeline.at(timeline.ahead(*stop_rule->when.at), [this] {
            const std::lock_guard<std::mutex> lock(service_.mutex());
            stop();
        });
    }
}

void ScriptedService::stop() {
    stopped_ = run_.script().stop->send_result;
    service_.stopAnswering();
}

ScriptRun::Arrival ScriptedService::arrive(int command_id) {
    ScriptRun::Arrival arrival = run_.arrive(command_id);
    if (arrival.stops) {
        stop();
    }
    return arrival;
}

void ScriptedService::sendAfter(const ScriptRun::Arrival& arrival, std::optional<uint16_t> handle) {
    Timeline& timeline = service_.timeline();
    for (const EventRule* rule : arrival.events) {
        timeline.at(timeline.ahead(rule->when.delay), [this, rule, handle] {
            const std::lock_guard<std::mutex> lock(service_.mutex());
            send(*rule, handle);
        });
    }
}

void ScriptedService::send(const EventRule& rule, std::optional<uint16_t> handle) {
    if (stopped_) {
        return;
    }
    std::vector<uint8_t> record = rule.record;
    if (!rule.names_session && record.size() >= sizeof(uint16_t)) {
        const uint16_t about = handle ? *handle : service_.oldestHandle();
        std::memcpy(record.data(), &about, sizeof about);
    }
    run_.acted(&rule);
    service_.sendUnfiltered(rule.event_id, std::move(record));
}

} // namespace simulator
