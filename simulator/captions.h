// The captions of a programme.
#pragma once

#include "simulator/service.h"
#include "simulator/session.h"

namespace simulator {

struct Request;

/// Switches captions: off 0, on 1, suspend 2, resume 3, restart 4; 255 leaves them and changes
/// their plane alone. Refused when nothing is received or played, without a plane, and when they
/// are in that state already.
Answer controlCaptions(Service& service, Session& session, const Request& request);
/// Refused when nothing is received or played.
Answer changeCaptionLanguage(Service& service, Session& session, const Request& request);

/// Begins with captions if the session was told to.
void beginCaptions(Service& service, Session& session);
void endCaptions(Service& service, Session& session);

/// The state that a control type leads to from another; nothing when it leads nowhere. The browser
/// goes by the same types.
std::optional<Running> controlled(Running state, uint8_t control_type);
constexpr uint8_t kLastControlType = 4;
constexpr uint8_t kRestart = 4;
constexpr uint8_t kUnchanged = 255;

} // namespace simulator
