// Traces written short, and what Activity makes of them.
#pragma once

#include "sessions/log/activity.h"
#include "sessions/tests/log/text_file.h"

#include <sstream>

/// A line "desk START dtvSvLibSelectChannel|hdl = 1" as the bridge writes it; its source line is 1.
/// The levels are ERROR, START, END, INFO and DEBUG. Other lines are returned as they are.
inline std::string traceLine(const std::string& line) {
    static const std::pair<const char*, const char*> kWords[] = {{"ERROR", "ERROR    "},
                                                                 {"START", "FUNCSTART"},
                                                                 {"END", "FUNCEND  "},
                                                                 {"INFO", "INFO     "},
                                                                 {"DEBUG", "DEBUG    "}};
    for (const auto& [level, word] : kWords) {
        const size_t at = line.find(std::string(" ") + level + " ");
        const size_t bar = line.find('|');
        if (at == std::string::npos || bar == std::string::npos || at > bar) {
            continue;
        }
        std::string task = line.substr(0, at);
        task.resize(std::max<size_t>(task.size(), 8), ' ');
        const size_t function = at + std::string(level).size() + 2;
        return ",TENRIK," + task + "," + word + "," + line.substr(function, bar - function) +
               "(),   1," + line.substr(bar + 1);
    }
    return line;
}

/// Each line of a text, without the blanks before it; empty ones are left out.
inline std::string traceOf(const std::string& short_lines) {
    std::istringstream input(short_lines);
    std::string text;
    for (std::string line; std::getline(input, line);) {
        const size_t begin = line.find_first_not_of(' ');
        if (begin != std::string::npos) {
            text += traceLine(line.substr(begin)) + "\n";
        }
    }
    return text;
}

inline std::string stepText(const sessions::Step& step) {
    static constexpr const char* kNames[] = {"command",       "answer", "event",
                                             "refused event", "end",    "load"};
    const sessions::BridgeCall& call = step.call;
    std::string text = kNames[static_cast<size_t>(step.kind)];
    text += call.message != nullptr ? " " + std::string(call.message->name) : "";
    text += call.handle ? " h=" + std::to_string(*call.handle) : "";
    if (step.kind == sessions::Step::Kind::kAnswer) {
        text += call.ret ? " ret=" + std::to_string(*call.ret) : "";
    }
    if (step.kind != sessions::Step::Kind::kCallEnd) {
        return text;
    }
    text += " " + std::to_string(call.first) + "-" + std::to_string(call.last);
    text += call.has_begin ? "" : " no begin";
    text += call.has_end ? "" : " no end";
    text += call.refused ? " refused" : "";
    text += call.aborted ? " aborted" : "";
    for (const sessions::FaultLine& fault : call.faults) {
        text += " fault " + std::to_string(fault.where.line);
    }
    return text;
}

/// The steps of a log, and the lines that miss another: "7 lacks its end".
inline std::vector<std::string> stepsIn(const std::string& log) {
    const TextFile file(log);
    sessions::LineSource source(file.path());
    sessions::LogReader reader(source);
    std::vector<std::string> steps;
    sessions::Activity activity(
        [&steps](const sessions::Step& step) { steps.push_back(stepText(step)); },
        [&steps](const sessions::UnmatchedLine& line) {
            steps.push_back(std::to_string(line.where.line) +
                            (line.has_begin ? " lacks its end" : " lacks its begin"));
        });
    for (sessions::LogLine line; reader.next(line);) {
        activity.add(line);
    }
    activity.end();
    return steps;
}

inline std::vector<std::string> stepsOf(const std::string& short_lines) {
    return stepsIn(traceOf(short_lines));
}
