#include "desk/explain/report_text.h"

#include "desk/explain/text.h"

#include <algorithm>
#include <iomanip>
#include <set>

namespace explain {
namespace {

/// A paragraph whose lines after the first begin with blanks.
void writeWrapped(std::ostream& out, const std::string& first, size_t indent,
                  const std::string& text) {
    std::string start = first;
    for (const std::string& line : wrapped(text, kColumns - indent)) {
        out << start << line << '\n';
        start.assign(indent, ' ');
    }
}

const char* unitOf(const Explained& explained) {
    return explained.is_capture ? "message" : "line";
}

std::string placesOf(const Explained& explained, const Finding& finding) {
    std::string text = std::string(unitOf(explained)) + (finding.lines.size() > 1 ? "s" : "");
    const size_t shown = std::min<size_t>(finding.lines.size(), 6);
    for (size_t i = 0; i < shown; ++i) {
        text += (i == 0 ? " " : ", ") + std::to_string(finding.lines[i]);
    }
    if (finding.count > shown) {
        text += " and " + std::to_string(finding.count - shown) + " more, the last " +
                std::to_string(finding.last_line);
    }
    return text;
}

void writeHead(std::ostream& out, const Explained& explained) {
    out << shortened(explained.name, kColumns) << '\n';
    if (explained.is_capture) {
        out << "a capture of " << countText(explained.messages, "message") << '\n';
        return;
    }
    const sessions::LogCounts& counts = explained.counts;
    out << countText(counts.lines, "line") << ", " << counts.of_bridge << " of the bridge, "
        << counts.understood << " understood\n";
    if (counts.of_bridge == 0) {
        return;
    }
    out << "form: " << sessions::nameOf(explained.form);
    const Coverage& coverage = explained.analysis.coverage();
    if (coverage.begin() && coverage.end()) {
        out << ", from " << timeText(*coverage.begin()) << " to " << timeText(*coverage.end());
    }
    out << '\n';
}

void writeLosses(std::ostream& out, const Explained& explained) {
    if (explained.losses.empty() && explained.limits.empty()) {
        return;
    }
    out << "\nWhat it cannot tell\n";
    for (const Loss& loss : explained.losses) {
        std::string text = loss.text;
        if (loss.line != 0) {
            text += std::string(" (") + unitOf(explained) + " " + std::to_string(loss.line);
            text += loss.count > 1 ? ", and " + std::to_string(loss.count - 1) + " more)" : ")";
        }
        writeWrapped(out, "  ! ", 4, std::string(nameOf(loss.kind)) + ": " + text);
    }
    for (const std::string& limit : explained.limits) {
        writeWrapped(out, "  - ", 4, limit);
    }
}

std::string sessionText(const Explained& explained, const SessionStory& session) {
    const std::string unit = unitOf(explained);
    std::string text = session.opened != 0
                           ? "opened at " + unit + " " + std::to_string(session.opened)
                           : "seen first at " + unit + " " + std::to_string(session.first);
    text +=
        ", " + countText(session.commands, "command") + ", " + countText(session.events, "event");
    if (session.selections > 0) {
        text += ", " + countText(session.selections, "selection");
        if (!session.selected.empty()) {
            text += session.selected.size() > 1 ? " (channels " : " (channel ";
            for (size_t i = 0; i < session.selected.size(); ++i) {
                text += (i == 0 ? "" : ", ") + session.selected[i];
            }
            text += session.selected.size() < session.selections ? ", ...)" : ")";
        }
    }
    if (session.recordings > 0) {
        text += ", " + countText(session.recordings, "recording");
    }
    if (session.playbacks > 0) {
        text += ", " + countText(session.playbacks, "playback");
    }
    text += session.closed != 0
                ? ", released at " + unit + " " + std::to_string(session.closed)
                : ", not released; its last message is at " + std::to_string(session.last);
    return text;
}

void writeStory(std::ostream& out, const Explained& explained) {
    const Story& story = explained.analysis.story();
    if (story.sessions().empty() && story.loads().empty()) {
        return;
    }
    out << "\nWhat happened\n";
    const std::vector<uint64_t>& loads = story.loads();
    if (loads.size() == 1) {
        writeWrapped(out, "  ", 2, "the library was loaded at line " + std::to_string(loads[0]));
    } else if (loads.size() > 1) {
        writeWrapped(out, "  ", 2,
                     "the library was loaded " + std::to_string(loads.size()) +
                         " times, the first at line " + std::to_string(loads[0]) +
                         ", the last at line " + std::to_string(loads.back()));
    }
    for (const SessionStory& session : story.sessions()) {
        writeWrapped(out, "  ", 4,
                     "session " + std::to_string(session.handle) + ": " +
                         sessionText(explained, session));
    }
    if (story.more() > 0) {
        out << "  and " << countText(story.more(), "session") << " more\n";
    }
}

std::string headlineOf(const Finding& finding) {
    std::string text = finding.key.subject;
    if (finding.handle) {
        text += (text.empty() ? "session " : ", session ") + std::to_string(*finding.handle);
    }
    if (!finding.thread.empty()) {
        text += (text.empty() ? "on " : ", on ") + shortened(finding.thread, 16);
    }
    return text;
}

/// What follows from a finding, in a line for each rule.
void writeSymptoms(std::ostream& out, const Explained& explained, const Finding& cause) {
    for (const Finding& finding : explained.analysis.findings()) {
        if (finding.caused_by != cause.id) {
            continue;
        }
        std::string text = std::string(textOf(finding.key.rule).name) + " " + finding.key.subject;
        text += ", " + placesOf(explained, finding) + ": " + finding.relation;
        writeWrapped(out, "    > ", 6, text);
    }
}

/// `explains`: the rule's sentence has not been written yet.
void writeFinding(std::ostream& out, const Explained& explained, const Finding& finding,
                  bool explains) {
    const RuleText& rule = textOf(finding.key.rule);
    const std::string head = std::string(nameOf(finding.severity)) + " " + rule.name + ": ";
    writeWrapped(out, "  " + std::to_string(finding.id) + " ", 4, head + headlineOf(finding));
    writeWrapped(out, "    ", 4, placesOf(explained, finding));
    if (!finding.first.text.empty()) {
        out << "    " << shortened(finding.first.text, kColumns - 4) << '\n';
    }
    if (!finding.first.function.empty()) {
        std::string place = finding.first.function + "()";
        if (finding.first.source_line != 0) {
            place += ":" + std::to_string(finding.first.source_line);
        }
        out << "    written by " << shortened(place, kColumns - 15) << '\n';
    }
    if (explains) {
        writeWrapped(out, "    ", 4, rule.sentence);
        writeWrapped(out, "    next: ", 10, rule.next);
    }
    writeSymptoms(out, explained, finding);
}

void writeFindings(std::ostream& out, const Explained& explained, const Selection& selection) {
    const std::vector<Finding>& findings = explained.analysis.findings();
    const auto roots = static_cast<uint64_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.caused_by == 0; }));
    if (findings.empty()) {
        out << (verdictOf(explained) == Verdict::kClean
                    ? "\nNothing was found.\n"
                    : "\nNothing was found, in what there is of it.\n");
        return;
    }
    out << "\nWhat was found: " << countText(roots, "cause");
    if (findings.size() > roots) {
        const uint64_t others = findings.size() - roots;
        out << ", and " << others
            << (others == 1 ? " more that follows from " : " more that follow from ")
            << (roots == 1 ? "it" : "them");
    }
    out << '\n';
    std::set<Rule> explained_rules;
    for (const Finding& finding : findings) {
        const bool chosen = !selection.only.empty();
        if (chosen ? selection.takes(finding) : finding.caused_by == 0) {
            writeFinding(out, explained, finding, explained_rules.insert(finding.key.rule).second);
        }
    }
}

void writeLatencies(std::ostream& out, const Explained& explained) {
    const Latencies& latencies = explained.analysis.latencies();
    if (latencies.empty()) {
        return;
    }
    constexpr size_t kLongestName = 29; // what is left of the line
    size_t width = std::string_view("command").size();
    for (const auto& [name, durations] : latencies) {
        width = std::clamp(name.size(), width, kLongestName);
    }
    const auto row = [&](std::string_view name, const auto& count, std::string_view median,
                         std::string_view most, std::string_view longest, const auto& line) {
        out << "  " << std::left << std::setw(static_cast<int>(width)) << shortened(name, width)
            << std::right << std::setw(6) << count << std::setw(12) << median << std::setw(12)
            << most << std::setw(12) << longest << std::setw(7) << line << '\n';
    };
    out << "\nHow long answers took\n";
    row("command", "count", "median", "95 %", "longest", explained.is_capture ? "at" : "line");
    for (const auto& [name, durations] : latencies) {
        row(name, durations.count(), durationText(durations.percentile(50)),
            durationText(durations.percentile(95)), durationText(durations.longest()),
            durations.longestLine());
    }
}

} // namespace

bool Selection::takes(const Finding& finding) const {
    const RuleText& rule = textOf(finding.key.rule);
    return only.empty() || only == rule.name || only == nameOf(finding.severity) ||
           only == finding.key.subject;
}

void writeText(std::ostream& out, const Explained& explained, const Selection& selection) {
    writeHead(out, explained);
    if (!explained.could_be_read) {
        out << "it cannot be read: " << explained.error << '\n';
        return;
    }
    if (!explained.is_capture && explained.counts.of_bridge == 0) {
        out << "\nNo line is of the bridge: there is nothing to explain.\n";
        return;
    }
    writeLosses(out, explained);
    writeStory(out, explained);
    writeFindings(out, explained, selection);
    writeLatencies(out, explained);
}

} // namespace explain
