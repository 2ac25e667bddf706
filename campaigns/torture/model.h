// What is promised of an operation in which calls fail: a walk along the calls that the
// operation makes, in order, which asks of each whether it fails. It knows nothing of the bridge's
// own tables. Up to the first failure the trace is that of the run without failures; what follows
// is written here, word by word.
#pragma once

#include "plan.h"

namespace torture {

class Model {
public:
    Model(const Plan& plan, const Outcome& baseline) : plan_(plan), baseline_(baseline) {}

protected:
    enum class Fate {
        made,
        null,   ///< null or an error code, without an exception
        threw,  ///< the same with an exception pending
        spoiled ///< made, with an exception pending
    };

    /// The next call that can fail. An exception that it leaves is pending.
    Fate call(const char* function, const char* text = nullptr);
    /// A look-up, whose exception is cleared. False: it failed.
    bool lookUp(const char* function, const char* text = nullptr);
    /// Whether the bridge gets the memory that it asks for next.
    bool allocated();

    /// The calls of the baseline that are passed over from here on.
    void skip(size_t calls) { base_ += calls; }

    /// From here on the trace is not the baseline's: it is what was written before the last call.
    void leave() { leaveAt(base_ - 1); }
    /// The same before the next call.
    void leaveBeforeNext() { leaveAt(base_); }
    void leaveAtLine(size_t line);

    /// Writes a line, which a trace that is still the baseline's has already.
    void line(const std::string& text);

    bool pending() const { return pending_; }
    void clear() { pending_ = false; }

    /// The whole, once the walk has ended.
    Outcome finished();

    const Plan& plan_;
    const Outcome& baseline_;
    Outcome out_;

private:
    void leaveAt(size_t call);

    bool following_ = true;
    bool pending_ = false;
    size_t base_ = 0; ///< the baseline's calls so far
    int number_ = 0;
    int allocation_ = 0;
};

} // namespace torture
