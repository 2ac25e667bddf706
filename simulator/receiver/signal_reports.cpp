#include "receiver/signal_reports.h"

#include "on_air/signal.h"
#include "receiver/station_records.h"
#include "records/message_ids.h"
#include "records/status_records.h"
#include "service/service.h"

#include <algorithm>
#include <chrono>

namespace simulator {
namespace {

constexpr std::chrono::seconds kPeriod{1};
constexpr uint16_t kBadLevel = 1;
constexpr uint32_t kFlicker = 30; ///< hundredths of a dB, at random

void reportSignal(Service& service, Session& session, uint64_t generation, uint32_t seconds,
                  bool was_good) {
    if (session.generation != generation) {
        return;
    }
    Signal signal = signalAt(session.station->physical_channel, seconds);
    signal.cn += service.random(kFlicker);
    if (!signal.good && session.recording && !session.recording->damaged_at) {
        // Never at 0, which a playback from the beginning would not pass.
        session.recording->damaged_at =
            std::max(service.now() - session.recording->begun, std::chrono::milliseconds{1});
    }
    if (signal.good != was_good) {
        auto turned = stationRecord<TS_SENS_NOTIFY>(session.handle, *session.station);
        turned.sensitivity_level = signal.good ? 0 : kBadLevel;
        service.send(signal.good ? event_id::kGoodSensNotify : event_id::kBadSensNotify, turned);
    }
    auto sensitivity =
        stationRecord<TS_RECEIVE_SENSITIVITY_NOTIFY>(session.handle, *session.station);
    sensitivity.cn = signal.cn;
    sensitivity.ber = signal.ber;
    service.send(event_id::kReceiveSensitivityNotify, sensitivity);

    if (session.tuner_log) {
        auto tuner =
            stationRecord<TS_TUNER_SENSITIVITY_DATA_NOTIFY>(session.handle, *session.station);
        tuner.lna_mode = session.lna_mode;
        tuner.cn_value = signal.cn;
        tuner.ber = signal.ber;
        // A strong signal needs little gain.
        tuner.ifagc = tuner.rfagc = static_cast<uint16_t>(4096 - signal.cn);
        service.send(event_id::kTunerSensitivityDataNotify, tuner);
    }
    service.later(session, kPeriod,
                  [&service, generation, seconds, good = signal.good](Session& now) {
                      reportSignal(service, now, generation, seconds + 1, good);
                  });
}

} // namespace

void beginSignalReports(Service& service, Session& session) {
    // Nothing was received before, so that a good signal is a change.
    service.later(session, std::chrono::milliseconds{10},
                  [&service, generation = session.generation](Session& now) {
                      reportSignal(service, now, generation, 0, false);
                  });
}

} // namespace simulator
