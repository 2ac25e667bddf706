// dtv-report: one page that shows a session in a browser.
#include "desk/explain/explained.h"
#include "desk/explain/report_json.h"
#include "desk/pictures/joined.h"
#include "desk/pictures/timeline_reader.h"
#include "desk/report/session_data.h"

#include "sessions/capture_reader.h"
#include "sessions/new_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int kGood = 0;
constexpr int kBadFile = 1;  ///< it is not whole, or nothing can be read of it
constexpr int kNotBegun = 2; ///< wrong arguments, or a file that cannot be opened

constexpr const char* kUsage = R"(usage: dtv-report [--output FILE] FILE [FILE]

Writes a page that shows a capture or a log of a session, or one of each of the
same session, in a browser: lanes of the threads, the messages with their bytes and fields, what the receiver was
doing, the signal, and what dtv-explain finds. The page is one file that needs
no network. Exit status: 0 when the whole file was read, 1 when it is damaged
(the rest is shown) or nothing can be read of it, 2 when it cannot be opened or
an argument is wrong.

  --output FILE  the page's name (default: report.html)
  --help         shows this
)";

struct Options {
    std::vector<std::string> files; ///< one or two
    std::string output = "report.html";
    bool help = false;
};

int complain(const std::string& what) {
    std::cerr << "dtv-report: " << what << '\n';
    return kNotBegun;
}

/// What is wrong with the arguments; empty when nothing is.
std::string takeArguments(const std::vector<std::string>& arguments, Options& options) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            return {};
        }
        if (argument == "--output" && i + 1 < arguments.size()) {
            options.output = arguments[++i];
        } else if (argument.rfind("--output=", 0) == 0) {
            options.output = argument.substr(std::strlen("--output="));
        } else if (argument.size() > 1 && argument[0] == '-') {
            return argument == "--output" ? "--output needs the name of a file"
                                          : "unknown option " + argument;
        } else if (options.files.size() == 2) {
            return "a capture and a log of the same session at most";
        } else {
            options.files.push_back(argument);
        }
    }
    if (options.output.empty()) {
        return "the name of the page is empty";
    }
    return options.files.empty() ? "no file is given" : "";
}

/// The page without its data, which the build puts into the folder share/ beside this program's.
/// Empty, and why in `error`.
std::string readPage(std::string& error) {
    namespace fs = std::filesystem;
    std::error_code code;
    const fs::path program = fs::read_symlink("/proc/self/exe", code);
    const fs::path path = program.parent_path().parent_path() / "share" / "report.html";
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (code || !file || text.str().empty()) {
        error = "cannot read " + path.string() + ": the build makes it";
        return {};
    }
    return text.str();
}

/// Where the page takes its data.
constexpr const char* kDataPlace = "@DATA@";

/// The page with its data. Empty, and why in `error`.
std::string filledPage(const pictures::Timeline& timeline, const report::Source& source,
                       std::string& error) {
    std::string page = readPage(error);
    const size_t place = page.find(kDataPlace);
    if (place == std::string::npos) {
        error = error.empty() ? "the page has no place for its data" : error;
        return {};
    }
    const std::string data = report::packed(report::sessionData(timeline, source));
    if (data.empty()) {
        error = "there is not enough memory for the page";
        return {};
    }
    return page.replace(place, std::strlen(kDataPlace), data);
}

/// What dtv-explain says of the file. A file that it cannot read has no findings.
std::string findingsOf(const std::string& file) {
    const auto explained = explain::explainFile(file, {});
    std::ostringstream json;
    explain::writeJson(json, *explained, {});
    return json.str();
}

/// Whether the file can be read at all; if not, says why.
bool isReadable(const std::string& file) {
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) {
        complain("cannot open " + file + ": " + std::strerror(ENOENT));
        return false;
    }
    if (std::filesystem::is_directory(file, ignored)) {
        complain(file + " is a directory");
        return false;
    }
    return true;
}

/// The timeline of the files, and in `source` what it is of. False, and why in `error`.
bool readFiles(std::vector<std::string> files, pictures::Timeline& timeline, report::Source& source,
               std::string& error) {
    // The capture first: the log's lines go with its messages.
    std::stable_partition(files.begin(), files.end(), sessions::isCapture);
    if (!pictures::readTimeline(files.front(), {}, timeline, error)) {
        return false;
    }
    source.name = std::filesystem::path(files.front()).filename().string();
    source.findings = findingsOf(files.back());
    if (files.size() == 1) {
        return true;
    }
    pictures::Timeline log;
    if (!pictures::readTimeline(files.back(), {}, log, error)) {
        return false;
    }
    if (!timeline.is_capture || log.is_capture) {
        error = "two files are a capture and a log: " + files.front() + " and " + files.back() +
                " are of one kind";
        return false;
    }
    source.name += " and " + std::filesystem::path(files.back()).filename().string();
    if (pictures::join(timeline, log) == 0 && !timeline.entries.empty()) {
        error = files.front() + " and " + files.back() + " have no message in common";
        return false;
    }
    return true;
}

int writeReport(const Options& options) {
    if (!std::all_of(options.files.begin(), options.files.end(), isReadable)) {
        return kNotBegun;
    }
    sessions::NewFile output;
    std::string error;
    if (!output.open(options.output, error)) {
        return complain(error);
    }
    pictures::Timeline timeline;
    report::Source source;
    if (!readFiles(options.files, timeline, source, error)) {
        complain(error);
        return kBadFile;
    }
    const std::string page = filledPage(timeline, source, error);
    if (page.empty()) {
        return complain(error);
    }
    output.write(page);
    if (!output.keep(error)) {
        complain(error);
        return kBadFile;
    }
    for (const std::string& damage : timeline.damages) {
        complain(source.name + ": " + damage);
    }
    std::printf("%s: %zu messages, %zu calls, %zu lines, %zu bytes\n", options.output.c_str(),
                timeline.entries.size(), timeline.spans.size(), timeline.lines.size(), page.size());
    return timeline.damages.empty() ? kGood : kBadFile;
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    const std::string wrong = takeArguments({argv + 1, argv + argc}, options);
    if (!wrong.empty()) {
        complain(wrong);
        std::cerr << kUsage;
        return kNotBegun;
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return kGood;
    }
    return writeReport(options);
}
