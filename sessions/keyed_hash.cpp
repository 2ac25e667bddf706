#include "sessions/keyed_hash.h"

#include <sys/random.h>

namespace sessions {
namespace {

constexpr uint64_t rotated(uint64_t word, unsigned bits) {
    return word << bits | word >> (64 - bits);
}

struct State {
    uint64_t v0;
    uint64_t v1;
    uint64_t v2;
    uint64_t v3;

    void mix() {
        v0 += v1;
        v2 += v3;
        v1 = rotated(v1, 13) ^ v0;
        v3 = rotated(v3, 16) ^ v2;
        v0 = rotated(v0, 32);
        v2 += v1;
        v0 += v3;
        v1 = rotated(v1, 17) ^ v2;
        v3 = rotated(v3, 21) ^ v0;
        v2 = rotated(v2, 32);
    }

    void take(uint64_t word) {
        v3 ^= word;
        mix();
        mix();
        v0 ^= word;
    }
};

} // namespace

std::optional<HashKey> randomHashKey() {
    HashKey key;
    if (getentropy(&key, sizeof key) != 0) {
        return std::nullopt;
    }
    return key;
}

uint64_t keyedHash(const HashKey& key, Bytes data) {
    State state{key.low ^ 0x736f6d6570736575, key.high ^ 0x646f72616e646f6d,
                key.low ^ 0x6c7967656e657261, key.high ^ 0x7465646279746573};
    const uint64_t length = uint64_t{data.size} << 56;
    for (; data.size >= 8; data = data.from(8)) {
        state.take(data.first(8).number());
    }
    state.take(data.number() | length);
    state.v2 ^= 0xff;
    for (int i = 0; i < 4; ++i) {
        state.mix();
    }
    return state.v0 ^ state.v1 ^ state.v2 ^ state.v3;
}

} // namespace sessions
