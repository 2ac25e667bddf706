// Recording what is received.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

/// Records the station that is received, onto medium 0 or 1, and notifies the length once a second.
/// Refused when nothing is received, and while it is recorded already. The reply names the service.
Answer startRecording(Service& service, Session& session, const Request& request);

/// Ends the recording and keeps it, or drops it. The reply carries its programme number, and object
/// number 1; both are 0 when it was dropped.
Answer terminateRecording(Service& service, Session& session, const Request& request);

} // namespace simulator
