// How a replay differs from the recording.
#pragma once

#include "replay/recording.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace replay {

enum class Difference {
    kOtherBytes,        ///< a command with another record, size or number of surfaces
    kUnexpectedCommand, ///< a command that the recording does not have there
    kMissingCommand,    ///< a command of the recording that did not come
    kOtherResult,       ///< an event that the listener refused or accepted, unlike in the recording
    kUnfinishedEvent,   ///< an event whose callback did not return
};
constexpr size_t kDifferences = 5;

/// What came in this run.
struct Given {
    int id = 0;
    int size = 0;     ///< bytes, as it was given
    int surfaces = 0; ///< sent beside the record
    int result = 0;   ///< of the listener
    std::vector<uint8_t> record;
    std::string thread;
};

struct Divergence {
    Difference difference;
    /// The message of the recording that it is about, or the one that was next.
    size_t entry;
    std::optional<Given> given;
    std::string reason; ///< why a command did not come, when that is known
};

/// The divergences of a replay: the first one, and how often there was each.
struct Divergences {
    std::optional<Divergence> first;
    std::array<size_t, kDifferences> counts{};

    void add(Divergence divergence) {
        ++counts[static_cast<size_t>(divergence.difference)];
        if (!first) {
            first = std::move(divergence);
        }
    }
    size_t total() const { return std::accumulate(counts.begin(), counts.end(), size_t{0}); }
};

/// What came of a replay.
struct Outcome {
    Divergences divergences;
    size_t passed = 0;        ///< messages that passed in this run
    size_t not_delivered = 0; ///< events of which not all bytes are known, and what belongs to them
    bool stalled = false;     ///< it ended because nothing came any more
};

} // namespace replay
