// Which edges of the bridge's code have been taken, by the counters that the compiler has put
// there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace hostile {

/// The counters of one loaded library. libFuzzer sets them to zero before each input.
class Edges {
public:
    /// Those of the library of this file, which is loaded; none when it has no counters.
    explicit Edges(const std::string& library);

    size_t count() const { return count_; }

    /// Notes what the counters say: `seen` has a byte for each.
    void addTo(uint8_t* seen) const;

private:
    const uint8_t* counters_ = nullptr;
    size_t count_ = 0;
};

} // namespace hostile
