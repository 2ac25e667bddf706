// The arguments of dtv-explain.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace explain {

struct Options {
    bool help = false;
    bool json = false;
    bool redact = false;            ///< shows placeholders in place of contents
    uint64_t around = 0;            ///< the line whose surroundings are shown; 0: the report is
    std::string capture;            ///< file that a capture is made in of the log; empty: none
    std::string only;               ///< which findings; empty: all
    std::string ndjson;             ///< file; empty: none
    int64_t slow = 1000000000;      ///< nanoseconds
    unsigned jobs = 0;              ///< logs at a time; 0: as many as there are processors
    std::vector<std::string> files; ///< "-" is standard input
};

/// Reads the arguments. Returns what is wrong with them; empty when nothing is.
std::string takeArguments(const std::vector<std::string>& arguments, Options& options);

extern const char* const kUsage;

} // namespace explain
