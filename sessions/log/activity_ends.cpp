// How calls and the functions in them end.
#include "sessions/log/activity.h"

#include "sessions/log/text.h"

#include <algorithm>

namespace sessions {

void Activity::finish(Thread& thread, const LogLine& line) {
    const std::string_view function = line.trace.function;
    if (finishCall(thread, line)) {
        return;
    }
    if (finishFrame(thread, line)) {
        return;
    }
    const bool native = commandOf(function) != nullptr;
    if (native || function == trace_function::kReception) {
        OpenCall* const call = callOf(thread, line);
        if (call != nullptr) {
            finishCall(thread, line);
        }
        return;
    }
    const bool ends_a_begin = function != trace_function::kEnvironment &&
                              function != "freeJNIEnv" && function != "detachJNIEnv" &&
                              begins_are_logged_;
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
    if (!thread.calls.empty() && thread.calls.back()->answering &&
        function == trace_function::kAnswerObject && thread.calls.back()->frames.empty()) {
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
        const bool dropped = innermost.where.function == trace_function::kDispatch && !call.handled;
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

} // namespace sessions
