// The hash of texts, and the keys that it is hidden behind.
#include "mordRev/src/seededHash.h"

#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/text/runSeed.h"
#include "unit/mordRev/keyWords.h"

namespace {

HashKey SomeKey(unsigned seed) {
    std::mt19937 random(seed);
    HashKey key{};
    for (uint32_t& word : key.words) {
        word = static_cast<uint32_t>(random());
    }
    key.length = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random())};
    key.chain = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random())};
    key.last = (uint64_t{random()} << 32 | random()) | 1;
    return key;
}

std::string SomeText(std::mt19937& random, size_t length) {
    std::string text(length, '\0');
    for (char& character : text) {
        character = static_cast<char>(random());
    }
    return text;
}

// The hash as it is defined, step by step: pairs of words, the last one filled up with zeros; blocks of eight pairs.
uint32_t Defined(const std::string& text, const HashKey& key) {
    using Pair = std::array<uint32_t, 2>;
    std::vector<Pair> pairs((text.size() + 7) / 8, Pair{0, 0});
    for (size_t i = 0; i < text.size(); ++i) {
        pairs[i / 8][i % 8 / 4] |= uint32_t{static_cast<unsigned char>(text[i])} << i % 4 * 8;
    }
    const auto product = [](uint32_t a, uint32_t b, uint32_t keyA, uint32_t keyB) {
        const uint64_t hiddenA = (uint64_t{a} + keyA) % 0x100000000;
        const uint64_t hiddenB = (uint64_t{b} + keyB) % 0x100000000;
        return hiddenA * hiddenB;
    };
    uint64_t state = product(static_cast<uint32_t>(text.size()), 0, key.length[0], key.length[1]);
    for (size_t i = 0; i < pairs.size(); ++i) {
        const size_t inBlock = i % 8;
        if (i != 0 && inBlock == 0) {
            const auto low = static_cast<uint32_t>(state % 0x100000000);
            const auto high = static_cast<uint32_t>(state / 0x100000000);
            state = product(low, high, key.chain[0], key.chain[1]);
        }
        state += product(pairs[i][0], pairs[i][1], key.words[2 * inBlock], key.words[2 * inBlock + 1]);
    }
    return static_cast<uint32_t>(state * key.last / 0x100000000);
}

TEST(SeededHash, IsAsDefinedForEachLength) {
    std::mt19937 random(static_cast<uint32_t>(kit::RunSeed()));
    for (size_t length = 0; length <= 400; ++length) {
        for (unsigned seed = 0; seed < 5; ++seed) {
            const std::string text = SomeText(random, length);
            const HashKey key = SomeKey(seed);
            ASSERT_EQ(HashText(text, key), Defined(text, key)) << length;
        }
    }
}

TEST(SeededHash, ReadsTheTextAndNothingBehindIt) {
    const HashKey key = SomeKey(1);
    const std::vector<char> letters(100, 'a');
    for (size_t length = 0; length < letters.size(); ++length) {
        const std::vector<char> exact(length, 'a'); // a block of its own, whose end the address sanitizer knows
        EXPECT_EQ(HashText({exact.data(), length}, key), HashText({letters.data(), length}, key));
    }
}

TEST(SeededHash, TellsZerosAtTheEndApart) {
    const HashKey key = SomeKey(2);
    std::set<uint32_t> seen;
    for (size_t length = 0; length < 200; ++length) {
        seen.insert(HashText(std::string(length, '\0'), key));
    }
    EXPECT_EQ(seen.size(), 200U);
}

// Of the texts that differ in one bit none collide, and their hashes share their highest bits no more often than chance
// would have it: those bits are the places in a table.
TEST(SeededHash, SpreadsNeighbouringTextsOverTheHighBits) {
    const HashKey key = SomeKey(3);
    const std::string base = "MACHINE-0123456789-ABCDEF";
    std::set<uint32_t> hashes, places;
    for (size_t bit = 0; bit < 8 * base.size(); ++bit) {
        std::string text = base;
        text[bit / 8] = static_cast<char>(text[bit / 8] ^ 1 << bit % 8);
        const uint32_t hash = HashText(text, key);
        hashes.insert(hash);
        places.insert(hash >> 20);
    }
    EXPECT_EQ(hashes.size(), 8 * base.size());
    EXPECT_GT(places.size(), 8 * base.size() * 9 / 10);
}

// A bit that is the same in a hundred draws by chance: once in 10^26 runs.
TEST(HashKeys, AreRandomInEachBitButTheOneThatMakesTheLastFactorOdd) {
    std::vector<uint32_t> ones(3 * wordsOfKey, 0), zeros(3 * wordsOfKey, 0);
    for (int draw = 0; draw < 100; ++draw) {
        const std::vector<uint32_t> words = Words(DrawHashKeys());
        ASSERT_EQ(words.size(), ones.size());
        for (size_t i = 0; i < words.size(); ++i) {
            ones[i] |= words[i];
            zeros[i] |= ~words[i];
        }
    }
    for (size_t i = 0; i < ones.size(); ++i) {
        const bool isLowOfLast = i % wordsOfKey == wordsOfKey - 2;
        EXPECT_EQ(ones[i], 0xFFFFFFFFU) << i;
        EXPECT_EQ(zeros[i], isLowOfLast ? 0xFFFFFFFEU : 0xFFFFFFFFU) << i;
    }
}

TEST(HashKeys, OfTheProcessStayAndDifferFromEachOther) {
    const HashKeys& keys = ProcessHashKeys();
    const std::vector<uint32_t> words = Words(keys);
    EXPECT_EQ(&ProcessHashKeys(), &keys);
    EXPECT_EQ(Words(ProcessHashKeys()), words);
    EXPECT_NE(words, Words(DrawHashKeys()));
    EXPECT_NE(keys.mid.words, keys.protocol.words);
    EXPECT_NE(keys.mid.words, keys.guid.words);
    EXPECT_NE(keys.protocol.words, keys.guid.words);
}

} // namespace
