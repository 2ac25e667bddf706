#include "records/totals.h"

#include <algorithm>

namespace hostile {

void Totals::add(const Progress& progress) {
    records += progress.rounds;
    delivered += progress.delivered;
    traced += progress.traced;
    seconds += static_cast<double>(progress.played) / 1e9;
    addEdges(progress.edges, progress.edge_count);
}

void Totals::add(const Totals& others) {
    records += others.records;
    delivered += others.delivered;
    traced += others.traced;
    seconds += others.seconds;
    addEdges(others.edges.data(), others.edges.size());
}

void Totals::addEdges(const uint8_t* taken, size_t count) {
    edges.resize(std::max(edges.size(), count));
    edge_count = edges.size();
    for (size_t i = 0; i < count; ++i) {
        edges[i] |= taken[i];
    }
}

size_t Totals::edgesTaken() const {
    return static_cast<size_t>(
        std::count_if(edges.begin(), edges.end(), [](uint8_t taken) { return taken != 0; }));
}

} // namespace hostile
