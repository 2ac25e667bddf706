// Recording what is received.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

namespace simulator {

struct Request;

/// Records what is received, onto medium 0 or 1, and tells once a second how far it is. Refused
/// when nothing is received, and while it is recorded already. The reply names the service.
Answer startRecording(Service& service, Session& session, const Request& request);

/// Ends the recording and keeps it, or does not. The reply names what was kept: its programme
/// number, and object 1; both 0 when nothing was.
Answer terminateRecording(Service& service, Session& session, const Request& request);

} // namespace simulator
