#include "desk/pictures/timeline_builder.h"

#include <algorithm>
#include <tuple>

namespace pictures {
namespace {

/// Of what is wrong with a file, so that what is kept is bounded.
constexpr size_t kMostDamages = 20;

/// A line of a log that has no times takes this long, so that the order can be seen.
constexpr int64_t kLineWithoutTime = 1000; ///< nanoseconds

std::string failureOf(const sessions::BridgeCall& call) {
    if (!call.faults.empty()) {
        return call.faults.front().where.text;
    }
    if (call.refused) {
        return "an argument was refused";
    }
    if (call.ret.value_or(0) != 0) {
        return "not sent: " + std::to_string(*call.ret);
    }
    return call.result.value_or(0) != 0 ? "result = " + std::to_string(*call.result) : "";
}

std::string failureOf(const sessions::Message& message, const sessions::Link& link) {
    using Kind = sessions::Message::Kind;
    if (message.is(Kind::kRefusedEvent)) {
        return "refused: " + std::to_string(message.value);
    }
    if (message.value != 0) {
        return "not sent: " + std::to_string(message.value);
    }
    const catalogue::Record* const layout =
        sessions::layoutOf(message, catalogue::find(message.id));
    // The result of an event that answers nothing may mean something else.
    const auto result = layout != nullptr && !message.is(Kind::kCommand) && link.partner != 0
                            ? sessions::numberIn(*layout, message, "result")
                            : std::nullopt;
    return result.value_or(0) != 0 ? "result = " + std::to_string(*result) : "";
}

std::string nameOfCall(const sessions::BridgeCall& call) {
    return call.message != nullptr ? std::string(call.message->name) : call.function;
}

Span::Kind kindOf(sessions::BridgeCall::Kind kind) {
    switch (kind) {
    case sessions::BridgeCall::Kind::kEvent:
        return Span::Kind::kEvent;
    case sessions::BridgeCall::Kind::kLoad:
        return Span::Kind::kLoad;
    case sessions::BridgeCall::Kind::kNative:
        break;
    }
    return Span::Kind::kNative;
}

} // namespace

void Builder::beginRun() {
    ++run_;
    pairing_.beginSection();
}

size_t Builder::threadOf(uint32_t id, const std::string& name) {
    const auto [found, added] = threads_.try_emplace({run_, id, name}, timeline_.threads.size());
    if (added) {
        timeline_.threads.push_back({id, name, std::max<uint32_t>(run_, 1)});
    }
    return found->second;
}

bool Builder::keep(const sessions::Message& message, const sessions::Link& link, size_t thread) {
    timeline_.messages = link.number;
    if (!filter_.takes(message, link)) {
        return false;
    }
    timeline_.entries.push_back({message, link, thread});
    return true;
}

void Builder::add(const sessions::Message& message) {
    using Kind = sessions::Message::Kind;
    const sessions::Link link = pairing_.add(message);
    const size_t thread = threadOf(message.thread_id, message.thread_name);
    if (!keep(message, link, thread)) {
        return;
    }
    const int64_t time = nanoseconds(message.time);
    const auto begun = spans_.find(link.partner);
    const bool ends = message.is(Kind::kAnswer) || message.is(Kind::kRefusedEvent);
    if (ends && begun != spans_.end()) {
        Span& span = timeline_.spans[begun->second];
        span.end = std::max(span.begin, time);
        if (span.failure.empty()) {
            span.failure = failureOf(message, link);
        }
        spans_.erase(begun);
        return;
    }
    Span span;
    span.kind = message.is(Kind::kCommand) || message.is(Kind::kAnswer) ? Span::Kind::kNative
                                                                        : Span::Kind::kEvent;
    span.name = nameOf(message);
    span.thread = thread;
    span.begin = time;
    span.end = time;
    span.number = link.number;
    span.failure = failureOf(message, link);
    spans_[link.number] = timeline_.spans.size();
    timeline_.spans.push_back(span);
}

void Builder::pass() {
    pairing_.pass();
    ++timeline_.messages;
}

void Builder::addOfCall(sessions::Message message, const sessions::BridgeCall& call) {
    if (nanoseconds(message.time) == 0) {
        const int64_t time = timeOf(std::nullopt, std::max<uint64_t>(call.last, call.first));
        message.time.seconds = time / 1000000000;
        message.time.nanoseconds = static_cast<uint32_t>(time % 1000000000);
    }
    const sessions::Link link = pairing_.add(message);
    if (keep(message, link, threadOf(call.thread_id, call.thread))) {
        messages_of_calls_.try_emplace(call.number, link.number);
    }
}

void Builder::endCall(const sessions::BridgeCall& call) {
    const auto sent = messages_of_calls_.find(call.number);
    if (sent == messages_of_calls_.end() && !filter_.takesAll()) {
        return;
    }
    Span span;
    span.kind = kindOf(call.kind);
    span.name = nameOfCall(call);
    span.thread = threadOf(call.thread_id, call.thread);
    span.begin = timeOf(call.begun, call.first);
    span.end = std::max(span.begin, timeOf(call.ended_at, call.last));
    span.failure = failureOf(call);
    span.line = call.first;
    span.function = call.function;
    span.source_line = call.source_line;
    if (sent != messages_of_calls_.end()) {
        span.number = sent->second;
        messages_of_calls_.erase(sent);
    }
    timeline_.spans.push_back(span);
}

void Builder::addLine(const sessions::LogLine& line) {
    Line added;
    added.number = line.first;
    added.time = timeOf(line.header.time, line.first);
    added.pid = std::max(line.header.pid, 0);
    added.tid = line.header.tid > 0 ? static_cast<uint32_t>(line.header.tid) : 0;
    added.task = line.trace.task;
    added.level = line.trace.level;
    added.text = line.text;
    timeline_.lines.push_back(std::move(added));
}

int64_t Builder::timeOf(const std::optional<sessions::LogTime>& time, uint64_t line) {
    if (time) {
        return time->nanoseconds;
    }
    timeline_.has_times = false;
    return static_cast<int64_t>(line) * kLineWithoutTime;
}

void Builder::damage(const std::string& what) {
    if (timeline_.damages.size() < kMostDamages) {
        timeline_.damages.push_back(what);
    }
}

void Builder::end() {
    std::stable_sort(timeline_.spans.begin(), timeline_.spans.end(),
                     [](const Span& a, const Span& b) {
                         return std::tie(a.begin, b.end, a.line) < std::tie(b.begin, a.end, b.line);
                     });
}

} // namespace pictures
