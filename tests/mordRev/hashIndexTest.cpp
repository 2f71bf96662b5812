// The index of hashes, and the one of the allow list over it: hashes lead to candidates, and never decide.
#include "mordRev/src/hashIndex.h"

#include <vector>

#include <gtest/gtest.h>

#include "mordRev/src/allowList.h"

namespace {

constexpr auto any = [](uint32_t) { return true; };

// The numbers that a look-up offers, in its order; none of them is what it seeks.
std::vector<uint32_t> Offered(const HashIndex& index, uint32_t hash) {
    std::vector<uint32_t> numbers;
    const uint32_t found = index.Find(hash, [&](uint32_t number) {
        numbers.push_back(number);
        return false;
    });
    EXPECT_EQ(found, HashIndex::none);
    return numbers;
}

TEST(HashIndex, WithoutAnEntryFindsNothing) {
    HashIndex index;
    index.Prefetch(0);
    EXPECT_EQ(index.Find(0, any), HashIndex::none);
    index.Reserve();
    index.Prefetch(0);
    EXPECT_EQ(index.Find(0, any), HashIndex::none);
    index.Clear();
    index.Prefetch(0);
    EXPECT_EQ(index.Find(0, any), HashIndex::none);
}

TEST(HashIndex, OffersTheEntriesOfThatHashAndNoOther) {
    HashIndex index;
    // Two that are equal, one that begins at the same place with the same lowest byte, one of another lowest byte.
    const uint32_t hashes[] = {0xF0000001, 0xF0000001, 0xF0000101, 0xF0000002};
    for (uint32_t number = 0; number < 4; ++number) {
        index.Reserve();
        index.Add(hashes[number], number);
    }
    EXPECT_EQ(Offered(index, 0xF0000001), (std::vector<uint32_t>{0, 1}));
    EXPECT_EQ(Offered(index, 0xF0000101), std::vector<uint32_t>{2});
    EXPECT_EQ(Offered(index, 0xF0000002), std::vector<uint32_t>{3});
    EXPECT_EQ(Offered(index, 0xF0000201), std::vector<uint32_t>{});
    EXPECT_EQ(index.Find(0xF0000001, [](uint32_t number) { return number == 1; }), 1U);
}

TEST(HashIndex, KeepsItsEntriesAsItGrows) {
    HashIndex index;
    const auto hashOf = [](uint32_t number) { return (number % 700) * 0x9E3779B1; }; // some come twice, one is 0
    for (uint32_t number = 0; number < 1000; ++number) {
        index.Reserve();
        index.Add(hashOf(number), number);
    }
    for (uint32_t number = 0; number < 1000; ++number) {
        EXPECT_EQ(index.Find(hashOf(number), [&](uint32_t other) { return other == number; }), number);
    }
}

// The texts are in a set, as those of a list are.
struct Listed {
    AllowedMids first{"A", "B"};
    AllowedMids second{"A"};

    static const std::string& In(const AllowedMids& mids, const char* mid) { return *mids.find(mid); }
};

TEST(AllowIndex, TellsIdsOfOneHashApart) {
    const Listed listed;
    AllowIndex index;
    for (const char* const mid : {"A", "B"}) {
        index.Reserve();
        index.Add(1, 2, listed.first, Listed::In(listed.first, mid));
    }
    EXPECT_EQ(index.Find(1, listed.first, 2, "A"), &Listed::In(listed.first, "A"));
    EXPECT_EQ(index.Find(1, listed.first, 2, "B"), &Listed::In(listed.first, "B"));
    EXPECT_EQ(index.Find(1, listed.first, 2, "C"), nullptr);
}

TEST(AllowIndex, TellsKeysOfOneHashApart) {
    const Listed listed;
    AllowIndex index;
    index.Reserve();
    index.Add(1, 2, listed.first, Listed::In(listed.first, "A"));
    EXPECT_EQ(index.Find(1, listed.second, 2, "A"), nullptr);
    index.Reserve();
    index.Add(1, 2, listed.second, Listed::In(listed.second, "A"));
    EXPECT_EQ(index.Find(1, listed.second, 2, "A"), &Listed::In(listed.second, "A"));
    EXPECT_EQ(index.Find(1, listed.first, 2, "A"), &Listed::In(listed.first, "A"));
}

} // namespace
