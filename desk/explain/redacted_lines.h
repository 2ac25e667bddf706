// The lines of a log with placeholders in place of their contents, as a redacted copy has them.
#pragma once

#include "sessions/keyed_hash.h"
#include "sessions/log/log_reader.h"
#include "sessions/log_redaction.h"
#include "sessions/redaction.h"

#include <optional>
#include <string>

namespace explain {

class RedactedLines {
public:
    /// With a null key all lines stay as they are. `reader` must outlive the object.
    RedactedLines(const sessions::HashKey* key, sessions::LogReader& reader);

    /// Replaces what is shown of a line of another program, and of the bridge's texts. The line is
    /// valid until the next one is taken.
    void take(sessions::LogLine& line);

private:
    const sessions::LogReader& reader_;
    std::optional<sessions::Redaction> redaction_;
    std::optional<sessions::LogRedaction> lines_;
    std::string text_;
};

} // namespace explain
