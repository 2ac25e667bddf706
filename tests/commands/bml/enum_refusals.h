// The lines of a command whose argument is an enumeration that cannot be read.
#pragma once

#include <string>

namespace commands {

inline const std::string noEnum = "DEBUG getEnumValue|enum object is NULL\nRESULT 5\nDEBUG |";
inline const std::string noEnumField =
    "DEBUG getEnumValue|enum field ID is NULL\nRESULT 5\nDEBUG |";

} // namespace commands
