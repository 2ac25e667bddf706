#include "desk/redact/log_copy.h"

#include "sessions/log/line_source.h"
#include "sessions/new_file.h"

#include <algorithm>

namespace redact {
namespace {

using sessions::LineSource;

/// Whether a text begins as a capture does.
bool isCapture(const std::string& beginning) {
    return beginning == "\n\r\n";
}

} // namespace

CopiedLog copyLog(const std::string& file, const std::string& copy, sessions::Redaction& redaction,
                  sessions::OtherLines others,
                  const std::function<void(const std::string&)>& report) {
    CopiedLog result;
    sessions::NewFile target;
    std::string error;
    if (!target.open(copy, error)) {
        report(error);
        return result;
    }
    LineSource source(file);
    sessions::LogReader reader(source);
    reader.keepLines();
    sessions::LogRedaction redacting(redaction, others);
    sessions::LogLine line;
    std::string beginning;
    bool damaged = false;
    while (!target.failed() && reader.next(line)) {
        if (line.first <= 2) {
            beginning += reader.lines().front() + '\n';
        }
        if (isCapture(beginning)) {
            report("this is a compressed capture: decompress it first");
            return result;
        }
        if (std::any_of(reader.lines().begin(), reader.lines().end(), [](const std::string& one) {
                return one.size() >= LineSource::kLongestLine;
            })) {
            report("line " + std::to_string(line.first) + " is longer than " +
                   std::to_string(LineSource::kLongestLine) + " bytes; its rest is left out");
            damaged = true;
        }
        const char* end = line.first > 1 ? "\n" : "";
        for (const std::string& one : redacting.redact(line, reader.lines())) {
            target.write(end + one);
            end = "\n";
        }
    }
    if (reader.counts().lines > 0 && !reader.isUnended()) {
        target.write("\n");
    }
    result.counts = reader.counts();
    if (!source.error().empty()) {
        report(source.error());
        damaged = true;
    }
    if (reader.counts().lines == 0) {
        report("there is nothing to copy");
        return result;
    }
    if (!target.keep(error)) {
        report(error);
        return result;
    }
    result.state = damaged ? Copied::State::kDamaged : Copied::State::kWhole;
    return result;
}

} // namespace redact
