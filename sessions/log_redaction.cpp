#include "sessions/log_redaction.h"

#include "sessions/log/record_fields.h"
#include "sessions/log/text.h"

#include <algorithm>

namespace sessions {
namespace {

/// A text that the bridge's lines show and no record has.
struct PublicValue {
    std::string_view function;
    std::string_view label; ///< as in KnownLine::Value
};

/// Names of the Java side's classes and methods.
constexpr PublicValue kPublicValues[] = {
    {"setJavaClass", "class_name"}, {"setJavaClass", "class"},  {"setJavaMethod", "method_name"},
    {"setJavaMethod", "signature"}, {"registerNatives", "for"},
};

bool isPublicValue(const KnownLine& line, std::string_view label) {
    return std::any_of(std::begin(kPublicValues), std::end(kPublicValues),
                       [&](const PublicValue& value) {
                           return value.function == line.function && value.label == label;
                       });
}

/// The buffers that logcat names in "--------- beginning of main".
constexpr std::string_view kBuffers[] = {"main", "system", "crash", "events", "radio", "kernel"};

constexpr std::string_view kTraceStart = ",TENRIK,";
constexpr std::string_view kChatty = "chatty";
constexpr std::string_view kUser = "uid=";
constexpr std::string_view kLine = " line";

/// A line of a log: its text, and what stands around it.
struct Parts {
    std::string_view before; ///< the header
    std::string_view text;
    std::string_view after; ///< the tag, in one form
};

Parts partsOf(std::string_view line) {
    const std::string_view text = readHeader(line).text;
    const size_t begin =
        text.empty() ? line.size() : static_cast<size_t>(text.data() - line.data());
    return {line.substr(0, begin), text, line.substr(begin + text.size())};
}

constexpr std::string_view kAfterFunction = "(),";

constexpr std::string_view kFrame = "at ";
constexpr std::string_view kJavaSide = "tenrik.service.dtvserver.";
constexpr const char* kNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.$";
constexpr const char* kFrameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.$(:)< >";

/// What stays of a word that may be the name of an exception: the whole name of one of Java's own,
/// the last word of another; empty when it is none.
std::string_view exceptionIn(std::string_view word) {
    for (const std::string_view ending : {"Exception", "Error"}) {
        if (word.size() >= ending.size() && word.substr(word.size() - ending.size()) == ending) {
            const bool is_public = beginsWith(word, "java.lang.") ||
                                   beginsWith(word, "java.util.") || beginsWith(word, "java.io.");
            return is_public ? word : word.substr(word.size() - ending.size());
        }
    }
    return {};
}

/// The message that a line of the trace shows, or null.
const catalogue::Message* messageOf(const TraceLine& trace) {
    const catalogue::Message* command = commandOf(trace.function);
    return command != nullptr ? command : eventOf(trace.function);
}

} // namespace

std::string LogRedaction::replaced(std::string_view text) {
    return redaction_.redactedText({}, {}, text);
}

std::vector<std::string> LogRedaction::redact(const LogLine& line,
                                              const std::vector<std::string>& lines) {
    std::vector<Parts> parts;
    size_t size = 0;
    for (const std::string& each : lines) {
        parts.push_back(partsOf(each));
        size += parts.back().text.size();
    }
    // Lines that were joined are redacted as one, so that a text of several lines is replaced as
    // the same text in a record is. Then they are parted where they were.
    const std::string whole = redactText(line, parts.front().text);
    const size_t joints = lines.size() - 1;
    const size_t joint = joints > 0 && whole.size() > size ? (whole.size() - size) / joints : 0;
    std::vector<std::string> copy;
    size_t begin = 0;
    for (const Parts& each : parts) {
        const bool fits = whole.size() == size + joint * joints;
        copy.push_back(
            std::string(each.before)
                .append(fits ? whole.substr(begin, each.text.size()) : replaced(each.text))
                .append(each.after));
        begin += each.text.size() + joint;
    }
    return copy;
}

/// `first` is the text of its first line.
std::string LogRedaction::redactText(const LogLine& line, std::string_view first) {
    switch (line.kind) {
    case LogLineKind::kTrace:
    case LogLineKind::kNotKnown:
    case LogLineKind::kShortened:
        note(line.header);
        // What is before the trace belongs to no header that is known.
        return replaced(first.substr(0, findTraceLine(first))) + redactTrace(line);
    case LogLineKind::kCopy:
        note(line.header);
        return redactTrace(line);
    case LogLineKind::kDropped:
        return redactDropped(first);
    case LogLineKind::kSection:
        return redactSection(first);
    case LogLineKind::kForeign:
        break;
    }
    if (isKept(line)) {
        return std::string(first);
    }
    return line.cut ? redactCut(first) : redactOther(first);
}

/// The end of a line of the bridge that lacks its beginning: "(),  87," stays, which shows that.
std::string LogRedaction::redactCut(std::string_view text) {
    const size_t begin = std::min(text.find(kAfterFunction), text.size());
    size_t end = std::min(begin + kAfterFunction.size(), text.size());
    end = std::min(text.find_first_not_of(" 0123456789,", end), text.size());
    return replaced(text.substr(0, begin)) + std::string(text.substr(begin, end - begin)) +
           replaced(text.substr(end));
}

/// A line of another program. Of a stack trace stay the names of Java's own exceptions and the
/// frames of the Java side's classes, by which a reader knows what went through a callback.
std::string LogRedaction::redactOther(std::string_view text) {
    const size_t frame = std::min(text.find_first_not_of(" \t"), text.size());
    if (beginsWith(text.substr(frame), kFrame)) {
        const std::string_view place = text.substr(frame + kFrame.size());
        if (beginsWith(place, kJavaSide) &&
            place.find_first_not_of(kFrameCharacters) == std::string_view::npos) {
            return std::string(text);
        }
        return std::string(text.substr(0, frame + kFrame.size())) + replaced(place);
    }
    std::string redacted;
    size_t done = 0;
    for (size_t begin = 0; begin < text.size();) {
        size_t end = std::min(text.find_first_not_of(kNameCharacters, begin), text.size());
        const std::string_view kept = exceptionIn(text.substr(begin, end - begin));
        if (!kept.empty()) {
            redacted += replaced(text.substr(done, end - kept.size() - done));
            redacted += kept;
            done = end;
        }
        begin = std::max(end, begin + 1);
    }
    return redacted + replaced(text.substr(done));
}

/// A line of the bridge, without what is before it.
std::string LogRedaction::redactTrace(const LogLine& line) {
    const std::string_view text = line.text;
    TraceLine trace;
    const bool is_copy = line.kind == LogLineKind::kCopy;
    if (!(is_copy ? readTraceCopy(text, trace) : readTraceLine(text, trace))) {
        const std::string_view start = text.substr(0, kTraceStart.size());
        return std::string(start) + replaced(text.substr(start.size()));
    }
    understand(trace);
    const size_t begin = text.size() - trace.message.size();
    std::string redacted(text);
    if (trace.known == nullptr) {
        return redacted.replace(begin, std::string::npos, replaced(trace.message));
    }
    const catalogue::Message* message = messageOf(trace);
    for (size_t i = 0; i < trace.values.size(); ++i) {
        const std::string_view value = trace.values[i].text;
        const KnownLine::Value& known = trace.known->values[i];
        if (known.conversion != 's' || isPublicValue(*trace.known, known.label)) {
            continue;
        }
        const std::string field =
            message != nullptr ? fieldsShown(*trace.known, *message->record)[i].path : "";
        redacted.replace(
            static_cast<size_t>(value.data() - text.data()), value.size(),
            redaction_.redactedText(message != nullptr ? message->name : "", field, value));
    }
    return redacted;
}

/// "chatty" or "uid=", and "expire 12 lines" stay, by which a reader knows that lines are missing.
std::string LogRedaction::redactDropped(std::string_view text) {
    size_t begin = std::string_view::npos;
    size_t end = std::string_view::npos;
    for (const std::string_view word : {"expire ", "identical "}) {
        const size_t found = text.rfind(word);
        const size_t digits = found + word.size();
        end = found != std::string_view::npos ? text.find_first_not_of("0123456789", digits)
                                              : std::string_view::npos;
        if (end != std::string_view::npos && end > digits && beginsWith(text.substr(end), kLine)) {
            begin = found;
            break;
        }
    }
    if (begin == std::string_view::npos) {
        return replaced(text);
    }
    end += kLine.size();
    const std::string_view before = text.substr(0, begin);
    std::string_view mark;
    size_t start = begin;
    for (const std::string_view one : {kChatty, kUser}) {
        const size_t found = before.find(one);
        if (found != std::string_view::npos) {
            mark = one;
            start = found;
            break;
        }
    }
    return replaced(before.substr(0, start)) + std::string(mark) +
           replaced(before.substr(start + mark.size())) +
           std::string(text.substr(begin, end - begin)) + replaced(text.substr(end));
}

/// "--------- beginning of main" stays; of another, its dashes.
std::string LogRedaction::redactSection(std::string_view text) {
    for (const std::string_view start : {"--------- beginning of ", "--------- switch to "}) {
        if (beginsWith(text, start) && std::find(std::begin(kBuffers), std::end(kBuffers),
                                                 text.substr(start.size())) != std::end(kBuffers)) {
            return std::string(text);
        }
    }
    const size_t dashes = std::min(text.find(' ') + 1, text.size());
    return std::string(text.substr(0, dashes)) + replaced(text.substr(dashes));
}

/// Takes the marks of a line of the bridge.
void LogRedaction::note(const LineHeader& header) {
    if (!header.tag.empty() && tags_.find(header.tag) == tags_.end()) {
        tags_.emplace(header.tag);
    }
    if (header.pid >= 0) {
        processes_.insert(header.pid);
    }
}

/// Whether a line is surely of another program: what is left of a line of the bridge has its marks,
/// or no header.
bool LogRedaction::isKept(const LogLine& line) const {
    const LineHeader& header = line.header;
    if (others_ == OtherLines::kReplaced || line.cut || header.form == LogForm::kRaw ||
        header.form == LogForm::kOther) {
        return false;
    }
    // Before the first line of the bridge, its process is not known.
    return header.tag.empty()
               ? header.pid >= 0 && !processes_.empty() && processes_.count(header.pid) == 0
               : tags_.find(header.tag) == tags_.end();
}

} // namespace sessions
