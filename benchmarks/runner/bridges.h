// The bridge and the variants of the hand-written one, as the operations use them.
#pragma once

#include "hand/hand.h"

#include "runner/rounds.h"

#include <DtvSvLibListener.h>
#include <jni.h>

#include <string>
#include <vector>

namespace bench {

/// One bridge, loaded.
struct Bridge {
    std::string name;
    DtvSvLibListener* listener;
    jobject loop;  ///< its CommandLoop, a global reference
    bool looks_up; ///< at each call of a command
};

/// "bridge" first, then the hand-written ones.
std::vector<Bridge>& bridges();

/// Loads the bridge from a file and the hand-written one beside it. Gives up when that fails.
void loadBridges(const std::string& file);

/// Times one load in this process, which has loaded nothing before: "bridge" for the bridge from a
/// file, "look-ups" for the same look-ups of classes and methods alone. The second series is that
/// of the look-ups when the VM has the classes already.
Result measureLoad(const std::string& what, const std::string& file);

} // namespace bench
