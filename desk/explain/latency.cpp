#include "desk/explain/latency.h"

#include <algorithm>

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

/// The middle of a class.
int64_t middleOf(int number) {
    if (number < 16) {
        return number;
    }
    const int bits = number / 16;
    const auto width = int64_t{1} << (bits - 1 - kBitsOfStep);
    return (int64_t{1} << (bits - 1)) + number % 16 * width + width / 2;
}

} // namespace

void Durations::add(int64_t nanoseconds, uint64_t line) {
    const int64_t duration = std::max<int64_t>(nanoseconds, 0);
    ++classes_[classOf(duration)];
    ++count_;
    if (count_ == 1 || duration > longest_) {
        longest_ = duration;
        longest_line_ = line;
    }
}

int64_t Durations::percentile(int percent) const {
    const uint64_t wanted = (count_ * static_cast<uint64_t>(percent) + 99) / 100;
    uint64_t passed = 0;
    for (const auto& [number, count] : classes_) {
        passed += count;
        if (passed >= wanted) {
            return std::min(middleOf(number), longest_);
        }
    }
    return 0;
}

} // namespace explain
