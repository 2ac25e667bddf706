// The technologies that reach native code without a bridge: JNA, JNR-FFI, the VM's foreign
// interface.
#pragma once

#include "peers/peers.h"

#include <jni.h>

#include <string>
#include <vector>

namespace bench {

/// One of them, ready, or why it is not there.
struct Technology {
    std::string name;
    std::string missing;            ///< why there is none; empty when there is one
    PeerOnEvent on_event = nullptr; ///< what C calls with an event
    PeerOnInts on_ints = nullptr;
    jobject proxy = nullptr;     ///< its commands, a global reference
    jobject call_loop = nullptr; ///< its loop of calls with two ints, a global reference
};

/// All of them, made at the first call.
const std::vector<Technology>& technologies();

/// The loop over the bare call of a native method, a global reference.
jobject jniCallLoop();

} // namespace bench
