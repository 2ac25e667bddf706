// The benchmarks' own libDtv: it takes everything and does as little as can be done, so that what
// is measured is the bridge. The runner reads here what has arrived.
#pragma once

#include <DtvSvLibListener.h>

#include <cstdint>
#include <string>
#include <vector>

#define QUIET_EXPORT __attribute__((visibility("default")))

namespace quiet {

/// The listener that was made last, or null.
QUIET_EXPORT DtvSvLibListener* lastListener();

/// What the commands have brought. One thread sends.
struct Sends {
    uint64_t count = 0;         ///< commands
    uint64_t bytes = 0;         ///< of all their records
    int message_id = 0;         ///< of the last one
    int size = 0;               ///< of the last one's record, in bytes
    int surfaces = 0;           ///< filled slots beside the last one
    unsigned char record[2048]; ///< the last one's
};
QUIET_EXPORT Sends& sends();

/// The level bits whose lines pass the filter; 0 at first. A line that passes is kept.
QUIET_EXPORT void setMask(unsigned long mask);

/// The lines that have passed, formatted, without their source line numbers. They are given away.
QUIET_EXPORT std::vector<std::string> takeLines();

} // namespace quiet
