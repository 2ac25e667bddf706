// How the service replies to each command. The messages themselves are in the table of messages.
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

/// The reply to a command that does not wait. A synchronous command has the record and the effect
/// of such a command; its answer goes to the sender instead of the event.
struct CommandReply {
    int command_id;
    int sync_id;  ///< of the synchronous command; 0: there is none
    int event_id; ///< of the event that replies; 0: none
    ReplyForm form;
};

/// The reply to a command that does not wait; null when there is no such command.
const CommandReply* findReply(int command_id);
/// The reply to the command that a synchronous one carries out; null when there is none.
const CommandReply* findSynchronousReply(int sync_id);

} // namespace simulator
