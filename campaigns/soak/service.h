// The simulated service as the soak uses it: each answer carries the number of its command.
#pragma once

#include "simulator.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace soak {

/// A city's stations, with a clock that is ten thousand times as fast as in life. The answers to
/// each session are numbered 1, 2, 3 and so on in the order in which they are sent, which is that
/// of the commands; the number is in the place of the result.
class NumberingService {
public:
    /// Connects it to libDtv. Ends the process with status 2 when the channel table cannot be read.
    NumberingService();

    /// Lets it go, when no command is under way.
    void disconnect();

    /// Events sent that are no answers to commands.
    uint64_t otherEvents() const { return other_events_; }
    /// The channels with a station, and those without.
    const std::vector<int>& occupied() const { return occupied_; }
    const std::vector<int>& empty() const { return empty_; }

private:
    void number(int event_id, std::vector<uint8_t>& record);

    std::vector<int> occupied_;
    std::vector<int> empty_;
    std::array<uint32_t, 32>
        numbers_{}; ///< of the last answer, by session; with the service's lock
    std::atomic<uint64_t> other_events_{0};
    std::shared_ptr<simulator::Simulator> simulator_;
};

} // namespace soak
