// The arguments of dtv-show.
#pragma once

#include "desk/show/filter.h"

#include <string>
#include <vector>

namespace show {

/// How messages are printed.
enum class Form {
    kText,
    kBrief,
    kJson
};

struct Options {
    enum class Task {
        kShow,
        kList,
        kWireshark, ///< prints how Wireshark opens the file
        kPerfetto,  ///< writes a trace that Perfetto opens
        kMermaid,   ///< prints a sequence diagram
        kHelp
    };

    Task task = Task::kShow;
    Form form = Form::kText;
    bool follow = false;
    bool redact = false; ///< prints placeholders in place of the contents of texts and bytes
    Filter filter;
    std::string output; ///< the file that kPerfetto writes
    std::string file;   ///< "-" for standard input; not empty when messages are to be shown
};

/// What is wrong with the arguments.
struct ArgumentError {
    std::string what;        ///< empty when nothing is wrong
    bool shows_usage = true; ///< whether the usage helps
};

/// Reads the arguments up to the first that is wrong, or up to --help.
ArgumentError takeArguments(const std::vector<std::string>& arguments, Options& options);

extern const char* const kUsage;

} // namespace show
