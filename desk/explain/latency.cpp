#include "desk/explain/latency.h"

#include <algorithm>
#include <cmath>

namespace explain {
namespace {

constexpr int kBitsOfStep = 4;

/// The class of a duration: its highest bit, and the four bits after it.
int classOf(int64_t duration) {
    const auto value = static_cast<uint64_t>(duration);
    if (value < 16) {
        return static_cast<int>(value);
    }
    const int bits = 64 - __builtin_clzll(value);
    const auto step = static_cast<int>(value >> (bits - 1 - kBitsOfStep) & 15);
    return bits * 16 + step;
}

} // namespace

void Durations::add(int64_t nanoseconds, uint64_t line) {
    const int64_t duration = std::max<int64_t>(nanoseconds, 0);
    Class& of_duration = classes_[classOf(duration)];
    ++of_duration.count;
    of_duration.mean +=
        (static_cast<double>(duration) - of_duration.mean) / static_cast<double>(of_duration.count);
    ++count_;
    if (count_ == 1 || duration > longest_) {
        longest_ = duration;
        longest_line_ = line;
    }
}

int64_t Durations::percentile(int percent) const {
    const uint64_t wanted = (count_ * static_cast<uint64_t>(percent) + 99) / 100;
    uint64_t passed = 0;
    for (const auto& [number, each] : classes_) {
        passed += each.count;
        if (passed >= wanted) {
            return each.mean < static_cast<double>(longest_) ? std::llround(each.mean) : longest_;
        }
    }
    return 0;
}

} // namespace explain
