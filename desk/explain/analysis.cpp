#include "desk/explain/analysis.h"

#include "desk/explain/names.h"
#include "desk/explain/text.h"

#include "sessions/log/log_messages.h"

#include "records/message_ids.h"

#include <algorithm>

namespace explain {
namespace {

using sessions::BridgeCall;
using sessions::Message;
using sessions::Step;
using Kind = Message::Kind;

/// Further findings are put together by rule: more are not read, and take time and memory.
constexpr size_t kMostFindings = 500;

/// Commands that wait for an event. With the lines of DEBUG alone no reply is known.
constexpr size_t kMostWaiting = 1000;

/// A service that has stopped leaves this many commands at least.
constexpr size_t kFewestOfStop = 2;

/// Whether a finding is that a command failed.
bool isFailure(Rule rule) {
    switch (rule) {
    case Rule::kNoReply:
    case Rule::kCommandNotTaken:
    case Rule::kCommandFailed:
    case Rule::kArgumentRejected:
    case Rule::kEmptyAnswer:
    case Rule::kArgumentRefused:
    case Rule::kSurfaceRefused:
    case Rule::kFieldMissing:
        return true;
    default:
        return false;
    }
}

} // namespace

/// Where a line of a call was written. Of a line that is long past only the function is known.
Place Analysis::lineOf(const BridgeCall& call, uint64_t line) const {
    const Place* const recent = recent_.find(line);
    Place place = recent != nullptr ? *recent : Place{line, call.function, 0, {}};
    place.line = line;
    return place;
}

Analysis::Entry& Analysis::add(Rule rule, const std::string& subject, const std::string& detail,
                               const Place& place, const Relations& relations,
                               const std::string& thread) {
    FindingKey key{rule, subject, detail};
    if (entries_.size() >= kMostFindings && entries_.count(key) == 0) {
        key = {rule, "(others)", {}};
    }
    const auto [found, is_new] = entries_.try_emplace(key);
    Entry& entry = found->second;
    Finding& finding = entry.finding;
    if (is_new) {
        finding.key = key;
        finding.first = place;
        finding.handle = relations.handle;
        finding.thread = thread;
        entry.relations = relations;
        if (relations.handle) {
            entry.relations.failed = failed_[*relations.handle];
            for (const auto& [number, sent] : sent_) {
                if (sent.handle == relations.handle) {
                    entry.relations.failed.insert(sent.name); // it has no answer yet
                }
            }
        }
    }
    if (relations.handle && isFailure(rule)) {
        failed_[*relations.handle].insert(subject);
    }
    ++finding.count;
    finding.last_line = std::max(finding.last_line, place.line);
    if (finding.lines.size() < Finding::kMostLines) {
        finding.lines.push_back(place.line);
    }
    return entry;
}

// ---- Messages, of a log or of a capture.

void Analysis::step(const Step& step) {
    const BridgeCall& call = step.call;
    if (step.kind == Step::Kind::kLoad) {
        endProcess(false);
        covers_sessions_ = true;
        story_.load(call.first);
        return;
    }
    if (step.kind == Step::Kind::kCallEnd) {
        callEnded(call);
        return;
    }
    if (const std::optional<Message> message = sessions::messageOf(step)) {
        const bool command = step.kind == Step::Kind::kCommand;
        const bool event = step.kind == Step::Kind::kEvent;
        const uint64_t line = command && call.sent_line != 0 ? call.sent_line
                              : command || event             ? call.first
                                                             : call.last;
        pass(*message, lineOf(call, line));
    }
}

void Analysis::message(const Message& message, uint64_t number) {
    is_capture_ = true;
    const Place place{number, {}, 0, {}};
    pass(message, place);
    if (message.is(Kind::kEvent)) {
        event_of_capture_ = message;
    } else if (message.is(Kind::kRefusedEvent)) {
        refusedInCapture(message, place);
    }
}

void Analysis::beginSection() {
    endProcess(false);
    covers_sessions_ = true;
}

void Analysis::pass(const Message& message, const Place& place) {
    const sessions::Link link = pairing_.add(message);
    // The first that a stopped service does not answer are kept.
    const bool stopped = !sent_.empty() && sent_.begin()->second.place.line >= last_event_;
    pairing_.keepWaiting(kMostWaiting, stopped ? sessions::Pairing::GiveUp::kNewest
                                               : sessions::Pairing::GiveUp::kOldest);
    last_message_ = std::max(last_message_, place.line);
    if (message.is(Kind::kCommand)) {
        passCommand(message, link, place);
    } else if (message.is(Kind::kAnswer)) {
        passAnswer(message, link, place);
    } else if (message.is(Kind::kEvent)) {
        passEvent(message, link, place);
    }
    if (link.session) {
        order_[*link.session].pass(message);
    }
    if (link.session && !isReleased(*link.session)) {
        story_.message(message, link, place.line);
    }
    unanswered(pairing_.takeGivenUp(), false);
}

// ---- The end.

/// Commands that are never answered. `may_come`: the log ends before it could tell.
void Analysis::unanswered(const std::vector<sessions::OpenCommand>& commands, bool may_come) {
    for (const sessions::OpenCommand& command : commands) {
        const auto found = sent_.find(command.number);
        if (found == sent_.end()) {
            continue;
        }
        // The log may end too early to tell.
        const bool never = !may_come || process_ended_ ||
                           (last_message_ > found->second.place.line && hadTime(command));
        giveUp(found, never);
    }
}

/// `never`: its answer does not come after the end of the log either.
void Analysis::giveUp(std::map<uint64_t, Sent>::iterator found, bool never) {
    const Sent& sent = found->second;
    if (knows_replies_) {
        coverage_.mark(LossKind::kCommandWithoutReply, sent.place.line,
                       "a " + sent.name + " without its reply, or it never came");
    }
    if (knows_replies_ && never) {
        Relations relations;
        relations.handle = sent.handle;
        add(Rule::kNoReply, sent.name, {}, sent.place, relations, sent.thread);
    }
    sent_.erase(found);
}

/// Whether a command has waited longer than others have for their answer.
bool Analysis::hadTime(const sessions::OpenCommand& command) const {
    const auto& end = coverage_.end();
    if (!end || command.time.seconds == 0) {
        return true;
    }
    const int64_t sent = command.time.seconds * kSecond + command.time.nanoseconds;
    return end->nanoseconds - sent > longest_latency_;
}

/// Whether the service stopped: the last event is followed by commands alone, none of which was
/// answered.
void Analysis::findStop(const std::vector<sessions::OpenCommand>& open) {
    std::vector<Sent> left = not_taken_;
    size_t after_events = not_taken_.size();
    for (const sessions::OpenCommand& command : open) {
        const auto sent = sent_.find(command.number);
        if (sent != sent_.end() && sent->second.place.line > last_reply_) {
            left.push_back(sent->second);
            after_events += sent->second.place.line > last_event_ ? 1 : 0;
        }
    }
    if (left.size() < kFewestOfStop || after_events == 0 || !knows_replies_) {
        return;
    }
    const auto first =
        std::min_element(left.begin(), left.end(), [](const Sent& one, const Sent& other) {
            return one.place.line < other.place.line;
        });
    Place where = first->place;
    where.text =
        last_event_ == 0 ? "no event came" : "the last event is at " + nameOfLine(last_event_);
    where.text += "; " + std::to_string(left.size()) + " commands had no answer";
    Relations relations;
    relations.handle = first->handle;
    add(Rule::kServiceStopped, first->name, {}, where, relations, first->thread);
}

void Analysis::endProcess(bool log_ends) {
    const std::vector<sessions::OpenCommand> open = pairing_.open();
    findStop(open);
    unanswered(open, log_ends);
    pairing_.beginSection();
    pairing_.takeGivenUp();
    sent_.clear();
    sessions_.clear();
    order_.clear();
    failed_.clear();
    story_.beginProcess();
    not_taken_.clear();
    process_ended_ = false;
    knows_replies_ = true;
    last_sent_.clear();
    event_of_capture_.reset();
}

void Analysis::end() {
    endProcess(true);
    std::vector<RelatedFinding> found;
    for (const auto& [key, entry] : entries_) {
        found.push_back({entry.finding, entry.relations});
    }
    findings_ = withFirstCauses(std::move(found));
}

} // namespace explain
