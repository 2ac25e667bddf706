// A capture and a log of one session, as one timeline.
#pragma once

#include "desk/pictures/timeline.h"

namespace pictures {

/// The messages of the capture, with the calls and the lines of the log. A call of the log is
/// matched with a message of the capture by its thread's name, its kind, its id and its place in
/// their order; where lines are missing, what cannot be matched is left without a message. The
/// times of the log become those of the capture: between two matched messages in proportion.
/// Returns how many messages were matched.
size_t join(Timeline& capture, const Timeline& log);

} // namespace pictures
