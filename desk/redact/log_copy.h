// A log that is copied without the contents of its texts.
#pragma once

#include "desk/redact/copy.h"

#include "sessions/log/log_reader.h"
#include "sessions/log_redaction.h"
#include "sessions/redaction.h"

#include <functional>
#include <string>

namespace redact {

/// What became of the copy of a log.
struct CopiedLog {
    Copied::State state = Copied::State::kNotMade;
    sessions::LogCounts counts;
};

/// Writes `copy`. The log may be compressed, and is standard input when it is named "-"; the copy
/// is plain text whose lines end with LF. Each thing that is wrong with the file, or with the copy,
/// is given to `report`.
CopiedLog copyLog(const std::string& file, const std::string& copy, sessions::Redaction& redaction,
                  sessions::OtherLines others,
                  const std::function<void(const std::string&)>& report);

} // namespace redact
