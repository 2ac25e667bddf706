// What may be sent at all: the limits of each message, whatever the arguments were.
#pragma once

#include "harness/service_double.h"

#include <string>

namespace hostile {

/// Which limit the message is outside of; empty when it is within all.
std::string outsideLimits(const harness::Message& message);

} // namespace hostile
