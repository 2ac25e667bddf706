// dtv-explain: what happened in a log or a capture, what failed first, and why.
#include "desk/explain/around.h"
#include "desk/explain/explained.h"
#include "desk/explain/many.h"
#include "desk/explain/options.h"
#include "desk/explain/report_json.h"
#include "desk/explain/report_text.h"
#include "desk/explain/text.h"

#include "sessions/keyed_hash.h"
#include "sessions/log/log_capture.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr int kCannotTell = static_cast<int>(explain::Verdict::kCannotTell);

int complain(const std::string& what) {
    std::cerr << "dtv-explain: " << what << '\n';
    return kCannotTell;
}

/// The exit status, but for an output that could not be written.
int finish(explain::Verdict verdict) {
    std::cout.flush();
    if (!std::cout) {
        return complain("cannot write to standard output");
    }
    return static_cast<int>(verdict);
}

explain::Verdict explainOne(const std::string& file, const explain::Options& options,
                            const explain::ReadOptions& read, std::ostream* ndjson) {
    const std::unique_ptr<explain::Explained> explained = explain::explainFile(file, read);
    const explain::Selection selection{options.only};
    if (options.json) {
        explain::writeJson(std::cout, *explained, selection);
    } else {
        explain::writeText(std::cout, *explained, selection);
    }
    if (ndjson != nullptr) {
        explain::writeNdjson(*ndjson, *explained);
    }
    if (!explained->could_be_read) {
        complain(file + ": " + explained->error);
    }
    return explain::verdictOf(*explained);
}

explain::Verdict explainFiles(const std::vector<std::string>& files,
                              const explain::Options& options, const explain::ReadOptions& read,
                              std::ostream* ndjson) {
    explain::ManyOptions many;
    many.read = read;
    many.ndjson = ndjson;
    many.jobs = options.jobs;
    many.shows_progress = isatty(STDERR_FILENO) == 1;
    return explain::explainMany(std::cout, files, many);
}

bool isOneOf(const std::string& file, const std::vector<std::string>& files) {
    return std::any_of(files.begin(), files.end(), [&file](const std::string& other) {
        std::error_code ignored;
        return std::filesystem::equivalent(file, other, ignored);
    });
}

/// Makes a capture of a log. What is wrong with the log is said after what could be read of it was
/// written.
int capture(const std::string& log, const std::string& file) {
    if (isOneOf(file, {log})) {
        return complain(file + " is the log: it would be overwritten");
    }
    sessions::LineSource source(log);
    if (!source.error().empty()) {
        return complain(log + ": " + source.error());
    }
    const sessions::LogCapture made = sessions::captureLog(source, file);
    if (!made.error.empty()) {
        return complain(made.error);
    }
    std::cout << explain::countText(made.counts.lines, "line") << ", " << made.counts.of_bridge
              << " of the bridge, " << made.counts.understood << " understood\n"
              << explain::countText(made.messages, "message") << " in " << file << ", "
              << made.incomplete << " of them incomplete\n";
    if (!source.error().empty()) {
        return complain(log + ": " + source.error());
    }
    return finish(made.messages > 0 ? explain::Verdict::kClean : explain::Verdict::kCannotTell);
}

int run(const explain::Options& options) {
    if (!options.capture.empty()) {
        return capture(options.files.front(), options.capture);
    }
    explain::ReadOptions read;
    read.slow = options.slow;
    const std::optional<sessions::HashKey> key = sessions::randomHashKey();
    if (options.redact) {
        if (!key) {
            return complain("the kernel has no random numbers");
        }
        read.redacts_with = &*key;
    }
    if (options.around != 0) {
        const std::string error = explain::writeAround(std::cout, options.files.front(),
                                                       options.around, read.redacts_with);
        return error.empty() ? finish(explain::Verdict::kClean) : complain(error);
    }
    std::error_code ignored;
    const bool many =
        options.files.size() > 1 || std::filesystem::is_directory(options.files.front(), ignored);
    std::vector<std::string> errors;
    const std::vector<std::string> files =
        many ? explain::filesIn(options.files, errors) : options.files;
    for (const std::string& error : errors) {
        complain(error);
    }
    if (many && (options.json || !options.only.empty())) {
        return complain("--json and --only are for one log; --ndjson takes many");
    }
    std::ofstream ndjson;
    if (!options.ndjson.empty()) {
        if (isOneOf(options.ndjson, files)) {
            return complain(options.ndjson + " is one of the logs: it would be overwritten");
        }
        ndjson.open(options.ndjson);
        if (!ndjson) {
            return complain("cannot write " + options.ndjson + ": " + std::strerror(errno));
        }
    }
    std::ostream* const objects = ndjson.is_open() ? &ndjson : nullptr;
    explain::Verdict verdict = many ? explainFiles(files, options, read, objects)
                                    : explainOne(files.front(), options, read, objects);
    if (!errors.empty() && verdict == explain::Verdict::kClean) {
        verdict = explain::Verdict::kCannotTell;
    }
    ndjson.close();
    if (objects != nullptr && !ndjson) {
        return complain("cannot write all of " + options.ndjson + ": is the disk full?");
    }
    return finish(verdict);
}

} // namespace

int main(int argc, char** argv) {
    explain::Options options;
    const std::string error =
        explain::takeArguments(std::vector<std::string>(argv + 1, argv + argc), options);
    if (!error.empty()) {
        std::cerr << "dtv-explain: " << error << "\nTry ./run explain --help\n";
        return kCannotTell;
    }
    if (options.help) {
        std::cout << explain::kUsage;
        return finish(explain::Verdict::kClean);
    }
    return run(options);
}
