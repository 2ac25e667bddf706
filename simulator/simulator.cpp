#include "simulator/simulator.h"

#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/reply_records.h"
#include "simulator/commands.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace simulator {
namespace {

constexpr std::chrono::milliseconds kMessage{5}; ///< the least time between a command and its reply
constexpr std::chrono::milliseconds kCreation{60};

constexpr int kTaken = 0;
constexpr int kNotTaken = 1;

/// Every command record but the first begins with the handle.
uint16_t handleOf(const dtv::Command& command) {
    return static_cast<const TS_HANDLE_REQ*>(command.data)->handle;
}

bool fits(const dtv::Command& command, int size) {
    return command.data != nullptr && command.size == size;
}

void create(Service& service, const TS_CREATE_REQ& wanted) {
    Session* session = service.open();
    Answer answer;
    uint16_t handle = 0;
    if (session != nullptr) {
        handle = session->handle;
        session->max_delay_time = wanted.max_delay_time;
    } else {
        answer.result = kNotNow;
    }
    service.reply(session, kCreation,
                  [&service, record = replyRecord(ReplyForm::kCommon, handle, answer)] {
                      service.sendBytes(event_id::kCreateReply, record.data(), record.size());
                  },
                  {});
}

Answer handle(Service& service, Session* session, const CommandRow& row,
              const dtv::Command& command) {
    if (session == nullptr) {
        Answer answer;
        answer.result = kUnknownHandle;
        return answer;
    }
    return row.handle(service, *session, Request{command.data, command.carrier});
}

void closeIfReleased(Service& service, Session* session, const CommandRow& row) {
    if (session != nullptr && row.command_id == command_id::kRelease) {
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

Simulator::Simulator(Options options) : service_(std::move(options)) {}

Simulator::~Simulator() = default;

int Simulator::onCommand(const dtv::Command& command) {
    const std::lock_guard<std::mutex> lock(service_.mutex());
    if (command.message_id == command_id::kCreate) {
        if (!fits(command, sizeof(TS_CREATE_REQ))) {
            return kNotTaken;
        }
        create(service_, *static_cast<const TS_CREATE_REQ*>(command.data));
        return kTaken;
    }
    const CommandRow* row = findCommand(command.message_id);
    if (row == nullptr || !fits(command, row->size)) {
        return kNotTaken;
    }
    const uint16_t session_handle = handleOf(command);
    Session* session = service_.find(session_handle);
    Answer answer = handle(service_, session, *row, command);
    if (row->form == ReplyForm::kNone) {
        return answer.result == kDone ? kTaken : kNotTaken;
    }
    service_.reply(
        session, kMessage + answer.work,
        [this, event = row->reply_event, record = replyRecord(row->form, session_handle, answer)] {
            service_.sendBytes(event, record.data(), record.size());
        },
        std::move(answer.then));
    closeIfReleased(service_, session, *row);
    return kTaken;
}

int Simulator::onExchange(const dtv::Command& command, const dtv::Reply& reply) {
    const std::lock_guard<std::mutex> lock(service_.mutex());
    const CommandRow* row = findExchange(command.message_id);
    if (row == nullptr || !fits(command, row->size) || reply.data == nullptr) {
        return kNotTaken;
    }
    const uint16_t session_handle = handleOf(command);
    Session* session = service_.find(session_handle);
    Answer answer = handle(service_, session, *row, command);
    // The record of a synchronous answer is laid out as that of the reply event with handle and
    // result, with the numbers of the recording where there is one.
    writeReply(reply, replyRecord(row->form, session_handle, answer));
    if (session != nullptr && answer.then) {
        service_.later(*session, kMessage + answer.work, std::move(answer.then));
    }
    closeIfReleased(service_, session, *row);
    return kTaken;
}

} // namespace simulator
