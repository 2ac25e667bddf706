// A record in memory that ends, or begins, at an inaccessible page.
#pragma once

#include "records/input.h"

#include <cstddef>
#include <cstdint>

namespace hostile {

/// Room for one record between two inaccessible pages. Under the address sanitizer the bytes beside
/// the record that no such page follows are poisoned.
class PlacedRecord {
public:
    /// Ends the process when there is no memory.
    PlacedRecord();
    ~PlacedRecord();
    PlacedRecord(const PlacedRecord&) = delete;
    PlacedRecord& operator=(const PlacedRecord&) = delete;

    /// Lays the input's record down, with as many bytes as the bridge may read, and answers where
    /// it is; null for a null record. The one before is gone.
    uint8_t* lay(const Input& input);

    /// Where an address is that cannot be read: "12 bytes after the record's end". Null when it is
    /// not in the inaccessible pages. May be called from a handler of signals.
    const char* faultAt(const void* address, char (&text)[80]) const;

private:
    uint8_t* mapped_ = nullptr;
    size_t page_ = 0; ///< bytes
    size_t room_ = 0; ///< bytes between the pages
    uint8_t* begin_;  ///< of the room
    const uint8_t* record_ = nullptr;
    size_t length_ = 0; ///< of the record
    uint8_t* poisoned_from_;
    uint8_t* poisoned_to_;
};

} // namespace hostile
