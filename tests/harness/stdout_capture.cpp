#include "harness/stdout_capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace harness {
namespace {

void need(bool done, const char* what) {
    if (!done) {
        std::perror(what);
        std::abort();
    }
}

std::string readFrom(int file, long offset) {
    std::string text;
    char block[4096];
    ssize_t got = 0;
    while ((got = pread(file, block, sizeof block, offset + static_cast<long>(text.size()))) > 0) {
        text.append(block, static_cast<size_t>(got));
    }
    return text;
}

} // namespace

StdoutCapture::StdoutCapture() : real(dup(1)), captured(memfd_create("stdout", MFD_CLOEXEC)) {
    need(real >= 0 && captured >= 0, "standard output cannot be captured");
    std::fflush(stdout);
    need(dup2(captured, 1) >= 0, "dup2");
}

StdoutCapture::~StdoutCapture() {
    std::fflush(stdout);
    need(dup2(real, 1) >= 0, "dup2");
    std::string all = readFrom(captured, 0);
    std::fwrite(all.data(), 1, all.size(), stdout);
    std::fflush(stdout);
    close(real);
    close(captured);
}

std::string StdoutCapture::take() {
    std::fflush(stdout);
    std::string text = readFrom(captured, taken);
    taken += static_cast<long>(text.size());
    return text;
}

} // namespace harness
