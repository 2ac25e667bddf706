// What a process that plays records shares with the one that started it: it is there still when the
// first one has ended in the middle of a record.
#pragma once

#include "records/input.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace hostile {

constexpr size_t kMostEdges = 65536;

/// In memory that both processes have. Zero at first.
struct Progress {
    std::atomic<uint64_t> records;
    std::atomic<uint64_t> delivered; ///< to Java
    std::atomic<uint64_t> traced;
    std::atomic<bool> stop;      ///< the player is to end
    std::atomic<int64_t> began;  ///< nanoseconds of the process's processor time: the first record
    std::atomic<int64_t> played; ///< nanoseconds of it from the first record to the last

    /// The input that is played.
    std::atomic<size_t> input_size;
    uint8_t input[kLongestInput];

    /// What is wrong with it, ended by a zero byte.
    char wrong[1000];

    std::atomic<size_t> edge_count;
    uint8_t edges[kMostEdges]; ///< not zero: was taken
};

/// Never freed. Ends the process when there is no memory.
Progress* sharedProgress();

} // namespace hostile
