// The records of the events that are delivered: a broadcast as it is in life.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct EventRecord {
    std::string name; ///< of the operation
    int id;
    std::vector<unsigned char> bytes;
};

/// The events, in the order of the table. All belong to session `handle`.
std::vector<EventRecord> eventRecords(int handle);

} // namespace bench
