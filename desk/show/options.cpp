#include "desk/show/options.h"

#include "desk/show/names.h"

#include "records/catalogue.h"

#include <functional>
#include <map>
#include <optional>

namespace show {
namespace {

/// Takes the value of an option; says what is wrong with it.
using Take = std::function<ArgumentError(const std::string&, Options&)>;

struct ValueOption {
    const char* value; ///< what the option needs
    Take take;
};

ArgumentError wrong(const std::string& what) {
    return {what, false};
}

ArgumentError takeOnly(const std::string& name, Options& options) {
    const catalogue::Message* message = catalogue::find(name);
    if (message == nullptr) {
        return wrong("no message is named " + name + "; the nearest is " + nearestName(name));
    }
    options.filter.ids.insert(message->id);
    return {};
}

ArgumentError takeKind(const std::string& name, Options& options) {
    const std::optional<uint8_t> kind = kindNamed(name);
    if (!kind) {
        return wrong("no kind of message is named " + name +
                     "; there are command, answer, event and refused");
    }
    options.filter.kinds.insert(*kind);
    return {};
}

/// A whole number in decimal digits, or in hexadecimal ones after 0x; nothing beyond 65535.
std::optional<uint16_t> handleOf(const std::string& text) {
    const bool hex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::string digits = text.substr(hex ? 2 : 0);
    if (digits.empty() || digits.size() > 8 ||
        digits.find_first_not_of(hex ? "0123456789abcdefABCDEF" : "0123456789") !=
            std::string::npos) {
        return std::nullopt;
    }
    const unsigned long handle = std::stoul(digits, nullptr, hex ? 16 : 10);
    return handle <= 0xffff ? std::optional<uint16_t>(static_cast<uint16_t>(handle)) : std::nullopt;
}

ArgumentError takeSession(const std::string& text, Options& options) {
    const std::optional<uint16_t> handle = handleOf(text);
    if (!handle) {
        return wrong("--session " + text + ": a handle is a number from 0 to 65535");
    }
    options.filter.sessions.insert(*handle);
    return {};
}

ArgumentError takeThread(const std::string& name, Options& options) {
    options.filter.threads.insert(name);
    return {};
}

ArgumentError takeTask(Options::Task task, Options& options) {
    if (options.task != Options::Task::kShow && options.task != task) {
        return {"--list, --wireshark, --perfetto and --mermaid exclude each other", true};
    }
    options.task = task;
    return {};
}

ArgumentError takePerfetto(const std::string& name, Options& options) {
    if (name.empty() || !options.output.empty()) {
        return {"--perfetto needs the name of one file", true};
    }
    options.output = name;
    return takeTask(Options::Task::kPerfetto, options);
}

ArgumentError takeTime(const char* option, const std::string& text,
                       std::optional<TimeLimit>& limit) {
    if (limit) {
        return {std::string(option) + " is given twice", true};
    }
    limit = timeLimitOf(text);
    if (!limit) {
        return wrong(std::string(option) + ' ' + text +
                     ": a time is written as 20:14, 20:14:03.5, 2026-03-31 or "
                     "\"2026-03-31 20:14:03\"; after a date, a Z at the end means UTC");
    }
    return {};
}

const std::map<std::string, ValueOption>& valueOptions() {
    static const std::map<std::string, ValueOption> options = {
        {"--only", {"the name of a message", takeOnly}},
        {"--kind", {"a kind of message", takeKind}},
        {"--session", {"a handle", takeSession}},
        {"--thread", {"the name or the number of a thread", takeThread}},
        {"--perfetto", {"the name of the file to write", takePerfetto}},
        {"--from",
         {"a time",
          [](const std::string& text, Options& options) {
              return takeTime("--from", text, options.filter.times.first);
          }}},
        {"--to",
         {"a time",
          [](const std::string& text, Options& options) {
              return takeTime("--to", text, options.filter.times.last);
          }}},
    };
    return options;
}

ArgumentError takeForm(Form form, Options& options) {
    if (options.form != Form::kText && options.form != form) {
        return {"--brief and --json exclude each other", true};
    }
    options.form = form;
    return {};
}

/// An option without a value.
ArgumentError takeWord(const std::string& option, Options& options) {
    if (option == "--brief") {
        return takeForm(Form::kBrief, options);
    }
    if (option == "--json") {
        return takeForm(Form::kJson, options);
    }
    if (option == "--follow") {
        options.follow = true;
    } else if (option == "--redact") {
        options.redact = true;
    } else if (option == "--list") {
        return takeTask(Options::Task::kList, options);
    } else if (option == "--wireshark") {
        return takeTask(Options::Task::kWireshark, options);
    } else if (option == "--mermaid") {
        return takeTask(Options::Task::kMermaid, options);
    } else {
        return {"unknown option " + option, true};
    }
    return {};
}

ArgumentError takeFile(const std::string& name, Options& options) {
    if (!options.file.empty()) {
        return {"one file at a time", true};
    }
    if (name.empty()) {
        return {"the name of the file is empty", true};
    }
    options.file = name;
    return {};
}

/// Whether the arguments make sense together.
ArgumentError check(const Options& options) {
    const bool plain = options.filter.takesAll() && !options.follow && !options.redact &&
                       options.form == Form::kText;
    if (options.task == Options::Task::kList) {
        const bool alone = options.file.empty() && plain;
        return alone ? ArgumentError{} : ArgumentError{"--list takes no file and no option", true};
    }
    if (options.file.empty()) {
        return {"no file is given", true};
    }
    if (options.task == Options::Task::kWireshark && (!plain || options.file == "-")) {
        return {"--wireshark takes the name of a file and no other option", true};
    }
    const bool picture =
        options.task == Options::Task::kPerfetto || options.task == Options::Task::kMermaid;
    if (picture && (options.form != Form::kText || options.follow || options.redact)) {
        return {"--perfetto and --mermaid go with none of --brief, --json, --follow and --redact",
                true};
    }
    if (options.follow && options.file == "-") {
        return wrong("--follow needs a file: standard input is read as it comes in any case");
    }
    if (options.filter.times.isEmpty()) {
        return wrong("--to is before --from");
    }
    return {};
}

} // namespace

ArgumentError takeArguments(const std::vector<std::string>& arguments, Options& options) {
    bool only_files = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const size_t equals = argument.find('=');
        const auto option = valueOptions().find(argument.substr(0, equals));
        ArgumentError error;
        if (only_files || argument.size() < 2 || argument[0] != '-') {
            error = takeFile(argument, options);
        } else if (argument == "--help" || argument == "-h") {
            options.task = Options::Task::kHelp;
            return {};
        } else if (argument == "--") {
            only_files = true;
        } else if (option == valueOptions().end()) {
            error = takeWord(argument, options);
        } else if (equals != std::string::npos) {
            error = option->second.take(argument.substr(equals + 1), options);
        } else if (++i == arguments.size()) {
            error = {argument + " needs " + option->second.value, true};
        } else {
            error = option->second.take(arguments[i], options);
        }
        if (!error.what.empty()) {
            return error;
        }
    }
    return check(options);
}

const char* const kUsage = R"(usage: dtv-show [OPTION]... FILE
       dtv-show --perfetto OUT [OPTION]... FILE
       dtv-show --mermaid [OPTION]... FILE
       dtv-show --wireshark FILE
       dtv-show --list

Prints the messages of a capture, each decoded field by field. FILE is - for
standard input, whose messages are printed as they come. What is damaged is
skipped, and what was skipped is said. Exit status: 0 when the whole file was
read, 1 when it is no capture or is cut or damaged (everything else is printed),
2 when it cannot be opened or an argument is wrong.

  --brief           a line for each message: number, time, thread, direction,
                    name, handle (h), result (r), what was returned (ret),
                    number of the message that it belongs to and time since it
  --json            one JSON document, each message on a line of its own
  --follow          waits for more at the end of the file, until interrupted
  --redact          prints placeholders of the same length in place of texts and
                    bytes, but for what stations broadcast

Which messages are printed. Each option may be given several times, but for
--from and --to; a message must be what each of them asks for:

  --only NAME       those of that name, such as SelectChannel
  --kind KIND       command, answer, event or refused
  --session HANDLE  those of that session: with its handle, or belonging to one
                    that has it
  --thread THREAD   those of that thread, by its name or its number
  --from TIME       not before that time
  --to TIME         not after it; TIME is 20:14, 20:14:03.5, 2026-03-31 or
                    "2026-03-31 20:14:03", local, or UTC with a Z after it

Pictures, of a capture or of a log:

  --perfetto OUT    writes a trace that https://ui.perfetto.dev opens: threads,
                    calls, arrows from commands to replies, the signal, and the
                    lines of a log
  --mermaid         prints a sequence diagram to be pasted into a report

  --wireshark       prints the commands with which Wireshark and tshark show all
                    fields of FILE
  --list            prints the messages that are known: number, size of the
                    record in bytes, name, record
  --help            shows this
)";

} // namespace show
