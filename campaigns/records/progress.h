// What a process that plays records shares with the one that started it: it is there still when the
// first one has ended in the middle of a record.
#pragma once

#include "records/input.h"

#include "rounds/job.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace hostile {

constexpr size_t kMostEdges = 65536;

struct Progress : campaigns::Progress {
    std::atomic<uint64_t> delivered; ///< to Java
    std::atomic<uint64_t> traced;

    /// The input that is played.
    std::atomic<size_t> input_size;
    uint8_t input[kLongestInput];

    std::atomic<size_t> edge_count;
    uint8_t edges[kMostEdges]; ///< not zero: was taken
};

inline Progress* sharedProgress() {
    return static_cast<Progress*>(campaigns::sharedMemory(sizeof(Progress)));
}

} // namespace hostile
