// dtv-bench: measures the bridge beside a bridge written by hand, in one process, and prints every
// figure as JSON. ./bench starts it and makes the table.
#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/operations.h"
#include "runner/rounds.h"
#include "runner/virtual_machine.h"

#include <cstdio>
#include <cstring>
#include <set>
#include <string>

namespace {

using bench::Operation;
using bench::Plan;
using bench::Series;

constexpr Plan kWholeRun = {21, 8, 400};
/// Enough to run everything, and too short for figures.
constexpr Plan kCheckRun = {3, 1, 5};

struct Options {
    std::string library;
    std::string class_path;
    std::set<std::string> only; ///< empty: all
    bool check = false;
};

Options parse(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (name == "--check") {
            options.check = true;
            continue;
        }
        if (++i == argc) {
            bench::giveUp(name + " needs a value");
        }
        if (name == "--library") {
            options.library = argv[i];
        } else if (name == "--class-path") {
            options.class_path = argv[i];
        } else if (name == "--only") {
            options.only.insert(argv[i]);
        } else {
            bench::giveUp("unknown option " + name);
        }
    }
    return options;
}

void print(const Operation& operation, const std::vector<Series>& all, bool is_first) {
    std::printf("%s\n  {\"name\": \"%s\", \"group\": \"%s\", \"unit\": \"ns\", \"variants\": {",
                is_first ? "" : ",", operation.name.c_str(), operation.group.c_str());
    const char* separator = "";
    for (const Series& series : all) {
        std::printf("%s\n    \"%s\": {\"batch\": %d, \"rounds\": [", separator,
                    series.variant.c_str(), series.batch);
        const char* comma = "";
        for (const double round : series.nanoseconds) {
            std::printf("%s%.2f", comma, round);
            comma = ", ";
        }
        std::printf("]}");
        separator = ",";
    }
    std::printf("}}");
}

} // namespace

int main(int argc, char** argv) {
    const Options options = parse(argc, argv);
    bench::startVm({"-Djava.class.path=" + options.class_path});
    bench::loadBridges(options.library);

    std::vector<Operation> operations = bench::eventOperations();
    for (Operation& command : bench::commandOperations()) {
        operations.push_back(std::move(command));
    }
    std::printf("{\"operations\": [");
    bool is_first = true;
    for (const Operation& operation : operations) {
        if (!options.only.empty() && options.only.count(operation.name) == 0 &&
            options.only.count(operation.group) == 0) {
            continue;
        }
        std::fprintf(stderr, "%s\n", operation.name.c_str());
        bench::checkVariants(operation);
        print(operation, bench::measure(operation, options.check ? kCheckRun : kWholeRun),
              is_first);
        is_first = false;
    }
    std::printf("\n],\n\"checks\": {\"held\": %d, \"failed\": %d}}\n", bench::heldChecks(),
                bench::failedChecks());
    std::fflush(stdout);
    // The VM's threads and the listeners need no orderly end.
    std::_Exit(bench::failedChecks() == 0 && std::ferror(stdout) == 0 ? 0 : 1);
}
