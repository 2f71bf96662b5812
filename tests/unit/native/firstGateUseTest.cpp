// What a 32-bit caller finds once in a process behind the gate, searched for by several threads at the same moment.
// Each case in a process of its own; meant to be run under ThreadSanitizer too.
#include <vector>

#include <gtest/gtest.h>

#include "kit/system/onThreads.h"
#include "native/gate.h"
#include "native/gateWrappers.h"
#include "unit/native/firstUseSystem.h"

namespace {

using firstUse::OnThreads;
using firstUse::threadCount;

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
