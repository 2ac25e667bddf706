// What the bridge must answer to a record, said without the bridge's own tables.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace hostile {

constexpr int kAnySize = -1;

struct EventLimits {
    int id;
    /// Bytes of its record; kAnySize: the size is not checked.
    int size;
    /// What takes the event in Java; of an event that has no callback, the handler's name.
    const char* callback;
    enum Form {
        kReply,     ///< a handle and a result, read from 8 bytes whatever the size says
        kEvent,     ///< delivered when the size is right
        kNotCalled, ///< taken when the size is right; nothing is called
        kCounted,   ///< the same as kEvent, when its count is not above the highest
    } form;
    int count_at = 0;    ///< the count's offset in the record
    int count_width = 0; ///< in bytes
    int highest_count = 0;
};

/// All events, in the order of their ids.
extern const EventLimits kEvents[];
extern const size_t kEventCount;

/// The event with this id, or null.
const EventLimits* findLimits(int id);

/// What a record must lead to. `data` is what lies in memory, `size` what the bridge is given.
struct Outcome {
    int result;           ///< of recvEventFromServer
    const char* callback; ///< the one callback; null: none
    int handle;           ///< the event's
};
Outcome expected(int id, const uint8_t* data, int size);

/// How many bytes of the record the bridge may read when it is given this size.
size_t readableBytes(int id, int size);

} // namespace hostile
