// What processes have played together.
#pragma once

#include "records/progress.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace hostile {

struct Totals {
    uint64_t records = 0;
    uint64_t delivered = 0;
    uint64_t traced = 0;
    double seconds = 0; ///< of processor time
    size_t edge_count = 0;
    std::vector<uint8_t> edges;

    void add(const Progress& progress);
    void add(const Totals& others);
    size_t edgesTaken() const;

private:
    void addEdges(const uint8_t* taken, size_t count);
};

} // namespace hostile
