// The activity of a session, and how it changes.
#pragma once

#include "service/session.h"

#include <cstdint>

namespace simulator {

class Service;

/// Changes the activity of a session. The scheduled steps of the activity before do nothing from
/// now on. Captions and the browser end with the programme that they belong to. Not during a
/// recording. Returns the session's new generation.
uint64_t startActivity(Service& service, Session& session, Activity activity);

/// Whether the tuner may tune to another station: the session neither scans, searches, records nor
/// plays.
bool canTune(const Session& session);

} // namespace simulator
