#include "sessions/log/log_reader.h"

#include "sessions/log/text.h"

#include <algorithm>
#include <cstdlib>

namespace sessions {
namespace {

/// How many lines after its first one a line of the bridge may take: one with line ends in its
/// texts, and one that was wrapped.
constexpr size_t kMostTextLines = 64;
constexpr size_t kMostWrappedLines = 8;

/// "uid=10045(u0_a45) expire 12 lines", "uid=1000 com.example identical 3 lines": how many, or 0.
uint64_t droppedLines(const LineHeader& header, std::string_view text, bool& identical) {
    const bool may_be = contains(header.tag, "chatty") || contains(text, "chatty") ||
                        (header.tag.empty() && beginsWith(text, "uid="));
    if (!may_be) {
        return 0;
    }
    for (const std::string_view word : {"expire ", "identical "}) {
        const size_t found = text.rfind(word);
        if (found == std::string_view::npos) {
            continue;
        }
        const std::string number(text.substr(found + word.size(), 19));
        char* end = nullptr;
        const uint64_t lines = std::strtoull(number.c_str(), &end, 10);
        if (end != number.c_str() && beginsWith(end, " line")) {
            identical = word.front() == 'i';
            return lines;
        }
    }
    return 0;
}

/// Whether a line of a form has no header that says to which line it belongs: what a thread writes
/// need not be of the bridge.
bool isBare(LogForm form) {
    return form == LogForm::kRaw || form == LogForm::kThread || form == LogForm::kOther;
}

bool isSection(std::string_view text) {
    return beginsWith(text, "--------- ") || beginsWith(text, "------ ");
}

/// Whether the end of a line of the trace is in a line that lacks its beginning.
bool hasEndOfTraceLine(std::string_view text) {
    const size_t place = text.find("(),");
    return place != std::string_view::npos && place < 200 &&
           text.find(',', place + 3) != std::string_view::npos;
}

bool beginsAsTrace(std::string_view text) {
    return findTraceLine(text) == 0;
}

/// Whether a line ends with a value, so that nothing shows that more of it is missing.
bool endsWithValue(const KnownLine* known) {
    return known == nullptr || (!known->values.empty() && known->literals.back().empty());
}

} // namespace

/// The line that many lines after the next one, or null.
const LogReader::Physical* LogReader::peek(size_t index) {
    while (ahead_.size() <= index) {
        std::string_view text;
        if (!source_.next(text)) {
            return nullptr;
        }
        ahead_.push_back({std::string(text), source_.isUnended()});
    }
    return &ahead_[index];
}

/// Makes the next line the current one.
bool LogReader::take() {
    if (ahead_.empty()) {
        std::string_view text;
        if (!source_.next(text)) {
            return false;
        }
        current_.text.assign(text);
        current_.unended = source_.isUnended();
    } else {
        current_ = std::move(ahead_.front());
        ahead_.pop_front();
    }
    ++counts_.lines;
    if (keeps_lines_) {
        lines_.push_back(current_.text);
    }
    return true;
}

bool LogReader::next(LogLine& line) {
    lines_.clear();
    if (!take()) {
        return false;
    }
    line.kind = LogLineKind::kForeign;
    line.dropped = 0;
    line.identical = false;
    line.cut = false;
    line.first = counts_.lines;
    classify(line);
    line.last = counts_.lines;
    markCut(line);
    count(line);
    return true;
}

void LogReader::classify(LogLine& line) {
    line.header = readHeader(current_.text);
    line.text = line.header.text;
    if (line.header.form == LogForm::kLong) {
        long_header_ = line.header;
        long_tag_.assign(line.header.tag);
        in_long_ = true;
        return;
    }
    const size_t start = findTraceLine(line.text);
    if (line.header.form == LogForm::kRaw && in_long_) {
        line.header = long_header_;
        line.header.tag = long_tag_;
    } else if (line.header.form != LogForm::kRaw) {
        in_long_ = false;
    }
    if (start != std::string_view::npos) {
        readTrace(line, start);
        return;
    }
    if (readTraceCopy(line.text, line.trace)) {
        line.kind = LogLineKind::kCopy;
        understand(line.trace);
        return;
    }
    line.dropped = droppedLines(line.header, line.text, line.identical);
    if (line.dropped > 0) {
        line.kind = LogLineKind::kDropped;
    } else if (line.header.form == LogForm::kRaw && isSection(line.text)) {
        line.kind = LogLineKind::kSection;
    }
}

void LogReader::readTrace(LogLine& line, size_t start) {
    if (line.header.form == LogForm::kRaw && start > 0) {
        line.header.form = LogForm::kOther;
    }
    line.text.remove_prefix(start);
    line.kind = LogLineKind::kNotKnown;
    if (readTraceLine(line.text, line.trace)) {
        understand(line.trace);
    }
    join(line);
    if (line.trace.known != nullptr) {
        line.kind = line.trace.shortened ? LogLineKind::kShortened : LogLineKind::kTrace;
    }
}

/// Whether a line may be the rest of one of the bridge: it has no header or the same one, and is no
/// line of the bridge itself.
bool LogReader::continues(const LogLine& line, std::string_view next, LineHeader& header) const {
    if (contains(next, ",TENRIK,")) {
        return false;
    }
    header = readHeader(next);
    if (header.form == LogForm::kRaw) {
        return !isSection(header.text);
    }
    return header.form == line.header.form && header.pid == line.header.pid &&
           header.tid == line.header.tid && header.tag == line.header.tag &&
           header.priority == line.header.priority &&
           (!header.time ||
            (line.header.time && header.time->nanoseconds == line.header.time->nanoseconds));
}

/// Adds the lines that follow, `most` at most, until they make a whole line of the bridge. When
/// they never do, nothing is added.
bool LogReader::joinWith(LogLine& line, std::string_view separator, size_t most) {
    std::string joined(line.text);
    LineHeader header;
    for (size_t more = 0; more < most; ++more) {
        const Physical* const next = peek(more);
        if (next == nullptr || !continues(line, next->text, header)) {
            return false;
        }
        joined.append(separator).append(header.text);
        TraceLine trace;
        if (!readTraceLine(joined, trace)) {
            continue;
        }
        understand(trace);
        if (trace.known == nullptr || trace.shortened) {
            continue;
        }
        take(line, std::move(joined), more + 1);
        return true;
    }
    return false;
}

/// Makes the text of a line what was joined of it and the next `more` lines.
void LogReader::take(LogLine& line, std::string joined, size_t more) {
    // The line that the header refers to makes room for the last one.
    joined_tag_.assign(line.header.tag);
    line.header.tag = joined_tag_;
    for (size_t taken = 0; taken < more; ++taken) {
        take();
    }
    joined_ = std::move(joined);
    line.text = joined_;
    line.header.text = joined_;
    readTraceLine(line.text, line.trace);
    understand(line.trace);
}

/// Adds the lines of a text that nothing follows in its line. Their header says that they belong to
/// it, or an empty line ends them; without a header, only the text's size says so.
void LogReader::joinLastText(LogLine& line) {
    const KnownLine& known = *line.trace.known;
    if (known.values.empty() || known.values.back().conversion != 's' ||
        !known.literals.back().empty()) {
        return;
    }
    const bool has_header = !isBare(line.header.form);
    const size_t wanted = static_cast<size_t>(std::clamp<int64_t>(
        line.trace.number("title_size").value_or(0), 0, LineSource::kLongestLine));
    const size_t before_text = line.text.size() - line.trace.values.back().text.size();
    std::string joined(line.text);
    size_t more = 0;
    for (LineHeader header; more < kMostTextLines; ++more) {
        const Physical* const next = peek(more);
        if (next == nullptr || !continues(line, next->text, header) ||
            (has_header ? header.form == LogForm::kRaw &&
                              (line.header.form != LogForm::kLong || header.text.empty())
                        : joined.size() - before_text >= wanted)) {
            break;
        }
        joined.append("\n").append(header.text);
    }
    if (more > 0 && (has_header || joined.size() - before_text == wanted)) {
        take(line, std::move(joined), more);
    }
}

/// Whether a line that seems whole may lack the end of its last number: a line of digits alone
/// follows, without the header that all lines have.
bool LogReader::isWrapped(const LogLine& line) {
    const KnownLine& known = *line.trace.known;
    if (line.header.form == LogForm::kRaw || line.header.form == LogForm::kLong ||
        known.values.empty() || known.values.back().conversion == 's') {
        return false;
    }
    const Physical* const next = peek(0);
    return next != nullptr && !next->text.empty() &&
           next->text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

void LogReader::join(LogLine& line) {
    if (line.trace.known != nullptr && !line.trace.shortened) {
        if (isWrapped(line)) {
            joinWith(line, "", 1);
        }
        joinLastText(line);
    } else if (!joinWith(line, "\n", kMostTextLines) && !joinWith(line, "", kMostWrappedLines)) {
        joinWith(line, " ", kMostWrappedLines);
    }
}

/// Whether the first line of the log lacks its beginning: those after it have a header that it has
/// not, or are of the bridge where it is not.
bool LogReader::beginIsCut(const LogLine& line) {
    if (line.kind <= LogLineKind::kShortened) {
        const Physical* const next = peek(0);
        const LogForm form = next != nullptr ? readHeader(next->text).form : LogForm::kRaw;
        return form != LogForm::kRaw && form != LogForm::kLong && form != line.header.form;
    }
    if (line.kind != LogLineKind::kForeign || line.text.empty()) {
        return false;
    }
    if (hasEndOfTraceLine(line.text)) {
        return true;
    }
    if (line.header.form != LogForm::kRaw) {
        return false;
    }
    const Physical* const next = peek(0);
    if (next == nullptr) {
        return false;
    }
    const bool next_is_trace = beginsAsTrace(next->text);
    const Physical* const second = peek(1);
    const LogForm form = readHeader(peek(0)->text).form;
    return next_is_trace ? second != nullptr && beginsAsTrace(second->text) : form != LogForm::kRaw;
}

/// Says that the log begins or ends in the middle of a line.
void LogReader::markCut(LogLine& line) {
    if (line.first == 1 && beginIsCut(line)) {
        line.cut = true;
    }
    if (current_.unended) {
        // The tag of the process form is the last of its line.
        const bool lacks_tag = line.header.form == LogForm::kProcess && line.header.tag.empty();
        const bool lacks_text = line.kind == LogLineKind::kForeign
                                    ? line.header.form == LogForm::kRaw
                                    : endsWithValue(line.trace.known) || line.trace.shortened;
        line.cut = lacks_tag || lacks_text;
    }
}

void LogReader::count(const LogLine& line) {
    if (line.kind > LogLineKind::kCopy) {
        return;
    }
    ++counts_.of_bridge;
    counts_.understood += line.trace.known != nullptr && !line.trace.shortened;
    counts_.shortened += line.trace.shortened;
    if (line.kind != LogLineKind::kCopy && !line.trace.function.empty()) {
        ++counts_.of_level[static_cast<size_t>(line.trace.level)];
        ++counts_.of_form[static_cast<size_t>(line.header.form)];
    }
}

} // namespace sessions
