// dtv-bench: measures the bridge beside a bridge written by hand, in one process, and prints every
// figure as JSON. ./bench starts it and makes the table.
#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/json.h"
#include "runner/memory.h"
#include "runner/operations.h"
#include "runner/options.h"
#include "runner/rounds.h"
#include "runner/threads.h"
#include "runner/virtual_machine.h"

#include <cstdio>
#include <cstdlib>

namespace {

using bench::Operation;
using bench::Plan;
using bench::Result;

constexpr Plan kWholeRun = {21, 8, 400};
/// Enough to run everything, and too short for figures.
constexpr Plan kCheckRun = {3, 1, 5};

constexpr int kManyEvents = 1'000'000;
constexpr int kSomeEvents = 200'000;

void measureOperations(const bench::Options& options, const Plan& plan,
                       bench::JsonResults& results) {
    std::vector<Operation> operations = bench::eventOperations();
    for (Operation& command : bench::commandOperations()) {
        operations.push_back(std::move(command));
    }
    for (Operation& call : bench::callOperations()) {
        operations.push_back(std::move(call));
    }
    for (const Operation& operation : operations) {
        if (options.wants(operation.group, operation.name)) {
            std::fprintf(stderr, "%s\n", operation.name.c_str());
            if (operation.group != "calls") {
                bench::checkVariants(operation);
            }
            results.add(bench::measure(operation, plan));
        }
    }
}

void measureAll(const bench::Options& options, bench::JsonResults& results) {
    const Plan& plan = options.check ? kCheckRun : kWholeRun;
    bench::loadBridges(options.library);
    measureOperations(options, plan, results);
    if (options.wants("memory", "")) {
        std::fprintf(stderr, "memory\n");
        results.add(bench::measureMemory(options.check ? kSomeEvents : kManyEvents));
    }
    if (options.wants("threads", "")) {
        std::fprintf(stderr, "threads\n");
        for (const Result& result : bench::measureThreads(plan)) {
            results.add(result);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const bench::Options options = bench::parseOptions(argc, argv);
    bench::startVm({
        "-Djava.class.path=" + options.class_path,
        "-Dtenrik.bench.peers=" + options.peers,
#ifdef BENCH_HAS_FOREIGN
        "--add-modules=jdk.incubator.foreign",
        "--enable-native-access=ALL-UNNAMED",
#endif
    });
    bench::JsonResults results;
    if (!options.load.empty()) {
        results.add(bench::measureLoad(options.load, options.library));
    } else {
        measureAll(options, results);
    }
    const bool is_written = results.end();
    // The VM's threads and the listeners need no orderly end.
    std::_Exit(bench::failedChecks() == 0 && is_written ? 0 : 1);
}
