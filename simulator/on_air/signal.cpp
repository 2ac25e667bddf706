#include "on_air/signal.h"

namespace simulator {
namespace {

// A fade of three seconds in every twenty.
constexpr uint32_t kFadePeriod = 20;
constexpr uint32_t kFadeBegins = 10;
constexpr uint32_t kFadeEnds = 13;
constexpr uint32_t kEnoughCn = 800; ///< hundredths of a dB

} // namespace

Signal signalAt(int physical_channel, uint32_t seconds) {
    const uint32_t strength = 1200 + static_cast<uint32_t>(physical_channel) * 37 % 1000;
    const uint32_t ripple = seconds * 13 % 7 * 20;
    const uint32_t moment = seconds % kFadePeriod;
    const bool fading = moment >= kFadeBegins && moment < kFadeEnds;
    const uint32_t cn = (fading ? strength / 4 : strength) + ripple;
    return {cn, fading ? 40000U : 100000U / cn, cn >= kEnoughCn};
}

} // namespace simulator
