// Gives the bridge one hostile record after the other, and says what was wrong with its answer.
#pragma once

#include "records/input.h"
#include "records/limits.h"
#include "records/placed_record.h"

#include <jni.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace hostile {

/// On the thread that made the VM, with the bridge loaded: delivers records on that thread, into a
/// Java listener that counts. One in a process.
class Target {
public:
    /// Gets the text of what is wrong when the bridge touches an inaccessible page, in the handler
    /// of the signal. It does not return.
    using OnFault = void (*)(const char* text);

    explicit Target(OnFault on_fault);
    ~Target();
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    /// What is wrong with the bridge's answer to the input; empty when nothing is.
    std::string play(const Input& input);

    /// Whether the last record was delivered to Java.
    bool delivered() const { return delivered_; }

private:
    std::string wrongCallback(const Outcome& outcome);
    std::vector<std::string> leftBehind();

    PlacedRecord place_;
    JNIEnv* env_;
    jclass counter_ = nullptr; ///< a global reference
    jfieldID count_field_ = nullptr;
    jfieldID callback_field_ = nullptr;
    jfieldID handle_field_ = nullptr;
    int open_frames_before_ = 0;
    int live_before_ = 0;
    int unreleased_before_ = 0;
    int count_before_ = 0; ///< of callbacks
    bool traced_ = false;
    bool delivered_ = false;
};

} // namespace hostile
