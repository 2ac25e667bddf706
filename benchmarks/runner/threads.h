// Events on several threads at a time, as libDtv delivers them.
#pragma once

#include "runner/rounds.h"

#include <vector>

namespace bench {

/// The most threads: the bridge knows no more.
constexpr int kMostThreads = 20;

/// For each number of threads, the time that passes until all of them have delivered their events,
/// as one event's share. The variants are the bridges that differ for events.
std::vector<Result> measureThreads(const Plan& plan);

} // namespace bench
