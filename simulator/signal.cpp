#include "simulator/signal.h"

#include "records/message_ids.h"
#include "records/status_records.h"

#include <algorithm>
#include <chrono>

namespace simulator {
namespace {

constexpr std::chrono::seconds kPeriod{1};
// A fade of three seconds in every twenty.
constexpr uint32_t kFadePeriod = 20;
constexpr uint32_t kFadeBegins = 10;
constexpr uint32_t kFadeEnds = 13;
constexpr uint32_t kEnoughCn = 800; ///< hundredths of a dB
constexpr uint16_t kBadLevel = 1;
constexpr uint32_t kFlicker = 30; ///< hundredths of a dB, by chance

template <class Record>
Record about(const Session& session) {
    Record record{};
    record.handle = session.handle;
    record.physical_channel = static_cast<uint32_t>(session.station->physical_channel);
    record.service_no = static_cast<uint16_t>(session.station->service_no);
    return record;
}

void tellSignal(Service& service, Session& session, uint64_t work, uint32_t seconds,
                bool was_good) {
    if (session.work != work) {
        return;
    }
    Signal signal = signalAt(session.station->physical_channel, seconds);
    signal.cn += service.chance(kFlicker);
    if (!signal.good && session.recording && !session.recording->damaged_at) {
        // Behind the very beginning, where a playback from there comes past it.
        session.recording->damaged_at =
            std::max(service.now() - session.recording->begun, std::chrono::milliseconds{1});
    }
    if (signal.good != was_good) {
        auto turned = about<TS_SENS_NOTIFY>(session);
        turned.sensitivity_level = signal.good ? 0 : kBadLevel;
        service.send(signal.good ? event_id::kGoodSensNotify : event_id::kBadSensNotify, turned);
    }
    auto sensitivity = about<TS_RECEIVE_SENSITIVITY_NOTIFY>(session);
    sensitivity.cn = signal.cn;
    sensitivity.ber = signal.ber;
    service.send(event_id::kReceiveSensitivityNotify, sensitivity);

    if (session.tuner_log) {
        auto tuner = about<TS_TUNER_SENSITIVITY_DATA_NOTIFY>(session);
        tuner.lna_mode = session.lna_mode;
        tuner.cn_value = signal.cn;
        tuner.ber = signal.ber;
        // A strong signal needs little gain.
        tuner.ifagc = tuner.rfagc = static_cast<uint16_t>(4096 - signal.cn);
        service.send(event_id::kTunerSensitivityDataNotify, tuner);
    }
    service.later(session, kPeriod, [&service, work, seconds, good = signal.good](Session& now) {
        tellSignal(service, now, work, seconds + 1, good);
    });
}

} // namespace

Signal signalAt(int physical_channel, uint32_t seconds) {
    const uint32_t strength = 1200 + static_cast<uint32_t>(physical_channel) * 37 % 1000;
    const uint32_t ripple = seconds * 13 % 7 * 20;
    const uint32_t moment = seconds % kFadePeriod;
    const bool fading = moment >= kFadeBegins && moment < kFadeEnds;
    const uint32_t cn = (fading ? strength / 4 : strength) + ripple;
    return {cn, fading ? 40000U : 100000U / cn, cn >= kEnoughCn};
}

void watchSignal(Service& service, Session& session) {
    // Nothing was received before: a good signal is news.
    service.later(session, std::chrono::milliseconds{10},
                  [&service, work = session.work](Session& now) {
                      tellSignal(service, now, work, 0, false);
                  });
}

} // namespace simulator
