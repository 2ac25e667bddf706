#include "desk/show/message.h"

#include "desk/show/names.h"
#include "desk/show/quoted_text.h"
#include "desk/show/record_text.h"

#include <cstdio>
#include <ctime>
#include <limits>

namespace show {
namespace {

using sessions::Bytes;
using sessions::Message;
using Kind = Message::Kind;

constexpr size_t kIndent = 4;
constexpr size_t kHeadlineIndent = 17; ///< after the time

/// Whether there may be a record, even one without bytes.
bool mayHaveRecord(const Message& message, const catalogue::Record* layout) {
    return message.is(Kind::kCommand) || message.is(Kind::kEvent) || layout != nullptr ||
           message.size != 0 || !message.record.empty();
}

std::string threadText(const Message& message) {
    const std::string name = shownText(message.thread_name);
    return name + (name.empty() ? "" : " ") + '(' + std::to_string(message.thread_id) + ')';
}

std::string sizeText(const Message& message) {
    const uint64_t size = uint64_t{message.record.size()} + message.left_out;
    if (size == 0 && message.size != 0) {
        return "size " + std::to_string(message.size) + ", no record";
    }
    std::string text = std::to_string(size) + (size == 1 ? " byte" : " bytes");
    if (message.size < 0 || size != static_cast<uint64_t>(message.size)) {
        text += ", told " + std::to_string(message.size);
    }
    return text;
}

std::vector<std::string> headline(const Message& message, const catalogue::Message* known,
                                  const catalogue::Record* layout) {
    // A line may end after each of these.
    std::vector<std::string> words{threadText(message) + ' '};
    const auto add = [&words](const std::string& part) {
        words.back() += ',';
        words.push_back(part);
    };
    const std::string id = idText(message.id);
    const std::string arrow = arrowOf(message);
    if (known != nullptr) {
        words.push_back(arrow + ' ' + std::string(known->name));
        words.push_back(id);
    } else {
        words.push_back(arrow + ' ' + id);
        add("unknown message");
    }
    if (message.is(Kind::kAnswer) || message.is(Kind::kRefusedEvent)) {
        words.push_back("returned " + std::to_string(message.value));
    } else if (!message.is(Kind::kCommand) && !message.is(Kind::kEvent)) {
        add("unknown kind " + std::to_string(message.kind));
    }
    if (mayHaveRecord(message, layout)) {
        add(sizeText(message));
    }
    if (layout != nullptr && !message.record.empty()) {
        add(layout->name);
    }
    if (message.surfaces > 0) {
        add(std::to_string(message.surfaces) + (message.surfaces == 1 ? " surface" : " surfaces"));
    }
    return wrappedWords(words, kColumns - kHeadlineIndent);
}

} // namespace

std::vector<std::string> messageLines(const sessions::Message& message, const std::string& time) {
    const catalogue::Message* known = catalogue::find(message.id);
    const catalogue::Record* layout = layoutOf(message, known);
    std::vector<std::string> lines = headline(message, known, layout);
    for (std::string& line : lines) {
        line.insert(0, &line == &lines.front() ? time + "  " : std::string(kHeadlineIndent, ' '));
    }

    const Bytes record{message.record.data(), message.record.size()};
    // An empty answer and a missing record are in the headline.
    const bool shown = record.size > 0 || (message.size == 0 && !message.is(Kind::kAnswer));
    if (shown) {
        const std::vector<std::string> fields =
            layout != nullptr ? recordLines(*layout, record, kIndent, message.known)
                              : dumpLines(record, kIndent);
        lines.insert(lines.end(), fields.begin(), fields.end());
    }
    if (message.left_out > 0) {
        lines.push_back(std::string(kIndent, ' ') + "the capture lacks the " +
                        std::to_string(message.left_out) + " bytes that follow");
    }
    return lines;
}

LocalTime localTime(const sessions::Moment& moment) {
    std::tm fields{};
    // Where time_t has 32 bits, or the year is beyond an int, only the count remains.
    if (moment.seconds > std::numeric_limits<time_t>::max() ||
        moment.seconds < std::numeric_limits<time_t>::min()) {
        return {"no date", std::to_string(moment.seconds)};
    }
    const auto seconds = static_cast<time_t>(moment.seconds);
    if (localtime_r(&seconds, &fields) == nullptr) {
        return {"no date", std::to_string(moment.seconds)};
    }
    char date[64];
    char time[64];
    std::snprintf(date, sizeof date, "%04d-%02d-%02d", fields.tm_year + 1900, fields.tm_mon + 1,
                  fields.tm_mday);
    std::snprintf(time, sizeof time, "%02d:%02d:%02d.%06u", fields.tm_hour, fields.tm_min,
                  fields.tm_sec, moment.nanoseconds / 1000);
    return {date, time};
}

} // namespace show
