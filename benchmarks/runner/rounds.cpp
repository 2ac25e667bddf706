#include "runner/rounds.h"

#include "runner/checks.h"

#include <algorithm>
#include <ctime>

namespace bench {
namespace {

constexpr double kNanosecondsPerMillisecond = 1e6;

double readClock(clockid_t clock) {
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

/// How often the operation was done that is being measured.
long long done = 0;

double timeOf(const Operation& operation, const Variant& variant, int count) {
    done += count;
    const double start = operation.clock();
    variant.run(count);
    return operation.clock() - start;
}

/// Runs all variants in turn, in growing batches, until each has run for the time of the warm-up.
/// Returns the batch of each that takes the planned time.
std::vector<int> warmUp(const Operation& operation, const Plan& plan) {
    std::vector<int> batches(operation.variants.size(), 1);
    std::vector<double> spent(operation.variants.size(), 0);
    const double batch_time = plan.batch_ms * kNanosecondsPerMillisecond;
    const double enough = plan.warm_up_ms * kNanosecondsPerMillisecond;
    bool is_warm = false;
    while (!is_warm) {
        is_warm = true;
        for (size_t i = 0; i < operation.variants.size(); ++i) {
            const double time = std::max(timeOf(operation, operation.variants[i], batches[i]), 1.0);
            spent[i] += time;
            const double wanted = batches[i] * (batch_time / time);
            batches[i] = std::max(1, static_cast<int>(std::min(wanted, batches[i] * 2.0)));
            is_warm = is_warm && spent[i] >= enough;
        }
    }
    return batches;
}

} // namespace

double threadTime() {
    return readClock(CLOCK_THREAD_CPUTIME_ID);
}

double processTime() {
    return readClock(CLOCK_PROCESS_CPUTIME_ID);
}

double wallTime() {
    return readClock(CLOCK_MONOTONIC);
}

Result measure(const Operation& operation, const Plan& plan) {
    // What leads nowhere but back is checked by what it returns.
    const auto arrived = [&] { return operation.arrived ? operation.arrived() : Arrived{}; };
    const Arrived before = arrived();
    operation.variants[0].run(1);
    const Arrived one = arrived();
    done = 0;
    const std::vector<int> batches = warmUp(operation, plan);
    Result result = {operation.name, operation.group, "ns", {}, operation.missing};
    for (size_t i = 0; i < operation.variants.size(); ++i) {
        result.series.push_back({operation.variants[i].name, batches[i], {}});
    }
    for (int round = 0; round < plan.rounds; ++round) {
        for (size_t i = 0; i < operation.variants.size(); ++i) {
            result.series[i].values.push_back(timeOf(operation, operation.variants[i], batches[i]) /
                                              batches[i]);
        }
    }
    if (operation.arrived) {
        const Arrived after = operation.arrived();
        const long long count = after.count - one.count;
        require(count == done, operation.name + ": " + std::to_string(done) + " were done, " +
                                   std::to_string(count) + " have arrived");
        require(after.sum - one.sum == done * (one.sum - before.sum),
                operation.name + ": what arrived has another content than what was sent");
    }
    return result;
}

} // namespace bench
