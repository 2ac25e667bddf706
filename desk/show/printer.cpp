#include "desk/show/printer.h"

#include "desk/show/brief_text.h"
#include "desk/show/json_text.h"
#include "desk/show/message.h"
#include "desk/show/quoted_text.h"
#include "desk/show/record_text.h"

#include <algorithm>
#include <cstdio>

namespace show {
namespace {

using sessions::Link;
using sessions::Message;

/// Of commands that wait and of errors, so that what is kept and printed at the end is bounded.
constexpr size_t kMostNamed = 20;
constexpr size_t kMostErrors = 1000;

void put(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

/// The two forms of lines.
class LinePrinter : public Printer {
public:
    LinePrinter(const Filter& filter, bool at_once, bool brief)
        : Printer(filter, at_once), brief_(brief) {}

    void end() override {
        if (brief_ && showsAll()) {
            putOpen();
        }
        if (showsAll()) {
            std::printf("%zu message%s\n", count(), count() == 1 ? "" : "s");
        } else {
            std::printf("%zu of %zu message%s\n", printed(), count(), count() == 1 ? "" : "s");
        }
    }

protected:
    void write(const Message& message, const Link& link, uint64_t) override {
        const LocalTime time = localTime(message.time);
        if (time.date != date_) {
            date_ = time.date;
            put(date_);
        }
        if (brief_) {
            put(briefLine(message, link, time.time));
            return;
        }
        for (const std::string& line : messageLines(message, time.time)) {
            put(line);
        }
    }

private:
    void putOpen() const {
        const std::vector<sessions::OpenCommand> commands = open();
        if (commands.empty()) {
            return;
        }
        std::vector<std::string> words{std::to_string(commands.size()),
                                       commands.size() == 1 ? "command" : "commands", "without",
                                       "an", "answer:"};
        for (size_t i = 0; i < std::min(commands.size(), kMostNamed); ++i) {
            words.push_back('#' + std::to_string(commands[i].number));
        }
        if (commands.size() > kMostNamed) {
            words.push_back("and " + std::to_string(commands.size() - kMostNamed) + " more");
        }
        for (const std::string& line : wrappedWords(words, kColumns)) {
            put(line);
        }
    }

    const bool brief_;
    std::string date_; ///< printed last
};

class JsonPrinter : public Printer {
public:
    JsonPrinter(const Filter& filter, bool at_once, const std::string& name)
        : Printer(filter, at_once) {
        put("{\"version\":1,\"file\":" + jsonText(name) + ",\"messages\":[");
        if (at_once) {
            flush();
        }
    }

    void report(const std::string& what) override {
        ++error_count_;
        if (errors_.size() < kMostErrors) {
            errors_.push_back(what);
        }
    }

    void end() override {
        std::string json = "],\"count\":" + std::to_string(count()) +
                           ",\"shown\":" + std::to_string(printed()) + ",\"unanswered\":[";
        const char* before = "";
        for (const sessions::OpenCommand& command : open()) {
            json += before + jsonOpenCommand(command);
            before = ",";
        }
        json += "],\"error_count\":" + std::to_string(error_count_) + ",\"errors\":[";
        before = "";
        for (const std::string& error : errors_) {
            json += before + jsonText(error);
            before = ",";
        }
        put(json + "]}");
    }

protected:
    /// The comma comes before the message: whether another follows is not known yet.
    void write(const Message& message, const Link& link, uint64_t offset) override {
        put((printed() > 1 ? "," : " ") + jsonMessage(message, link, offset));
    }

private:
    std::vector<std::string> errors_;
    size_t error_count_ = 0;
};

} // namespace

void Printer::print(const Message& message, uint64_t offset) {
    ++count_;
    const Link link = pairing_.add(message);
    if (!filter_.takes(message, link)) {
        return;
    }
    ++printed_;
    write(message, link, offset);
    if (at_once_) {
        flush();
    }
}

void Printer::flush() const {
    std::fflush(stdout);
}

std::unique_ptr<Printer> makePrinter(const Options& options, const std::string& name,
                                     bool at_once) {
    if (options.form == Form::kJson) {
        return std::make_unique<JsonPrinter>(options.filter, at_once, name);
    }
    return std::make_unique<LinePrinter>(options.filter, at_once, options.form == Form::kBrief);
}

} // namespace show
