#include "sessions/log/bridge_call.h"

#include <algorithm>

namespace sessions {

bool isHandler(std::string_view function) {
    return handlesReplies(function) || eventOf(function) != nullptr;
}

LoggedLine whereOf(const LogLine& line) {
    return {line.first, std::string(line.trace.function), line.trace.source_line,
            std::string(line.trace.message)};
}

std::string_view ownFunction(const BridgeCall& call) {
    switch (call.kind) {
    case BridgeCall::Kind::kEvent:
        return trace_function::kReception;
    case BridgeCall::Kind::kLoad:
        return trace_function::kLoad;
    case BridgeCall::Kind::kNative:
        break;
    }
    return call.function;
}

bool isOfLoad(const TraceLine& line) {
    return line.function == trace_function::kLoad || line.function == "registerNatives" ||
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

} // namespace sessions
