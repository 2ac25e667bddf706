// What is found in the messages, of a log or of a capture.
#include "desk/explain/analysis.h"
#include "desk/explain/names.h"
#include "desk/explain/text.h"

#include "records/message_ids.h"

#include <algorithm>

namespace explain {
namespace {

using sessions::Message;
using Kind = Message::Kind;

/// The result that says that an argument is not accepted.
constexpr int64_t kParamNg = 5;

} // namespace

void Analysis::passCommand(const Message& message, const sessions::Link& link, const Place& place) {
    if (link.session && message.id != command_id::kCreate) {
        checkSession(message, *link.session, place);
    }
    Sent sent{messageName(message.id), place, message.thread_name, handleOf(link), message.time};
    sent.out_of_place =
        link.session && isOpen(*link.session) && !order_[*link.session].allows(message);
    const catalogue::Message* const known = catalogue::find(message.id);
    if (known != nullptr && (known->reply != nullptr || known->reply_event != 0)) {
        keep(link.number, sent);
    }
    last_sent_[message.thread_id] = sent;
}

/// Keeps a command until its answer comes. Of too many the oldest is given up; but not when no
/// event has come since, because the first commands after the last event show that the service
/// stopped.
void Analysis::keep(uint64_t number, const Sent& sent) {
    constexpr size_t kMostSent = 1000;
    if (sent_.size() >= kMostSent) {
        if (sent_.begin()->second.place.line >= last_event_) {
            return;
        }
        giveUp(sent_.begin());
    }
    sent_[number] = sent;
}

bool Analysis::isOpen(int handle) const {
    const auto session = sessions_.find(handle);
    return session != sessions_.end() && !session->second;
}

bool Analysis::isReleased(int handle) const {
    const auto session = sessions_.find(handle);
    return session != sessions_.end() && session->second;
}

void Analysis::checkSession(const Message& message, int handle, const Place& place) {
    const bool command = message.is(Kind::kCommand);
    const auto session = sessions_.find(handle);
    Relations relations;
    relations.handle = handle;
    if (session == sessions_.end()) {
        if (const auto create = command ? sent_.end() : waitingCreate(); create != sent_.end()) {
            // It was opened, or the service would not name it: its reply is missing in the log.
            coverage_.mark(LossKind::kCommandWithoutReply, create->second.place.line,
                           "a Create without its reply, though its session was opened");
            sent_.erase(create);
            sessions_[handle] = false;
            story_.opened(handle, place.line);
        } else if (covers_sessions_) {
            add(command ? Rule::kCommandWithoutSession : Rule::kEventWithoutSession,
                messageName(message.id), std::to_string(handle), place, relations,
                message.thread_name);
        }
    } else if (session->second) {
        add(command ? Rule::kCommandAfterRelease : Rule::kEventAfterRelease,
            messageName(message.id), std::to_string(handle), place, relations, message.thread_name);
    }
}

/// The oldest Create that has no reply.
std::map<uint64_t, Analysis::Sent>::iterator Analysis::waitingCreate() {
    return std::find_if(sent_.begin(), sent_.end(),
                        [](const auto& sent) { return sent.second.name == "Create"; });
}

/// A command that failed, and needs what has not happened in its session.
void Analysis::checkOrder(const Sent& command) {
    if (!command.out_of_place) {
        return;
    }
    Relations relations;
    relations.handle = command.handle;
    add(Rule::kCommandOutOfPlace, command.name, {}, command.place, relations, command.thread);
}

void Analysis::passAnswer(const Message& message, const sessions::Link& link, const Place& place) {
    const catalogue::Message* const known = catalogue::find(message.id);
    answered(message, link, place.line);
    const auto sent = sent_.find(link.partner);
    const Sent command = sent != sent_.end() ? sent->second : last_sent_[message.thread_id];
    Relations relations;
    relations.handle = command.handle;
    if (message.value != 0) {
        Place where = place;
        where.text = "ret = " + std::to_string(message.value);
        checkOrder(command);
        add(Rule::kCommandNotTaken, messageName(message.id), {}, where, relations,
            message.thread_name);
        not_taken_.push_back(command);
    } else if (known != nullptr && known->reply != nullptr) {
        if (message.size == 0) {
            add(Rule::kEmptyAnswer, command.name, {}, place, relations, message.thread_name);
        } else {
            checkResult(message, link, "return_value", place);
            checkResult(message, link, "result", place);
        }
        if (message.id == command_id::kRelease_Sync && link.session && message.size != 0 &&
            numberIn(*known->reply, message, "return_value").value_or(0) == 0) {
            sessions_[*link.session] = true;
            story_.closed(*link.session, place.line);
        }
    }
    if (sent != sent_.end() &&
        (message.value != 0 || (known != nullptr && known->reply != nullptr))) {
        sent_.erase(sent);
    }
}

void Analysis::checkResult(const Message& message, const sessions::Link& link,
                           std::string_view field, const Place& place) {
    const catalogue::Record* const layout =
        sessions::layoutOf(message, catalogue::find(message.id));
    const auto result =
        layout != nullptr ? sessions::numberIn(*layout, message, field) : std::nullopt;
    const auto sent = sent_.find(link.partner);
    if (!result || *result == 0) {
        if (link.session && sent != sent_.end()) {
            failed_[*link.session].erase(sent->second.name);
        }
        return;
    }
    const catalogue::Message* const command = commandAnsweredBy(message.id);
    const std::string subject = sent != sent_.end()  ? sent->second.name
                                : command != nullptr ? std::string(command->name)
                                                     : messageName(message.id);
    Place where = place;
    where.text = std::string(field) + " = " + std::to_string(*result);
    Relations relations;
    relations.handle = handleOf(link);
    if (sent != sent_.end()) {
        checkOrder(sent->second);
    }
    add(*result == kParamNg ? Rule::kArgumentRejected : Rule::kCommandFailed, subject, where.text,
        where, relations, message.thread_name);
}

/// How long the service took at least, in nanoseconds: of several equal commands that wait, the
/// answer may be that of the youngest.
int64_t Analysis::shortestWait(const Message& message, const sessions::Link& link,
                               const Sent& command) const {
    int64_t shortest = *link.latency;
    for (const auto& [number, sent] : sent_) {
        if (link.ambiguous && sent.name == command.name && sent.handle == command.handle) {
            const auto passed = sessions::nanosecondsBetween(sent.time, message.time);
            shortest = std::min(shortest, passed.value_or(shortest));
        }
    }
    return shortest;
}

/// Counts how long an answer took.
void Analysis::answered(const Message& message, const sessions::Link& link, uint64_t line) {
    const auto sent = sent_.find(link.partner);
    // Without times in the log both are those of 1970.
    if (!link.latency || sent == sent_.end() || message.time.seconds == 0) {
        return;
    }
    const Sent& command = sent->second;
    const uint64_t jump = coverage_.lastJump();
    if (jump > command.place.line && jump <= line) {
        return; // the time between the two is not known
    }
    longest_latency_ = std::max(longest_latency_, *link.latency);
    latencies_[command.name].add(*link.latency, command.place.line);
    if (shortestWait(message, link, command) < slow_) {
        return;
    }
    Relations relations;
    relations.handle = command.handle;
    Place where = command.place;
    where.text = "answered after " + durationText(*link.latency) + " at " + nameOfLine(line);
    add(Rule::kSlowReply, command.name, {}, where, relations, command.thread);
}

void Analysis::passEvent(const Message& message, const sessions::Link& link, const Place& place) {
    last_event_ = std::max(last_event_, place.line);
    not_taken_.clear();
    const catalogue::Message* const known = catalogue::find(message.id);
    if (message.id == 0) {
        // The line with its number is missing: it may be any reply, of any session.
        knows_replies_ = false;
        covers_sessions_ = false;
    }
    if (known == nullptr && message.id != 0) {
        Relations relations;
        add(Rule::kUnknownEvent, messageName(message.id), {}, place, relations,
            message.thread_name);
        return;
    }
    if (known != nullptr && commandAnsweredBy(message.id) != nullptr) {
        passReply(message, link, place);
    } else if (link.session) {
        checkSession(message, *link.session, place);
    }
}

void Analysis::passReply(const Message& message, const sessions::Link& link, const Place& place) {
    const catalogue::Record& layout = *catalogue::find(message.id)->record;
    const bool good = numberIn(layout, message, "result").value_or(0) == 0;
    last_reply_ = std::max(last_reply_, place.line);
    if (message.id == event_id::kCreateReply && !link.session) {
        covers_sessions_ = false;
    }
    answered(message, link, place.line);
    checkResult(message, link, "result", place);
    sent_.erase(link.partner);
    if (link.partner == 0) {
        coverage_.mark(LossKind::kReplyWithoutCommand, place.line,
                       "a " + messageName(message.id) + " without its command");
    }
    if (!link.session || !good) {
        return;
    }
    if (message.id == event_id::kCreateReply) {
        sessions_[*link.session] = false;
        order_.erase(*link.session);
        failed_.erase(*link.session);
        story_.opened(*link.session, place.line);
    } else if (message.id == event_id::kReleaseReply) {
        sessions_[*link.session] = true;
        story_.closed(*link.session, place.line);
    }
}

/// Why the bridge refused an event, as its record says it.
void Analysis::refusedInCapture(const Message& message, const Place& place) {
    if (!event_of_capture_ || event_of_capture_->id != message.id) {
        return;
    }
    const Message& event = *event_of_capture_;
    const catalogue::Message* const known = catalogue::find(event.id);
    if (known == nullptr) {
        return; // its number says why
    }
    const auto size = static_cast<int64_t>(known->record->size);
    Place where = place;
    where.line = place.line;
    Relations relations;
    const std::string subject(known->name);
    if (message.value == -1) {
        add(Rule::kAttachFailed, subject, {}, where, relations, message.thread_name);
    } else if (event.size != size && event.id != event_id::kServiceInfoNotify) {
        where.text = "recv_size = " + std::to_string(event.size) + ", the layout has " +
                     std::to_string(size);
        add(Rule::kRecordSize, subject, {}, where, relations, message.thread_name);
    } else {
        add(Rule::kEventRefused, subject, {}, where, relations, message.thread_name);
    }
}

} // namespace explain
