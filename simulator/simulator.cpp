#include "simulator.h"

#include "handlers.h"
#include "messages/reply_record.h"
#include "records/catalogue.h"
#include "records/command_records.h"
#include "records/message_ids.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace simulator {
namespace {

constexpr std::chrono::milliseconds kMessage{5}; ///< the least time from a command to its reply
constexpr std::chrono::milliseconds kCreation{55};
constexpr std::chrono::milliseconds kNoDelay{0};
/// Far longer than Java takes for an event, also where it is emulated.
constexpr std::chrono::seconds kDelivery{60};
/// The same while a sender waits: the callback of an event may wait for that sender.
constexpr std::chrono::seconds kDeliveryWhileSending{5};

/// What is done at the end: whatever follows from the last command.
constexpr std::chrono::milliseconds kFinish{1000};

constexpr int kTaken = 0;
constexpr int kNotTaken = 1;

/// Every command record but the first begins with the handle.
uint16_t handleOf(const dtv::Command& command) {
    return static_cast<const TS_HANDLE_REQ*>(command.data)->handle;
}

/// Whether the record is there and as long as that of the command.
bool hasItsRecord(const dtv::Command& command) {
    const catalogue::Message* message = catalogue::find(command.message_id);
    return message != nullptr && command.data != nullptr && command.size >= 0 &&
           static_cast<size_t>(command.size) == message->record->size;
}

/// Whether the service carries out the command of this row, which may be null.
bool isKnown(const CommandReply* row) {
    return row != nullptr &&
           (row->command_id == command_id::kCreate || findHandler(row->command_id) != nullptr);
}

/// A new session, whose handle the reply names.
Answer create(Service& service, const TS_CREATE_REQ& wanted, Session*& session) {
    session = service.open();
    if (session == nullptr) {
        return answerWith(kNotNow);
    }
    session->max_delay_time = wanted.max_delay_time;
    Answer answer;
    answer.duration = kCreation;
    return answer;
}

/// Whether the script has a result in place of the service's own.
bool hasScriptedResult(const CommandRule* rule) {
    return rule != nullptr && rule->result.has_value();
}

/// Carries a command out, unless the script has another result for it.
Answer handle(Service& service, Session* session, const CommandReply& row,
              const dtv::Command& command, const CommandRule* rule) {
    if (hasScriptedResult(rule)) {
        Answer answer;
        answer.reply.result = *rule->result;
        return answer;
    }
    if (session == nullptr) {
        return answerWith(kUnknownHandle);
    }
    return findHandler(row.command_id)(service, *session,
                                       Request{command.data, command.references});
}

/// Closes the session whose release was carried out.
void closeIfReleased(Service& service, Session* session, const CommandReply& row,
                     const CommandRule* rule) {
    if (session != nullptr && row.command_id == command_id::kRelease && !hasScriptedResult(rule)) {
        service.close(*session);
    }
}

/// Writes the answer to a synchronous command; what does not fit is cut off.
void writeReply(const dtv::Reply& reply, const std::vector<uint8_t>& record) {
    const size_t room = static_cast<size_t>(reply.capacity > 0 ? reply.capacity : 0);
    const size_t size = record.size() < room ? record.size() : room;
    std::memcpy(reply.data, record.data(), size);
    if (reply.size != nullptr) {
        *reply.size = static_cast<int>(size);
    }
}

} // namespace

Simulator::Simulator(Options options)
    : service_(static_cast<ServiceOptions&&>(options)),
      scripted_(service_, std::move(options.script), std::move(options.on_event)) {}

Simulator::~Simulator() {
    // Steps on the timeline use all members.
    service_.timeline().stop();
}

int Simulator::onCommand(const dtv::Command& command) {
    const std::lock_guard<std::mutex> lock(service_.mutex());
    const CommandReply* row = findReply(command.message_id);
    if (!isKnown(row) || !hasItsRecord(command)) {
        return kNotTaken;
    }
    const ScriptRun::Arrival arrival = scripted_.arrive(command.message_id);
    // The record that opens a session has no handle yet.
    std::optional<uint16_t> session_handle;
    if (row->command_id != command_id::kCreate) {
        session_handle = handleOf(command);
    }
    const int taken = take(*row, command, arrival.rule, session_handle);
    scripted_.sendAfter(arrival, session_handle);
    return taken;
}

/// Takes a command about the session with this handle; without one it opens a session and names it.
int Simulator::take(const CommandReply& row, const dtv::Command& command, const CommandRule* rule,
                    std::optional<uint16_t>& session_handle) {
    if (scripted_.stopped()) {
        scripted_.stopActed();
        return *scripted_.stopped();
    }
    if (rule != nullptr) {
        scripted_.acted(rule);
    }
    if (rule != nullptr && (rule->send_result || !rule->answer)) {
        return rule->send_result.value_or(kTaken);
    }
    Session* session = session_handle ? service_.find(*session_handle) : nullptr;
    Answer answer;
    if (session_handle || hasScriptedResult(rule)) {
        answer = handle(service_, session, row, command, rule);
    } else {
        answer = create(service_, *static_cast<const TS_CREATE_REQ*>(command.data), session);
        if (session != nullptr) {
            session_handle = session->handle;
        }
    }
    if (row.form == ReplyForm::kNone) {
        return answer.reply.result == kDone ? kTaken : kNotTaken;
    }
    const std::chrono::milliseconds delay = rule != nullptr ? rule->delay : kNoDelay;
    service_.reply(
        session, kMessage + answer.duration + delay,
        [this, event = row.event_id,
         record = replyRecord(row.form, session_handle.value_or(0), answer.reply)] {
            service_.sendBytes(event, record.data(), record.size());
        },
        std::move(answer.then));
    closeIfReleased(service_, session, row, rule);
    return kTaken;
}

int Simulator::onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) {
    std::unique_lock<std::mutex> lock(service_.mutex());
    const CommandReply* row = findSynchronousReply(command.message_id);
    if (!isKnown(row) || !hasItsRecord(command) || reply.data == nullptr) {
        return kNotTaken;
    }
    const uint16_t session_handle = handleOf(command);
    const ScriptRun::Arrival arrival = scripted_.arrive(command.message_id);
    scripted_.sendAfter(arrival, session_handle);
    const CommandRule* rule = arrival.rule;
    if (rule != nullptr && rule->delay > kNoDelay && !scripted_.stopped()) {
        lock.unlock();
        pass(rule->delay);
        lock.lock();
    }
    if (scripted_.stopped()) {
        scripted_.stopActed();
        return *scripted_.stopped() != kTaken ? *scripted_.stopped() : kNotTaken;
    }
    if (rule != nullptr) {
        scripted_.acted(rule);
    }
    if (rule != nullptr && (rule->send_result || !rule->answer)) {
        return rule->send_result.value_or(kNotTaken);
    }
    Session* session = service_.find(session_handle);
    Answer answer = handle(service_, session, *row, command, rule);
    // The record of a synchronous answer is laid out as that of the reply event with handle and
    // result, with the numbers of the recording where there is one.
    writeReply(reply, replyRecord(row->form, session_handle, answer.reply));
    if (session != nullptr && answer.then) {
        service_.later(*session, kMessage + answer.duration, std::move(answer.then));
    }
    closeIfReleased(service_, session, *row, rule);
    return kTaken;
}

/// Lets time pass while a sender waits.
void Simulator::pass(std::chrono::milliseconds delay) {
    // As advance() does, so that a run is repeatable. Not on other threads: one that delivers
    // events would wait for itself.
    bool waits = advancing_.load() == std::this_thread::get_id();
    service_.timeline().pass(delay, [&waits] {
        // A callback that waits for the sender is waited for once only.
        waits = waits && dtv::waitUntilDelivered(kDeliveryWhileSending);
    });
}

bool Simulator::advance() {
    advancing_ = std::this_thread::get_id();
    const bool advanced = service_.timeline().advance();
    // A callback may have let time pass itself, with a command: the events of that come after it.
    while (dtv::waitUntilDelivered(kDelivery) &&
           !dtv::waitUntilDelivered(std::chrono::milliseconds{0})) {
    }
    return advanced;
}

void Simulator::finish() {
    if (service_.timeline().isStepped()) {
        service_.timeline().pass(kFinish, [] { dtv::waitUntilDelivered(kDelivery); });
    }
    service_.timeline().stop();
}

uint32_t Simulator::arrivals(int command_id) {
    const std::lock_guard<std::mutex> lock(service_.mutex());
    return scripted_.arrivals(command_id);
}

std::vector<ScriptRun::RuleCount> Simulator::ruleCounts() {
    const std::lock_guard<std::mutex> lock(service_.mutex());
    return scripted_.ruleCounts();
}

} // namespace simulator
