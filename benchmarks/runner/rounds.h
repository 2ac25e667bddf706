// How a time is measured: the variants of an operation take turns, a batch of calls at a time, and
// each batch is timed by the CPU time of the thread. So what the machine does beside it, and what
// changes while it runs, meets all variants alike.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// One way of doing an operation.
struct Variant {
    std::string name;
    std::function<void(int count)> run; ///< does it `count` times
};

/// What has arrived where the operation leads to, since the program's start.
struct Arrived {
    long long count = 0; ///< events in Java, or commands in libDtv
    long long sum = 0;   ///< of one field of each event, or of the bytes of the commands
};

/// CPU time of the calling thread, in nanoseconds.
double threadTime();
/// CPU time of all threads of the process, in nanoseconds.
double processTime();
/// Time that passes, in nanoseconds.
double wallTime();

struct Operation {
    std::string name;
    std::string group;
    std::vector<Variant> variants;
    std::function<Arrived()> arrived;
    std::map<std::string, std::string> missing; ///< variants that are not there, and why
    double (*clock)() = threadTime;
};

struct Plan {
    int rounds;        ///< batches of each variant that count
    double batch_ms;   ///< how long one takes, about
    double warm_up_ms; ///< how long each variant runs before
};

struct Series {
    std::string variant;
    int batch = 0;              ///< calls
    std::vector<double> values; ///< a call's share of each batch
};

/// What was measured of one operation.
struct Result {
    std::string name;
    std::string group;
    std::string unit;
    std::vector<Series> series;
    std::map<std::string, std::string> missing; ///< as of the operation
};

/// Warms up, then times each variant in turn, round by round. Checks that all that was done has
/// arrived.
Result measure(const Operation& operation, const Plan& plan);

} // namespace bench
