// What the process writes to its standard output.
#pragma once

#include <string>

namespace harness {

/// From its making to its end standard output (descriptor 1) goes here. What was captured is
/// written to the real standard output at the end, so that nothing is hidden from who reads the
/// test's output.
class StdoutCapture {
public:
    StdoutCapture();
    ~StdoutCapture();
    StdoutCapture(const StdoutCapture&) = delete;
    StdoutCapture& operator=(const StdoutCapture&) = delete;

    /// What was written since the last call.
    std::string take();

private:
    int real;     ///< a duplicate of the real standard output
    int captured; ///< a file without a name
    long taken = 0;
};

} // namespace harness
