#include "desk/explain/many.h"

#include "desk/explain/report_json.h"
#include "desk/explain/text.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <iomanip>
#include <map>
#include <mutex>
#include <sstream>
#include <system_error>
#include <thread>
#include <tuple>

namespace explain {
namespace {

namespace fs = std::filesystem;

/// What is kept of a log.
struct Result {
    Verdict verdict = Verdict::kCannotTell;
    std::string rule; ///< of the first cause; empty: there is none
    std::string subject;
    size_t losses = 0;
    size_t causes = 0;
    uint64_t line = 0; ///< of the first cause
    std::string why;   ///< nothing can be said of the log; empty: something can
};

Result resultOf(const Explained& explained) {
    Result result;
    result.verdict = verdictOf(explained);
    result.losses = explained.losses.size();
    const std::vector<Finding>& findings = explained.analysis.findings();
    result.causes = static_cast<size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.caused_by == 0; }));
    if (!findings.empty()) {
        result.rule = textOf(findings.front().key.rule).name;
        result.subject = findings.front().key.subject;
        result.line = findings.front().lines.front();
    }
    if (result.verdict == Verdict::kCannotTell) {
        if (!explained.could_be_read) {
            result.why = explained.error;
        } else if (!explained.is_capture && explained.counts.of_bridge == 0) {
            result.why = "no line is of the bridge";
        } else {
            for (const Loss& loss : explained.losses) {
                result.why += std::string(result.why.empty() ? "" : ", ") + nameOf(loss.kind);
            }
        }
    }
    return result;
}

/// Says on standard error how far it is.
class Progress {
public:
    Progress(bool shown, size_t all) : shown_(shown), all_(all) {}
    ~Progress() {
        if (shown_) {
            std::fputs("\r\x1b[K", stderr);
        }
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Called by one thread at a time.
    void step() {
        ++done_;
        const size_t percent = done_ * 100 / all_;
        if (!shown_ || percent == percent_) {
            return;
        }
        percent_ = percent;
        constexpr size_t kWidth = 40;
        const size_t filled = percent * kWidth / 100;
        std::string bar(filled, '#');
        bar.append(kWidth - filled, '.');
        std::fprintf(stderr, "\r[%s] %zu of %zu logs", bar.c_str(), done_, all_);
    }

private:
    const bool shown_;
    const size_t all_;
    size_t done_ = 0;
    size_t percent_ = 101;
};

std::vector<Result> explainAll(const std::vector<std::string>& files, const ManyOptions& options) {
    std::vector<Result> results(files.size());
    std::atomic<size_t> next{0};
    std::mutex mutex;
    Progress progress(options.shows_progress, files.size());
    const auto work = [&] {
        for (size_t index = next++; index < files.size(); index = next++) {
            const std::unique_ptr<Explained> explained = explainFile(files[index], options.read);
            std::ostringstream objects;
            if (options.ndjson != nullptr) {
                writeNdjson(objects, *explained);
            }
            const std::lock_guard<std::mutex> lock(mutex);
            results[index] = resultOf(*explained);
            if (options.ndjson != nullptr) {
                *options.ndjson << objects.str();
            }
            progress.step();
        }
    };
    const unsigned wanted =
        options.jobs != 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::thread> threads;
    for (unsigned i = 1; i < wanted && i < files.size(); ++i) {
        threads.emplace_back(work);
    }
    work();
    for (std::thread& thread : threads) {
        thread.join();
    }
    return results;
}

/// The logs with the same first cause.
struct Group {
    size_t logs = 0;
    size_t example = 0; ///< index of the log that shows it best
};

/// The log with the fewest losses, then with the fewest other causes, then the first.
bool showsBetter(const Result& one, const Result& other) {
    return std::tie(one.losses, one.causes) < std::tie(other.losses, other.causes);
}

void writeCauses(std::ostream& out, const std::vector<std::string>& files,
                 const std::vector<Result>& results) {
    std::map<std::pair<std::string, std::string>, Group> groups;
    for (size_t i = 0; i < results.size(); ++i) {
        if (results[i].rule.empty()) {
            continue;
        }
        Group& group = groups[{results[i].rule, results[i].subject}];
        if (group.logs++ == 0 || showsBetter(results[i], results[group.example])) {
            group.example = i;
        }
    }
    std::vector<std::pair<std::pair<std::string, std::string>, Group>> sorted(groups.begin(),
                                                                              groups.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& one, const auto& other) {
        return one.second.logs > other.second.logs;
    });
    if (sorted.empty()) {
        return;
    }
    out << "\n  logs  first cause, and the log that shows it best\n";
    for (const auto& [cause, group] : sorted) {
        out << std::setw(6) << group.logs << "  "
            << shortened(cause.first + (cause.second.empty() ? "" : " ") + cause.second,
                         kColumns - 8)
            << "\n        "
            << shortened(files[group.example] + ":" + std::to_string(results[group.example].line),
                         kColumns - 8)
            << '\n';
    }
}

void writeUnjudged(std::ostream& out, const std::vector<std::string>& files,
                   const std::vector<Result>& results) {
    constexpr size_t kMost = 10;
    size_t count = 0;
    for (size_t i = 0; i < results.size(); ++i) {
        if (results[i].verdict != Verdict::kCannotTell) {
            continue;
        }
        if (++count == 1) {
            out << "\nCannot be judged\n";
        }
        if (count <= kMost) {
            out << "  " << shortened(files[i], kColumns - 2) << "\n    "
                << shortened(results[i].why, kColumns - 4) << '\n';
        }
    }
    if (count > kMost) {
        out << "  and " << count - kMost << " more\n";
    }
}

size_t countOf(const std::vector<Result>& results, Verdict verdict) {
    return static_cast<size_t>(
        std::count_if(results.begin(), results.end(),
                      [verdict](const Result& result) { return result.verdict == verdict; }));
}

} // namespace

namespace {

/// Adds the files of a folder, and the folders in it. Links to folders are not followed: they may
/// lead around in a ring.
void listFolder(const std::string& path, std::vector<std::string>& files,
                std::vector<std::string>& folders, std::vector<std::string>& errors) {
    std::error_code error;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored)) {
            files.push_back(entry->path().string());
        } else if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            folders.push_back(entry->path().string());
        }
    }
    if (error) {
        errors.push_back(path + ": " + error.message());
    }
}

} // namespace

std::vector<std::string> filesIn(const std::vector<std::string>& paths,
                                 std::vector<std::string>& errors) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::string> found;
        std::vector<std::string> folders = {path};
        while (!folders.empty()) {
            const std::string folder = folders.back();
            folders.pop_back();
            listFolder(folder, found, folders, errors);
        }
        std::sort(found.begin(), found.end());
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

Verdict explainMany(std::ostream& out, const std::vector<std::string>& files,
                    const ManyOptions& options) {
    const std::vector<Result> results = explainAll(files, options);
    const size_t found = countOf(results, Verdict::kFound);
    const size_t unjudged = countOf(results, Verdict::kCannotTell);
    out << countText(files.size(), "log") << ": " << found << " with findings, "
        << countOf(results, Verdict::kClean) << " clean, " << unjudged << " cannot be judged\n";
    writeCauses(out, files, results);
    writeUnjudged(out, files, results);
    if (found > 0) {
        return Verdict::kFound;
    }
    return unjudged > 0 || files.empty() ? Verdict::kCannotTell : Verdict::kClean;
}

} // namespace explain
