#include "sessions/log/activity.h"

#include "sessions/log/text.h"

#include <algorithm>

namespace sessions {

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
    const bool of_event = isHandler(function) || function == trace_function::kReception ||
                          function == trace_function::kDispatch;
    const bool of_load = isOfLoad(line.trace);
    if (!thread.calls.empty()) {
        OpenCall& inner = *thread.calls.back();
        const BridgeCall& call = inner.call;
        if (function == trace_function::kEnvironment && !call.has_begin && call.handled) {
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
    if (function == trace_function::kLoad) {
        const std::string name = thread.name;
        const uint32_t id = thread.id;
        interrupt();
        Thread& first = threadOf(line);
        first.name = name;
        first.id = id;
        step(Step::Kind::kLoad, open(first, line, BridgeCall::Kind::kLoad).call);
        return;
    }
    if (function == trace_function::kReception) {
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
    if (function == trace_function::kAnswerObject && !line.trace.message.empty()) {
        // A second line of the same call, which then ends without one.
        if (!call->frames.empty()) {
            call->frames.back().may_not_end = true;
        }
        return;
    }
    if (function != trace_function::kEnvironment && call->frames.size() < kMostFrames) {
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
