// What a session does, and how it takes up something else.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

namespace simulator {

/// Gives the session something else to do, so that the steps of what it did fall silent. Captions
/// and the browser end with the programme that they belong to. Not while it records. Returns the
/// new number of its work.
uint64_t takeUp(Service& service, Session& session, Activity activity);

/// Whether the tuner may be given something else: it neither scans nor searches nor records, and
/// nothing is played.
bool canTune(const Session& session);

} // namespace simulator
