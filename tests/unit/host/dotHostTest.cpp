#include "decide/dotHost.h"

#include <gtest/gtest.h>

#include "frame/values.h"
#include "policy/memoryDotStore.h"

using namespace mordhost;

namespace {

constexpr auto request = R"({"guid": ["G1", "G2"]})";

// A store that fails.
class FailingStore final : public DotStore {
public:
    explicit FailingStore(Result result) : m_result(result) {}

    Result Find(const std::vector<std::string_view>&, std::vector<const std::string*>&) override { return m_result; }
    bool Delete(const std::string&) noexcept override { return false; }
    size_t Size() const override { return 0; }
    const std::string& Trouble() const override { return m_trouble; }

private:
    const Result m_result;
    const std::string m_trouble;
};

// Queries the host and frees the answer.
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

TEST(DotHost, AnswersFromItsStore) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    const Asked asked(host);
    EXPECT_EQ(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, R"({"G1":{"value":1,"mid":{"M1":1}}})");
}

TEST(DotHost, AnErrorOfTheStoreIsTheErrorOfTheQuery) {
    FailingStore unreachable(DotStore::Result::networkError);
    DotHost host(unreachable);
    EXPECT_EQ(Asked(host).code, DOT_QUERY_NETWORK_ERROR);
    FailingStore broken(DotStore::Result::failed);
    DotHost other(broken);
    const Asked asked(other);
    EXPECT_NE(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_NE(asked.code, DOT_QUERY_NETWORK_ERROR);
    EXPECT_EQ(asked.text, "null");
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

TEST(DotHost, APrescribedBrokenAnswerIsTruncated) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    host.Prescribe(Failure::brokenAnswer);
    const Asked asked(host);
    EXPECT_EQ(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, R"({"G1":{"value":1,"mid":{"M1":1}})");
}

TEST(DotHost, APrescriptionCanBeRemoved) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    host.Prescribe(Failure::networkError);
    host.Prescribe({});
    EXPECT_EQ(Asked(host).code, DOT_QUERY_ANSWERED);
}

TEST(DotHost, AnInvalidRequestIsAQueryError) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    const Asked asked(host, "nonsense");
    EXPECT_NE(asked.code, DOT_QUERY_ANSWERED);
    EXPECT_EQ(asked.text, "null");
}

TEST(DotHost, TheFailureThatAQueryMetIsTakenOnce) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    const Asked answered(host);
    EXPECT_EQ(host.TakeFailure(), std::nullopt);
    for (const Failure failure : {Failure::networkError, Failure::queryError, Failure::brokenAnswer}) {
        host.Prescribe(failure);
        EXPECT_EQ(host.TakeFailure(), std::nullopt) << "before the query";
        const Asked asked(host);
        EXPECT_EQ(host.TakeFailure(), failure);
        EXPECT_EQ(host.TakeFailure(), std::nullopt);
    }
    host.Prescribe({});
    const Asked refused(host, "nonsense");
    EXPECT_EQ(host.TakeFailure(), Failure::queryError);
}

TEST(DotHost, ADeletionRemovesTheDotFromTheStore) {
    MemoryDotStore store(DotTable{{"G1", {"M1"}}});
    DotHost host(store);
    EXPECT_EQ(host.DeleteDot("G1", "HOST", 2, "smb"), 0);
    EXPECT_EQ(store.Size(), 0U);
    const auto deletion = host.TakeDeletion();
    ASSERT_TRUE(deletion);
    EXPECT_EQ(deletion->guid, "G1");
    EXPECT_EQ(deletion->type, "smb");
    EXPECT_TRUE(deletion->done);
    EXPECT_FALSE(host.TakeDeletion()) << "taken once";
}

TEST(DotHost, ADeletionOfAnUnknownDotFails) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    EXPECT_NE(host.DeleteDot("G1", "HOST", 2, "smb"), 0);
    const auto deletion = host.TakeDeletion();
    ASSERT_TRUE(deletion);
    EXPECT_FALSE(deletion->done);
}

TEST(DotHost, CountsEveryCall) {
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

TEST(DotHost, AcceptsNullAndDetectsForeignPointers) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    char foreign[] = "{}";
    EXPECT_EQ(host.FreeResult(nullptr), 0);
    host.FreeResult(foreign);
    EXPECT_EQ(host.Calls().strayReturns, 1U);
}

TEST(DotHost, AnAnswerIsFreedOnlyOnce) {
    MemoryDotStore store(DotTable{});
    DotHost host(store);
    char* answer = nullptr;
    host.QueryDot(request, "HOST", &answer);
    host.FreeResult(answer);
    host.FreeResult(answer);
    EXPECT_EQ(host.Calls().givenBack, 1U);
    EXPECT_EQ(host.Calls().strayReturns, 1U);
}
