// The process in which the soak takes place.
#pragma once

#include "rounds/run.h"

namespace soak {

/// Plays the stages. Each begins with a line "round NAME" on standard output. The status for main.
int playStages(campaigns::Run& run);

} // namespace soak
