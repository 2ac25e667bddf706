// What the process holds at one moment, and whether it stays the same.
#pragma once

#include "soak/machine.h"

#include <cstdint>
#include <string>
#include <vector>

namespace soak {

/// Taken when nothing is under way.
struct Resources {
    uint64_t round_trips;   ///< since the beginning
    int64_t resident;       ///< bytes of memory
    int64_t java_heap;      ///< bytes in use
    int64_t vm_references;  ///< global and weak references, by the VM's own count
    int bridge_locals;      ///< local references that the bridge made and that live
    int bridge_globals;     ///< the same of global ones
    int unreleased;         ///< characters and elements of Java objects not given back
    int surface_references; ///< to the surface that the commands carry
    int descriptors;
    int threads;
};

Resources measure(Machine& machine);

/// One line for people.
std::string lineOf(const Resources& at);

/// Bytes by which the resident memory of a later point may be larger than that of the first one:
/// an allocator keeps what it got, and gets more the first times.
constexpr int64_t kResidentBound = 4 << 20;
/// The same of the Java heap.
constexpr int64_t kHeapBound = 1 << 20;

/// What is not flat from the first point on, a line each; empty when all is.
/// `memory` whether the resident memory is looked at.
std::string whatGrew(const std::vector<Resources>& points, bool memory);

} // namespace soak
