// What the process writes to its standard output.
#pragma once

#include <string>

namespace harness {

/// From its construction to its destruction standard output (descriptor 1) is captured here. At the
/// end what was captured is written to the real standard output, so that the test's output is
/// complete.
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
