// What a call must lead to, by what is promised of each native.
#pragma once

#include "arguments/round.h"

#include <cstdint>
#include <string>
#include <vector>

namespace hostile {

struct Expected {
    std::string answer; ///< as JavaSide::call says it
    bool sent = false;
    int message = 0;
    std::vector<uint8_t> record;
    bool synchronous = false;
    bool has_surfaces = false;
    std::vector<int> surfaces; ///< their numbers; 0: an empty one
};

/// `delay_bound` is the bound of the delays before the call.
Expected expected(const Round& round, int delay_bound);

} // namespace hostile
