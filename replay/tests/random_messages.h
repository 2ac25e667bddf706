// Random messages as they can pass between the bridge and the service: what the bridge sends, and
// what it refuses. Literal limits, which know no table of the bridge.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace replay {

/// The same numbers from the same seed on every machine.
class Random {
public:
    explicit Random(uint64_t seed) : engine_(seed) {}

    /// Below `range`.
    uint32_t below(uint32_t range) { return static_cast<uint32_t>(engine_() % range); }
    /// Once in `times`.
    bool once(uint32_t times) { return below(times) == 0; }
    uint8_t byte() { return static_cast<uint8_t>(engine_()); }
    std::vector<uint8_t> bytes(size_t count);

private:
    std::mt19937_64 engine_;
};

struct RandomCommand {
    int id;
    std::vector<uint8_t> record;
    int surfaces;
    int reply_capacity; ///< bytes; 0 of a command that does not wait
};

/// Makes commands in the order in which they are sent: the limit of the sound's delay is that of
/// the last Create.
class RandomCommands {
public:
    explicit RandomCommands(Random& random) : random_(random) {}

    RandomCommand make();
    RandomCommand makeCreate();

private:
    uint64_t numberFor(const std::string& name, size_t size, int id);
    void putText(std::vector<uint8_t>& record, size_t offset, size_t size, size_t most,
                 bool may_cut);
    void putPlaySpeed(std::vector<uint8_t>& record);

    Random& random_;
    int longest_delay_ = 0;
};

struct RandomEvent {
    int id;
    std::vector<uint8_t> record;
    int size;
    bool refused;      ///< with 1
    bool has_callback; ///< Java is called
};

RandomEvent makeEvent(Random& random);

} // namespace replay
