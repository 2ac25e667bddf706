// Which messages of a capture are shown.
#pragma once

#include "desk/show/time_limit.h"

#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstdint>
#include <set>
#include <string>

namespace show {

/// A message is shown when it is what each part that is not empty asks for.
struct Filter {
    std::set<int> ids;
    std::set<uint8_t> kinds;
    std::set<uint16_t> sessions;   ///< handles
    std::set<std::string> threads; ///< names, or numbers in decimal digits
    TimeRange times;

    bool takesAll() const;
    bool takes(const sessions::Message& message, const sessions::Link& link) const;
};

} // namespace show
