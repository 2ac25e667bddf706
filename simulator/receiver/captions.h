// The captions of a programme.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

/// Switches captions: off 0, on 1, suspend 2, resume 3, restart 4; 255 leaves them and changes
/// their plane alone. Refused when nothing is received or played, without a plane, and when they
/// are in that state already.
Answer controlCaptions(Service& service, Session& session, const Request& request);
/// Refused when nothing is received or played.
Answer changeCaptionLanguage(Service& service, Session& session, const Request& request);

/// Turns captions on if they were set for the beginning of reception.
void beginCaptions(Service& service, Session& session);
void endCaptions(Service& service, Session& session);

} // namespace simulator
