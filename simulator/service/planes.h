// The surfaces that a command brings for the planes of the picture.
#pragma once

#include "service/request.h"
#include "service/session.h"

#include <initializer_list>

namespace simulator {

/// Stores the surfaces that came with a command, one for each plane, in place of those before them.
/// False, and nothing is stored, when one is missing.
bool storeSurfaces(Session& session, const Request& request, std::initializer_list<Plane> planes);

} // namespace simulator
