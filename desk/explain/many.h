// Many logs: each is explained by itself, and the causes are counted.
#pragma once

#include "desk/explain/explained.h"

#include <ostream>
#include <string>
#include <vector>

namespace explain {

struct ManyOptions {
    ReadOptions read;
    std::ostream* ndjson = nullptr; ///< where the objects of each log go; null: nowhere
    bool shows_progress = false;    ///< a bar on standard error
    unsigned jobs = 0;              ///< logs at a time; 0: as many as there are processors
};

/// The files of a folder and of the folders in it, in the order of their names; a file is itself.
/// What cannot be listed is in `errors`.
std::vector<std::string> filesIn(const std::vector<std::string>& paths,
                                 std::vector<std::string>& errors);

/// Explains the files and writes the table of causes. A file that cannot be read stops nothing.
Verdict explainMany(std::ostream& out, const std::vector<std::string>& files,
                    const ManyOptions& options);

} // namespace explain
