// A capture that is copied without the contents of its texts and bytes.
#pragma once

#include "sessions/redaction.h"

#include <cstdint>
#include <functional>
#include <istream>
#include <string>

namespace redact {

/// What became of a copy.
struct Copied {
    enum class State {
        kWhole,
        kDamaged, ///< it has what could be read
        kNotMade  ///< nothing could be read, or the copy could not be written
    };

    State state = State::kNotMade;
    uint64_t messages = 0;
    uint64_t blocks = 0;  ///< of other types than libDtv writes, which are not in the copy
    uint64_t options = 0; ///< that libDtv does not write, which are not in the copy
};

/// Writes `copy`. Each thing that is wrong with the file, or with the copy, is given to `report`.
Copied copyCapture(std::istream& file, const std::string& copy, sessions::Redaction& redaction,
                   const std::function<void(const std::string&)>& report);

} // namespace redact
