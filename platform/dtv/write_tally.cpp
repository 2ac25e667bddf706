#include "write_tally.h"

#include <unistd.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace dtv {
namespace {

/// The tally that was created last.
std::atomic<const WriteTally*> tallies{nullptr};

/// Whether something that was wanted is in no file.
std::atomic<bool> incomplete{false};

/// The number in DTV_LOSS_STATUS, or 0 when there is none that an exit status can be.
int lossStatus() {
    const char* text = std::getenv("DTV_LOSS_STATUS");
    if (text == nullptr || *text == '\0') {
        return 0;
    }
    char* end = nullptr;
    const long status = std::strtol(text, &end, 10);
    return *end == '\0' && status > 0 && status < 256 ? static_cast<int>(status) : 0;
}

void reportAtExit(int status, void*) {
    for (const WriteTally* tally = tallies.load(); tally != nullptr; tally = tally->next()) {
        tally->report();
    }
    const int loss_status = lossStatus();
    if (incomplete.load() && status == 0 && loss_status != 0) {
        // A handler cannot change the status that exit() was given.
        std::fflush(nullptr);
        _exit(loss_status);
    }
}

/// As this library is loaded: so the report comes after the destructors of all libraries that are
/// loaded later, the bridge among them, which still writes a line.
__attribute__((constructor)) void registerReport() {
    on_exit(reportAtExit, nullptr);
}

} // namespace

WriteTally::WriteTally(const char* unit, std::string path)
    : unit_(unit), path_(std::move(path)), next_(tallies.load()) {
    while (!tallies.compare_exchange_weak(next_, this)) {
    }
}

bool WriteTally::end(const char* reason) {
    const char* none = nullptr;
    incomplete.store(true);
    return reason_.compare_exchange_strong(none, reason);
}

void WriteTally::report() const {
    const char* reason = reason_.load();
    if (reason == nullptr) {
        return;
    }
    const uint64_t kept = kept_.load();
    std::fprintf(stderr, "libDtv: %s: %s; kept %" PRIu64 " of %" PRIu64 " %s\n", path_.c_str(),
                 reason, kept, kept + lost_.load(), unit_);
}

void noteUnwritableFile() {
    incomplete.store(true);
}

} // namespace dtv
