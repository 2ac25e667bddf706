// How well a station is received.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

#include <cstdint>

namespace simulator {

/// The signal at one moment.
struct Signal {
    uint32_t cn;  ///< carrier to noise, hundredths of a dB
    uint32_t ber; ///< wrong bits in 10^7
    bool good;    ///< enough for a picture
};

/// The signal of a channel after so many seconds of reception: the channel decides how strong it
/// is; now and then it fades.
Signal signalAt(int physical_channel, uint32_t seconds);

/// Tells how well the session's station is received, once a second and whenever it turns bad or
/// good, until the tuner takes up something else.
void watchSignal(Service& service, Session& session);

} // namespace simulator
