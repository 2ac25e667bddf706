// The commands that the service takes: their records, their replies, and what handles them.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

#include <DtvSvLibListener.h>

#include <cstdint>
#include <vector>

namespace simulator {

/// A command while it is handled.
struct Request {
    const void* data;           ///< as long as its row says
    const TS_DTVSV_SP* carrier; ///< null when nothing came beside the record

    template <class Record>
    const Record& as() const {
        return *static_cast<const Record*>(data);
    }
};

/// The record that a reply event carries.
enum class ReplyForm {
    kNone,      ///< no event answers the command: what is refused is not taken
    kCommon,    ///< handle and result
    kScan,      ///< and how many channels
    kService,   ///< and the physical channel and service number
    kDisplay,   ///< and the plane
    kTunerLog,  ///< and whether the log is on
    kTvLink,    ///< handle and the result in one byte
    kRecording, ///< handle, result, programme and object number
};

/// One command of the service. The synchronous twin has the same record and the same effect; its
/// answer goes to the sender instead of the event.
struct CommandRow {
    int command_id;
    int sync_id; ///< 0: no synchronous twin
    int size;    ///< of the request record, in bytes
    int reply_event;
    ReplyForm form;
    /// Null for the command that opens a session: it has none yet.
    Answer (*handle)(Service& service, Session& session, const Request& request);
};

/// The row of a command or of a synchronous twin; null when there is none.
const CommandRow* findCommand(int command_id);
const CommandRow* findExchange(int command_id);

/// The record that answers a command.
std::vector<uint8_t> replyRecord(ReplyForm form, uint16_t handle, const Answer& answer);

} // namespace simulator
