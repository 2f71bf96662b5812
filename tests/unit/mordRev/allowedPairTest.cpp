// Pairs of the allow list compare as their texts do, and a list keeps every distinct pair once.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "mordRev/src/allowList.h"

namespace {

// Texts that differ before, at and behind the eighth byte, and in their lengths.
const std::vector<std::string> texts{"",          "1",           "1234567",      "12345678",    "12345679",
                                     "123456789", "12345678A",   "12345678B",    "12345678AA",  "\x7F",
                                     "\x80",      "1234567\x80", "12345678\x80", "12345678\x7F"};

std::vector<AllowedPair> AllPairs() {
    std::vector<AllowedPair> pairs;
    for (const std::string& protocol : texts) {
        for (const std::string& mid : texts) {
            pairs.emplace_back(protocol, mid);
        }
    }
    return pairs;
}

std::pair<std::string, std::string> TextsOf(const AllowedPair& pair) {
    return {std::string(pair.Protocol()), std::string(pair.Mid())};
}

TEST(AllowedPair, IsOrderedByProtocolKeyAndThenByMachineId) {
    const std::vector<std::string> copies = texts; // equal keys elsewhere in memory
    for (const AllowedPair& left : AllPairs()) {
        for (const std::string& protocol : copies) {
            for (const std::string& mid : copies) {
                const AllowedPair right(protocol, mid);
                ASSERT_EQ(left < right, TextsOf(left) < TextsOf(right)) << left.Mid() << " and " << mid;
                ASSERT_EQ(left == right, TextsOf(left) == TextsOf(right)) << left.Mid() << " and " << mid;
            }
        }
    }
}

TEST(AllowedPair, OfAFilledListMatchesOnceForEachDistinctOne) {
    std::vector<AllowedPair> pairs = AllPairs();
    const std::vector<AllowedPair> again = AllPairs();
    pairs.insert(pairs.begin(), again.rbegin(), again.rend());
    AllowList list;
    list.Fill(pairs);
    EXPECT_EQ(list.Table().size(), texts.size());
    for (const std::string& protocol : texts) {
        EXPECT_EQ(list.Table().at(protocol), AllowedMids(texts.begin(), texts.end()));
        for (const std::string& mid : texts) {
            const std::vector<std::string_view> mids{"absent", mid};
            const std::string* const match = list.Match(AllowQuery(protocol, mids));
            ASSERT_NE(match, nullptr) << protocol << ", " << mid;
            EXPECT_EQ(*match, mid);
        }
    }
}

} // namespace
