// What a program prints: its results, the VM and its checks, as one JSON object on standard output.
#pragma once

#include "runner/rounds.h"

namespace bench {

class JsonResults {
public:
    JsonResults();
    void add(const Result& result);
    /// Ends the object. False when it could not be written whole.
    bool end();

private:
    bool is_first_ = true;
};

} // namespace bench
