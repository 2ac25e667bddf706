// The command line of the programs.
#pragma once

#include <set>
#include <string>

namespace bench {

struct Options {
    std::string library;        ///< the bridge
    std::string class_path;     ///< of the VM
    std::string peers;          ///< the C library of the other technologies
    std::string load;           ///< what is loaded and timed, instead of all else
    std::set<std::string> only; ///< operations and groups; empty: all
    bool check = false;         ///< a run too short for figures

    bool wants(const std::string& group, const std::string& name) const {
        return only.empty() || only.count(group) != 0 || only.count(name) != 0;
    }
};

/// Gives up on an argument that is wrong.
Options parseOptions(int argc, char** argv);

} // namespace bench
