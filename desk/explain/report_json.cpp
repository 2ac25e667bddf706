#include "desk/explain/report_json.h"

#include "desk/explain/text.h"

#include "desk/show/names.h"

#include <json/json.h>

#include <memory>

namespace explain {
namespace {

constexpr int kVersion = 1;

Json::Value number(uint64_t value) {
    return Json::Value(static_cast<Json::UInt64>(value));
}

/// A text of a log, which may hold any bytes.
Json::Value text(const std::string& value) {
    return Json::Value(show::shownText(value));
}

const char* wordOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::kClean:
        return "clean";
    case Verdict::kFound:
        return "found";
    case Verdict::kCannotTell:
        break;
    }
    return "cannot tell";
}

Json::Value summaryOf(const Explained& explained) {
    Json::Value object;
    object["version"] = kVersion;
    object["file"] = text(explained.name);
    object["kind"] = explained.is_capture ? "capture" : "log";
    object["status"] = static_cast<int>(verdictOf(explained));
    object["verdict"] = wordOf(verdictOf(explained));
    if (!explained.error.empty()) {
        object["error"] = text(explained.error);
    }
    if (explained.is_capture) {
        object["messages"] = number(explained.messages);
        return object;
    }
    const sessions::LogCounts& counts = explained.counts;
    object["form"] = sessions::nameOf(explained.form);
    object["lines"] = number(counts.lines);
    object["of_bridge"] = number(counts.of_bridge);
    object["understood"] = number(counts.understood);
    object["shortened"] = number(counts.shortened);
    for (int level = 0; level < sessions::kTraceLevels; ++level) {
        object["levels"][sessions::nameOf(static_cast<sessions::TraceLevel>(level))] =
            number(counts.of_level[static_cast<size_t>(level)]);
    }
    const Coverage& coverage = explained.analysis.coverage();
    if (coverage.begin() && coverage.end()) {
        object["begin"] = timeText(*coverage.begin());
        object["end"] = timeText(*coverage.end());
    }
    return object;
}

Json::Value lossOf(const Loss& loss) {
    Json::Value object;
    object["kind"] = nameOf(loss.kind);
    object["count"] = number(loss.count);
    if (loss.line != 0) {
        object["line"] = number(loss.line);
    }
    object["text"] = text(loss.text);
    return object;
}

Json::Value sessionOf(const SessionStory& session) {
    Json::Value object;
    object["session"] = session.handle;
    object["first"] = number(session.first);
    object["last"] = number(session.last);
    if (session.opened != 0) {
        object["opened"] = number(session.opened);
    }
    if (session.closed != 0) {
        object["released"] = number(session.closed);
    }
    object["commands"] = number(session.commands);
    object["events"] = number(session.events);
    object["selections"] = number(session.selections);
    object["recordings"] = number(session.recordings);
    object["playbacks"] = number(session.playbacks);
    return object;
}

Json::Value findingOf(const Explained& explained, const Finding& finding) {
    const RuleText& rule = textOf(finding.key.rule);
    Json::Value object;
    object["id"] = finding.id;
    object["rule"] = rule.name;
    object["severity"] = nameOf(finding.severity);
    object["subject"] = finding.key.subject.empty() ? Json::Value() : text(finding.key.subject);
    object["count"] = number(finding.count);
    object["lines"] = Json::Value(Json::arrayValue);
    for (const uint64_t line : finding.lines) {
        object["lines"].append(number(line));
    }
    object["last_line"] = number(finding.last_line);
    if (!finding.first.function.empty()) {
        object["function"] = text(finding.first.function);
        if (finding.first.source_line != 0) {
            object["source_line"] = finding.first.source_line;
        }
    }
    if (!finding.first.text.empty()) {
        object["text"] = text(finding.first.text);
    }
    if (finding.handle) {
        object["session"] = *finding.handle;
    }
    if (!finding.thread.empty()) {
        object["thread"] = text(finding.thread);
    }
    object["means"] = rule.sentence;
    object["next"] = rule.next;
    object["caused_by"] = finding.caused_by != 0 ? Json::Value(finding.caused_by) : Json::Value();
    if (!finding.relation.empty()) {
        object["relation"] = finding.relation;
    }
    object["cause_of"] = Json::Value(Json::arrayValue);
    for (const Finding& other : explained.analysis.findings()) {
        if (other.caused_by == finding.id) {
            object["cause_of"].append(other.id);
        }
    }
    return object;
}

Json::Value latencyOf(const std::string& name, const Durations& durations) {
    const auto nanoseconds = [](int64_t value) {
        return Json::Value(static_cast<Json::Int64>(value));
    };
    Json::Value object;
    object["command"] = name;
    object["count"] = number(durations.count());
    object["median_ns"] = nanoseconds(durations.percentile(50));
    object["p95_ns"] = nanoseconds(durations.percentile(95));
    object["longest_ns"] = nanoseconds(durations.longest());
    object["longest_line"] = number(durations.longestLine());
    return object;
}

void write(std::ostream& out, const Json::Value& value, const char* indentation) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = indentation;
    builder["emitUTF8"] = true;
    const std::unique_ptr<Json::StreamWriter> writer(builder.newStreamWriter());
    writer->write(value, &out);
    out << '\n';
}

} // namespace

void writeJson(std::ostream& out, const Explained& explained, const Selection& selection) {
    Json::Value document = summaryOf(explained);
    document["losses"] = Json::Value(Json::arrayValue);
    for (const Loss& loss : explained.losses) {
        document["losses"].append(lossOf(loss));
    }
    document["limits"] = Json::Value(Json::arrayValue);
    for (const std::string& limit : explained.limits) {
        document["limits"].append(limit);
    }
    const Story& story = explained.analysis.story();
    document["loads"] = Json::Value(Json::arrayValue);
    for (const uint64_t line : story.loads()) {
        document["loads"].append(number(line));
    }
    document["sessions"] = Json::Value(Json::arrayValue);
    for (const SessionStory& session : story.sessions()) {
        document["sessions"].append(sessionOf(session));
    }
    document["more_sessions"] = number(story.more());
    document["findings"] = Json::Value(Json::arrayValue);
    for (const Finding& finding : explained.analysis.findings()) {
        if (selection.takes(finding)) {
            document["findings"].append(findingOf(explained, finding));
        }
    }
    document["latencies"] = Json::Value(Json::arrayValue);
    for (const auto& [name, durations] : explained.analysis.latencies()) {
        document["latencies"].append(latencyOf(name, durations));
    }
    write(out, document, " ");
}

void writeNdjson(std::ostream& out, const Explained& explained) {
    Json::Value log = summaryOf(explained);
    log["type"] = "log";
    for (const Loss& loss : explained.losses) {
        log["losses"].append(nameOf(loss.kind));
    }
    write(out, log, "");
    const auto add = [&out, &explained](Json::Value object, const char* type) {
        object["version"] = kVersion;
        object["type"] = type;
        object["file"] = text(explained.name);
        write(out, object, "");
    };
    for (const SessionStory& session : explained.analysis.story().sessions()) {
        add(sessionOf(session), "session");
    }
    for (const Finding& finding : explained.analysis.findings()) {
        add(findingOf(explained, finding), "finding");
    }
}

} // namespace explain
