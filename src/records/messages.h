// What the table of messages says of each message, when compiling and when running.
#pragma once

#include "records/bml_records.h"
#include "records/command_records.h"
#include "records/message_ids.h"
#include "records/programme_records.h"
#include "records/reply_records.h"
#include "records/status_records.h"

#include <cstddef>

/// A command as its row says.
struct CommandRow {
    int id;
    int reply_size;  ///< bytes of the reply record that the sender waits for; 0: it does not wait
    int reply_event; ///< id of the event that reports the outcome; 0: there is none

    /// Whether the sender waits for a reply record.
    constexpr bool isSynchronous() const { return reply_size != 0; }
};

/// The row of a command that sends a certain record.
template <class Record>
struct CommandRowOf : CommandRow {};

/// The rows of the commands by name, as command_row::kCreate.
namespace command_row {
#define COMMAND(id, name, record, reply_event)                                                     \
    inline constexpr CommandRowOf<record> k##name = {{id, 0, event_id::k##reply_event}};
#define EXCHANGE(id, name, record, reply, java_class)                                              \
    inline constexpr CommandRowOf<record> k##name = {{id, sizeof(reply), event_id::kNO_REPLY}};
#include "records/message_table.def"
} // namespace command_row

/// All commands, in the order of their ids.
inline constexpr CommandRow kCommandRows[] = {
#define COMMAND(id, name, record, reply_event) command_row::k##name,
#define EXCHANGE(id, name, record, reply, java_class) command_row::k##name,
#include "records/message_table.def"
};

/// The ids of all events, in their order.
inline constexpr int kEventIds[] = {
#define REPLY(id, name, record, java_class) id,
#define EVENT(id, name, record, handler, java_class) id,
#include "records/message_table.def"
};

namespace messages {

/// The record that an event carries, by the event's id.
template <int EventId>
struct RecordOfEvent;
#define REPLY(id, name, record, java_class)                                                        \
    template <>                                                                                    \
    struct RecordOfEvent<id> {                                                                     \
        using Type = record;                                                                       \
    };
#define EVENT(id, name, record, handler, java_class) REPLY(id, name, record, java_class)
#include "records/message_table.def"

/// The row of a command, or null when there is none with this id.
constexpr const CommandRow* findCommand(int id) {
    for (const CommandRow& row : kCommandRows) {
        if (row.id == id) {
            return &row;
        }
    }
    return nullptr;
}

// ---- What must be true of the rows.

constexpr int kFirstCommand = 0x10000000;
constexpr int kLastCommand = 0x10000041;
constexpr int kFirstEvent = 0x10000042;
constexpr int kLastEvent = 0x1000009e;

constexpr int idOf(int id) {
    return id;
}
constexpr int idOf(const CommandRow& row) {
    return row.id;
}

/// Whether the ids grow from row to row, so that none is given twice, within a range.
template <class Row, size_t Count>
constexpr bool idsGrowWithin(const Row (&rows)[Count], int first, int last) {
    int lowest = first;
    for (const Row& row : rows) {
        if (idOf(row) < lowest || idOf(row) > last) {
            return false;
        }
        lowest = idOf(row) + 1;
    }
    return true;
}
static_assert(idsGrowWithin(kCommandRows, kFirstCommand, kLastCommand),
              "commands are in the order of their ids, each id once, all in the commands' range");
static_assert(idsGrowWithin(kEventIds, kFirstEvent, kLastEvent),
              "events are in the order of their ids, each id once, all in the events' range");

/// Whether no reply event is named by two commands.
constexpr bool repliesHaveOneCommand() {
    for (const CommandRow& row : kCommandRows) {
        for (const CommandRow& other : kCommandRows) {
            if (row.id != other.id && row.reply_event != event_id::kNO_REPLY &&
                row.reply_event == other.reply_event) {
                return false;
            }
        }
    }
    return true;
}
static_assert(repliesHaveOneCommand(), "a reply event belongs to one command");

} // namespace messages
