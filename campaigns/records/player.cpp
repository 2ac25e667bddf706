#include "records/player.h"

#include "records/edges.h"
#include "records/shapes.h"
#include "records/target.h"

#include "harness/harness.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// libFuzzer's own.
extern "C" int LLVMFuzzerRunDriver(int* argc, char*** argv,
                                   int (*callback)(const uint8_t* data, size_t size));
extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);

namespace hostile {
namespace {

struct Player {
    Progress& progress;
    uint64_t most = UINT64_MAX;
    Target target;
    Edges edges;
    bool is_alone; ///< no process waits for what is found
};
Player* player = nullptr;
Progress* progress_of_fault = nullptr;

void endByFault(const char* text) {
    progress_of_fault->keepWrong(text);
    std::fprintf(stderr, "%s\n", text);
    _exit(campaigns::kFound);
}

void preparePlayer(Progress& progress, bool is_alone) {
    progress_of_fault = &progress;
    // The lines of errors go to standard output, 10^8 of them.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror("/dev/null");
        std::_Exit(71);
    }
    setenv("DTV_TEST_VM_OPTIONS", "-XX:+ErrorFileToStderr", 0);
    harness::VirtualMachine::instance();
    player = new Player{progress, UINT64_MAX, Target(&endByFault), Edges(harness::Product::file()),
                        is_alone};
    progress.edge_count = std::min(player->edges.count(), kMostEdges);
    if (player->edges.count() > kMostEdges) {
        std::fprintf(stderr, "more edges than there is room for\n");
        std::_Exit(71);
    }
}

/// Plays an input and keeps what it was and what came of it.
std::string playData(const uint8_t* data, size_t size) {
    Progress& progress = player->progress;
    size = std::min(size, kLongestInput);
    if (size != 0) {
        std::memcpy(progress.input, data, size);
    }
    progress.input_size.store(size, std::memory_order_release);
    const Input input = readInput(data, size);
    std::string wrong = player->target.play(input);
    player->edges.addTo(progress.edges);
    progress.delivered.fetch_add(player->target.delivered() ? 1 : 0, std::memory_order_relaxed);
    progress.traced.fetch_add(input.traced ? 1 : 0, std::memory_order_relaxed);
    const uint64_t records = progress.rounds.fetch_add(1, std::memory_order_relaxed) + 1;
    if (records % 256 == 1) {
        progress.keepTime();
    }
    return wrong;
}

int playFromFuzzer(const uint8_t* data, size_t size) {
    const std::string wrong = playData(data, size);
    Progress& progress = player->progress;
    if (!wrong.empty()) {
        progress.keepWrong(wrong.c_str());
        if (player->is_alone) {
            std::fprintf(stderr, "%s: %s\n", described(readInput(data, size)).c_str(),
                         wrong.c_str());
            std::abort();
        }
        _exit(campaigns::kFound);
    }
    if (progress.stop.load(std::memory_order_relaxed) || progress.rounds >= player->most) {
        progress.keepTime();
        _exit(0);
    }
    return 0;
}

} // namespace

std::vector<std::string> fuzzerOptions() {
    // The VM has handlers of its own for signals; who waits for this process watches its time.
    return {"-use_cmp=0",      "-entropic=0",    "-reduce_inputs=0",
            "-shuffle=0",      "-handle_abrt=0", "-handle_bus=0",
            "-handle_fpe=0",   "-handle_ill=0",  "-handle_int=0",
            "-handle_segv=0",  "-handle_term=0", "-handle_xfsz=0",
            "-handle_usr1=0",  "-handle_usr2=0", "-detect_leaks=0",
            "-rss_limit_mb=0", "-timeout=0",     "-reload=0",
            "-print_funcs=0",  "-len_control=0", "-max_len=" + std::to_string(kLongestInput)};
}

void playFuzzed(Progress& progress, uint64_t most, std::vector<std::string> arguments) {
    preparePlayer(progress, false);
    player->most = most;
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    auto count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    char** list = pointers.data();
    LLVMFuzzerRunDriver(&count, &list, &playFromFuzzer);
    _exit(72); // it ends when it is stopped
}

void playOne(Progress& progress, const std::vector<uint8_t>& data) {
    preparePlayer(progress, false);
    const std::string wrong = playData(data.data(), data.size());
    progress.keepWrong(wrong.c_str());
    _exit(wrong.empty() ? 0 : campaigns::kFound);
}

int runFuzzer(Progress& progress, int argc, char** argv) {
    preparePlayer(progress, true);
    return LLVMFuzzerRunDriver(&argc, &argv, &playFromFuzzer);
}

} // namespace hostile

extern "C" __attribute__((visibility("default"))) size_t
LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size, unsigned seed) {
    using namespace hostile;
    Random random(seed);
    random.next();
    Input input;
    if (size < kHead || random.oneIn(4)) {
        input = shaped(random);
    } else {
        if (random.oneIn(16)) {
            size = kHead + LLVMFuzzerMutate(data + kHead, size - kHead, max_size - kHead);
        }
        input = readInput(data, size);
    }
    for (size_t changes = random.below(4); changes != 0; --changes) {
        change(random, input);
    }
    const std::vector<uint8_t> made = written(input);
    const size_t length = std::min(made.size(), max_size);
    std::memcpy(data, made.data(), length);
    return length;
}
