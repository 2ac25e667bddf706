#include "sessions/log/trace_lines.h"

#include "sessions/log/text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

namespace sessions {
namespace {

struct TraceCall {
    TraceLevel level;
    std::string_view function;
    std::string_view file;
    int source_line;
    std::string_view format;
};

namespace level_word {
constexpr TraceLevel ERROR = TraceLevel::kError;
constexpr TraceLevel FUNCSTART = TraceLevel::kFuncStart;
constexpr TraceLevel FUNCEND = TraceLevel::kFuncEnd;
constexpr TraceLevel INFO = TraceLevel::kInfo;
constexpr TraceLevel DEBUG = TraceLevel::kDebug;
} // namespace level_word

constexpr TraceCall kTraceCalls[] = {
#define TRACE_CALL(level, function, file, line, format)                                            \
    {level_word::level, function, file, line, format},
#include <trace_calls.def>
#undef TRACE_CALL
};

constexpr const char* kLevelNames[kTraceLevels] = {"ERROR", "FUNCSTART", "FUNCEND", "INFO",
                                                   "DEBUG"};
constexpr size_t kLevelWidth = 9; ///< characters of a level in a line, blanks at its end

constexpr std::string_view kStart = ",TENRIK,";

bool isLabelCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.' || c == '>' || c == '-' || c == '[' || c == ']' || c == '(' || c == ')';
}

/// What a format calls the value after `literal`: the word before " = " or " : ".
std::string_view labelBefore(std::string_view literal) {
    size_t end = literal.size();
    while (end > 0 && std::strchr("=: |'", literal[end - 1]) != nullptr) {
        --end;
    }
    if (end == literal.size()) {
        return {};
    }
    size_t begin = end;
    while (begin > 0 && isLabelCharacter(literal[begin - 1])) {
        --begin;
    }
    return literal.substr(begin, end - begin);
}

KnownLine known(const TraceCall& call) {
    KnownLine line{call.level, call.function, call.file, call.source_line, call.format, {}, {}};
    std::string_view rest = call.format;
    for (size_t percent = rest.find('%'); percent != std::string_view::npos;
         percent = rest.find('%')) {
        size_t end = percent + 1;
        while (std::strchr("0123456789-l", rest[end]) != nullptr) {
            ++end;
        }
        const std::string_view literal = rest.substr(0, percent);
        line.literals.push_back(literal);
        line.values.push_back({labelBefore(literal), rest[end]});
        rest.remove_prefix(end + 1);
    }
    line.literals.push_back(rest);
    return line;
}

/// The lines by the function that writes them; those written on behalf of others under "".
using LinesByFunction = std::unordered_map<std::string_view, std::vector<const KnownLine*>>;

const LinesByFunction& linesByFunction() {
    // Never destroyed: lines may be read until the process has ended.
    static const LinesByFunction& lines = *new LinesByFunction([] {
        LinesByFunction by_function;
        for (const KnownLine& line : knownLines()) {
            by_function[line.function].push_back(&line);
        }
        for (auto& [function, of_function] : by_function) {
            // The longest text first: a format that says more is not taken for one that says less.
            std::stable_sort(of_function.begin(), of_function.end(),
                             [](const KnownLine* one, const KnownLine* other) {
                                 return one->format.size() > other->format.size();
                             });
        }
        return by_function;
    }());
    return lines;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// How long the number at the start of a text is, and its value. 0: there is none.
size_t readNumber(std::string_view text, char conversion, int64_t& number) {
    size_t at = 0;
    uint64_t value = 0;
    if (conversion == 'd') {
        const bool negative = !text.empty() && text.front() == '-';
        at = negative ? 1 : 0;
        const size_t first = at;
        while (at < text.size() && isDigit(text[at]) && at - first < 19) {
            value = value * 10 + static_cast<uint64_t>(text[at++] - '0');
        }
        number = static_cast<int64_t>(negative ? 0 - value : value);
        return at == first ? 0 : at;
    }
    if (conversion == 'p') {
        constexpr std::string_view kNull = "(nil)";
        if (text.substr(0, kNull.size()) == kNull) {
            number = 0;
            return kNull.size();
        }
        if (text.substr(0, 2) == "0x") {
            at = 2;
        }
    }
    const size_t first = at;
    while (at < text.size() && hexDigit(text[at]) >= 0 && at - first < 16) {
        value = value << 4 | static_cast<uint64_t>(hexDigit(text[at++]));
    }
    number = static_cast<int64_t>(value);
    return at == first ? 0 : at;
}

/// Holds a message against a format.
class Match {
public:
    Match(const KnownLine& known, std::vector<ShownValue>& values)
        : known_(known), values_(values) {}

    bool whole(std::string_view message) {
        values_.clear();
        const std::string_view first = known_.literals.front();
        if (message.substr(0, first.size()) != first) {
            return false;
        }
        message.remove_prefix(first.size());
        size_t index = 0;
        if (!numbers(index, message)) {
            return false;
        }
        // A text may hold what follows it as well: it ends at the first place where the rest fits.
        // When the rest up to the next text fits there, no later place is better for it: what comes
        // then has less left to be found in.
        while (index < known_.values.size()) {
            if (!text(index, message)) {
                return false;
            }
        }
        return message.empty();
    }

    /// Whether the format begins as the message does; the values up to there.
    bool beginning(std::string_view message) {
        values_.clear();
        for (size_t index = 0;; ++index) {
            const std::string_view literal = known_.literals[index];
            if (message.size() <= literal.size() || index == known_.values.size()) {
                // A message that ends where a value begins lacks that value.
                const bool lacks = message.size() < literal.size() || index < known_.values.size();
                return lacks && literal.substr(0, message.size()) == message;
            }
            if (message.substr(0, literal.size()) != literal) {
                return false;
            }
            message.remove_prefix(literal.size());
            const KnownLine::Value& value = known_.values[index];
            const std::string_view next = known_.literals[index + 1];
            ShownValue shown;
            size_t length = message.size();
            if (value.conversion != 's') {
                length = readNumber(message, value.conversion, shown.number);
            } else if (!next.empty() && message.find(next) != std::string_view::npos) {
                length = message.find(next);
            }
            shown.text = message.substr(0, length);
            values_.push_back(shown);
            message.remove_prefix(length);
            if (message.empty()) {
                return true;
            }
            if (length == 0 && value.conversion != 's') {
                return false;
            }
        }
    }

private:
    /// Takes the numbers from that value on and the literals after them, up to a text or the end.
    bool numbers(size_t& index, std::string_view& message) {
        for (; index < known_.values.size() && known_.values[index].conversion != 's'; ++index) {
            const std::string_view next = known_.literals[index + 1];
            ShownValue value;
            const size_t length =
                readNumber(message, known_.values[index].conversion, value.number);
            // Blanks at the end of a line are lost where it was edited or mailed.
            const bool lacks_blanks = length == message.size() && withoutBlanksAtEnd(next).empty();
            if (length == 0 || (message.substr(length, next.size()) != next && !lacks_blanks)) {
                return false;
            }
            value.text = message.substr(0, length);
            values_.push_back(value);
            message.remove_prefix(std::min(length + next.size(), message.size()));
        }
        return true;
    }

    /// Takes a text, and the numbers after it.
    bool text(size_t& index, std::string_view& message) {
        const std::string_view next = known_.literals[index + 1];
        ShownValue value;
        if (index + 1 == known_.values.size()) {
            // The last text goes to the literal at the end.
            if (message.size() < next.size() ||
                message.substr(message.size() - next.size()) != next) {
                return false;
            }
            value.text = message.substr(0, message.size() - next.size());
            values_.push_back(value);
            message = {};
            ++index;
            return true;
        }
        const size_t before = values_.size();
        for (size_t end = message.find(next); end != std::string_view::npos;
             end = message.find(next, end + 1)) {
            value.text = message.substr(0, end);
            values_.push_back(value);
            size_t after = index + 1;
            std::string_view rest = message.substr(end + next.size());
            if (numbers(after, rest) && (after < known_.values.size() || rest.empty())) {
                index = after;
                message = rest;
                return true;
            }
            values_.resize(before);
        }
        return false;
    }

    const KnownLine& known_;
    std::vector<ShownValue>& values_;
};

/// "getJNIEnv():  80]" or "getJNIEnv(),  41,": a function and a source line, and what ends each.
bool readPlace(std::string_view& text, char after_function, char after_line, TraceLine& line) {
    const size_t end = text.find("()");
    if (end == std::string_view::npos || end + 2 >= text.size() ||
        text[end + 2] != after_function ||
        !std::all_of(text.begin(), text.begin() + static_cast<ptrdiff_t>(end),
                     [](char c) { return isLabelCharacter(c); })) {
        return false;
    }
    line.function = text.substr(0, end);
    text.remove_prefix(end + 3);
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    int64_t number = 0;
    const size_t length = readNumber(text, 'd', number);
    if (length == 0 || length > 9 || length >= text.size() || text[length] != after_line) {
        return false;
    }
    line.source_line = static_cast<int>(number);
    text.remove_prefix(length + 1);
    return true;
}

/// The level whose word begins a text, padded to its width.
std::optional<TraceLevel> levelAt(std::string_view text) {
    for (int level = 0; level < kTraceLevels; ++level) {
        const std::string_view name = kLevelNames[level];
        if (text.size() >= kLevelWidth && text.substr(0, name.size()) == name &&
            text.substr(0, kLevelWidth).find_first_not_of(' ', name.size()) ==
                std::string_view::npos) {
            return static_cast<TraceLevel>(level);
        }
    }
    return std::nullopt;
}

bool tryLines(const LinesByFunction& lines, std::string_view function, TraceLine& line) {
    const auto found = lines.find(function);
    if (found == lines.end()) {
        return false;
    }
    for (const KnownLine* known : found->second) {
        if (known->level == line.level && Match(*known, line.values).whole(line.message)) {
            line.known = known;
            return true;
        }
    }
    return false;
}

/// The line whose beginning the message is, when that says anything.
void tryBeginnings(const LinesByFunction& lines, std::string_view function, TraceLine& line) {
    const auto found = lines.find(function);
    if (found == lines.end() || line.known != nullptr || line.message.empty()) {
        return;
    }
    for (const KnownLine* known : found->second) {
        if (known->level == line.level && Match(*known, line.values).beginning(line.message)) {
            line.known = known;
            line.shortened = true;
            return;
        }
    }
}

/// Nothing of the line before; the room of its values is kept.
void clear(TraceLine& line) {
    line.task = {};
    line.level = TraceLevel::kDebug;
    line.function = {};
    line.source_line = 0;
    line.message = {};
    line.known = nullptr;
    line.shortened = false;
    line.values.clear();
}

} // namespace

const char* nameOf(TraceLevel level) {
    return kLevelNames[static_cast<size_t>(level)];
}

const std::vector<KnownLine>& knownLines() {
    static const std::vector<KnownLine>& lines = *new std::vector<KnownLine>([] {
        std::vector<KnownLine> all;
        for (const TraceCall& call : kTraceCalls) {
            all.push_back(known(call));
        }
        return all;
    }());
    return lines;
}

const ShownValue* TraceLine::value(std::string_view label) const {
    for (size_t i = 0; i < values.size(); ++i) {
        if (known->values[i].label == label) {
            return &values[i];
        }
    }
    return nullptr;
}

std::optional<int64_t> TraceLine::number(std::string_view label) const {
    const ShownValue* const found = value(label);
    return found != nullptr ? std::optional(found->number) : std::nullopt;
}

size_t findTraceLine(std::string_view text) {
    return text.find(kStart);
}

bool readTraceLine(std::string_view text, TraceLine& line) {
    clear(line);
    if (text.substr(0, kStart.size()) != kStart) {
        return false;
    }
    text.remove_prefix(kStart.size());
    // A thread may have any name: the level is the first comma that a level follows.
    for (size_t comma = text.find(','); comma != std::string_view::npos;
         comma = text.find(',', comma + 1)) {
        const std::optional<TraceLevel> level = levelAt(text.substr(comma + 1));
        if (!level) {
            continue;
        }
        line.task = withoutBlanksAtEnd(text.substr(0, comma));
        line.level = *level;
        text.remove_prefix(comma + 1 + kLevelWidth);
        if (text.empty() || text.front() != ',') {
            return false;
        }
        text.remove_prefix(1);
        if (!readPlace(text, ',', ',', line)) {
            return false;
        }
        line.message = text;
        return true;
    }
    return false;
}

void understand(TraceLine& line) {
    const LinesByFunction& lines = linesByFunction();
    if (tryLines(lines, line.function, line) || tryLines(lines, "", line)) {
        return;
    }
    tryBeginnings(lines, line.function, line);
    tryBeginnings(lines, "", line);
    if (line.known == nullptr) {
        line.values.clear();
    }
}

bool readTraceCopy(std::string_view text, TraceLine& line) {
    clear(line);
    constexpr std::string_view kModule = "JNIDtvSvLibListener(";
    const size_t task = text.find("):<");
    if (text.substr(0, kModule.size()) != kModule || task == std::string_view::npos) {
        return false;
    }
    for (size_t end = text.find('>', task); end != std::string_view::npos;
         end = text.find('>', end + 1)) {
        const std::optional<TraceLevel> level = levelAt(text.substr(end + 1));
        if (!level) {
            continue;
        }
        line.task = withoutBlanksAtEnd(text.substr(task + 3, end - task - 3));
        line.level = *level;
        text.remove_prefix(end + 1 + kLevelWidth);
        if (text.substr(0, 2) != " [") {
            return false;
        }
        text.remove_prefix(2);
        if (!readPlace(text, ':', ']', line)) {
            return false;
        }
        line.message = text.substr(text.empty() ? 0 : 1);
        return true;
    }
    return false;
}

} // namespace sessions
