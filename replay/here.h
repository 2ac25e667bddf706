// What a replay knows of the calling thread.
#pragma once

#include "replay/recording.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace replay::here {

struct Thread {
    uint64_t run = 0;         ///< the replay that it takes part in; 0: none
    size_t thread = kNone;    ///< the recorded thread whose part it has
    size_t returning = kNone; ///< the answer that is on its way to the sender
};

/// That of the calling thread.
Thread& current();

/// The name of the calling thread, 15 bytes at most.
std::string threadName();

} // namespace replay::here
