#include "desk/report/session_data.h"

#include "desk/show/json_text.h"
#include "desk/show/names.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <map>

namespace report {
namespace {

using pictures::Entry;
using pictures::Line;
using pictures::Span;
using pictures::Timeline;

std::string base64(const std::string& bytes) {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t at = 0; at < bytes.size(); at += 3) {
        unsigned group = 0;
        for (size_t i = 0; i < 3; ++i) {
            group = group << 8 | (at + i < bytes.size() ? static_cast<uint8_t>(bytes[at + i]) : 0U);
        }
        for (size_t i = 0; i < 4; ++i) {
            const bool is_padding = at + i > bytes.size();
            text += is_padding ? '=' : digits[group >> (18 - 6 * i) & 0x3f];
        }
    }
    return text;
}

/// The texts of a document, each once.
class Texts {
public:
    size_t numberOf(const std::string& text) {
        const auto [found, added] = numbers_.try_emplace(text, texts_.size());
        if (added) {
            texts_.push_back(&found->first);
        }
        return found->second;
    }

    std::string json() const {
        std::string json;
        for (const std::string* text : texts_) {
            json += (json.empty() ? "" : ",\n") + show::jsonText(*text);
        }
        return '[' + json + ']';
    }

private:
    std::map<std::string, size_t> numbers_;
    std::vector<const std::string*> texts_;
};

/// `"name":[value,...]` with a value for each element.
template <class Elements, class ValueOf>
std::string column(const char* name, const Elements& elements, ValueOf value_of) {
    std::string json = std::string("\"") + name + "\":[";
    bool first = true;
    for (const auto& element : elements) {
        if (!first) {
            json += ',';
        }
        first = false;
        json += std::to_string(value_of(element));
    }
    return json + ']';
}

std::string object(std::initializer_list<std::string> members) {
    std::string json;
    for (const std::string& member : members) {
        json += (json.empty() ? "{" : ",\n") + member;
    }
    return json + '}';
}

std::string quoted(const char* name, const std::string& json) {
    return std::string("\"") + name + "\":" + json;
}

int64_t baseOf(const Timeline& timeline) {
    int64_t base = std::numeric_limits<int64_t>::max();
    for (const Entry& entry : timeline.entries) {
        base = std::min(base, pictures::nanoseconds(entry.message.time));
    }
    for (const Span& span : timeline.spans) {
        base = std::min(base, span.begin);
    }
    for (const Line& line : timeline.lines) {
        base = std::min(base, line.time);
    }
    return base == std::numeric_limits<int64_t>::max() ? 0 : base;
}

std::string threadsJson(const Timeline& timeline) {
    std::string json;
    for (const pictures::Thread& thread : timeline.threads) {
        json += (json.empty() ? "" : ",") + std::string("{\"id\":") + std::to_string(thread.id) +
                ",\"run\":" + std::to_string(thread.run) +
                ",\"name\":" + show::jsonText(thread.name) + '}';
    }
    return '[' + json + ']';
}

/// The bytes of the records after one another.
std::string recordsOf(const Timeline& timeline) {
    std::string bytes;
    for (const Entry& entry : timeline.entries) {
        bytes.append(entry.message.record.begin(), entry.message.record.end());
    }
    return bytes;
}

/// For the messages with bytes that are not known: the number of the message, and which bytes, as
/// pairs of a first one and one after the last.
std::string unknownJson(const Timeline& timeline) {
    std::string json;
    for (size_t i = 0; i < timeline.entries.size(); ++i) {
        const std::vector<bool>& known = timeline.entries[i].message.known;
        std::string ranges;
        for (size_t at = 0; at < known.size(); ++at) {
            const bool begins = !known[at] && (at == 0 || known[at - 1]);
            const bool ends = !known[at] && (at + 1 == known.size() || known[at + 1]);
            if (begins) {
                ranges += (ranges.empty() ? "" : ",") + std::to_string(at);
            }
            if (ends) {
                ranges += ',' + std::to_string(at + 1);
            }
        }
        if (!ranges.empty()) {
            json += (json.empty() ? "\"" : ",\"") + std::to_string(i) + "\":[" + ranges + ']';
        }
    }
    return '{' + json + '}';
}

std::string messagesJson(const Timeline& timeline, int64_t base) {
    const auto& all = timeline.entries;
    return object({
        column("number", all, [](const Entry& each) { return each.link.number; }),
        column(
            "time", all,
            [base](const Entry& each) { return pictures::nanoseconds(each.message.time) - base; }),
        column("kind", all, [](const Entry& each) { return each.message.kind; }),
        column("id", all, [](const Entry& each) { return each.message.id; }),
        column("thread", all, [](const Entry& each) { return each.thread; }),
        column("value", all, [](const Entry& each) { return each.message.value; }),
        column("size", all, [](const Entry& each) { return each.message.size; }),
        column("surfaces", all, [](const Entry& each) { return each.message.surfaces; }),
        column("session", all,
               [](const Entry& each) { return each.link.session ? int{*each.link.session} : -1; }),
        column("partner", all, [](const Entry& each) { return each.link.partner; }),
        column("ambiguous", all, [](const Entry& each) { return int{each.link.ambiguous}; }),
        column("length", all, [](const Entry& each) { return each.message.record.size(); }),
        quoted("unknown", unknownJson(timeline)),
        quoted("records", '"' + base64(recordsOf(timeline)) + '"'),
    });
}

std::string callsJson(const Timeline& timeline, int64_t base, Texts& texts) {
    const auto& all = timeline.spans;
    return object({
        column("kind", all, [](const Span& each) { return static_cast<int>(each.kind); }),
        column("name", all, [&texts](const Span& each) { return texts.numberOf(each.name); }),
        column("thread", all, [](const Span& each) { return each.thread; }),
        column("begin", all, [base](const Span& each) { return each.begin - base; }),
        column("end", all, [base](const Span& each) { return each.end - base; }),
        column("message", all, [](const Span& each) { return each.number; }),
        column("failure", all, [&texts](const Span& each) { return texts.numberOf(each.failure); }),
        column("function", all,
               [&texts](const Span& each) { return texts.numberOf(each.function); }),
        column("source", all, [](const Span& each) { return each.source_line; }),
        column("line", all, [](const Span& each) { return each.line; }),
    });
}

std::string linesJson(const Timeline& timeline, int64_t base, Texts& texts) {
    const auto& all = timeline.lines;
    return object({
        column("number", all, [](const Line& each) { return each.number; }),
        column("time", all, [base](const Line& each) { return each.time - base; }),
        column("level", all, [](const Line& each) { return static_cast<int>(each.level); }),
        column("tid", all, [](const Line& each) { return each.tid; }),
        column("task", all, [&texts](const Line& each) { return texts.numberOf(each.task); }),
        column("text", all, [&texts](const Line& each) { return texts.numberOf(each.text); }),
    });
}

std::string damagesJson(const Timeline& timeline) {
    std::string json;
    for (const std::string& damage : timeline.damages) {
        json += (json.empty() ? "" : ",") + show::jsonText(damage);
    }
    return '[' + json + ']';
}

} // namespace

std::string sessionData(const Timeline& timeline, const Source& source) {
    const int64_t base = baseOf(timeline);
    Texts texts;
    const std::string calls = callsJson(timeline, base, texts);
    const std::string lines = linesJson(timeline, base, texts);
    return object({
               "\"version\":1",
               quoted("file", show::jsonText(source.name)),
               quoted("base", '"' + std::to_string(base) + '"'),
               quoted("clock", timeline.is_capture ? "\"utc\"" : "\"receiver\""),
               quoted("times", timeline.has_times ? "true" : "false"),
               quoted("count", std::to_string(timeline.messages)),
               quoted("damages", damagesJson(timeline)),
               quoted("threads", threadsJson(timeline)),
               quoted("messages", messagesJson(timeline, base)),
               quoted("calls", calls),
               quoted("lines", lines),
               quoted("texts", texts.json()),
               quoted("findings", source.findings),
           }) +
           '\n';
}

std::string packed(const std::string& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string bytes(size, '\0');
    const int result =
        compress2(reinterpret_cast<Bytef*>(bytes.data()), &size,
                  reinterpret_cast<const Bytef*>(data.data()), static_cast<uLong>(data.size()), 6);
    bytes.resize(result == Z_OK ? size : 0);
    return base64(bytes);
}

} // namespace report
