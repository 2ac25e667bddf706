// The commands for the tuner of a session: scans, searches, reception.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

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
/// Tries channel after channel, up (operation 0) or down (1), and receives the first that carries a
/// station. The channel that the search begins at comes last.
Answer startSearch(Service& service, Session& session, const Request& request);
/// Ends a search before its time. Nothing is received then.
Answer cancelSearch(Service& service, Session& session, const Request& request);

} // namespace simulator
