// Records of concurrent threads are complete, each with the id of its thread.
#include <map>
#include <set>
#include <thread>

#include "kit/host/receiverFixture.h"
#include "logging/logMacros.h"
#include "platform/platform.h"

using Texts = std::vector<std::string>;

// Outside any namespace: that would be part of the names in the records.
struct ThreadSample {
    static void Log(uint32_t number, const std::string& text) { LOG_ERROR(WIDE("n=") << number << WIDE(" ") << text); }
};

namespace {

class LogThreads : public kit::ReceiverFixture {};

TEST_F(LogThreads, RecordsAreCompleteWithTheIdOfTheirThread) {
    StartLogging();
    constexpr uint32_t threadCount = 8;
    constexpr uint32_t recordCount = 200;
    std::vector<uint32_t> ids(threadCount);
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&ids, i] {
            ids[i] = platform::GetCurrentThreadId();
            for (uint32_t record = 0; record < recordCount; ++record) {
                ThreadSample::Log(record, "of thread " + std::to_string(i));
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<uint32_t>(ids.begin(), ids.end()).size(), threadCount) << "the ids differ while threads run";

    // The records of each thread, in order.
    std::map<uint32_t, Texts> byThread;
    for (const auto& record : siblings.Records()) {
        EXPECT_EQ(record.level, 35);
        const size_t mark = record.raw.find("] [");
        ASSERT_NE(mark, std::string::npos) << record.raw;
        byThread[static_cast<uint32_t>(std::stoul(record.raw.substr(mark + 3)))].push_back(record.text);
    }
    EXPECT_EQ(byThread.size(), threadCount);
    for (uint32_t i = 0; i < threadCount; ++i) {
        Texts expected;
        for (uint32_t record = 0; record < recordCount; ++record) {
            expected.push_back(kit::Error("logThreadsTest.cpp ThreadSample::Log",
                                          "n=" + std::to_string(record) + " of thread " + std::to_string(i)));
        }
        EXPECT_EQ(byThread[ids[i]], expected);
    }
}

TEST_F(LogThreads, IdIsStableForAThread) {
    EXPECT_EQ(platform::GetCurrentThreadId(), platform::GetCurrentThreadId());
    EXPECT_NE(platform::GetCurrentThreadId(), 0U);
}

} // namespace
