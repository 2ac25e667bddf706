// What is promised of an event whose calls fail.
#pragma once

#include "model.h"

namespace torture {

class EventModel : public Model {
public:
    /// The thread that delivers.
    enum class Thread {
        known,  ///< it has its environment
        first,  ///< it is the first, which the VM knows
        unknown ///< it is the second, which the VM does not know
    };

    /// `call_level` is the level of "CallMethod NG": D or R. With `converted` texts are no UTF-8,
    /// and take memory of the bridge's own.
    EventModel(const Plan& plan, const Outcome& baseline, std::string handler, char call_level,
               bool converted, Thread thread = Thread::known);

    // The steps of a handler, in the order of its calls. After a failure they do nothing.

    /// A frame of the handler's own. Without it the references go one by one.
    void ownFrame();
    /// A string; the line that is written when it cannot be made, with its level.
    void text(const char* failure = "R ERROR NewStringUTF");
    /// A string whose failure has no line.
    void silentText() { text(nullptr); }
    void units();
    void bytes(const char* failure = nullptr) { array("NewByteArray", failure); }
    void array(const char* function, const char* failure = nullptr);
    void construct(int count = 1);
    void callback();

    Outcome end();

private:
    /// False: the thread has no environment.
    bool enter(Thread thread);
    void fail(const char* failure);

    const std::string handler_;
    const char call_level_;
    const bool converted_;
    bool no_environment_ = false;
    bool attached_instead_ = false;
    bool no_frame_ = false;
    bool failed_ = false;
    bool called_ = false;
};

} // namespace torture
