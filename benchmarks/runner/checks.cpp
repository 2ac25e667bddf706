#include "runner/checks.h"

#include <cstdio>

namespace bench {
namespace {

int failed = 0;
int held = 0;

} // namespace

void require(bool holds, const std::string& what) {
    if (holds) {
        ++held;
        return;
    }
    ++failed;
    std::fprintf(stderr, "bench: self-check failed: %s\n", what.c_str());
}

int failedChecks() {
    return failed;
}

int heldChecks() {
    return held;
}

} // namespace bench
