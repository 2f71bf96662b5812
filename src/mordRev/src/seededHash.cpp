#include "mordRev/src/seededHash.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "platform/platform.h"

namespace {

static_assert(std::is_trivially_copyable_v<HashKeys> && sizeof(HashKeys) == 3 * sizeof(HashKey) &&
                  sizeof(HashKey) == 22 * sizeof(uint32_t),
              "keys are filled as bytes, without padding");

// The generator SplitMix64: a counter whose values are mixed until they look random. Used only if the system has no
// random source; its output is not secret.
class Mixer {
public:
    explicit Mixer(uint64_t state) : m_state(state) {}

    // Mixes `value` into the state.
    void Mix(uint64_t value) {
        m_state ^= value;
        m_state = Next();
    }

    uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15;
        uint64_t mixed = m_state;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        return mixed ^ mixed >> 31;
    }

private:
    uint64_t m_state;
};

void DeriveFromProcess(HashKeys& keys) noexcept {
    static std::atomic<uint32_t> draws = 0;
    Mixer mixer(draws.fetch_add(1, std::memory_order_relaxed));
    mixer.Mix(static_cast<uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
    mixer.Mix(static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    mixer.Mix(platform::GetCurrentThreadId());
    mixer.Mix(reinterpret_cast<uintptr_t>(&draws)); // the address of the library
    mixer.Mix(reinterpret_cast<uintptr_t>(&keys));  // and that of the stack or the heap
    auto* const bytes = reinterpret_cast<unsigned char*>(&keys);
    for (size_t at = 0; at < sizeof keys; at += sizeof(uint64_t)) {
        const uint64_t next = mixer.Next();
        std::memcpy(bytes + at, &next, sizeof next);
    }
}

// Multiplies two words, each masked by a word of the key.
uint64_t Product(uint32_t first, uint32_t second, uint32_t firstKey, uint32_t secondKey) {
    return static_cast<uint64_t>(first + firstKey) * static_cast<uint32_t>(second + secondKey);
}

} // namespace

// The NH hash of the message authentication code UMAC: the sum of the products of all pairs of words. A block is as
// long as the key. The hash of the previous blocks enters the next block as one more pair. The length enters the first
// block: it separates texts that differ only in trailing zeros. The final multiplication spreads the sum over the high
// bits.
uint32_t HashText(std::string_view text, const HashKey& key) {
    constexpr size_t pairSize = 2 * sizeof(uint32_t);
    uint64_t sum = Product(static_cast<uint32_t>(text.size()), 0, key.length[0], key.length[1]);
    constexpr size_t longestBlock = sizeof key.words;
    const char* at = text.data();
    const char* const end = at + text.size();
    const uint32_t* words = key.words.data();
    uint32_t pair[2];
    for (;;) {
        const auto left = static_cast<size_t>(end - at);
        for (const char* const last = at + std::min(left, longestBlock) / pairSize * pairSize; at != last;) {
            std::memcpy(pair, at, pairSize);
            sum += Product(pair[0], pair[1], words[0], words[1]);
            at += pairSize;
            words += 2;
        }
        if (left <= longestBlock) {
            break;
        }
        sum = Product(static_cast<uint32_t>(sum), static_cast<uint32_t>(sum >> 32), key.chain[0], key.chain[1]);
        words = key.words.data();
    }
    // The remainder fits into the current block: behind a whole block it is empty.
    if (at != end) {
        pair[0] = 0;
        pair[1] = 0;
        std::memcpy(pair, at, static_cast<size_t>(end - at));
        sum += Product(pair[0], pair[1], words[0], words[1]);
    }
    return static_cast<uint32_t>((sum * key.last) >> 32);
}

HashKeys DrawHashKeys() noexcept {
    HashKeys keys{};
    if (!platform::FillRandom(&keys, sizeof keys)) {
        DeriveFromProcess(keys);
    }
    for (HashKey* const key : {&keys.mid, &keys.protocol, &keys.guid}) {
        key->last |= 1;
    }
    return keys;
}

const HashKeys& ProcessHashKeys() noexcept {
    static const HashKeys keys = DrawHashKeys();
    return keys;
}
