// The operations that are measured, and how the bridge is compared with the hand-written one before
// anything is timed.
#pragma once

#include "runner/rounds.h"

#include <vector>

namespace bench {

/// Events: from the listener's function to Java. The variants are "bridge", and of the hand-written
/// one "hand" and "floor", which hands over the lines of the bridge. The other technologies follow.
std::vector<Operation> eventOperations();

/// Commands: from Java to the send. The variants are "bridge", and of the hand-written one with all
/// ids kept "hand" and "floor", with look-ups at each call "hand-lookups" and "floor-lookups". The
/// two floors hand over the lines of the bridge. The other technologies follow.
std::vector<Operation> commandOperations();

/// A call with two ints to C and a callback with two ints from C: through JNI as "jni", and through
/// the other technologies.
std::vector<Operation> callOperations();

/// Checks that the variants of an operation do the same: that as much arrives, with the same bytes,
/// and that those that write lines write the same ones.
void checkVariants(const Operation& operation);

} // namespace bench
