// The Java VM of the test process: one, made when it is first requested, on the main thread.
#pragma once

#include "strict_jni/strict_jni.h"

#include <jni.h>

#include <functional>
#include <memory>
#include <string>

namespace harness {

using strict_jni::Calls;
using strict_jni::FailJni;
using strict_jni::FailNth;
using strict_jni::isModifiedUtf8;
using strict_jni::JniCall;
using strict_jni::ObservedJni;
using strict_jni::StrictJni;
using strict_jni::waysToFail;

/// How a test process checks JNI calls, from DTV_TEST_MODE.
enum class Mode {
    strict,   ///< "strict", the default: by the table of strict_jni.h
    checkJni, ///< "checkjni": by the VM's own -Xcheck:jni, whose warnings ctest finds in the output
    plain     ///< "plain": not at all (the sanitizers check)
};
Mode mode();

class VirtualMachine {
public:
    /// Makes the VM at the first call. Further options come from DTV_TEST_VM_OPTIONS, separated by
    /// blanks.
    static VirtualMachine& instance();
    static bool exists();

    JavaVM* vm() const { return java_vm; }

    /// The calling thread's environment; ends the process when the thread is not attached.
    JNIEnv* env() const;

    /// Ends the VM. Every thread but daemons and the caller must have been detached.
    void destroy();

private:
    VirtualMachine();
    JavaVM* java_vm = nullptr;
};

/// The calling thread's environment.
JNIEnv* env();

/// Describes and clears the exception that is pending on the calling thread. Empty when there is
/// none, otherwise its text ("java.lang.IllegalStateException: why").
std::string takeException();

/// A frame of local references on the calling thread, so that a helper leaves none but its result.
class LocalFrame {
public:
    LocalFrame();
    ~LocalFrame();
    LocalFrame(const LocalFrame&) = delete;
    LocalFrame& operator=(const LocalFrame&) = delete;

    /// Ends the frame; the answer is `result` in the frame around it.
    template <typename Reference>
    Reference keep(Reference result) {
        return static_cast<Reference>(end(result));
    }

private:
    jobject end(jobject result);
    bool open;
};

/// A thread that the VM does not know, as libDtv's threads are: it runs what it is given, one after
/// the other, and lives until all tests of the process have ended (the bridge never removes a
/// thread from its table, and the C library gives an ended thread's identity to the next one). Then
/// the harness detaches it.
class EventThread {
public:
    EventThread();
    EventThread(const EventThread&) = delete;
    EventThread& operator=(const EventThread&) = delete;

    /// Runs `work` on the thread and waits for its end.
    void run(const std::function<void()>& work);
    /// Has `work` run on the thread and does not wait.
    void start(std::function<void()> work);
    /// Waits for everything that was started.
    void wait();

    struct Body;

private:
    std::shared_ptr<Body> body;
};

/// Detaches and ends all EventThreads. The harness's main calls it after the last test.
void endEventThreads();

} // namespace harness
