// Which part of the receiver carries out which command.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

/// Carries out a command that names an open session.
using Handler = Answer (*)(Service& service, Session& session, const Request& request);

/// The handler of a command that does not wait; the synchronous command with the same record has
/// the same one. Null for the command that opens a session, and when there is no such command.
Handler findHandler(int command_id);

} // namespace simulator
