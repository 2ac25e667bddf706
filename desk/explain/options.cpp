#include "desk/explain/options.h"

#include "desk/explain/finding.h"

#include "desk/show/names.h"

#include "records/catalogue.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>

namespace explain {

const char* const kUsage =
    R"(usage: ./run explain [OPTION]... FILE...
       ./run explain [OPTION]... FOLDER

Tells what happened in a log of the receiver or in a capture: what it covers and
what it cannot tell, the sessions, what went wrong and what that followed from,
and how long answers took. A log is the trace of the desk, or the text of logcat
in any of its forms, or a bug report, perhaps compressed with gzip. "-" is the
standard input. Of several files or a folder it counts the first causes.

  --json           one JSON document, see docs/field.md
  --only WHAT      the findings of a rule (no-reply), of a severity (error,
                   warning, provoked), or of a message (SelectChannel)
  --around LINE    the lines around one, and the call that it belongs to
  --slow SECONDS   how long an answer may take before it is slow (default: 1)
  --capture FILE   makes a capture of one log, with what its lines hold, and
                   nothing else; see docs/log-capture.md
  --ndjson FILE    writes an object for each log, session and finding to a file
  --redact         shows placeholders in place of what other programs wrote, and
                   of the texts in the bridge's lines
  --jobs NUMBER    how many logs at a time (default: as many as processors)
  --help           shows this

Exit status: 0 nothing was found, 1 something was, 2 it cannot be told: lines
are missing, or the file cannot be read, or the arguments are wrong.
)";

namespace {

using Take = std::function<bool(const std::string&, Options&)>;

struct ValueOption {
    const char* needs; ///< what its value has to be
    Take take;
};

template <class Number>
bool readNumber(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && number > 0;
}

bool takeSeconds(const std::string& text, Options& options) {
    double seconds = 0;
    if (!readNumber(text, seconds) || seconds > 86400) {
        return false;
    }
    options.slow = static_cast<int64_t>(seconds * 1e9);
    return true;
}

/// The name of a rule, a severity or a message.
bool takeOnly(const std::string& text, Options& options) {
    options.only = text;
    const bool rule =
        std::any_of(allRules().begin(), allRules().end(), [&text](const RuleText& each) {
            return text == each.name || text == nameOf(each.severity);
        });
    return rule || catalogue::find(text) != nullptr;
}

const std::map<std::string, ValueOption>& valueOptions() {
    static const std::map<std::string, ValueOption> options = {
        {"--only", {"the name of a rule, a severity or a message", takeOnly}},
        {"--around",
         {"the number of a line",
          [](const std::string& text, Options& options) {
              return readNumber(text, options.around);
          }}},
        {"--slow", {"a number of seconds, 86400 at most", takeSeconds}},
        {"--ndjson",
         {"the name of a file",
          [](const std::string& text, Options& options) {
              options.ndjson = text;
              return !text.empty();
          }}},
        {"--capture",
         {"the name of a file",
          [](const std::string& text, Options& options) {
              options.capture = text;
              return !text.empty();
          }}},
        {"--jobs",
         {"a number from 1 to 64",
          [](const std::string& text, Options& options) {
              return readNumber(text, options.jobs) && options.jobs <= 64;
          }}},
    };
    return options;
}

/// Takes "--only=X" or "--only X". Returns what is wrong.
std::string takeValue(const std::vector<std::string>& arguments, size_t& index, Options& options) {
    const std::string& argument = arguments[index];
    const size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    if (name == "--help" || name == "--json" || name == "--redact") {
        return name + " takes no value";
    }
    const auto option = valueOptions().find(name);
    if (option == valueOptions().end()) {
        return "there is no option " + name;
    }
    if (equals == std::string::npos && index + 1 == arguments.size()) {
        return name + " needs " + option->second.needs;
    }
    const std::string value =
        equals != std::string::npos ? argument.substr(equals + 1) : arguments[++index];
    return option->second.take(value, options)
               ? std::string()
               : name + " needs " + option->second.needs + ", not " + show::shownText(value);
}

} // namespace

std::string takeArguments(const std::vector<std::string>& arguments, Options& options) {
    bool only_files = false;
    for (size_t index = 0; index < arguments.size(); ++index) {
        const std::string& argument = arguments[index];
        if (only_files || argument == "-" || argument.empty() || argument[0] != '-') {
            options.files.push_back(argument);
        } else if (argument == "--") {
            only_files = true;
        } else if (argument == "--help" || argument == "-h") {
            options.help = true;
            return {};
        } else if (argument == "--json") {
            options.json = true;
        } else if (argument == "--redact") {
            options.redact = true;
        } else if (std::string error = takeValue(arguments, index, options); !error.empty()) {
            return error;
        }
    }
    if (options.files.empty()) {
        return "which log?";
    }
    if (options.around != 0 && (options.files.size() > 1 || options.json)) {
        return "--around shows the lines of one log";
    }
    if (!options.capture.empty() &&
        (options.files.size() > 1 || options.json || options.around != 0 || options.redact)) {
        return "--capture takes one log and no other option";
    }
    return {};
}

} // namespace explain
