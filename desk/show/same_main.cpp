// dtv-same: compares the traces of two runs.
#include "desk/show/trace_compare.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr int kSame = 0;
constexpr int kDifferent = 1;
constexpr int kNotCompared = 2; ///< wrong arguments, or a file that cannot be read

constexpr char kUsage[] = R"(usage: dtv-same [--ignore-source-lines] TRACE OTHER

Says whether two runs wrote the same trace, line for line. Not compared are the
numbers that are others in every run: of processes (pid), of threads (tid,
threadid), and addresses (env, cls, clazz). At the first difference both lines are
shown. Exit status: 0 when they are the same, 1 when not, 2 when a file cannot be
read, is empty, or an argument is wrong.

  --ignore-source-lines  does not compare the line numbers of the bridge's
                         sources: for builds of two versions
  --help                 shows this
)";

int complain(const std::string& what) {
    std::cerr << "dtv-same: " << what << '\n';
    return kNotCompared;
}

int complainOfUse(const std::string& what) {
    complain(what);
    std::cerr << kUsage;
    return kNotCompared;
}

int finish(int status) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        return complain("cannot write to standard output");
    }
    return status;
}

/// Why the file cannot be compared; empty when it can.
std::string open(const std::string& name, std::ifstream& file) {
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) {
        return name + " is a directory";
    }
    file.open(name, std::ios::binary);
    if (!file) {
        return "cannot open " + name + ": " + std::strerror(errno);
    }
    if (file.peek() == std::ifstream::traits_type::eof()) {
        return name + (file.bad() ? " cannot be read" : " is empty");
    }
    return {};
}

void show(const std::string& name, size_t number, const std::optional<std::string>& line) {
    if (line) {
        std::printf("%s:%zu: %s\n", name.c_str(), number, line->c_str());
    } else {
        std::printf("%s:%zu: the file ends before this line\n", name.c_str(), number);
    }
}

int compare(const std::vector<std::string>& names, const show::TraceCompareOptions& options) {
    std::ifstream files[2];
    for (size_t i = 0; i < 2; ++i) {
        const std::string error = open(names[i], files[i]);
        if (!error.empty()) {
            return complain(error);
        }
    }
    const show::TraceComparison comparison = show::compareTraces(files[0], files[1], options);
    for (size_t i = 0; i < 2; ++i) {
        if (files[i].bad()) {
            return complain(names[i] + " cannot be read");
        }
    }
    if (comparison.difference) {
        const show::TraceDifference& difference = *comparison.difference;
        show(names[0], difference.line, difference.first);
        show(names[1], difference.line, difference.second);
        return finish(kDifferent);
    }
    std::printf("the same trace of %zu lines\n", comparison.same_lines);
    return finish(kSame);
}

} // namespace

int main(int argc, char** argv) {
    show::TraceCompareOptions options;
    std::vector<std::string> names;
    bool only_files = false;
    for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
        if (!only_files && (argument == "--help" || argument == "-h")) {
            std::fputs(kUsage, stdout);
            return finish(kSame);
        }
        if (!only_files && argument == "--ignore-source-lines") {
            options.ignore_source_lines = true;
        } else if (!only_files && argument == "--") {
            only_files = true;
        } else if (!only_files && argument.size() > 1 && argument[0] == '-') {
            return complainOfUse("unknown option " + argument);
        } else {
            names.push_back(argument);
        }
    }
    if (names.size() != 2) {
        return complainOfUse("two traces are compared");
    }
    return compare(names, options);
}
