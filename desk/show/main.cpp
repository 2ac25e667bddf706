// dtv-show: prints a capture of the messages.
#include "desk/pictures/mermaid.h"
#include "desk/pictures/perfetto.h"
#include "desk/pictures/timeline_reader.h"
#include "desk/show/followed_file.h"
#include "desk/show/message.h"
#include "desk/show/options.h"
#include "desk/show/printer.h"

#include "sessions/capture_reader.h"
#include "sessions/keyed_hash.h"
#include "sessions/new_file.h"
#include "sessions/redaction.h"

#include "records/catalogue.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int kGood = 0;
constexpr int kBadFile = 1;  ///< it is no capture, or not whole
constexpr int kNotBegun = 2; ///< wrong arguments, or a file that cannot be opened

/// Set by the signals that end --follow.
volatile std::sig_atomic_t interrupted = 0;

int complain(const std::string& what) {
    std::cerr << "dtv-show: " << what << '\n';
    return kNotBegun;
}

void list() {
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const catalogue::Message& message : *messages) {
            std::printf("0x%08x %4zu %-32s %s\n", static_cast<unsigned>(message.id),
                        message.record->size, std::string(message.name).c_str(),
                        message.record->name.c_str());
            if (message.reply != nullptr) {
                std::printf("%10s %4zu %-32s %s\n", "", message.reply->size, "  its answer",
                            message.reply->name.c_str());
            }
        }
    }
}

int finish(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        complain("cannot write to standard output");
        return kBadFile;
    }
    return status;
}

/// Reads a capture to its end and prints it.
class Showing {
public:
    /// `stream`, `printer` and `redaction` must outlive the object. `redaction` may be null.
    Showing(std::istream& stream, std::string name, show::Printer& printer,
            sessions::Redaction* redaction)
        : reader_(stream), name_(std::move(name)), printer_(printer), redaction_(redaction) {}

    /// As far as the stream has messages.
    void run() {
        printPackets();
        while (!reader_.error().empty() && interrupted == 0 && isWritten()) {
            const std::string error = reader_.error();
            const std::optional<sessions::Gap> gap = reader_.resume();
            if (!gap) {
                // A part of a block at the end of a file that is being written is no error.
                last_error_ = interrupted == 0 ? error : "";
                break;
            }
            report(error + "; skipped " + std::to_string(gap->size) + " bytes, to byte " +
                   std::to_string(gap->offset + gap->size));
            printPackets();
        }
    }

    /// After run(). `failure` is why the stream ended, when that is not its own end. Returns the
    /// exit status.
    int end(const std::string& failure) {
        const std::string& error = failure.empty() ? last_error_ : failure;
        if (!error.empty()) {
            printer_.report(error);
        }
        printer_.end();
        const int status = finish(kGood);
        if (!error.empty()) {
            // The count comes first, for the file ends here.
            complain(name_ + ": " + error);
            return kBadFile;
        }
        return good_ ? status : kBadFile;
    }

private:
    /// Something is wrong with the file: it is said on standard error, and in the printed document.
    void report(const std::string& what) {
        good_ = false;
        printer_.report(what);
        // What was printed before comes before it on a terminal.
        std::fflush(stdout);
        complain(name_ + ": " + what);
    }

    /// Whether all could be written so far: nobody waits for what is read otherwise.
    static bool isWritten() { return std::ferror(stdout) == 0; }

    /// As far as next() finds them.
    void printPackets() {
        while (isWritten()) {
            const auto packet = reader_.next();
            if (!packet) {
                return;
            }
            if (packet->section != section_) {
                printer_.beginSection();
                section_ = packet->section;
            }
            std::string error;
            if (auto message = sessions::readMessage(*packet, error)) {
                if (redaction_ != nullptr) {
                    redaction_->redact(*message);
                }
                printer_.print(*message, packet->offset);
            } else {
                printer_.pass();
                report(error);
            }
        }
    }

    sessions::CaptureReader reader_;
    const std::string name_;
    show::Printer& printer_;
    sessions::Redaction* const redaction_;
    uint32_t section_ = 0;
    bool good_ = true;
    std::string last_error_; ///< after which nothing of the file can be read
};

int showStream(std::istream& stream, const std::string& name, const show::Options& options,
               sessions::Redaction* redaction, bool at_once) {
    const auto printer = show::makePrinter(options, name, at_once);
    Showing showing(stream, name, *printer, redaction);
    showing.run();
    return showing.end({});
}

int follow(const show::Options& options, sessions::Redaction* redaction) {
    show::FollowedFile file(interrupted);
    const std::string error = file.open(options.file);
    if (!error.empty()) {
        return complain(error);
    }
    struct sigaction action = {};
    action.sa_handler = [](int) { interrupted = 1; };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(signal, &action, nullptr);
    }
    std::istream stream(&file);
    const auto printer = show::makePrinter(options, options.file, true);
    Showing showing(stream, options.file, *printer, redaction);
    showing.run();
    return showing.end(file.failure());
}

/// As one word of a shell's.
std::string quoted(const std::string& text) {
    constexpr char plain[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./:+,@";
    if (text.find_first_not_of(plain) == std::string::npos) {
        return text;
    }
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return word + '\'';
}

/// Prints the commands with which Wireshark shows a capture. What it loads for that is in the
/// folder share/ beside this program's.
int printWiresharkCommands(const std::string& file) {
    namespace fs = std::filesystem;
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        const bool there = fs::exists(file, error);
        return complain(there ? file + " is no regular file"
                              : "cannot open " + file + ": " + std::strerror(ENOENT));
    }
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path script = program.parent_path().parent_path() / "share" / "dtv.lua";
    if (error || !fs::is_regular_file(script, error)) {
        return complain("there is no " + script.string() + ": the build makes it");
    }
    const std::string capture = quoted(fs::absolute(file).lexically_normal().string());
    const std::string load = quoted("lua_script:" + script.string());
    std::printf("wireshark -X %s %s\n", load.c_str(), capture.c_str());
    std::printf("tshark -X %s -r %s\n", load.c_str(), capture.c_str());
    return finish(kGood);
}

/// Reads a capture or a log for a picture, and says what is damaged. A status other than kGood when
/// there is nothing to draw.
int readForPicture(const show::Options& options, pictures::Timeline& timeline) {
    std::error_code ignored;
    if (std::filesystem::is_directory(options.file, ignored)) {
        return complain(options.file + " is a directory");
    }
    std::string error;
    if (!pictures::readTimeline(options.file, options.filter, timeline, error)) {
        complain(error);
        return std::filesystem::exists(options.file, ignored) || options.file == "-" ? kBadFile
                                                                                     : kNotBegun;
    }
    for (const std::string& damage : timeline.damages) {
        complain(options.file + ": " + damage);
    }
    if (!timeline.has_times) {
        complain(options.file + ": its lines have no time: each takes a microsecond");
    }
    return kGood;
}

int writePicture(const show::Options& options) {
    pictures::Timeline timeline;
    const int status = readForPicture(options, timeline);
    if (status != kGood) {
        return status;
    }
    const int good = timeline.damages.empty() ? kGood : kBadFile;
    if (options.task == show::Options::Task::kMermaid) {
        std::fputs(pictures::mermaidText(timeline).c_str(), stdout);
        return finish(good);
    }
    sessions::NewFile file;
    std::string error;
    if (!file.open(options.output, error)) {
        return complain(error);
    }
    pictures::writePerfetto(timeline, [&file](const std::string& bytes) { file.write(bytes); });
    if (!file.keep(error)) {
        complain(error);
        return kBadFile;
    }
    std::printf("%zu messages, %zu calls, %zu lines\n", timeline.entries.size(),
                timeline.spans.size(), timeline.lines.size());
    return finish(good);
}

int showFile(const show::Options& options) {
    std::optional<sessions::Redaction> redaction;
    if (options.redact) {
        const std::optional<sessions::HashKey> key = sessions::randomHashKey();
        if (!key) {
            return complain(std::string("the kernel gives no random bytes: ") +
                            std::strerror(errno));
        }
        redaction.emplace(*key);
    }
    sessions::Redaction* const redacting = redaction ? &*redaction : nullptr;
    if (options.file == "-") {
        return showStream(std::cin, "standard input", options, redacting, true);
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(options.file, ignored)) {
        return complain(options.file + " is a directory");
    }
    if (options.follow) {
        return follow(options, redacting);
    }
    std::ifstream file(options.file, std::ios::binary);
    if (!file) {
        return complain("cannot open " + options.file + ": " + std::strerror(errno));
    }
    return showStream(file, options.file, options, redacting, false);
}

} // namespace

int main(int argc, char** argv) {
    show::Options options;
    const show::ArgumentError error = show::takeArguments({argv + 1, argv + argc}, options);
    if (!error.what.empty()) {
        complain(error.what);
        if (error.shows_usage) {
            std::cerr << show::kUsage;
        }
        return kNotBegun;
    }
    switch (options.task) {
    case show::Options::Task::kHelp:
        std::fputs(show::kUsage, stdout);
        return finish(kGood);
    case show::Options::Task::kList:
        list();
        return finish(kGood);
    case show::Options::Task::kWireshark:
        return printWiresharkCommands(options.file);
    case show::Options::Task::kPerfetto:
    case show::Options::Task::kMermaid:
        return writePicture(options);
    case show::Options::Task::kShow:
        break;
    }
    return showFile(options);
}
