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

/// Marks the bytes of the fields of a record, and of the records in it, from `start` on.
void markFields(const catalogue::Record& layout, size_t start, std::vector<bool>& in_field) {
    for (const catalogue::Field& field : layout.fields) {
        for (size_t i = 0; i < field.count; ++i) {
            const size_t begin = start + field.offset + i * field.size;
            if (field.record != nullptr) {
                markFields(*field.record, begin, in_field);
            } else if (begin < in_field.size()) {
                std::fill_n(in_field.begin() + static_cast<ptrdiff_t>(begin),
                            std::min(field.size, in_field.size() - begin), true);
            }
        }
    }
}

void setRecord(Message& message, const RecordInLines& record, const catalogue::Record* layout) {
    message.record = record.bytes();
    message.known = record.known();
    if (layout == nullptr) {
        return;
    }
    // Reserved bytes: the bridge sends zero, and reads none.
    std::vector<bool> in_field(std::min(message.known.size(), layout->size));
    markFields(*layout, 0, in_field);
    for (size_t at = 0; at < in_field.size(); ++at) {
        message.known[at] = message.known[at] || !in_field[at];
    }
}

/// How many surfaces are sent beside a command: one for each plane in its record.
uint8_t surfacesOf(const catalogue::Record& layout) {
    uint8_t surfaces = 0;
    for (const catalogue::Field& field : layout.fields) {
        surfaces += field.name == "screen" || field.name == "cap" || field.name == "bml";
    }
    return surfaces;
}

void setCommand(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kCommand);
    message.time = momentOf(call.sent_at ? call.sent_at : call.begun);
    if (call.message == nullptr) {
        return;
    }
    setRecord(message, call.record, call.message->record);
    message.size = static_cast<int32_t>(call.message->record->size);
    message.surfaces = surfacesOf(*call.message->record);
}

void setEvent(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kEvent);
    message.time = momentOf(call.begun);
    message.size = call.size.value_or(static_cast<int>(call.record.bytes().size()));
    setRecord(message, call.record, call.message != nullptr ? call.message->record : nullptr);
}

void setAnswer(Message& message, const BridgeCall& call) {
    message.kind = static_cast<uint8_t>(Message::Kind::kAnswer);
    message.time = momentOf(call.ended_at);
    message.value = call.ret.value_or(0);
    setRecord(message, call.answer, call.message != nullptr ? call.message->reply : nullptr);
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
