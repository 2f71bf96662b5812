// What process inspection finds once in a process, searched for by several threads at the same moment. Each case in a
// process of its own; meant to be run under ThreadSanitizer too.
#include "native/firstUseSystem.h"

#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "hostKit/startLine.h"
#include "native/gate.h"
#include "native/gateWrappers.h"
#include "native/nativeFunctionTable.h"
#include "native/nativeWow64.h"

namespace {

constexpr size_t threadCount = 4;

// Runs `step` on several threads from the same moment on, and returns what each of them gave.
template <typename Result>
std::vector<Result> OnThreads(const std::function<Result()>& step) {
    hostKit::StartLine start(threadCount);
    std::vector<Result> results(threadCount);
    std::vector<std::thread> threads;
    for (Result& result : results) {
        threads.emplace_back([&start, &step, &result] {
            start.ArriveAndWait();
            result = step();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return results;
}

TEST(FirstNative, OfEveryThreadMeetsTheWholeTableWhichIsLoadedOnce) {
    const auto statuses = OnThreads<NtStatus>([] {
        NativeWow64 native(nullptr);
        return native.QuerySystemInformation(57, nullptr, 0, nullptr);
    });
    EXPECT_EQ(statuses, std::vector<NtStatus>(threadCount, firstUse::statusOfQueries));
    EXPECT_EQ(firstUse::namesAskedFor, 35);
    EXPECT_EQ(GetNativeFunctionTable().size(), 35U);
}

TEST(FirstGateUse, EveryThreadFindsTheSameNtdll) {
    const auto bases = OnThreads<uint64_t>(GateNtdllBase);
    EXPECT_EQ(bases, std::vector<uint64_t>(threadCount, firstUse::NtdllBase()));
}

TEST(FirstGateUse, EveryThreadFindsTheSameFunction) {
    const auto addresses = OnThreads<uint64_t>([] { return GateResolve(GateNtdllBase(), "NtQueryVirtualMemory"); });
    EXPECT_EQ(addresses, std::vector<uint64_t>(threadCount, firstUse::resolved));
}

TEST(FirstGateUse, TheWrappersOfEveryThreadCallAndRecordTheStatus) {
    const auto errors = OnThreads<uint32_t>([] {
        char context = 0;
        return GateGetContext(nullptr, &context) ? 0 : firstUse::LastErrorSet();
    });
    EXPECT_EQ(errors, std::vector<uint32_t>(threadCount, 0xC000FFFA)); // 0xC0000005 in the words of this system
}

} // namespace
