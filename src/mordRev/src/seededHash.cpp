#include "mordRev/src/seededHash.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <random>

namespace {

struct State {
    uint32_t v0, v1, v2, v3;

    void Round() {
        v0 += v1;
        v1 = std::rotl(v1, 5) ^ v0;
        v0 = std::rotl(v0, 16);
        v2 += v3;
        v3 = std::rotl(v3, 8) ^ v2;
        v0 += v3;
        v3 = std::rotl(v3, 7) ^ v0;
        v2 += v1;
        v1 = std::rotl(v1, 13) ^ v2;
        v2 = std::rotl(v2, 16);
    }

    void Take(uint32_t word) {
        v3 ^= word;
        Round();
        v0 ^= word;
    }
};

HashKey DrawKey(std::random_device& system) {
    return {system(), system()};
}

HashKeys DrawKeys() {
    std::random_device system;
    return {DrawKey(system), DrawKey(system), DrawKey(system)};
}

} // namespace

uint32_t HashText(std::string_view text, HashKey key) {
    State state{key.low, key.high, key.low ^ 0x6c796765U, key.high ^ 0x74656462U};
    uint32_t word = 0;
    size_t at = 0;
    for (; text.size() - at >= sizeof word; at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        state.Take(word);
    }
    // The last word holds the bytes that are left over and, at its other end, the length.
    word = 0;
    if (at < text.size()) {
        std::memcpy(&word, text.data() + at, text.size() - at);
    }
    state.Take(word | static_cast<uint32_t>(text.size()) << 24);
    state.v2 ^= 0xff;
    state.Round();
    state.Round();
    state.Round();
    return state.v1 ^ state.v3;
}

const HashKeys& ProcessHashKeys() {
    static const HashKeys keys = DrawKeys();
    return keys;
}
