// One log, written by several threads, writers and processes.
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "unit/siblings/logRecords.h"

namespace siblingTest {

namespace {

class LogWriterSharingTest : public testing::Test {
protected:
    ServiceHolder<ILogWriter> StartedWriter() const {
        auto writer = library.Make<ILogWriter>(SID_LogWriter);
        EXPECT_EQ(writer->Start(WIDE("shared"), 0), 0);
        return writer;
    }

    // Runs `work` for each tag on a separate thread; returns whether all runs succeeded.
    static bool InThreads(const std::function<bool(const std::string& tag)>& work) {
        std::vector<int> good(tags.size());
        std::vector<std::thread> threads;
        for (size_t i = 0; i < tags.size(); ++i) {
            threads.emplace_back([&, i] { good[i] = work(tags[i]); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return good == std::vector<int>(tags.size(), 1);
    }

    static inline const std::vector<std::string> tags{"alpha", "beta", "gamma", "delta", "epsilon", "zeta"};

    const LogFolder folder;
    const SiblingLibrary library{std::string("ZelkBase")};
};

TEST_F(LogWriterSharingTest, threadsWriteCompleteRecordsInOrder) {
    constexpr int count = 500;
    const auto writer = StartedWriter();
    EXPECT_TRUE(InThreads([&](const std::string& tag) { return WriteNumbered(*writer.Get(), tag, count); }));
    EXPECT_TRUE(HoldsNumbered(folder.Log("shared"), tags, count));
}

TEST_F(LogWriterSharingTest, alternatingWritersKeepAllRecords) {
    const auto first = StartedWriter();
    const auto second = StartedWriter();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(first->WriteRecord(WIDE("first\r\n"), levelTrace), 0);
        EXPECT_EQ(second->WriteRecord(WIDE("the second\r\n"), levelTrace), 0);
    }
    EXPECT_EQ(folder.Log("shared"), "first\r\nthe second\r\nfirst\r\nthe second\r\nfirst\r\nthe second\r\n");
}

TEST_F(LogWriterSharingTest, anotherProcessAppends) {
    const auto writer = StartedWriter();
    writer->WriteRecord(WIDE("before\r\n"), levelTrace);
    ASSERT_TRUE(RunPrograms("logAppender", {{"shared", "child", "2"}}));
    writer->WriteRecord(WIDE("behind\r\n"), levelTrace);
    EXPECT_EQ(folder.Log("shared"), "before\r\nchild 0 \r\nchild 1 .\r\nbehind\r\n");
}

TEST_F(LogWriterSharingTest, startAndSetLevelAreSafeDuringWrites) {
    const auto writer = StartedWriter();
    EXPECT_TRUE(InThreads([&](const std::string& tag) {
        bool good = true;
        for (int round = 0; round < 200; ++round) {
            if (tag == tags.front()) {
                good = writer->Start(round % 2 == 0 ? WIDE("other") : WIDE("shared"), 0) == 0 && good;
            } else if (tag == tags.back()) {
                good = writer->SetLevel(static_cast<uint32_t>(round % 40)) == 0 && good;
            } else {
                good = writer->WriteRecord(WIDE("whole\r\n"), levelTrace) == 0 && good;
            }
        }
        return good;
    }));
    std::string both = folder.Log("shared") + folder.Log("other");
    while (both.starts_with("whole\r\n")) {
        both.erase(0, 7);
    }
    EXPECT_EQ(both, "");
}

} // namespace

} // namespace siblingTest
