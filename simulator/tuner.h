// What the tuner of a session is told: scans, searches, reception.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

namespace simulator {

struct Request;

/// Closes the session and drops everything it holds.
Answer release(Service& service, Session& session, const Request& request);
/// Looks at every UHF channel in turn; refused while the session does anything else.
Answer startScan(Service& service, Session& session, const Request& request);
/// Ends a scan before its time.
Answer cancelScan(Service& service, Session& session, const Request& request);
/// Starts to receive a service; refused while the session does anything else.
Answer startReceiving(Service& service, Session& session, const Request& request);
/// Ends reception; refused when nothing is tuned, and while it is recorded.
Answer terminateReceiving(Service& service, Session& session, const Request& request);
/// Receives a service, in place of another or as the first.
Answer selectChannel(Service& service, Session& session, const Request& request);
/// Goes from channel to channel, up (operation 0) or down (1), until one carries something, and
/// receives that; from the channel itself last.
Answer startSearch(Service& service, Session& session, const Request& request);
/// Ends a search before its time. Nothing is received then.
Answer cancelSearch(Service& service, Session& session, const Request& request);

} // namespace simulator
