#include "desk/explain/explained.h"

#include "desk/explain/redacted_lines.h"
#include "desk/explain/text.h"

#include "sessions/capture_reader.h"
#include "sessions/log/activity.h"
#include "sessions/message.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace explain {
namespace {

using sessions::LogForm;
using sessions::TraceLevel;

/// The form that most lines of the bridge have.
LogForm formOf(const sessions::LogCounts& counts) {
    const auto most = std::max_element(counts.of_form.begin(), counts.of_form.end());
    return static_cast<LogForm>(std::distance(counts.of_form.begin(), most));
}

uint64_t linesOf(const sessions::LogCounts& counts, TraceLevel level) {
    return counts.of_level[static_cast<size_t>(level)];
}

/// What the log cannot tell, though no line of it is missing.
std::vector<std::string> limitsOf(const Explained& explained) {
    std::vector<std::string> limits;
    const auto& begin = explained.analysis.coverage().begin();
    if (!begin) {
        limits.emplace_back("its lines have no time: how long answers took is not known");
    } else if (!begin->has_year) {
        limits.emplace_back("its times have no year");
    }
    if (linesOf(explained.counts, TraceLevel::kDebug) == 0) {
        limits.emplace_back("without DEBUG it is not known why something was refused, nor what "
                            "the messages held");
    } else if (explained.analysis.story().loads().empty()) {
        limits.emplace_back("it begins after the library was loaded: sessions may be older");
    }
    return limits;
}

void readLog(const std::string& path, const ReadOptions& options, Explained& explained) {
    sessions::LineSource source(path);
    if (!source.error().empty()) {
        explained.error = source.error();
        explained.could_be_read = false;
        return;
    }
    Analysis& analysis = explained.analysis;
    sessions::LogReader reader(source);
    sessions::Activity activity(
        [&analysis](const sessions::Step& step) { analysis.step(step); },
        [&analysis](const sessions::UnmatchedLine& line) { analysis.unmatched(line); });
    RedactedLines redacted(options.redacts_with, reader);
    sessions::LogLine line;
    bool begins_empty = false;
    while (reader.next(line)) {
        redacted.take(line);
        analysis.line(line);
        activity.add(line);
        // The four bytes at the start of a capture are these two lines.
        begins_empty = line.first == 1 ? line.text.empty() : begins_empty;
        if (line.first == 2 && begins_empty && line.text == "\r") {
            explained.error = "a capture has to be a file, and not compressed";
            explained.could_be_read = false;
            return;
        }
    }
    activity.end();
    explained.error = source.error();
    if (!explained.error.empty()) {
        explained.could_be_read = reader.counts().lines > 0;
        analysis.coverage().mark(LossKind::kDamaged, reader.counts().lines, explained.error);
    }
    analysis.end();
    explained.counts = reader.counts();
    explained.form = formOf(explained.counts);
    explained.losses = analysis.coverage().losses(explained.counts);
    explained.limits = limitsOf(explained);
}

/// Hands the messages of a capture to the analysis, and counts what is damaged.
void readCapture(const std::string& path, Explained& explained) {
    std::ifstream file(path, std::ios::binary);
    Analysis& analysis = explained.analysis;
    sessions::CaptureReader reader(file);
    uint32_t section = 0;
    for (;;) {
        while (const std::optional<sessions::Packet> packet = reader.next()) {
            ++explained.messages;
            std::string error;
            if (packet->section != section) {
                section = packet->section;
                analysis.beginSection();
            }
            if (const auto message = sessions::readMessage(*packet, error)) {
                analysis.message(*message, explained.messages);
            } else {
                analysis.coverage().mark(LossKind::kNotKnown, explained.messages, error);
            }
        }
        if (reader.error().empty()) {
            break;
        }
        explained.error = explained.error.empty() ? reader.error() : explained.error;
        analysis.coverage().mark(LossKind::kDamaged, explained.messages, reader.error());
        if (!reader.resume()) {
            break;
        }
    }
    explained.could_be_read = explained.messages > 0 || explained.error.empty();
    analysis.end();
    explained.losses = analysis.coverage().losses(explained.counts);
}

} // namespace

Verdict verdictOf(const Explained& explained) {
    if (!explained.could_be_read) {
        return Verdict::kCannotTell;
    }
    if (!explained.analysis.findings().empty()) {
        return Verdict::kFound;
    }
    const bool nothing = explained.counts.of_bridge == 0 && explained.messages == 0;
    return nothing || !explained.losses.empty() ? Verdict::kCannotTell : Verdict::kClean;
}

std::unique_ptr<Explained> explainFile(const std::string& path, const ReadOptions& options) {
    auto explained = std::make_unique<Explained>(options.slow);
    explained->name = path == "-" ? "standard input" : path;
    explained->is_capture = sessions::isCapture(path);
    if (explained->is_capture) {
        readCapture(path, *explained);
    } else {
        readLog(path, options, *explained);
    }
    return explained;
}

} // namespace explain
