// What the bridge does during a run: its trace, its JNI calls, what it prints, the rules it breaks.
#pragma once

#include "plan.h"

#include <string>
#include <vector>

namespace torture {

/// Sees everything from its making on. One for the process.
class Witness {
public:
    static Witness& instance();

    /// Begins a run: nothing has been seen.
    void begin();
    /// What was seen since.
    void end(Outcome& into);

    /// What is wrong apart from the outcome: broken rules, standard output that is not that of the
    /// ERROR lines. Taken once.
    std::string takeFaults();

    /// The place of a message in the trace.
    size_t lineCount() const;

private:
    Witness();
    struct Body;
    Body* const body; ///< never freed: the bridge writes lines until the process has ended
};

} // namespace torture
