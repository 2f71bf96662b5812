#include "library/dotHost.h"

#include <gtest/gtest.h>

#include "dots/memoryDotStore.h"
#include "dots/queryAnswer.h"
#include "frame/values.h"

using namespace mordhost;

namespace {

constexpr auto request = R"({"guid": ["G1", "G2"]})";

std::string Answer(const DotTable& dots, const char* query) {
    const MemoryDotStore store(dots);
    QueryAnswerer answerer(store);
    answerer.Answer(R"({"guid": ["G9", "G1"]})"); // of which nothing must be left
    const std::string* const answer = answerer.Answer(query);
    return answer == nullptr ? "none" : *answer;
}

// Asks, and gives the answer back unless it is to be kept.
struct Asked {
    int32_t code = -1;
    std::string text = "null";

    explicit Asked(DotHost& host, const char* query = request) {
        char* result = nullptr;
        code = host.QueryDot(query, "HOST", &result);
        text = result == nullptr ? "null" : result;
        host.FreeResult(result);
    }
};

} // namespace

TEST(QueryAnswer, HasAMemberForEachGuidWithADot) {
    EXPECT_EQ(Answer({{"G2", {"M2", "M1"}}, {"G1", {}}, {"G9", {"M9"}}}, R"({"guid": ["G1", "G2", "G3"]})"),
              R"({"G1":{"value":1,"mid":{}},"G2":{"value":1,"mid":{"M1":1,"M2":1}}})");
}

TEST(QueryAnswer, WithoutAnyDotIsAnEmptyObject) {
    EXPECT_EQ(Answer({}, request), "{}");
}

TEST(QueryAnswer, AGuidThatIsAskedForTwiceIsAnsweredOnce) {
    EXPECT_EQ(Answer({{"G1", {"M1"}}}, R"({"guid": ["G1", "G1"]})"), R"({"G1":{"value":1,"mid":{"M1":1}}})");
}

TEST(QueryAnswer, TextsAreEscaped) {
    EXPECT_EQ(Answer({{"G\"", {"M\n"}}}, R"({"guid": ["G\""]})"), R"({"G\"":{"value":1,"mid":{"M\n":1}}})");
}

TEST(QueryAnswer, AnEmptyGuidIsAGuid) {
    EXPECT_EQ(Answer({{"", {"M"}}}, R"({"guid": [""]})"), R"({"":{"value":1,"mid":{"M":1}}})");
}

TEST(QueryAnswer, WhatIsNoRequestGetsNone) {
    for (const char* text :
         {"", "{", "[]", "{}", "\"guid\"", R"({"guid": 1})", R"({"guid": "G1"})", R"({"guid": {}})", R"({"guid": [1]})",
          R"({"guid": [["G1"]]})", R"({"guid": [{}]})", R"({"guid": ["G1", null]})", R"({"guid": ["G1"]} x)",
          R"({"guid": ["G1"], "guid": ["G1"]})", R"({"guid": ["G1"])", R"({"mid": ["G1"]})", R"([{"guid": ["G1"]}])"}) {
        EXPECT_EQ(Answer({{"G1", {"M1"}}}, text), "none") << text;
    }
}

TEST(DotHost, AnswersFromItsStore) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    const Asked asked(host);
    EXPECT_EQ(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, R"({"G1":{"value":1,"mid":{"M1":1}}})");
}

TEST(DotHost, APrescribedNetworkErrorHasItsCodeAndNoText) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    host.Prescribe(Failure::networkError);
    const Asked asked(host);
    EXPECT_EQ(asked.code, 1007);
    EXPECT_EQ(asked.text, "null");
}

TEST(DotHost, APrescribedQueryErrorHasAnotherCodeAndNoText) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    host.Prescribe(Failure::queryError);
    const Asked asked(host);
    EXPECT_NE(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_NE(asked.code, DOT_QUERY_NETWORK_ERROR);
    EXPECT_EQ(asked.text, "null");
}

TEST(DotHost, APrescribedBrokenAnswerIsCutShort) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    host.Prescribe(Failure::brokenAnswer);
    const Asked asked(host);
    EXPECT_EQ(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, R"({"G1":{"value":1,"mid":{"M1":1}})");
}

TEST(DotHost, APrescriptionCanBeTakenBack) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    host.Prescribe(Failure::networkError);
    host.Prescribe({});
    EXPECT_EQ(Asked(host).code, DOT_QUERY_ANSWERED);
}

TEST(DotHost, WhatIsNoRequestIsAQueryError) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    const Asked asked(host, "nonsense");
    EXPECT_NE(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, "null");
}

TEST(DotHost, ADeletionTakesTheDotOutOfTheStore) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    EXPECT_EQ(host.DeleteDot("G1", "HOST", 2, "smb"), 0);
    EXPECT_EQ(store.Size(), 0U);
    const DotHost::Deletion deletion = host.TakeDeletion();
    EXPECT_EQ(deletion.guid, "G1");
    EXPECT_EQ(deletion.type, "smb");
    EXPECT_TRUE(deletion.done);
    EXPECT_EQ(host.TakeDeletion().guid, "") << "taken once";
}

TEST(DotHost, ADeletionOfNoDotFails) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    EXPECT_NE(host.DeleteDot("G1", "HOST", 2, "smb"), 0);
    EXPECT_FALSE(host.TakeDeletion().done);
}

TEST(DotHost, KeepsAccountOfEveryCall) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    char* kept = nullptr;
    host.QueryDot(request, "HOST", &kept);
    const Asked second(host);
    host.Prescribe(Failure::networkError);
    const Asked third(host);
    host.DeleteDot("G1", "HOST", 2, "smb");
    host.DeleteDot("G1", "HOST", 2, "smb");
    EXPECT_EQ(host.Calls().queries, 3U);
    EXPECT_EQ(host.Calls().answers, 2U);
    EXPECT_EQ(host.Calls().givenBack, 1U) << "null counts for nothing";
    EXPECT_EQ(host.Calls().strayReturns, 0U);
    EXPECT_EQ(host.Calls().deleted, 1U);
    EXPECT_EQ(host.Calls().failedDeletes, 1U);
}

TEST(DotHost, TakesNullAndKnowsWhatIsNotItsOwn) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    char foreign[] = "{}";
    EXPECT_EQ(host.FreeResult(nullptr), 0);
    host.FreeResult(foreign);
    EXPECT_EQ(host.Calls().strayReturns, 1U);
}

TEST(DotHost, AnAnswerComesBackOnlyOnce) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    char* answer = nullptr;
    host.QueryDot(request, "HOST", &answer);
    host.FreeResult(answer);
    host.FreeResult(answer);
    EXPECT_EQ(host.Calls().givenBack, 1U);
    EXPECT_EQ(host.Calls().strayReturns, 1U);
}
