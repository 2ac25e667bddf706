#include "harness/harness.h"

#include <algorithm>
#include <cstring>

namespace harness {

int deliver(int event_id, const std::vector<uint8_t>& bytes) {
    return deliver(event_id, bytes, static_cast<int>(bytes.size()));
}

int deliver(int event_id, const std::vector<uint8_t>& bytes, int size) {
    size_t length = std::max<size_t>(bytes.size(), 8);
    std::unique_ptr<uint8_t[]> record(new uint8_t[length]());
    if (!bytes.empty()) {
        std::memcpy(record.get(), bytes.data(), bytes.size());
    }
    return dtv::deliverEvent(event_id, record.get(), size);
}

} // namespace harness
