// The numbers of the messages exchanged with the DTV service: commands out, events in.
#pragma once

/// Commands, by name: command_id::kCreate is 0x10000000.
namespace command_id {
#define COMMAND(id, name, record, reply_event) constexpr int k##name = id;
#define EXCHANGE(id, name, record, reply, java_class) constexpr int k##name = id;
#include "records/message_table.def"
} // namespace command_id

/// Events, by name: event_id::kBmlPermissionReq is 0x10000042.
namespace event_id {
#define REPLY(id, name, record, java_class) constexpr int k##name = id;
#define EVENT(id, name, record, handler, java_class) constexpr int k##name = id;
#include "records/message_table.def"

/// In the row of a command that no reply event follows.
constexpr int kNO_REPLY = 0;
} // namespace event_id
