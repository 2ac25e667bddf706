// The commands that the service takes, and the events that reply to them. Their names and records
// are in the catalogue.
#pragma once

namespace simulator {

/// The record that a reply event carries.
enum class ReplyForm {
    kNone,      ///< no event replies to the command: what is refused is not taken
    kCommon,    ///< handle and result
    kScan,      ///< and the number of channels
    kService,   ///< and the physical channel and service number
    kDisplay,   ///< and the plane
    kTunerLog,  ///< and whether the log is on
    kTvLink,    ///< handle and the result in one byte
    kRecording, ///< handle, result, programme number and object number
};

/// One command of the service. A synchronous command has the record and the effect of a command
/// that does not wait; its answer goes to the sender instead of the event.
struct CommandRow {
    int command_id;
    int sync_id;     ///< of the synchronous command; 0: there is none
    int reply_event; ///< 0: none
    ReplyForm form;
};

/// The row of a command that does not wait; null when there is none.
const CommandRow* findCommand(int command_id);
/// The row of a synchronous command; null when there is none.
const CommandRow* findSynchronousCommand(int command_id);

} // namespace simulator
