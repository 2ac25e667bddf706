// dtv-redact: copies captures without the contents of their texts and bytes.
#include "desk/redact/copy.h"
#include "desk/redact/new_file.h"

#include "sessions/keyed_hash.h"
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

constexpr char kUsage[] = R"(usage: dtv-redact FILE COPY [FILE COPY]...
       dtv-redact --list

Copies captures so that they can be given to others: the contents of texts and
bytes are replaced by placeholders of the same length, the same for equal
contents in all files of one call. Numbers, lengths, order, times and names of
threads stay, and what stations broadcast (--list). FILE may be - for standard
input. Each call takes another random key, which it does not keep.

What is damaged is dropped, and what was dropped is said. Exit status: 0 when
each copy is whole, 1 when a FILE is no capture or is cut or damaged (its copy
has the rest) or a COPY could not be written (there is none then, or still the
earlier one), 2 when nothing was begun: a FILE cannot be opened or an argument
is wrong.

  --list    prints the texts and bytes that stay: message, field, what it is
  --help    shows this
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

int copy(const Pair& pair, sessions::Redaction& redaction) {
    const std::string name = pair.file == "-" ? "standard input" : pair.file;
    std::ifstream file;
    if (pair.file != "-") {
        file.open(pair.file, std::ios::binary);
    }
    const uint64_t before = redaction.count();
    const redact::Copied copied =
        redact::copyCapture(pair.file == "-" ? std::cin : file, pair.copy, redaction,
                            [&name](const std::string& what) { complain(name + ": " + what); });
    if (copied.state == redact::Copied::State::kNotMade) {
        return kNotWhole;
    }
    std::printf("%s: %s, %s replaced\n", pair.copy.c_str(),
                counted(copied.messages, "message").c_str(),
                counted(redaction.count() - before, "value").c_str());
    if (copied.blocks > 0 || copied.options > 0) {
        std::printf("%s: without %s and %s that libDtv does not write\n", pair.copy.c_str(),
                    counted(copied.blocks, "block").c_str(),
                    counted(copied.options, "option").c_str());
    }
    return copied.state == redact::Copied::State::kWhole ? kGood : kNotWhole;
}

/// A signal that ends the program leaves no temporary file.
void watchSignals() {
    struct sigaction action = {};
    action.sa_handler = [](int signal) {
        redact::NewFile::removeTemporary();
        raise(signal);
    };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        sigaction(signal, &action, nullptr);
    }
    // A file that becomes too large is an error of the write.
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> names;
    bool only_files = false;
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (only_files || argument.size() < 2 || argument[0] != '-') {
            names.push_back(argument);
        } else if (argument == "--help" || argument == "-h") {
            std::fputs(kUsage, stdout);
            return finish(kGood);
        } else if (argument == "--list" && argc == 2) {
            return list();
        } else if (argument == "--") {
            only_files = true;
        } else {
            return complainWithUsage(argument == "--list" ? "--list takes no file"
                                                          : "unknown option " + argument);
        }
        if (argument.empty()) {
            return complainWithUsage("the name of a file is empty");
        }
    }
    if (names.empty() || names.size() % 2 != 0) {
        return complainWithUsage(names.empty() ? "no file is given"
                                               : "no copy is named for " + names.back());
    }
    std::vector<Pair> pairs;
    for (size_t i = 0; i < names.size(); i += 2) {
        pairs.push_back({names[i], names[i + 1]});
        const std::string wrong = wrongWith(pairs.back());
        if (!wrong.empty()) {
            return complain(wrong);
        }
    }
    const std::string wrong = wrongWith(pairs);
    if (!wrong.empty()) {
        return complain(wrong);
    }
    const std::optional<sessions::HashKey> key = sessions::randomHashKey();
    if (!key) {
        return complain(std::string("the kernel gives no random bytes: ") + std::strerror(errno));
    }
    watchSignals();
    sessions::Redaction redaction(*key);
    int status = kGood;
    for (const Pair& pair : pairs) {
        status = std::max(status, copy(pair, redaction));
    }
    return finish(status);
}
