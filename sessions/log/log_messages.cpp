#include "sessions/log/log_messages.h"

#include <algorithm>

namespace sessions {
namespace {

constexpr int64_t kOneSecond = 1000000000; ///< nanoseconds

Moment momentOf(const std::optional<LogTime>& time) {
    if (!time) {
        return {};
    }
    int64_t seconds = time->nanoseconds / kOneSecond;
    int64_t rest = time->nanoseconds % kOneSecond;
    if (rest < 0) {
        --seconds;
        rest += kOneSecond;
    }
    return {seconds, static_cast<uint32_t>(rest)};
}

void setRecord(Message& message, const RecordInLines& record) {
    message.record = record.bytes();
    message.known = record.known();
}

void setCommand(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kCommand);
    message.time = momentOf(call.sent_at ? call.sent_at : call.begun);
    setRecord(message, call.record);
    if (call.message == nullptr) {
        return;
    }
    message.size = static_cast<int32_t>(call.message->record->size);
    // The bridge sends as zero what no field has.
    std::vector<bool> in_field(message.record.size());
    for (const catalogue::Field& field : call.message->record->fields) {
        std::fill_n(in_field.begin() + static_cast<ptrdiff_t>(field.offset),
                    field.size * field.count, true);
    }
    for (size_t at = 0; at < in_field.size(); ++at) {
        message.known[at] = message.known[at] || !in_field[at];
    }
}

void setEvent(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kEvent);
    message.time = momentOf(call.begun);
    message.size = call.size.value_or(static_cast<int>(call.record.bytes().size()));
    setRecord(message, call.record);
}

void setAnswer(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kAnswer);
    message.time = momentOf(call.ended_at);
    message.value = call.ret.value_or(0);
    setRecord(message, call.answer);
    if (call.reply_size || call.aborted || call.message == nullptr ||
        call.message->reply == nullptr || message.value != 0) {
        message.size = call.reply_size.value_or(0);
        return;
    }
    // The line with its size is missing: nothing of it is known.
    message.size = static_cast<int32_t>(call.message->reply->size);
    message.record.assign(call.message->reply->size, 0);
    message.known.assign(call.message->reply->size, false);
}

void setRefusedEvent(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kRefusedEvent);
    message.time = momentOf(call.ended_at ? call.ended_at : call.begun);
    const bool no_environment =
        std::any_of(call.faults.begin(), call.faults.end(),
                    [](const FaultLine& fault) { return fault.fault == Fault::kNoEnvironment; });
    message.value = no_environment ? -1 : 1;
}

} // namespace

std::optional<Message> messageOf(const Step& step) {
    const BridgeCall& call = step.call;
    Message message;
    message.id = call.id;
    message.thread_id = call.thread_id;
    message.thread_name = call.thread;
    switch (step.kind) {
    case Step::Kind::kCommand:
        setCommand(message, call);
        return message;
    case Step::Kind::kAnswer:
        setAnswer(message, call);
        return message;
    case Step::Kind::kEvent:
        setEvent(message, call);
        return message;
    case Step::Kind::kRefusedEvent:
        setRefusedEvent(message, call);
        return message;
    case Step::Kind::kCallEnd:
    case Step::Kind::kLoad:
        break;
    }
    return std::nullopt;
}

} // namespace sessions
