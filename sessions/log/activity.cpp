#include "sessions/log/activity.h"

#include "sessions/log/text.h"

#include <algorithm>

namespace sessions {
namespace {

constexpr std::string_view kReception = "recvEventFromServer";
constexpr std::string_view kDispatch = "DoListenerEvent";
constexpr std::string_view kLoad = "JNI_OnLoad";
constexpr std::string_view kEnvironment = "getJNIEnv";
constexpr std::string_view kResultCode = "getRetCode";
constexpr std::string_view kAnswerObject = "makeComReplyObjSync";
constexpr std::string_view kAnswerValues = "makeComSubReplyObjSync";

/// The code of the result that a native answers when it has refused an argument.
constexpr int kParamNg = 5;

/// No record is longer; a longer size in a log is damage.
constexpr int kLongestRecord = 65536; ///< bytes

// What is kept at most, whatever a log lacks. The bridge itself has no more than 20 threads of
// events, and no call needs more than a few of the others.
constexpr size_t kMostThreads = 1024;
constexpr size_t kMostCalls = 16; ///< of a thread
constexpr size_t kMostFrames = 64;
constexpr size_t kMostFaults = 1024;

bool isHandler(std::string_view function) {
    return handlesReplies(function) || eventOf(function) != nullptr;
}

LoggedLine whereOf(const LogLine& line) {
    return {line.first, std::string(line.trace.function), line.trace.source_line,
            std::string(line.trace.message)};
}

/// What a call's own FUNCSTART and FUNCEND lines name.
std::string_view ownFunction(const BridgeCall& call) {
    switch (call.kind) {
    case BridgeCall::Kind::kEvent:
        return kReception;
    case BridgeCall::Kind::kLoad:
        return kLoad;
    case BridgeCall::Kind::kNative:
        break;
    }
    return call.function;
}

/// Whether it is written while the library is loaded, and at no other time.
bool isOfLoad(const TraceLine& line) {
    return line.function == kLoad || line.function == "registerNatives" ||
           line.function == "DtvSvLibListenerInit" || line.function == "setJavaClass" ||
           (line.function == "setJavaMethod" && line.level == TraceLevel::kDebug);
}

std::optional<int> intOf(std::optional<int64_t> number) {
    return number ? std::optional<int>(static_cast<int>(*number)) : std::nullopt;
}

std::optional<int> handleIn(const TraceLine& line) {
    for (const std::string_view label : {"dtvsv_handle", "handle", "hdl"}) {
        if (const auto handle = line.number(label)) {
            // As it travels: Java's int is cut to 16 bits.
            return static_cast<int>(static_cast<uint16_t>(*handle));
        }
    }
    return std::nullopt;
}

bool isSynchronous(const BridgeCall& call) {
    return call.message != nullptr && call.message->reply != nullptr;
}

void setMessage(BridgeCall& call, const catalogue::Message* message) {
    call.message = message;
    if (message == nullptr) {
        return;
    }
    call.id = message->id;
    const size_t size = call.kind == BridgeCall::Kind::kEvent && call.size
                            ? static_cast<size_t>(std::clamp(*call.size, 0, kLongestRecord))
                            : message->record->size;
    call.record = RecordInLines(*message->record, size);
}

} // namespace

// ---- Threads and calls.

Activity::Thread& Activity::threadOf(const LogLine& line) {
    const LineHeader& header = line.header;
    ThreadKey key{header.pid, {}};
    if (header.tid >= 0) {
        key.first = int64_t{header.pid} << 32 | header.tid;
    } else {
        key.second = line.trace.task;
    }
    if (threads_.size() >= kMostThreads && threads_.count(key) == 0) {
        forgetThreads();
    }
    Thread& thread = threads_[key];
    if (thread.id == 0) {
        thread.id = header.tid > 0 ? static_cast<uint32_t>(header.tid) : next_thread_++;
    }
    thread.name = line.trace.task;
    return thread;
}

/// Forgets the threads without open calls; when that are few, all.
void Activity::forgetThreads() {
    for (auto each = threads_.begin(); each != threads_.end();) {
        each = each->second.calls.empty() ? threads_.erase(each) : std::next(each);
    }
    if (threads_.size() > kMostThreads / 2) {
        interrupt();
    }
}

Activity::OpenCall& Activity::open(Thread& thread, const LogLine& line, BridgeCall::Kind kind) {
    if (thread.calls.size() >= kMostCalls) {
        closeAll(thread);
    }
    thread.calls.push_back(std::make_unique<OpenCall>());
    BridgeCall& call = thread.calls.back()->call;
    call.kind = kind;
    call.number = ++calls_;
    call.function = line.trace.function;
    call.thread = thread.name;
    call.thread_id = thread.id;
    call.first = line.first;
    call.last = line.last;
    call.source_line = line.trace.source_line;
    call.begun = line.header.time;
    call.has_begin = line.trace.level == TraceLevel::kFuncStart;
    if (kind == BridgeCall::Kind::kNative) {
        setMessage(call, commandOf(line.trace.function));
        // What no line shows of a record is sent as zero only where it is reserved.
    } else if (kind == BridgeCall::Kind::kEvent) {
        setMessage(call, eventOf(line.trace.function));
    }
    return *thread.calls.back();
}

/// A call whose FUNCSTART line is not in the log.
Activity::OpenCall& Activity::openWithoutBegin(Thread& thread, const LogLine& line,
                                               BridgeCall::Kind kind) {
    if (begins_are_logged_ || line.trace.level == TraceLevel::kFuncEnd) {
        take_unmatched_({false, whereOf(line)});
    }
    OpenCall& opened = open(thread, line, kind);
    opened.call.has_begin = false;
    opened.call.handled = isHandler(line.trace.function);
    return opened;
}

/// The call that a line belongs to; opened when its begin is not in the log. Null for a line of
/// none.
Activity::OpenCall* Activity::callOf(Thread& thread, const LogLine& line) {
    const std::string_view function = line.trace.function;
    const bool native = commandOf(function) != nullptr;
    const bool of_event = isHandler(function) || function == kReception || function == kDispatch;
    const bool of_load = isOfLoad(line.trace);
    if (!thread.calls.empty()) {
        OpenCall& inner = *thread.calls.back();
        const BridgeCall& call = inner.call;
        if (function == kEnvironment && !call.has_begin && call.handled) {
            // The first thing that an event does.
            closeInnermost(thread);
            return nullptr;
        }
        const bool other_native =
            native && (call.kind != BridgeCall::Kind::kNative || call.function != function);
        const bool other_event =
            of_event && (call.kind != BridgeCall::Kind::kEvent ||
                         (isHandler(function) && call.handled && call.function != function));
        const bool again =
            !call.has_begin && (native || of_event) &&
            std::find(inner.seen.begin(), inner.seen.end(), line.trace.known) != inner.seen.end();
        if (!other_native && !other_event && !again) {
            return &inner;
        }
        // A native method that is called by a callback, and after it the rest of the event.
        if (other_event && call.kind == BridgeCall::Kind::kNative && thread.calls.size() > 1) {
            closeInnermost(thread);
            return callOf(thread, line);
        }
        if (!(other_native && call.kind == BridgeCall::Kind::kEvent)) {
            closeInnermost(thread);
        }
    }
    if (native) {
        return &openWithoutBegin(thread, line, BridgeCall::Kind::kNative);
    }
    if (of_event) {
        return &openWithoutBegin(thread, line, BridgeCall::Kind::kEvent);
    }
    if (of_load) {
        OpenCall& opened = openWithoutBegin(thread, line, BridgeCall::Kind::kLoad);
        step(Step::Kind::kLoad, opened.call);
        return &opened;
    }
    return nullptr;
}

void Activity::add(const LogLine& line) {
    if (line.kind != LogLineKind::kTrace && line.kind != LogLineKind::kShortened) {
        return;
    }
    Thread& thread = threadOf(line);
    if (line.trace.level == TraceLevel::kFuncStart) {
        begins_are_logged_ = true;
        begin(thread, line);
    } else if (line.trace.level == TraceLevel::kFuncEnd) {
        ends_are_logged_ = true;
        finish(thread, line);
    } else if (OpenCall* const call = callOf(thread, line)) {
        read(*call, line);
    } else if (faultOf(line.trace) != Fault::kNone && !begins_are_logged_) {
        // Of the lines of errors alone: whose call it was is not in the log.
        OpenCall& alone = open(thread, line, BridgeCall::Kind::kEvent);
        read(alone, line);
        closeInnermost(thread);
    }
}

void Activity::end() {
    for (auto& [key, thread] : threads_) {
        closeAll(thread);
    }
}

void Activity::interrupt() {
    end();
    threads_.clear();
}

// ---- Begins.

void Activity::begin(Thread& thread, const LogLine& line) {
    const std::string_view function = line.trace.function;
    if (function == kLoad) {
        const std::string name = thread.name;
        const uint32_t id = thread.id;
        interrupt();
        Thread& first = threadOf(line);
        first.name = name;
        first.id = id;
        step(Step::Kind::kLoad, open(first, line, BridgeCall::Kind::kLoad).call);
        return;
    }
    if (function == kReception) {
        beginEvent(thread, line);
        return;
    }
    if (commandOf(function) != nullptr) {
        beginNative(thread, line);
        return;
    }
    OpenCall* const call = callOf(thread, line);
    if (call == nullptr) {
        return;
    }
    read(*call, line);
    if (function == kAnswerObject && !line.trace.message.empty()) {
        // A second line of the same call, which then ends without one.
        if (!call->frames.empty()) {
            call->frames.back().may_not_end = true;
        }
        return;
    }
    if (function != kEnvironment && call->frames.size() < kMostFrames) {
        call->frames.push_back({whereOf(line), false});
    }
}

void Activity::beginEvent(Thread& thread, const LogLine& line) {
    while (!thread.calls.empty()) {
        const BridgeCall& inner = thread.calls.back()->call;
        const bool may_hold = inner.kind == BridgeCall::Kind::kEvent
                                  ? inner.called_back && !inner.done
                                  : inner.has_begin && !inner.has_end && !inner.refused;
        if (may_hold && ends_are_logged_) {
            break;
        }
        closeInnermost(thread);
    }
    BridgeCall& call = open(thread, line, BridgeCall::Kind::kEvent).call;
    call.id = static_cast<int>(line.trace.number("event_id").value_or(0));
    call.size = intOf(line.trace.number("recv_size"));
    if (const catalogue::Message* const message = catalogue::find(call.id)) {
        setMessage(call, message);
    }
}

void Activity::beginNative(Thread& thread, const LogLine& line) {
    while (!thread.calls.empty() && (thread.calls.back()->call.kind != BridgeCall::Kind::kEvent ||
                                     thread.calls.back()->call.done)) {
        closeInnermost(thread);
    }
    if (!thread.calls.empty()) {
        // In a callback: the event is all there.
        giveFirst(*thread.calls.back());
        thread.calls.back()->call.called_back = true;
    }
    readNative(open(thread, line, BridgeCall::Kind::kNative), line);
}

// ---- Ends.

void Activity::finish(Thread& thread, const LogLine& line) {
    const std::string_view function = line.trace.function;
    if (finishCall(thread, line)) {
        return;
    }
    if (finishFrame(thread, line)) {
        return;
    }
    const bool native = commandOf(function) != nullptr;
    if (native || function == kReception) {
        OpenCall* const call = callOf(thread, line);
        if (call != nullptr) {
            finishCall(thread, line);
        }
        return;
    }
    const bool ends_a_begin = function != kEnvironment && function != "freeJNIEnv" &&
                              function != "detachJNIEnv" && begins_are_logged_;
    OpenCall* const call = callOf(thread, line);
    if (call != nullptr) {
        read(*call, line);
    }
    if (ends_a_begin && (call == nullptr || call->call.has_begin)) {
        take_unmatched_({false, whereOf(line)});
    }
    closeAnswered(thread, function);
}

/// When a line ends a function within a call that is open: ends it, with what is within it.
bool Activity::finishFrame(Thread& thread, const LogLine& line) {
    for (size_t index = thread.calls.size(); index-- > 0;) {
        std::vector<Frame>& frames = thread.calls[index]->frames;
        const auto frame = std::find_if(frames.rbegin(), frames.rend(), [&line](const Frame& each) {
            return each.where.function == line.trace.function;
        });
        if (frame == frames.rend()) {
            continue;
        }
        const auto place = static_cast<size_t>(frames.rend() - frame) - 1;
        while (thread.calls.size() > index + 1) {
            closeInnermost(thread);
        }
        OpenCall& open = *thread.calls.back();
        read(open, line);
        closeFrames(open, place + 1);
        open.frames.pop_back();
        closeAnswered(thread, line.trace.function);
        return true;
    }
    return false;
}

/// Ends a synchronous command after the object that Java gets has been made.
void Activity::closeAnswered(Thread& thread, std::string_view function) {
    if (!thread.calls.empty() && thread.calls.back()->answering && function == kAnswerObject &&
        thread.calls.back()->frames.empty()) {
        closeInnermost(thread);
    }
}

/// When a line ends a call that is open: ends it, with the calls within it.
bool Activity::finishCall(Thread& thread, const LogLine& line) {
    const auto found = std::find_if(
        thread.calls.rbegin(), thread.calls.rend(), [&line](const std::unique_ptr<OpenCall>& each) {
            return ownFunction(each->call) == line.trace.function && !each->answering;
        });
    if (found == thread.calls.rend()) {
        return false;
    }
    const OpenCall* const ended = found->get();
    while (thread.calls.back().get() != ended) {
        closeInnermost(thread);
    }
    OpenCall& open = *thread.calls.back();
    closeFrames(open, 0);
    BridgeCall& call = open.call;
    call.has_end = true;
    call.last = line.last;
    call.ended_at = line.header.time;
    if (call.kind != BridgeCall::Kind::kNative) {
        closeInnermost(thread);
        return true;
    }
    call.sent = true;
    call.ret = intOf(line.trace.number("ret"));
    call.aborted = contains(line.trace.message, "ABORT_NG");
    if (call.aborted) {
        call.ret = 0;
    }
    giveFirst(open);
    // The object that Java gets is made after the line.
    open.answering = isSynchronous(call) && call.ret == 0;
    if (!open.answering) {
        closeInnermost(thread);
    }
    return true;
}

/// Ends the functions that have begun since the frame with that index.
void Activity::closeFrames(OpenCall& open, size_t from) {
    const BridgeCall& call = open.call;
    if (open.frames.size() > from && call.faults.empty() && !call.refused) {
        const Frame& innermost = open.frames.back();
        // An event without a handler is dropped without a line.
        const bool dropped = innermost.where.function == kDispatch && !call.handled;
        if (!innermost.may_not_end && !dropped) {
            take_unmatched_({true, innermost.where});
        }
    }
    open.frames.resize(std::min(open.frames.size(), from));
}

/// Whether the end of a call itself is not in the log, though it must have ended with a line.
bool Activity::lacksEnd(const OpenCall& open) {
    const BridgeCall& call = open.call;
    if (!call.has_begin || call.has_end) {
        return false;
    }
    if (call.kind == BridgeCall::Kind::kEvent) {
        // Whatever its handler met, but that the thread has no environment. Without such a fault
        // the innermost function that has no end is the one to name.
        return (open.frames.empty() || !call.faults.empty()) &&
               std::none_of(call.faults.begin(), call.faults.end(), [](const FaultLine& fault) {
                   return fault.fault == Fault::kNoEnvironment ||
                          fault.fault == Fault::kAttachFailed ||
                          fault.fault == Fault::kThreadTableFull;
               });
    }
    return open.frames.empty() && !call.refused && call.faults.empty();
}

void Activity::closeInnermost(Thread& thread) {
    const std::unique_ptr<OpenCall> open = std::move(thread.calls.back());
    thread.calls.pop_back();
    BridgeCall& call = open->call;
    if (lacksEnd(*open)) {
        take_unmatched_({true, {call.first, std::string(ownFunction(call)), call.source_line, {}}});
    } else {
        closeFrames(*open, 0);
    }
    if (call.kind == BridgeCall::Kind::kNative) {
        if (!call.refused && (call.sent || call.sent_line != 0)) {
            giveFirst(*open);
            const bool answered = call.has_end || call.reply_size;
            if (answered && (isSynchronous(call) || call.ret.value_or(0) != 0)) {
                step(Step::Kind::kAnswer, call);
            }
        }
    } else if (call.kind == BridgeCall::Kind::kEvent) {
        giveFirst(*open);
        if (call.has_end ? !call.done : !call.faults.empty()) {
            step(Step::Kind::kRefusedEvent, call);
        }
    }
    step(Step::Kind::kCallEnd, call);
}

void Activity::closeAll(Thread& thread) {
    while (!thread.calls.empty()) {
        closeInnermost(thread);
    }
}

// ---- What the lines say.

void Activity::read(OpenCall& open, const LogLine& line) {
    BridgeCall& call = open.call;
    const std::string_view function = line.trace.function;
    call.last = std::max(call.last, line.last);
    if (!call.has_begin &&
        std::find(open.seen.begin(), open.seen.end(), line.trace.known) == open.seen.end()) {
        open.seen.push_back(line.trace.known);
    }
    const Fault fault = faultOf(line.trace);
    if (fault != Fault::kNone) {
        readFault(open, line, fault);
    } else if (call.kind == BridgeCall::Kind::kEvent && isHandler(function)) {
        readHandler(open, line);
    } else if (call.kind == BridgeCall::Kind::kNative && function == call.function) {
        readNative(open, line);
    } else if (call.kind == BridgeCall::Kind::kNative) {
        readAnswer(open, line);
    }
    if (function == kDispatch && line.trace.level == TraceLevel::kFuncEnd) {
        call.done = true;
    }
    if (function == "CallMethod") {
        if (const auto method = line.trace.number("method_id")) {
            open.method_id = static_cast<int>(*method);
            open.class_id = static_cast<int>(line.trace.number("class_id").value_or(-1));
        } else if (contains(line.trace.message, "CallStaticMethod")) {
            call.called_back = true;
            giveFirst(open);
        }
    }
}

void Activity::readNative(OpenCall& open, const LogLine& line) {
    BridgeCall& call = open.call;
    const TraceLine& trace = line.trace;
    if (trace.known == nullptr) {
        return;
    }
    if (trace.level == TraceLevel::kFuncStart) {
        call.handle = handleIn(trace);
        if (call.handle) {
            call.record.take(trace);
        }
    } else if (beginsWith(trace.message, "SEND, ")) {
        call.sent_line = line.last;
        call.sent_at = line.header.time;
        call.record.take(trace);
        if (const auto handle = handleIn(trace)) {
            call.handle = handle;
        }
    } else if (beginsWith(trace.message, "RECV, ")) {
        call.sent = true;
        if (const auto size = trace.number("reply_size")) {
            call.reply_size = static_cast<int>(*size);
            const size_t room = call.message->reply != nullptr ? call.message->reply->size : 0;
            const auto there = static_cast<size_t>(std::clamp(*call.reply_size, 0, kLongestRecord));
            if (room != 0) {
                call.answer = RecordInLines(*call.message->reply, std::min(there, room));
            }
        }
        call.answer.take(trace);
    }
}

/// Lines of the functions that make the native's answer.
void Activity::readAnswer(OpenCall& open, const LogLine& line) {
    BridgeCall& call = open.call;
    const TraceLine& trace = line.trace;
    if (trace.function == kResultCode && trace.level == TraceLevel::kFuncStart) {
        call.code = intOf(trace.number("(param)ret"));
        call.refused = call.refused || call.code == kParamNg;
        if (call.code == 0 || call.code == 1) {
            call.sent = true;
            giveFirst(open);
        }
    } else if (trace.function == kAnswerValues) {
        call.answer.take(trace);
    } else if (trace.function == kAnswerObject && !trace.message.empty() && !call.has_end &&
               call.sent_line == 0) {
        call.refused = true;
    }
}

void Activity::readHandler(OpenCall& open, const LogLine& line) {
    BridgeCall& call = open.call;
    const TraceLine& trace = line.trace;
    if (!call.handled || call.message == nullptr) {
        call.function = trace.function;
        call.handled = true;
        if (const catalogue::Message* const message = eventOf(trace.function);
            message != nullptr && call.message != message) {
            setMessage(call, message);
        }
    }
    if (trace.level == TraceLevel::kDebug) {
        call.record.take(trace);
        if (const auto handle = handleIn(trace)) {
            call.handle = handle;
        }
    } else if (trace.level == TraceLevel::kFuncEnd) {
        call.done = call.done || trace.number("ret").value_or(0) == 0;
    }
}

void Activity::readFault(OpenCall& open, const LogLine& line, Fault fault) {
    BridgeCall& call = open.call;
    const TraceLine& trace = line.trace;
    FaultLine found;
    found.fault = fault;
    found.where = whereOf(line);
    found.class_id = static_cast<int>(trace.number("class_id").value_or(-1));
    found.method_id = static_cast<int>(trace.number("method_id").value_or(-1));
    if (fault == Fault::kObjectNotMade) {
        found.class_id = open.class_id;
        found.method_id = open.method_id;
    }
    const std::string_view label = fault == Fault::kMethodMissing ? "method_name" : "class_name";
    if (const ShownValue* const name = trace.value(label)) {
        found.name = name->text;
    } else if (!trace.values.empty() &&
               trace.known->values[trace.values.size() - 1].conversion == 's') {
        found.name = trace.values.back().text;
    }
    if (call.kind == BridgeCall::Kind::kNative && commandOf(trace.function) != nullptr) {
        call.refused = true;
    }
    if (call.kind == BridgeCall::Kind::kEvent && isHandler(trace.function)) {
        call.function = trace.function;
        call.handled = true;
    }
    if (call.faults.size() < kMostFaults) {
        call.faults.push_back(std::move(found));
    }
}

// ---- Steps.

/// The first step of a call: a command is sent, an event arrives. Commands that were sent before an
/// event come before it, also when their calls have not ended.
void Activity::giveFirst(OpenCall& open) {
    BridgeCall& call = open.call;
    if (call.given || call.kind == BridgeCall::Kind::kLoad) {
        return;
    }
    call.given = true;
    if (call.kind == BridgeCall::Kind::kNative) {
        step(Step::Kind::kCommand, call);
        return;
    }
    giveCommandsSentBefore(call.first);
    step(Step::Kind::kEvent, call);
}

void Activity::giveCommandsSentBefore(uint64_t line) {
    for (auto& [key, thread] : threads_) {
        for (const std::unique_ptr<OpenCall>& open : thread.calls) {
            const BridgeCall& call = open->call;
            if (call.kind == BridgeCall::Kind::kNative && !call.given && !call.refused &&
                call.sent_line != 0 && call.sent_line < line) {
                giveFirst(*open);
            }
        }
    }
}

} // namespace sessions
