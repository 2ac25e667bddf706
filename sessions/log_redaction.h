// The lines of a log without the contents of its texts, so that they can be given to others.
#pragma once

#include "sessions/log/log_reader.h"
#include "sessions/redaction.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace sessions {

/// What becomes of the lines of other programs. Their headers stay in any case.
enum class OtherLines {
    kReplaced,
    kKept
};

/// Replaces texts by placeholders of the same length, so that each line of the log has one in the
/// copy: the texts that the bridge's lines show, but for those of public fields, and everything
/// that no known line of the bridge explains. A text that is in a record and in a log has the same
/// placeholder when both are redacted with the same Redaction.
class LogRedaction {
public:
    /// `redaction` must outlive the object.
    LogRedaction(Redaction& redaction, OtherLines others)
        : redaction_(redaction), others_(others) {}

    /// The lines that a line of the log takes, without their ends. `lines` are those of the log, as
    /// LogReader::lines() gives them.
    std::vector<std::string> redact(const LogLine& line, const std::vector<std::string>& lines);

private:
    std::string redactText(const LogLine& line, std::string_view first);
    std::string redactTrace(const LogLine& line);
    std::string redactCut(std::string_view text);
    std::string redactOther(std::string_view text);
    std::string redactDropped(std::string_view text);
    std::string redactSection(std::string_view text);
    std::string replaced(std::string_view text);
    void note(const LineHeader& header);
    bool isKept(const LogLine& line) const;

    Redaction& redaction_;
    const OtherLines others_;
    /// Of the lines of the bridge: those of other programs have other ones.
    std::set<std::string, std::less<>> tags_{"Dtv_jni", "JNIDtvSvLibListener"};
    std::set<int> processes_;
};

} // namespace sessions
