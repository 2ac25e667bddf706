// Announces a station that is received: its network, services, streams, rights and programmes.
#pragma once

namespace simulator {

class Service;
struct Session;

/// Sends all notifications about the station that the session has begun to receive, and reports its
/// signal until the activity of the session changes.
void announceBroadcast(Service& service, Session& session);

} // namespace simulator
