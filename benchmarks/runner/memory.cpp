#include "runner/memory.h"

#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/java_side.h"
#include "runner/records.h"
#include "runner/virtual_machine.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace bench {
namespace {

constexpr double kKibibyte = 1024;

/// What may differ between two looks although nothing was left: the VM compiles, and the C
/// library keeps what was given back. A local reference left by each event of a million takes 8
/// bytes or more natively, and its object 16 or more in the heap.
constexpr double kMostGrowthOfProcess = 4096; ///< KiB
constexpr double kMostGrowthOfHeap = 1024;    ///< KiB

struct Memory {
    double process; ///< resident, KiB
    double heap;    ///< used after a collection, KiB
};

Memory look() {
    static const jmethodID used = findStaticMethod(variantsClass(), "usedHeap", "()J");
    const auto heap = static_cast<double>(env()->CallStaticLongMethod(variantsClass(), used));
    requireNoException("usedHeap");
    long pages = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (file == nullptr || std::fscanf(file, "%*d %ld", &pages) != 1) {
        giveUp("/proc/self/statm cannot be read");
    }
    std::fclose(file);
    return {static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / kKibibyte,
            heap / kKibibyte};
}

/// Events of all kinds; the long ones as rare as they are in an evening.
void deliver(int events) {
    constexpr int kEventsForOneLong = 50;
    DtvSvLibListener& listener = *bridges().front().listener;
    std::vector<EventRecord> records = eventRecords(1);
    constexpr size_t kShort = 3;
    for (int i = 0; i < events; ++i) {
        const auto number = static_cast<size_t>(i);
        const bool is_long = i % kEventsForOneLong == 0;
        EventRecord& event =
            records[is_long ? kShort + number / kEventsForOneLong % (records.size() - kShort)
                            : number % kShort];
        if (listener.recvEventFromServer(event.id, event.bytes.data(),
                                         static_cast<int>(event.bytes.size())) != 0) {
            giveUp(event.name + " was not delivered");
        }
    }
}

} // namespace

Result measureMemory(int events) {
    deliver(events / 5);
    const Memory before = look();
    const Arrived counted = arrivedEvents();
    deliver(events);
    require(arrivedEvents().count - counted.count == events, "not all events reached Java");
    const Memory after = look();
    require(after.process - before.process <= kMostGrowthOfProcess,
            "the process has grown by " + std::to_string(after.process - before.process) + " KiB");
    require(after.heap - before.heap <= kMostGrowthOfHeap,
            "the heap has grown by " + std::to_string(after.heap - before.heap) + " KiB");
    return {std::to_string(events) + " events",
            "memory",
            "KiB",
            {{"process before", 1, {before.process}},
             {"process after", 1, {after.process}},
             {"heap before", 1, {before.heap}},
             {"heap after", 1, {after.heap}}},
            {}};
}

} // namespace bench
