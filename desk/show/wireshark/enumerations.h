// The names of the numbers in records: the constants of the Java enumerations.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace enumerations {

struct Constant {
    std::string name;
    std::string number; ///< decimal digits
};

/// The name of an enumeration by what it is of: a record and a field, as
/// "TS_KEY_EVENT_REQ.key_code", or the one value of a message, as "StartRec.value".
const std::map<std::string, std::string>& places();

/// All of those names.
std::set<std::string> names();

/// The constants that the Java source of an enumeration declares. Ends the program when there are
/// none.
std::vector<Constant> constantsOf(const std::string& folder, const std::string& name);

} // namespace enumerations
