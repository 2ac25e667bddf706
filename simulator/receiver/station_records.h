// The records that describe a station: its network, its services, its programmes.
#pragma once

#include "on_air/channel_plan.h"
#include "on_air/guide.h"
#include "records/programme_records.h"

#include <cstdint>
#include <ctime>

namespace simulator {

/// A record that begins with a handle, and the channel and service of a station; the rest is zero.
template <class Record>
Record stationRecord(uint16_t handle, const Station& station) {
    Record record{};
    record.handle = handle;
    record.physical_channel = static_cast<uint32_t>(station.physical_channel);
    record.service_no = static_cast<uint16_t>(station.service_no);
    return record;
}

/// The network of a station. Channel tables carry no ids: they are made from the physical channel,
/// as is the number of the key on a remote control.
NETWORK_INFO networkInfo(const Station& station);

/// One channel of a scan: result 0 with a station, kNoSuchThing without. `found` counts the
/// stations so far.
TS_SCAN_NOTIFY scanNotify(uint16_t handle, int physical_channel, const Station* station, int found);

/// The services of a station.
TS_SERVICE_INFO_NOTIFY serviceInfo(uint16_t handle, const Station& station);

/// The programmes of the station, from its channel of the guide.
TS_RECEIVE_EPG_INFO_NOTIFY programmeGuide(uint16_t handle, const Station& station,
                                          const GuideChannel& channel, std::time_t now);

} // namespace simulator
