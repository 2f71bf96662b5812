#include "policy/dotQuery.h"

#include <gtest/gtest.h>

#include "policy/memoryDotStore.h"

using namespace mordhost;

namespace {

constexpr auto queryOfTwo = R"({"guid": ["G1", "G2"]})";

std::string AnswerOf(const DotTable& dots, const char* query) {
    MemoryDotStore store(dots);
    DotQuery answering(store);
    std::string_view answer;
    answering.Answer(R"({"guid": ["G9", "G1"]})", answer); // must leave nothing for the next query
    return answering.Answer(query, answer) == DotStore::Result::answered ? std::string(answer) : "none";
}

} // namespace

TEST(DotQuery, TheAnswerHasAMemberForEachGuidWithADot) {
    EXPECT_EQ(AnswerOf({{"G2", {"M2", "M1"}}, {"G1", {}}, {"G9", {"M9"}}}, R"({"guid": ["G1", "G2", "G3"]})"),
              R"({"G1":{"value":1,"mid":{}},"G2":{"value":1,"mid":{"M1":1,"M2":1}}})");
}

TEST(DotQuery, TheAnswerWithoutDotsIsAnEmptyObject) {
    EXPECT_EQ(AnswerOf({}, queryOfTwo), "{}");
}

TEST(DotQuery, ARepeatedGuidIsAnsweredOnce) {
    EXPECT_EQ(AnswerOf({{"G1", {"M1"}}}, R"({"guid": ["G1", "G1"]})"), R"({"G1":{"value":1,"mid":{"M1":1}}})");
}

TEST(DotQuery, TextsAreEscaped) {
    EXPECT_EQ(AnswerOf({{"G\"", {"M\n"}}}, R"({"guid": ["G\""]})"), R"({"G\"":{"value":1,"mid":{"M\n":1}}})");
}

TEST(DotQuery, AnEmptyGuidIsAGuid) {
    EXPECT_EQ(AnswerOf({{"", {"M"}}}, R"({"guid": [""]})"), R"({"":{"value":1,"mid":{"M":1}}})");
}

TEST(DotQuery, AnInvalidRequestFails) {
    for (const char* text :
         {"", "{", "[]", "{}", "\"guid\"", R"({"guid": 1})", R"({"guid": "G1"})", R"({"guid": {}})", R"({"guid": [1]})",
          R"({"guid": [["G1"]]})", R"({"guid": [{}]})", R"({"guid": ["G1", null]})", R"({"guid": ["G1"]} x)",
          R"({"guid": ["G1"], "guid": ["G1"]})", R"({"guid": ["G1"])", R"({"mid": ["G1"]})", R"([{"guid": ["G1"]}])"}) {
        EXPECT_EQ(AnswerOf({{"G1", {"M1"}}}, text), "none") << text;
    }
}
