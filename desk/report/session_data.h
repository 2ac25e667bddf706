// The data of a report: a timeline and what was found in it, as the page reads them.
#pragma once

#include "desk/pictures/timeline.h"

#include <string>

namespace report {

/// What the page is of.
struct Source {
    std::string name;     ///< of the file
    std::string findings; ///< what dtv-explain says of it, one JSON document
};

/// A JSON document. Values of messages, calls and lines are in columns: arrays of one length. Times
/// are nanoseconds since `base`, which is a text because it has more digits than a number of the
/// page; texts that come again are numbers in `texts`. Bytes are in Base64, those of all records
/// after one another. `clock` says what the times are: "utc", or "receiver" for those of a log.
std::string sessionData(const pictures::Timeline& timeline, const Source& source);

/// zlib's format in Base64. Empty when there is no memory for it.
std::string packed(const std::string& data);

} // namespace report
