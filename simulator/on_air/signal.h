// The strength of a station's signal.
#pragma once

#include <cstdint>

namespace simulator {

/// The signal at one moment.
struct Signal {
    uint32_t cn;  ///< carrier to noise, hundredths of a dB
    uint32_t ber; ///< wrong bits in 10^7
    bool good;    ///< enough for a picture
};

/// The signal of a channel after `seconds` of reception. The channel decides its strength; it fades
/// for some seconds in regular intervals.
Signal signalAt(int physical_channel, uint32_t seconds);

} // namespace simulator
