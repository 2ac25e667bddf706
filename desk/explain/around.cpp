#include "desk/explain/around.h"

#include "desk/explain/explained.h"
#include "desk/explain/redacted_lines.h"
#include "desk/explain/text.h"

#include "desk/show/quoted_text.h"

#include "sessions/capture_reader.h"
#include "sessions/log/activity.h"
#include "sessions/log/log_reader.h"

#include <deque>
#include <iomanip>
#include <optional>
#include <vector>

namespace explain {
namespace {

constexpr uint64_t kBefore = 10; ///< lines
constexpr uint64_t kAfter = 10;

struct ShownLine {
    uint64_t first;
    uint64_t last;
    std::string thread; ///< that wrote it; empty: another program
    std::string text;
};

/// What of a log is near a line.
struct Surroundings {
    std::deque<ShownLine> lines;
    std::optional<sessions::BridgeCall> call; ///< the smallest that the line is in
    std::string thread;                       ///< whose line it is; empty: another program's
    bool found = false;
};

std::string textOf(const sessions::LogLine& line) {
    if (line.kind > sessions::LogLineKind::kCopy) {
        return std::string(line.text);
    }
    return std::string(line.trace.task) + " " + sessions::nameOf(line.trace.level) + " " +
           std::string(line.trace.function) + "():" + std::to_string(line.trace.source_line) +
           (line.trace.message.empty() ? "" : " ") + std::string(line.trace.message);
}

std::string threadOf(const sessions::LogLine& line) {
    return line.kind <= sessions::LogLineKind::kCopy ? std::string(line.trace.task) : std::string();
}

void collect(sessions::LogReader& reader, uint64_t wanted, RedactedLines& redacted,
             Surroundings& near) {
    sessions::Activity activity(
        [&](const sessions::Step& step) {
            const sessions::BridgeCall& call = step.call;
            const bool holds = step.kind == sessions::Step::Kind::kCallEnd &&
                               call.first <= wanted && wanted <= call.last &&
                               call.thread == near.thread;
            if (holds &&
                (!near.call || call.last - call.first < near.call->last - near.call->first)) {
                near.call = call;
            }
        },
        [](const sessions::UnmatchedLine&) {});
    sessions::LogLine line;
    while (reader.next(line)) {
        redacted.take(line);
        if (line.first <= wanted && wanted <= line.last) {
            near.found = true;
            near.thread = threadOf(line);
        }
        if (line.last + kBefore >= wanted && line.first <= wanted + kAfter) {
            near.lines.push_back({line.first, line.last, threadOf(line), textOf(line)});
        }
        activity.add(line);
    }
    activity.end();
}

/// All of a text, on as many lines as it takes.
void writeWhole(std::ostream& out, const std::string& text) {
    std::vector<std::string> lines(1);
    size_t taken = 0;
    for (const show::Glyph& glyph :
         show::utf8Glyphs({reinterpret_cast<const uint8_t*>(text.data()), text.size()})) {
        if (taken + glyph.columns > kColumns - 10) {
            lines.emplace_back();
            taken = 0;
        }
        lines.back() += glyph.text;
        taken += glyph.columns;
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        out << (i == 0 ? "" : "          ") << lines[i] << '\n';
    }
}

/// Says which call a line is of.
void writeCall(std::ostream& out, const sessions::BridgeCall& call, uint64_t wanted) {
    std::string text = "line " + std::to_string(wanted) + " is of ";
    text += call.kind == sessions::BridgeCall::Kind::kLoad ? std::string("the load")
            : call.message != nullptr                      ? std::string(call.message->name)
                                                           : call.function;
    text += call.handle ? ", session " + std::to_string(*call.handle) : "";
    text += ", on " + call.thread + ": lines " + std::to_string(call.first) + " to " +
            std::to_string(call.last);
    out << '\n';
    for (const std::string& part : wrapped(text, kColumns)) {
        out << part << '\n';
    }
}

} // namespace

std::string writeAround(std::ostream& out, const std::string& path, uint64_t wanted,
                        const sessions::HashKey* redacts_with) {
    if (sessions::isCapture(path)) {
        return path + " is a capture and has no lines: \"./run show\" shows its messages";
    }
    sessions::LineSource source(path);
    Surroundings near;
    if (source.error().empty()) {
        sessions::LogReader reader(source);
        RedactedLines redacted(redacts_with, reader);
        collect(reader, wanted, redacted, near);
        if (!near.found && source.error().empty()) {
            return path + " has " + countText(reader.counts().lines, "line");
        }
    }
    if (!source.error().empty()) {
        return path + ": " + source.error();
    }
    for (const ShownLine& line : near.lines) {
        const bool is_wanted = line.first <= wanted && wanted <= line.last;
        const bool in_call = near.call && line.first >= near.call->first &&
                             line.last <= near.call->last && line.thread == near.thread;
        const char mark = is_wanted ? '>' : in_call ? '|' : ' ';
        out << mark << std::setw(8) << line.first << ' ';
        if (is_wanted) {
            writeWhole(out, line.text);
        } else {
            out << shortened(line.text, kColumns - 10) << '\n';
        }
    }
    if (near.call) {
        writeCall(out, *near.call, wanted);
    }
    return {};
}

} // namespace explain
