// Playing what was recorded.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

/// Plays a recording of medium 0 or 1, from its beginning or from the position of the last
/// playback, at once or paused, and notifies its status: on every change, and every `interval`
/// seconds (0: 1). Refused while the session has another activity.
Answer startPlay(Service& service, Session& session, const Request& request);

// The others are refused when nothing is played.

/// Refused when paused.
Answer changePlaySpeed(Service& service, Session& session, const Request& request);
/// Refused when paused.
Answer pausePlay(Service& service, Session& session, const Request& request);
/// Back to normal speed; refused when it is played so already.
Answer restartPlay(Service& service, Session& session, const Request& request);
/// Forward (0) or backward (1) by the number of seconds, but not beyond the ends.
Answer skipPlay(Service& service, Session& session, const Request& request);
/// One picture forward (0) or backward (1); refused unless paused.
Answer frameSlidePlay(Service& service, Session& session, const Request& request);
/// One second forward (0) or backward (1); refused unless paused.
Answer movePausePosition(Service& service, Session& session, const Request& request);
Answer terminatePlay(Service& service, Session& session, const Request& request);

} // namespace simulator
