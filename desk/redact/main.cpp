// dtv-redact: copies captures and logs without the contents of their texts and bytes.
#include "desk/redact/copy.h"
#include "desk/redact/log_copy.h"

#include "sessions/keyed_hash.h"
#include "sessions/new_file.h"
#include "sessions/redaction.h"

#include <unistd.h>

#include <algorithm>
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

namespace fs = std::filesystem;

constexpr int kGood = 0;
constexpr int kNotWhole = 1; ///< a file is no capture, cut or damaged, or a copy was not written
constexpr int kNotBegun = 2; ///< wrong arguments, or a file that cannot be opened

constexpr char kUsage[] = R"(usage: dtv-redact [OPTION]... FILE COPY [FILE COPY]...
       dtv-redact --list

Copies captures and logs so that they can be given to others: the contents of
texts and bytes are replaced by placeholders of the same length, the same for
equal contents in all files of one call. Numbers, lengths, order, times and
names of threads stay, and what stations broadcast (--list). FILE may be - for
standard input. Each call takes another random key, which it does not keep.

Of a log, plain or compressed with gzip, the lines of the bridge keep all but the
texts in them; those of other programs keep their headers.

What is damaged is dropped, and what was dropped is said. Exit status: 0 when
each copy is whole, 1 when a FILE is no capture or is cut or damaged (its copy
has the rest) or a COPY could not be written (there is none then, or still the
earlier one), 2 when nothing was begun: a FILE cannot be opened or an argument
is wrong.

  --log           takes standard input and pipes for logs; other files show what
                  they are
  --keep-others   leaves the lines of other programs as they are, except those
                  that may be a part of one of the bridge
  --list          prints the texts and bytes that stay: message, field, what it is
  --help          shows this
)";

int complain(const std::string& what) {
    std::cerr << "dtv-redact: " << what << '\n';
    return kNotBegun;
}

int complainWithUsage(const std::string& what) {
    complain(what);
    std::cerr << kUsage;
    return kNotBegun;
}

int finish(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        complain("cannot write to standard output");
        return std::max(status, kNotWhole);
    }
    return status;
}

int list() {
    for (const sessions::PublicField& field : sessions::publicFields()) {
        std::printf("%-22s %-24s %s\n", std::string(field.message).c_str(),
                    std::string(field.field).c_str(), std::string(field.what_is).c_str());
    }
    return finish(kGood);
}

struct Pair {
    std::string file;
    std::string copy;
};

struct Options {
    bool log = false; ///< what cannot be looked into is a log
    sessions::OtherLines others = sessions::OtherLines::kReplaced;
    std::vector<std::string> names;
};

/// Whether a file is a log: a text, or compressed. A pipe gives what it has only once.
bool isLog(const std::string& name, const Options& options) {
    std::error_code ignored;
    if (!fs::is_regular_file(name, ignored)) {
        return options.log;
    }
    std::ifstream file(name, std::ios::binary);
    std::string beginning(4096, '\0');
    file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
    beginning.resize(static_cast<size_t>(file.gcount()));
    if (beginning.compare(0, 2, "\x1f\x8b") == 0) {
        return true;
    }
    return !beginning.empty() && beginning.compare(0, 4, "\n\r\r\n") != 0 &&
           beginning.find('\0') == std::string::npos;
}

bool isSame(const std::string& one, const std::string& other) {
    std::error_code error;
    if (fs::equivalent(one, other, error)) {
        return true;
    }
    const fs::path first = fs::weakly_canonical(fs::absolute(one), error);
    const fs::path second = error ? fs::path() : fs::weakly_canonical(fs::absolute(other), error);
    return !error && first == second;
}

/// Why a pair cannot be copied; empty when it can.
std::string wrongWith(const Pair& pair) {
    std::error_code ignored;
    if (pair.file != "-") {
        if (fs::is_directory(pair.file, ignored)) {
            return pair.file + " is a directory";
        }
        if (access(pair.file.c_str(), R_OK) != 0) {
            return "cannot open " + pair.file + ": " + std::strerror(errno);
        }
    }
    if (pair.copy == "-") {
        return "a copy needs the name of a file";
    }
    const fs::file_status copy = fs::symlink_status(pair.copy, ignored);
    if (fs::exists(copy) && !fs::is_regular_file(copy)) {
        return pair.copy + " is there already, and is no regular file";
    }
    return {};
}

/// Why the pairs cannot be copied together; empty when they can.
std::string wrongWith(const std::vector<Pair>& pairs) {
    for (size_t i = 0; i < pairs.size(); ++i) {
        for (size_t j = 0; j < pairs.size(); ++j) {
            if (pairs[j].file != "-" && isSame(pairs[i].copy, pairs[j].file)) {
                return "the copy " + pairs[i].copy + " would replace " + pairs[j].file;
            }
            if (j < i && isSame(pairs[i].copy, pairs[j].copy)) {
                return "two copies have the name " + pairs[i].copy;
            }
            if (j < i && pairs[i].file == "-" && pairs[j].file == "-") {
                return "standard input can be copied once";
            }
        }
    }
    return {};
}

std::string counted(uint64_t number, const char* what) {
    return std::to_string(number) + ' ' + what + (number == 1 ? "" : "s");
}

void complainOf(const std::string& file, const std::string& what) {
    complain((file == "-" ? "standard input" : file) + ": " + what);
}

redact::Copied::State copyOneLog(const Pair& pair, const Options& options,
                                 sessions::Redaction& redaction) {
    const redact::CopiedLog copied =
        redact::copyLog(pair.file, pair.copy, redaction, options.others,
                        [&pair](const std::string& what) { complainOf(pair.file, what); });
    if (copied.state != redact::Copied::State::kNotMade) {
        std::printf("%s: %s, %llu of the bridge, %llu understood\n", pair.copy.c_str(),
                    counted(copied.counts.lines, "line").c_str(),
                    static_cast<unsigned long long>(copied.counts.of_bridge),
                    static_cast<unsigned long long>(copied.counts.understood));
    }
    return copied.state;
}

redact::Copied::State copyOneCapture(const Pair& pair, sessions::Redaction& redaction) {
    std::ifstream file;
    if (pair.file != "-") {
        file.open(pair.file, std::ios::binary);
    }
    const uint64_t before = redaction.count();
    const redact::Copied copied =
        redact::copyCapture(pair.file == "-" ? std::cin : file, pair.copy, redaction,
                            [&pair](const std::string& what) { complainOf(pair.file, what); });
    if (copied.state == redact::Copied::State::kNotMade) {
        return copied.state;
    }
    std::printf("%s: %s, %s replaced\n", pair.copy.c_str(),
                counted(copied.messages, "message").c_str(),
                counted(redaction.count() - before, "value").c_str());
    if (copied.blocks > 0 || copied.options > 0) {
        std::printf("%s: without %s and %s that libDtv does not write\n", pair.copy.c_str(),
                    counted(copied.blocks, "block").c_str(),
                    counted(copied.options, "option").c_str());
    }
    return copied.state;
}

/// A signal that ends the program leaves no temporary file.
void watchSignals() {
    struct sigaction action = {};
    action.sa_handler = [](int signal) {
        sessions::NewFile::removeTemporary();
        raise(signal);
    };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        sigaction(signal, &action, nullptr);
    }
    // A file that becomes too large is an error of the write.
    std::signal(SIGXFSZ, SIG_IGN);
}

/// Takes one argument; says what is wrong with it.
std::string takeOption(const std::string& argument, Options& options) {
    if (argument == "--log") {
        options.log = true;
    } else if (argument == "--keep-others") {
        options.others = sessions::OtherLines::kKept;
    } else {
        return argument == "--list" ? "--list takes no file and no option"
                                    : "unknown option " + argument;
    }
    return {};
}

/// Says what is wrong with the arguments; empty when nothing is.
std::string takeArguments(const std::vector<std::string>& arguments, Options& options) {
    bool only_files = false;
    for (const std::string& argument : arguments) {
        std::string wrong;
        if (!only_files && argument == "--") {
            only_files = true;
        } else if (only_files || argument.size() < 2 || argument[0] != '-') {
            options.names.push_back(argument);
            wrong = argument.empty() ? "the name of a file is empty" : "";
        } else {
            wrong = takeOption(argument, options);
        }
        if (!wrong.empty()) {
            return wrong;
        }
    }
    if (options.names.empty()) {
        return "no file is given";
    }
    return options.names.size() % 2 != 0 ? "no copy is named for " + options.names.back()
                                         : std::string();
}

int copyAll(const std::vector<Pair>& pairs, const Options& options) {
    const std::optional<sessions::HashKey> key = sessions::randomHashKey();
    if (!key) {
        return complain(std::string("the kernel gives no random bytes: ") + std::strerror(errno));
    }
    watchSignals();
    sessions::Redaction redaction(*key);
    int status = kGood;
    for (const Pair& pair : pairs) {
        const redact::Copied::State state = isLog(pair.file, options)
                                                ? copyOneLog(pair, options, redaction)
                                                : copyOneCapture(pair, redaction);
        status = std::max(status, state == redact::Copied::State::kWhole ? kGood : kNotWhole);
    }
    return finish(status);
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (const std::string& argument : arguments) {
        if (argument == "--help" || argument == "-h") {
            std::fputs(kUsage, stdout);
            return finish(kGood);
        }
    }
    if (arguments == std::vector<std::string>{"--list"}) {
        return list();
    }
    Options options;
    std::string wrong = takeArguments(arguments, options);
    if (!wrong.empty()) {
        return complainWithUsage(wrong);
    }
    std::vector<Pair> pairs;
    for (size_t i = 0; i < options.names.size(); i += 2) {
        pairs.push_back({options.names[i], options.names[i + 1]});
        wrong = wrongWith(pairs.back());
        if (!wrong.empty()) {
            return complain(wrong);
        }
    }
    wrong = wrongWith(pairs);
    return wrong.empty() ? copyAll(pairs, options) : complain(wrong);
}
