// The presentation of a programme: the planes, the sound; and the settings of the tuner.
#pragma once

#include "service/request.h"

namespace simulator {

class Service;
struct Session;

// Each stores the surfaces that it is given, one for each of its planes, in place of those before
// them. A command without one of them is refused.
Answer setFirstComponent(Service& service, Session& session, const Request& request);
Answer setDisplayAll(Service& service, Session& session, const Request& request);
Answer setScreenDisplay(Service& service, Session& session, const Request& request);
Answer setCapDisplay(Service& service, Session& session, const Request& request);
Answer setBmlDisplay(Service& service, Session& session, const Request& request);

/// Releases the surface of a plane; refused when there is none.
Answer releaseDisplay(Service& service, Session& session, const Request& request);

// Refused without a video plane.
Answer controlDisplayMode(Service& service, Session& session, const Request& request);
Answer controlScreenDisplay(Service& service, Session& session, const Request& request);

// Refused when nothing is received or played.
Answer controlDecode(Service& service, Session& session, const Request& request);
Answer changeAudioComponent(Service& service, Session& session, const Request& request);
Answer changeSoundDualMono(Service& service, Session& session, const Request& request);

/// Refused beyond the bound that the session was created with.
Answer setSoundVideoDelay(Service& service, Session& session, const Request& request);

Answer controlLna(Service& service, Session& session, const Request& request);
/// Switches the tuner's log on (1) or off (2): during reception it is sent once a second.
Answer setTunerLog(Service& service, Session& session, const Request& request);
Answer getTunerLogStatus(Service& service, Session& session, const Request& request);

} // namespace simulator
