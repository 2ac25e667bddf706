// The Java VM of the soak, and the calls to its Java side.
#pragma once

#include <jni.h>

#include <cstdint>
#include <string>
#include <vector>

namespace soak {

/// Made once, on the main thread. What cannot be done ends the process with status 2.
class Machine {
public:
    /// Starts the VM and loads the bridge.
    Machine();

    /// soak.Soak.open: what was wrong, or empty.
    std::string open(int threads, const std::vector<int>& empty, const std::vector<int>& occupied);
    /// soak.Soak.stage: what was wrong, or empty.
    std::string stage(uint64_t seed, uint64_t commands_per_thread, double seconds);
    /// A static method of soak.Soak without arguments that returns a long.
    int64_t number(const char* method);
    /// The same that returns nothing.
    void call(const char* method);

    /// Strong references to the surface that the commands carry, the program's own included.
    int surfaceReferences() const;

private:
    jmethodID method(const char* name, const char* signature);
    std::string text(jobject result);
    jintArray array(const std::vector<int>& values);
    void check(const char* doing);

    JNIEnv* env_ = nullptr;
    jclass soak_ = nullptr;
    void* surface_ = nullptr;
};

} // namespace soak
