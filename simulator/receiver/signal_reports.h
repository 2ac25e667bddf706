// Reports of the signal during reception.
#pragma once

namespace simulator {

class Service;
struct Session;

/// Reports the signal of the session's station, once a second and whenever it turns bad or good,
/// until the activity of the session changes. Notes where a recording is damaged by a bad signal.
void beginSignalReports(Service& service, Session& session);

} // namespace simulator
