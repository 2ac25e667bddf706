// What the lines of a call say of it.
#include "sessions/log/activity.h"

#include "sessions/log/text.h"

#include <algorithm>

namespace sessions {
namespace {

/// The code of the result that a native answers when it has refused an argument.
constexpr int kParamNg = 5;

} // namespace

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
    if (function == trace_function::kDispatch && line.trace.level == TraceLevel::kFuncEnd) {
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
    if (trace.function == trace_function::kResultCode && trace.level == TraceLevel::kFuncStart) {
        call.code = intOf(trace.number("(param)ret"));
        call.refused = call.refused || call.code == kParamNg;
        if (call.code == 0 || call.code == 1) {
            call.sent = true;
            giveFirst(open);
        }
    } else if (trace.function == trace_function::kAnswerValues) {
        call.answer.take(trace);
    } else if (trace.function == trace_function::kAnswerObject && !trace.message.empty() &&
               !call.has_end && call.sent_line == 0) {
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

} // namespace sessions
