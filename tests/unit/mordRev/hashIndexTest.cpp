// The index of hashes: hashes lead to candidates, and never decide.
#include "mordRev/src/hashIndex.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr auto any = [](uint32_t) { return true; };

// The numbers that a look-up offers, in its order; none of them is what it seeks.
std::vector<uint32_t> Offered(const HashIndex& index, uint32_t hash) {
    std::vector<uint32_t> numbers;
    const uint32_t found = index.Find(FilteredHash(hash), [&](uint32_t number) {
        numbers.push_back(number);
        return false;
    });
    EXPECT_EQ(found, HashIndex::none);
    return numbers;
}

void ExpectEmpty(const HashIndex& index) {
    for (const uint32_t hash : {0x00000000U, 0x12345678U, 0xFFFFFFFFU}) {
        EXPECT_FALSE(index.MayHold(FilteredHash(hash)));
        EXPECT_EQ(index.Find(FilteredHash(hash), any), HashIndex::none);
    }
}

TEST(HashIndex, WithoutAnEntryFindsNothing) {
    HashIndex index;
    ExpectEmpty(index);
    index.Reserve();
    ExpectEmpty(index);
    index.Add(FilteredHash(0x12345678), 0);
    EXPECT_TRUE(index.MayHold(FilteredHash(0x12345678)));
    index.Clear();
    ExpectEmpty(index);
}

TEST(HashIndex, OffersTheEntriesOfThatHashAndNoOther) {
    HashIndex index;
    // Two that are equal, and two that begin at the same place: one with the same marks, one with others.
    const uint32_t hashes[] = {0xF0000001, 0xF0000001, 0xF0010001, 0xF0000002};
    for (uint32_t number = 0; number < 4; ++number) {
        index.Reserve();
        index.Add(FilteredHash(hashes[number]), number);
    }
    EXPECT_EQ(Offered(index, 0xF0000001), (std::vector<uint32_t>{0, 1}));
    EXPECT_EQ(Offered(index, 0xF0010001), std::vector<uint32_t>{2});
    EXPECT_EQ(Offered(index, 0xF0000002), std::vector<uint32_t>{3});
    EXPECT_EQ(Offered(index, 0xF0020001), std::vector<uint32_t>{});
    EXPECT_EQ(index.Find(FilteredHash(0xF0000001), [](uint32_t number) { return number == 1; }), 1U);
}

// At the last place it goes on with the first one.
TEST(HashIndex, OffersTheEntriesOfItsEnd) {
    HashIndex index;
    for (uint32_t number = 0; number < 3; ++number) {
        index.Reserve();
        index.Add(FilteredHash(0xFFFFFFFF), number);
    }
    index.Reserve();
    index.Add(FilteredHash(0), 3);
    EXPECT_EQ(Offered(index, 0xFFFFFFFF), (std::vector<uint32_t>{0, 1, 2}));
    EXPECT_EQ(Offered(index, 0), std::vector<uint32_t>{3});
}

TEST(HashIndex, KeepsItsEntriesAsItGrows) {
    HashIndex index;
    const auto hashOf = [](uint32_t number) { return (number % 700) * 0x9E3779B1; }; // some come twice, one is 0
    for (uint32_t number = 0; number < 1000; ++number) {
        index.Reserve();
        index.Add(FilteredHash(hashOf(number)), number);
    }
    for (uint32_t number = 0; number < 1000; ++number) {
        EXPECT_EQ(index.Find(FilteredHash(hashOf(number)), [&](uint32_t other) { return other == number; }), number);
    }
}

// The filter is what keeps the time under the lock short: about one hash in a hundred may pass it without an entry.
TEST(HashIndex, MayHoldFewHashesThatItDoesNotHold) {
    std::mt19937 random(1); // its numbers are the same everywhere
    for (const uint32_t entries : {1U, 8U, 100U, 1000U, 10000U}) {
        HashIndex index;
        for (uint32_t number = 0; number < entries; ++number) {
            index.Reserve();
            index.Add(FilteredHash(static_cast<uint32_t>(random())), number);
        }
        constexpr int tries = 100000;
        int passed = 0;
        for (int i = 0; i < tries; ++i) {
            passed += index.MayHold(FilteredHash(static_cast<uint32_t>(random()))) ? 1 : 0;
        }
        EXPECT_LE(passed, tries / 50) << entries;
    }
}

} // namespace
