// The recordings that were made and kept.
#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <optional>
#include <string>

namespace simulator {

struct Recording {
    uint16_t program_no; ///< from 1 up on each medium
    uint8_t medium;
    std::string title;
    std::chrono::milliseconds length;
    /// The first place where the signal was bad; empty: none.
    std::optional<std::chrono::milliseconds> damaged_at;
    std::chrono::milliseconds left_at{0}; ///< the position at the end of the last playback
};

/// The recordings of all sessions. They last as long as the simulator.
class Recordings {
public:
    /// Adds a recording and returns its programme number.
    uint16_t add(uint8_t medium, std::string title, std::chrono::milliseconds length,
                 std::optional<std::chrono::milliseconds> damaged_at) {
        ++last_[medium];
        recordings_.push_back({last_[medium], medium, std::move(title), length, damaged_at});
        return last_[medium];
    }

    /// The recording, or null. The pointer stays valid.
    Recording* find(uint8_t medium, uint16_t program_no) {
        for (Recording& recording : recordings_) {
            if (recording.medium == medium && recording.program_no == program_no) {
                return &recording;
            }
        }
        return nullptr;
    }

    static constexpr uint8_t kMedia = 2;

private:
    std::list<Recording> recordings_;
    uint16_t last_[kMedia] = {};
};

} // namespace simulator
