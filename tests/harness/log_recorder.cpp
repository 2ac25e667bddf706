#include "harness/log_recorder.h"

#include "harness/read_back.h"

#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string_view>

namespace harness {
namespace {

// The bridge writes lines until its process has ended: nothing here may be destroyed before.
constexpr std::string_view prefix = ",TENRIK,%-8s,%s,%s(),%4d,";

std::string printable(const std::string& text) {
    std::string line;
    for (char c : text) {
        if (c >= ' ' && c <= '~') {
            line += c;
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned char>(c));
            line += escape;
        }
    }
    return line;
}

/// How the line differs from the layout that every trace line has; empty when it does not.
std::string faultOf(const TraceLine& line) {
    struct Level {
        const char* word;
        unsigned long mask;
        int kind;
    };
    static const Level levels[] = {{"ERROR    ", 2, 6},
                                   {"FUNCSTART", 128, 5},
                                   {"FUNCEND  ", 256, 5},
                                   {"INFO     ", 512, 5},
                                   {"DEBUG    ", 1024, 5}};
    if (line.category != 2) {
        return "category is " + std::to_string(line.category);
    }
    if (line.format.compare(0, prefix.size(), prefix) != 0) {
        return "format does not begin with the prefix: " + line.format;
    }
    for (const Level& level : levels) {
        if (line.level == level.word) {
            return line.mask == level.mask && line.kind == level.kind
                       ? ""
                       : "mask or kind is not that of the level";
        }
    }
    return "no such level word: \"" + line.level + "\"";
}

/// The length of what a placeholder matches in `text` at `at`, 0 when it matches nothing there.
size_t matchLength(const std::string& placeholder, const std::string& text, size_t at) {
    auto run = [&](size_t from, int (*accept)(int)) {
        size_t end = from;
        while (end < text.size() && accept(static_cast<unsigned char>(text[end])) != 0) {
            ++end;
        }
        return end - from;
    };
    if (placeholder == "<pid>") {
        std::string pid = std::to_string(getpid());
        return run(at, &isdigit) == pid.size() && text.compare(at, pid.size(), pid) == 0
                   ? pid.size()
                   : 0;
    }
    if (placeholder == "<tid>") {
        size_t digits = run(at, &isxdigit);
        return digits <= 8 ? digits : 0;
    }
    if (placeholder == "<int>") {
        size_t sign = at < text.size() && text[at] == '-' ? 1 : 0;
        size_t digits = run(at + sign, &isdigit);
        return digits != 0 ? sign + digits : 0;
    }
    if (text.compare(at, 5, "(nil)") == 0) {
        return 5;
    }
    size_t digits = text.compare(at, 2, "0x") == 0 ? run(at + 2, &isxdigit) : 0;
    return digits != 0 ? 2 + digits : 0;
}

std::vector<std::string> literals(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream input(text);
    for (std::string line; std::getline(input, line);) {
        size_t begin = line.find_first_not_of(" \t");
        if (begin != std::string::npos) {
            lines.push_back(line.substr(begin));
        }
    }
    return lines;
}

/// Both sides in one text: the longest common part unmarked, the rest with - and +.
std::string difference(const std::vector<std::string>& expected,
                       const std::vector<std::string>& actual) {
    size_t rows = expected.size();
    size_t columns = actual.size();
    std::vector<std::vector<size_t>> common(rows + 1, std::vector<size_t>(columns + 1, 0));
    for (size_t i = rows; i-- > 0;) {
        for (size_t j = columns; j-- > 0;) {
            common[i][j] = matches(expected[i], actual[j])
                               ? common[i + 1][j + 1] + 1
                               : std::max(common[i + 1][j], common[i][j + 1]);
        }
    }
    std::string text;
    size_t i = 0;
    size_t j = 0;
    while (i < rows || j < columns) {
        if (i < rows && j < columns && matches(expected[i], actual[j])) {
            text += "    " + actual[j++] + "\n";
            ++i;
        } else if (i < rows && (j == columns || common[i + 1][j] >= common[i][j + 1])) {
            text += "  - " + expected[i++] + "\n";
        } else {
            text += "  + " + actual[j++] + "\n";
        }
    }
    return text;
}

} // namespace

bool matches(const std::string& expected, const std::string& actual) {
    size_t at = 0;
    for (size_t i = 0; i < expected.size();) {
        std::string placeholder = expected.substr(i, 5);
        if (placeholder == "<pid>" || placeholder == "<tid>" || placeholder == "<ptr>" ||
            placeholder == "<int>") {
            size_t length = matchLength(placeholder, actual, at);
            if (length == 0) {
                return false;
            }
            at += length;
            i += 5;
        } else if (at >= actual.size() || actual[at++] != expected[i++]) {
            return false;
        }
    }
    return at == actual.size();
}

std::string TraceLine::literal() const {
    return module + "|" + std::to_string(mask) + "|" + std::to_string(kind) + "|" + level + "|" +
           function + "|" + printable(message);
}

TraceLine parseTrace(const dtv::LogLine& given) {
    TraceLine line{};
    line.category = given.category;
    line.kind = given.kind;
    line.module = given.module;
    line.mask = given.level_mask;
    line.format = given.format;
    line.text = given.text;
    line.thread = pthread_self();

    static const std::string mark = ",TENRIK,";
    const std::string& text = line.text;
    size_t task = mark.size();
    size_t level = text.find(',', task + 8);
    size_t function = level == std::string::npos ? level : text.find(',', level + 1);
    size_t number = function == std::string::npos ? function : text.find("(),", function + 1);
    size_t rest = number == std::string::npos ? number : text.find(',', number + 3);
    if (text.compare(0, task, mark) != 0 || rest == std::string::npos) {
        line.message = text;
        line.fault = "the text is not that of a trace line";
        return line;
    }
    line.task = text.substr(task, level - task);
    line.level = text.substr(level + 1, function - level - 1);
    line.function = text.substr(function + 1, number - function - 1);
    std::string digits = text.substr(number + 3, rest - number - 3);
    line.message = text.substr(rest + 1);
    line.fault = faultOf(line);
    int consumed = 0;
    if (digits.size() < 4 || std::sscanf(digits.c_str(), "%d%n", &line.line, &consumed) != 1 ||
        static_cast<size_t>(consumed) != digits.size() || line.line <= 0) {
        line.fault = "no line number: \"" + digits + "\"";
    }
    return line;
}

std::shared_ptr<LogRecorder> LogRecorder::install() {
    auto recorder = std::make_shared<LogRecorder>();
    dtv::setLogSink(recorder);
    dtv::setLogLevelMask(~0UL);
    return recorder;
}

std::vector<TraceLine> LogRecorder::take() {
    std::lock_guard lock(mutex);
    return std::exchange(lines, {});
}

std::vector<TraceLine> LogRecorder::takeOf(const std::string& function) {
    std::vector<TraceLine> own;
    for (TraceLine& line : take()) {
        if (line.function == function) {
            own.push_back(std::move(line));
        }
    }
    return own;
}

void LogRecorder::clear() {
    (void)take();
}

void LogRecorder::write(const dtv::LogLine& line) {
    checkReadBack(line);
    TraceLine parsed = parseTrace(line);
    std::lock_guard lock(mutex);
    if (observer) {
        observer(parsed);
    }
    lines.push_back(std::move(parsed));
}

void LogRecorder::onLine(std::function<void(const TraceLine&)> of_each) {
    std::lock_guard lock(mutex);
    observer = std::move(of_each);
}

testing::AssertionResult traceIs(const char* lines_text, const char*,
                                 const std::vector<TraceLine>& lines, const std::string& expected) {
    std::vector<std::string> actual;
    std::string faults;
    for (const TraceLine& line : lines) {
        actual.push_back(line.literal());
        if (!line.fault.empty()) {
            faults += "  " + line.fault + ": " + printable(line.text) + "\n";
        }
    }
    std::vector<std::string> wanted = literals(expected);
    bool same = wanted.size() == actual.size();
    for (size_t i = 0; same && i < wanted.size(); ++i) {
        same = matches(wanted[i], actual[i]);
    }
    if (same && faults.empty()) {
        return testing::AssertionSuccess();
    }
    auto failure = testing::AssertionFailure() << lines_text;
    if (!same) {
        failure << " differs (- expected, + written):\n" << difference(wanted, actual);
    }
    if (!faults.empty()) {
        failure << (same ? " holds lines" : "Lines") << " that are no trace lines:\n" << faults;
    }
    return failure;
}

} // namespace harness
