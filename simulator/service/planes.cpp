#include "service/planes.h"

#include <algorithm>

namespace simulator {

bool storeSurfaces(Session& session, const Request& request, std::initializer_list<Plane> planes) {
    const TS_DTVSV_SP* references = request.references;
    if (references == nullptr || references->surface_count < static_cast<int>(planes.size())) {
        return false;
    }
    const auto* slots = references->surface;
    if (std::any_of(slots, slots + planes.size(),
                    [](const auto& surface) { return surface == nullptr; })) {
        return false;
    }
    for (const Plane plane : planes) {
        session.surfaces[plane] = *slots++;
    }
    return true;
}

} // namespace simulator
