#include "desk/explain/analysis.h"

#include "desk/explain/java_names.h"
#include "desk/explain/text.h"

#include "sessions/log/log_messages.h"
#include "sessions/log/text.h"

#include "records/message_ids.h"

#include <algorithm>

namespace explain {
namespace {

using sessions::BridgeCall;
using sessions::Message;
using sessions::Step;
using Kind = Message::Kind;

/// The result that says that an argument is not accepted.
constexpr int64_t kParamNg = 5;

/// Further findings are put together by rule: more are not read, and take time and memory.
constexpr size_t kMostFindings = 500;

/// A service that has stopped leaves this many commands at least.
constexpr size_t kFewestOfStop = 2;

std::string nameOf(int id) {
    if (const catalogue::Message* const message = catalogue::find(id)) {
        return std::string(message->name);
    }
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(id));
    return text;
}

Place placeOf(const sessions::LoggedLine& line) {
    return {line.line, line.function, line.source_line, line.text};
}

std::optional<int> handleOf(const sessions::Link& link) {
    return link.session ? std::optional<int>(*link.session) : std::nullopt;
}

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

/// Whether it is the event that reports the outcome of a command.
const catalogue::Message* commandAnsweredBy(int event) {
    for (const catalogue::Message& command : catalogue::commands()) {
        if (command.reply_event == event) {
            return &command;
        }
    }
    return nullptr;
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

void Analysis::passCommand(const Message& message, const sessions::Link& link, const Place& place) {
    if (link.session && message.id != command_id::kCreate) {
        checkSession(message, *link.session, place);
    }
    Sent sent{nameOf(message.id), place, message.thread_name, handleOf(link), message.time};
    sent.out_of_place =
        link.session && isOpen(*link.session) && !order_[*link.session].allows(message);
    const catalogue::Message* const known = catalogue::find(message.id);
    if (known != nullptr && (known->reply != nullptr || known->reply_event != 0)) {
        sent_[link.number] = sent;
    }
    last_sent_[message.thread_id] = sent;
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
    relations.command = command ? pairing_.count() : 0;
    if (session == sessions_.end()) {
        if (const auto create = waitingCreate(); !command && create != sent_.end()) {
            // It was opened, or the service would not name it: its reply is missing in the log.
            coverage_.mark(LossKind::kCommandWithoutReply, create->second.place.line,
                           "a Create without its reply, though its session was opened");
            sent_.erase(create);
            sessions_[handle] = false;
            story_.opened(handle, place.line);
        } else if (covers_sessions_) {
            add(command ? Rule::kCommandWithoutSession : Rule::kEventWithoutSession,
                nameOf(message.id), std::to_string(handle), place, relations, message.thread_name);
        }
    } else if (session->second) {
        add(command ? Rule::kCommandAfterRelease : Rule::kEventAfterRelease, nameOf(message.id),
            std::to_string(handle), place, relations, message.thread_name);
    }
}

/// The oldest Create that has no reply.
std::map<uint64_t, Analysis::Sent>::iterator Analysis::waitingCreate() {
    return std::find_if(sent_.begin(), sent_.end(),
                        [](const auto& sent) { return sent.second.name == "Create"; });
}

/// A command that failed, and needs what has not happened in its session.
void Analysis::checkOrder(const Sent& command, uint64_t number) {
    if (!command.out_of_place) {
        return;
    }
    Relations relations;
    relations.handle = command.handle;
    relations.command = number;
    add(Rule::kCommandOutOfPlace, command.name, {}, command.place, relations, command.thread);
}

void Analysis::passAnswer(const Message& message, const sessions::Link& link, const Place& place) {
    const catalogue::Message* const known = catalogue::find(message.id);
    answered(message, link, place.line);
    const auto sent = sent_.find(link.partner);
    const Sent command = sent != sent_.end() ? sent->second : last_sent_[message.thread_id];
    Relations relations;
    relations.handle = command.handle;
    relations.command = link.partner;
    if (message.value != 0) {
        Place where = place;
        where.text = "ret = " + std::to_string(message.value);
        checkOrder(command, link.partner);
        add(Rule::kCommandNotTaken, nameOf(message.id), {}, where, relations, message.thread_name);
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
                                                     : nameOf(message.id);
    Place where = place;
    where.text = std::string(field) + " = " + std::to_string(*result);
    Relations relations;
    relations.handle = handleOf(link);
    relations.command = link.partner;
    if (sent != sent_.end()) {
        checkOrder(sent->second, link.partner);
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
    relations.command = link.partner;
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
        add(Rule::kUnknownEvent, nameOf(message.id), {}, place, relations, message.thread_name);
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
                       "a " + nameOf(message.id) + " without its command");
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

// ---- Calls of a log.

void Analysis::callEnded(const BridgeCall& call) {
    switch (call.kind) {
    case BridgeCall::Kind::kNative:
        nativeEnded(call);
        break;
    case BridgeCall::Kind::kEvent:
        eventEnded(call);
        break;
    case BridgeCall::Kind::kLoad:
        loadEnded(call);
        break;
    }
}

namespace {

using sessions::Fault;
using sessions::FaultLine;

const FaultLine* findFault(const BridgeCall& call, Fault fault) {
    const auto found = std::find_if(call.faults.begin(), call.faults.end(),
                                    [fault](const FaultLine& each) { return each.fault == fault; });
    return found != call.faults.end() ? &*found : nullptr;
}

/// The format of a line without its values, so that equal reasons are put together.
std::string reasonOf(const std::string& text) {
    std::string reason;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            reason += c;
        }
    }
    return reason;
}

struct RuleOfFault {
    Fault fault;
    Rule rule;
};

/// The first fault of an event in this order is what the others follow from.
constexpr RuleOfFault kEventFaults[] = {
    {Fault::kThreadTableFull, Rule::kThreadTableFull}, {Fault::kAttachFailed, Rule::kAttachFailed},
    {Fault::kNoEnvironment, Rule::kAttachFailed},      {Fault::kRecordSize, Rule::kRecordSize},
    {Fault::kRecordCount, Rule::kRecordCount},         {Fault::kRecordText, Rule::kRecordText},
    {Fault::kObjectNotMade, Rule::kObjectNotMade},     {Fault::kCallFailed, Rule::kObjectNotMade},
};

} // namespace

void Analysis::nativeEnded(const BridgeCall& call) {
    const std::string subject =
        call.message != nullptr ? std::string(call.message->name) : call.function;
    Relations relations;
    relations.handle = call.handle;
    if (const FaultLine* const fault = findFault(call, Fault::kResultNotMade)) {
        relations.class_id = fault->class_id;
        add(Rule::kResultNotMade, subject, {}, placeOf(fault->where), relations, call.thread);
    }
    const FaultLine* reason = findFault(call, Fault::kFieldMissing);
    if (reason != nullptr && reason->where.function == "getRetCode") {
        add(Rule::kFieldMissing, "BG_TE_DTVSVLIB_RESULT", {}, placeOf(reason->where), relations,
            call.thread);
        return;
    }
    if (!call.refused) {
        return;
    }
    const FaultLine* const enumeration = findFault(call, Fault::kEnumNotRead);
    if (reason == nullptr && enumeration != nullptr &&
        enumeration->where.text != "enum object is NULL") {
        reason = enumeration;
    }
    if (reason != nullptr) {
        add(Rule::kFieldMissing, subject, reasonOf(reason->where.text), placeOf(reason->where),
            relations, call.thread);
        return;
    }
    reason = findFault(call, Fault::kSurfaceRefused);
    if (reason != nullptr) {
        add(Rule::kSurfaceRefused, subject, {}, placeOf(reason->where), relations, call.thread);
        return;
    }
    reason = findFault(call, Fault::kArgumentRefused);
    if (reason == nullptr) {
        reason = enumeration;
    }
    Place where = reason != nullptr ? placeOf(reason->where) : lineOf(call, call.first);
    if (reason == nullptr) {
        where.text = "the line that says why is not in the log";
    }
    add(Rule::kArgumentRefused, subject, reason != nullptr ? reasonOf(where.text) : "", where,
        relations, call.thread);
}

void Analysis::eventEnded(const BridgeCall& call) {
    const std::string subject = call.message != nullptr ? std::string(call.message->name)
                                : call.id != 0          ? nameOf(call.id)
                                                        : std::string();
    Relations relations;
    relations.handle = call.handle;
    for (const RuleOfFault& each : kEventFaults) {
        if (const FaultLine* const fault = findFault(call, each.fault)) {
            if (each.rule == Rule::kAttachFailed && call.id == 0 && !call.has_begin) {
                loose_attach_ = {placeOf(fault->where), call.thread};
                return;
            }
            relations.class_id = fault->class_id;
            relations.method_id = fault->method_id;
            add(each.rule, subject, {}, placeOf(fault->where), relations, call.thread);
            return;
        }
    }
    if (call.id == 0 && call.result.value_or(0) != 0) {
        // Which command it answers is not in the log.
        Place where = lineOf(call, call.last);
        where.text = "result = " + std::to_string(*call.result);
        add(Rule::kCommandFailed, subject, where.text, where, relations, call.thread);
    }
    if (call.has_begin && call.has_end && !call.done && call.message != nullptr) {
        add(Rule::kEventRefused, subject, {}, lineOf(call, call.first), relations, call.thread);
    }
}

void Analysis::loadEnded(const BridgeCall& call) {
    for (const FaultLine& fault : call.faults) {
        Relations relations;
        relations.class_id = fault.class_id;
        relations.method_id = fault.method_id;
        const Place where = placeOf(fault.where);
        std::string name = fault.name.substr(fault.name.find_last_of('/') + 1);
        switch (fault.fault) {
        case Fault::kLoadFailed:
            add(Rule::kLoadFailed, {}, {}, where, relations, call.thread);
            break;
        case Fault::kNativesMissing:
            add(Rule::kNativeMissing, name, {}, where, relations, call.thread);
            break;
        case Fault::kClassMissing:
            relations.class_id = name.empty() ? fault.class_id : classIdOf(name);
            if (name.empty()) {
                name = classNamed(fault.class_id);
            }
            add(Rule::kClassMissing, name, {}, where, relations, call.thread);
            break;
        case Fault::kMethodMissing:
            add(Rule::kMethodMissing, std::string(classNamed(fault.class_id)) + "." + name,
                std::to_string(fault.method_id), where, relations, call.thread);
            break;
        default:
            break;
        }
    }
}

// ---- Lines of other programs.

void Analysis::line(const sessions::LogLine& line) {
    coverage_.line(line);
    recent_.add(line);
    if (loose_attach_ && line.kind <= sessions::LogLineKind::kShortened) {
        takeLooseAttach(line.trace.function == "freeJNIEnv");
    }
    if (line.kind == sessions::LogLineKind::kForeign) {
        readStackTrace(line);
    } else if (line.kind == sessions::LogLineKind::kTrace) {
        process_ended_ = process_ended_ || line.trace.function == "freeJNIEnv";
    }
}

/// A thread that the VM did not attach. At the end of a process the listener goes on one, and its
/// threads are freed next; with the lines of errors alone that looks as an event does, and is the
/// last line.
void Analysis::takeLooseAttach(bool ends_process) {
    if (!ends_process) {
        add(Rule::kAttachFailed, {}, {}, loose_attach_->first, {}, loose_attach_->second);
    }
    loose_attach_.reset();
}

namespace {

/// What follows a text, up to one of the characters; empty when it is not there.
std::string_view wordAfter(std::string_view text, std::string_view start, const char* ends) {
    const size_t found = text.find(start);
    if (found == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(found + start.size());
    return text.substr(0, text.find_first_of(ends));
}

} // namespace

/// A stack trace that leads through a callback or a native method.
void Analysis::readStackTrace(const sessions::LogLine& line) {
    const std::string_view text = line.text;
    const size_t frame = text.find("at ");
    const bool is_frame = frame != std::string_view::npos &&
                          text.find_first_not_of(" \t") == frame &&
                          text.find('(') != std::string_view::npos;
    if (!is_frame) {
        if (sessions::contains(text, "Exception") || sessions::contains(text, "Error")) {
            exception_.assign(text);
        }
        return;
    }
    if (exception_.empty()) {
        return;
    }
    const std::string_view callback = wordAfter(text, ".BGCallBack.", "(");
    const std::string_view native = wordAfter(text, ".DtvServerProxy.DtvSvLib_", "(");
    Place where{line.first, {}, 0, exception_};
    if (!native.empty() && sessions::contains(text, "(Native Method)")) {
        add(Rule::kNativeThrew, std::string(native), {}, where, {}, {});
    } else if (!callback.empty()) {
        const std::string_view event = eventOfCallback(callback);
        add(Rule::kCallbackThrew, std::string(event.empty() ? callback : event), {}, where, {}, {});
    } else {
        return;
    }
    exception_.clear();
}

// ---- The end.

/// Commands that are never answered. `may_come`: the log ends before it could tell.
void Analysis::unanswered(const std::vector<sessions::OpenCommand>& commands, bool may_come) {
    for (const sessions::OpenCommand& command : commands) {
        const auto found = sent_.find(command.number);
        if (found == sent_.end()) {
            continue;
        }
        const Sent& sent = found->second;
        if (!knows_replies_) {
            sent_.erase(found);
            continue;
        }
        coverage_.mark(LossKind::kCommandWithoutReply, sent.place.line,
                       "a " + sent.name + " without its reply, or it never came");
        // The log may end too early to tell.
        if (!may_come || process_ended_ || (last_message_ > sent.place.line && hadTime(command))) {
            Relations relations;
            relations.handle = sent.handle;
            relations.command = command.number;
            add(Rule::kNoReply, sent.name, {}, sent.place, relations, sent.thread);
        }
        sent_.erase(found);
    }
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
