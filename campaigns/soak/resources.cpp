#include "soak/resources.h"

#include "strict_jni/strict_jni.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace soak {
namespace {

int entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

int64_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    int64_t whole = 0;
    int64_t resident = 0;
    file >> whole >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

/// A line when a value is above what it may be.
template <typename Value>
void compare(std::string& text, size_t point, const char* what, Value value, Value bound) {
    if (value > bound) {
        text += "point " + std::to_string(point + 1) + ": " + what + " " + std::to_string(value) +
                ", at most " + std::to_string(bound) + " was right\n";
    }
}

} // namespace

Resources measure(Machine& machine) {
    using strict_jni::StrictJni;
    machine.call("pause");
    Resources at{};
    at.java_heap = machine.number("heapInUse");
    at.vm_references = machine.number("references");
    at.round_trips = static_cast<uint64_t>(machine.number("roundTrips"));
    at.bridge_locals = StrictJni::liveLocals();
    at.bridge_globals = StrictJni::globalsMade() - StrictJni::globalsDeleted();
    at.unreleased = StrictJni::unreleased();
    at.surface_references = machine.surfaceReferences();
    at.descriptors = entriesOf("/proc/self/fd");
    at.threads = entriesOf("/proc/self/task");
    at.resident = residentBytes();
    return at;
}

std::string lineOf(const Resources& at) {
    char line[240];
    std::snprintf(
        line, sizeof line,
        "%10llu round trips: %7lld KiB resident, %6lld KiB of Java heap, %lld references "
        "in the VM, %d local and %d global ones of the bridge, %d descriptors, %d threads",
        static_cast<unsigned long long>(at.round_trips), static_cast<long long>(at.resident >> 10),
        static_cast<long long>(at.java_heap >> 10), static_cast<long long>(at.vm_references),
        at.bridge_locals, at.bridge_globals, at.descriptors, at.threads);
    return line;
}

std::string whatGrew(const std::vector<Resources>& points, bool memory) {
    std::string text;
    for (size_t i = 0; i < points.size(); ++i) {
        const Resources& first = points.front();
        const Resources& at = points[i];
        if (memory) {
            compare(text, i, "bytes of resident memory:", at.resident,
                    first.resident + kResidentBound);
        }
        compare(text, i, "bytes of Java heap:", at.java_heap, first.java_heap + kHeapBound);
        compare(text, i, "references in the VM:", at.vm_references, first.vm_references);
        compare(text, i, "local references of the bridge:", at.bridge_locals, 0);
        compare(text, i, "global references of the bridge:", at.bridge_globals,
                first.bridge_globals);
        compare(text, i, "texts and arrays not given back:", at.unreleased, 0);
        compare(text, i, "references to the surface:", at.surface_references, 1);
        compare(text, i, "descriptors:", at.descriptors, first.descriptors);
        compare(text, i, "threads:", at.threads, first.threads);
    }
    return text;
}

} // namespace soak
