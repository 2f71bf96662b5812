#include "mordRev/src/seededHash.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <random>

namespace {

void Draw(std::random_device& system, HashKey& key) {
    std::generate(key.words.begin(), key.words.end(), std::ref(system));
    std::generate(key.length.begin(), key.length.end(), std::ref(system));
    std::generate(key.chain.begin(), key.chain.end(), std::ref(system));
    key.last = static_cast<uint64_t>(system()) << 32 | system() | 1;
}

// What the hash is made of: two words, each hidden behind a word of the key, multiplied.
uint64_t Product(uint32_t first, uint32_t second, uint32_t firstKey, uint32_t secondKey) {
    return static_cast<uint64_t>(first + firstKey) * static_cast<uint32_t>(second + secondKey);
}

} // namespace

// The sum of the products of all pairs of words: the hash NH, of the message code UMAC. A block is as long as the key;
// the hash of those before it goes into that of the next as one more pair, and the length, which tells texts apart that
// differ in the zeros behind them, into the first. The last multiplication spreads what the sum has over the high bits.
uint32_t HashText(std::string_view text, const HashKey& key) {
    constexpr size_t pairSize = 2 * sizeof(uint32_t);
    uint64_t sum = Product(static_cast<uint32_t>(text.size()), 0, key.length[0], key.length[1]);
    const char* at = text.data();
    size_t left = text.size();
    size_t word = 0;
    uint32_t pair[2];
    while (left >= pairSize) {
        if (word == key.words.size()) {
            sum = Product(static_cast<uint32_t>(sum), static_cast<uint32_t>(sum >> 32), key.chain[0], key.chain[1]);
            word = 0;
        }
        std::memcpy(pair, at, pairSize);
        sum += Product(pair[0], pair[1], key.words[word], key.words[word + 1]);
        at += pairSize;
        left -= pairSize;
        word += 2;
    }
    if (left != 0) {
        if (word == key.words.size()) {
            sum = Product(static_cast<uint32_t>(sum), static_cast<uint32_t>(sum >> 32), key.chain[0], key.chain[1]);
            word = 0;
        }
        pair[0] = 0;
        pair[1] = 0;
        std::memcpy(pair, at, left);
        sum += Product(pair[0], pair[1], key.words[word], key.words[word + 1]);
    }
    return static_cast<uint32_t>((sum * key.last) >> 32);
}

HashKeys DrawHashKeys() {
    std::random_device system;
    HashKeys keys{};
    for (HashKey* const key : {&keys.mid, &keys.protocol, &keys.guid}) {
        Draw(system, *key);
    }
    return keys;
}

const HashKeys& ProcessHashKeys() {
    static const HashKeys keys = DrawHashKeys();
    return keys;
}
