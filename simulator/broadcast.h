// What the service tells about a station: its network and services when it is found, and its
// streams when it is received.
#pragma once

#include "records/programme_records.h"
#include "simulator/channel_plan.h"
#include "simulator/guide.h"
#include "simulator/service.h"
#include "simulator/session.h"

#include <ctime>

namespace simulator {

/// The network of a station. Channel tables carry no ids: they are made from the physical channel,
/// as is the number of the key on a remote control.
NETWORK_INFO networkInfo(const Station& station);

/// One channel of a scan: result 0 with a station, kNoSuchThing without. `found` counts the
/// stations so far.
TS_SCAN_NOTIFY scanNotify(uint16_t handle, int physical_channel, const Station* station, int found);

/// The services of a station: a table names several behind each other, with commas.
TS_SERVICE_INFO_NOTIFY serviceInfo(uint16_t handle, const Station& station);

/// What the station shows, by its channel of the guide.
TS_RECEIVE_EPG_INFO_NOTIFY programmeGuide(uint16_t handle, const Station& station,
                                          const GuideChannel& channel, std::time_t now);

/// Tells all about the station that the session has begun to receive, and goes on to tell how well
/// it is received until the tuner takes up something else.
void announceBroadcast(Service& service, Session& session);

} // namespace simulator
