// Takes the place of the Java application: keeps the callbacks that reach BGCallBack's listener.
#pragma once

#include <jni.h>

#include <chrono>
#include <string>
#include <vector>

namespace harness {

struct Callback {
    std::string text;   ///< "onEvDtvsvCreateReply BG_EV_DTVSV_CREATE_REPLY(3, 0)"
    std::string thread; ///< the Java thread's name
};

/// Only one at a time; the listener is taken away again at its end.
class CallbackRecorder {
public:
    CallbackRecorder();
    ~CallbackRecorder();
    CallbackRecorder(const CallbackRecorder&) = delete;
    CallbackRecorder& operator=(const CallbackRecorder&) = delete;

    /// The callbacks since the last call, as texts.
    std::vector<std::string> take();
    std::vector<Callback> takeAll();

    /// Waits until `count` callbacks can be taken. False when the time limit passes before.
    bool waitFor(int count, std::chrono::milliseconds limit = std::chrono::seconds(10));

    /// The next callback is kept and then throws a new exception of this class (with slashes).
    void throwNext(const std::string& exception_class = "java/lang/IllegalStateException",
                   const std::string& message = "thrown by the test");

private:
    jmethodID method(const char* name, const char* signature);
    void check(const std::string& doing);
    jobject recorder = nullptr; ///< a global reference
};

} // namespace harness
