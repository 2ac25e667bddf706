// What the variants of the hand-written bridge differ in. One source is compiled once for each of
// them, so that they differ in nothing else.
#pragma once

#include "entry/trace.h"

namespace hand {

/// No line is written and every id is kept: what JNI costs at least.
struct Kept {
    static constexpr bool kLines = false;
    static constexpr bool kLooksUp = false;
};

/// The lines of the bridge, every id is kept.
struct KeptWithLines {
    static constexpr bool kLines = true;
    static constexpr bool kLooksUp = false;
};

/// No line is written; a command looks up classes, fields and getters at each call, and deletes the
/// references that this makes, as the bridge has to. Events are as with Kept.
struct LooksUp {
    static constexpr bool kLines = false;
    static constexpr bool kLooksUp = true;
};

/// The same with the lines of the bridge: what the bridge costs at least.
struct LooksUpWithLines {
    static constexpr bool kLines = true;
    static constexpr bool kLooksUp = true;
};

} // namespace hand

/// A line of the bridge, for the variants that write lines; `Policy` is the variant. The others
/// have no code for it.
#define LISTENER_LINE(...) static_cast<void>(Policy::kLines && (TRACE_LISTENER(__VA_ARGS__), true))
#define NATIVE_LINE(...) static_cast<void>(Policy::kLines && (TRACE_NATIVE(__VA_ARGS__), true))
