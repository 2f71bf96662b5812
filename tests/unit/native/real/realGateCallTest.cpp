// The way into 64-bit mode and back, on this process.
#include "native/gateEnter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "kit/system/published/processLayouts.h"
#include "native/gate.h"
#include "unit/native/real/functions64.h"

namespace {

constexpr std::array<uint64_t, 6> values = {0x1111111122222222, 0xFFFFFFFFFFFFFFFF, 0x8000000000000001,
                                            0x00000001FFFFFFFF, 0x5555555566666666, 0x7777777788888888};

uint64_t CallWithCount(uint64_t function, int32_t count) {
    switch (count) {
    case 0:
        return GateCall(function, 0);
    case 1:
        return GateCall(function, 1, values[0]);
    case 2:
        return GateCall(function, 2, values[0], values[1]);
    case 3:
        return GateCall(function, 3, values[0], values[1], values[2]);
    case 4:
        return GateCall(function, 4, values[0], values[1], values[2], values[3]);
    case 5:
        return GateCall(function, 5, values[0], values[1], values[2], values[3], values[4]);
    default:
        return GateCall(function, 6, values[0], values[1], values[2], values[3], values[4], values[5]);
    }
}

class RealGateCall : public testing::TestWithParam<int> {
protected:
    Recorder64 recorder;
};

TEST_P(RealGateCall, PassesItsArgumentsAndGivesThe64BitResult) {
    const int count = GetParam();
    EXPECT_EQ(CallWithCount(recorder.Address(), count), recorderResult);
    EXPECT_EQ(recorder.Record().calls, 1u);
    for (int i = 0; i < std::max(count, 4); ++i) {
        const uint64_t expected = i < count ? values[static_cast<size_t>(i)] : 0; // those not covered are 0
        EXPECT_EQ(recorder.Record().arguments[i], expected) << i;
    }
}

TEST_P(RealGateCall, HasTheStackOnA16ByteBoundaryAtTheCall) {
    CallWithCount(recorder.Address(), GetParam());
    EXPECT_EQ((recorder.Record().stack + 8) % 16, 0u); // the return address lies on it
    EXPECT_LE(recorder.Record().stack, 0xFFFFFFFFu);   // it is this thread's own
    char local = 0;
    const auto own = reinterpret_cast<uintptr_t>(&local);
    EXPECT_LT(recorder.Record().stack, own);
    EXPECT_GT(recorder.Record().stack, own - 0x1000);
}

TEST_P(RealGateCall, IsIn64BitModeWithTheDocumentedSelectors) {
    CallWithCount(recorder.Address(), GetParam());
    EXPECT_EQ(recorder.Record().cs, 0x33u);
    EXPECT_EQ(recorder.Record().fs, 0x2Bu);
    EXPECT_EQ(recorder.Record().flags & 0x400, 0u); // the direction is upward
}

INSTANTIATE_TEST_SUITE_P(Counts, RealGateCall, testing::Range(0, 7));

TEST_P(RealGateCall, HasItsStackAlignedForEveryAlignmentOfTheCaller) {
    for (const uint32_t misalignment : {0u, 4u, 8u, 12u}) {
        const MarkedCall call = CallGateMarked(recorder.Address(), GetParam(), values, misalignment);
        ASSERT_EQ(call.before.esp % 16, misalignment);
        EXPECT_EQ((recorder.Record().stack + 8) % 16, 0u) << misalignment;
        EXPECT_EQ(call.after.esp, call.before.esp) << misalignment;
    }
}

// The values that the count does not cover are on the caller's stack and stay unchanged.
TEST(RealGatePushes, AreNoneUpToFourArguments) {
    Recorder64 recorder;
    std::set<uint64_t> stacks;
    for (int32_t count = 0; count <= 4; ++count) {
        const MarkedCall call = CallGateMarked(recorder.Address(), count, values, 0);
        const Record64& record = recorder.Record();
        for (int32_t i = 0; i < 4; ++i) {
            EXPECT_EQ(record.arguments[i], i < count ? values[static_cast<size_t>(i)] : 0) << count << " " << i;
        }
        for (const uint64_t behind : {record.arguments[4], record.arguments[5]}) {
            EXPECT_NE(behind, values[4]) << count;
            EXPECT_NE(behind, values[5]) << count;
        }
        stacks.insert(call.before.esp - record.stack);
    }
    EXPECT_EQ(stacks.size(), 1u); // as far below the caller's for each count
}

TEST(RealGateArgument, ExtendsTheSign) {
    const auto widened = [](uintptr_t value) { return GateArgument(reinterpret_cast<const void*>(value)); };
    EXPECT_EQ(widened(0x80000000), 0xFFFFFFFF80000000u);
    EXPECT_EQ(widened(0xFFFFFFFF), 0xFFFFFFFFFFFFFFFFu); // a pseudo handle
    EXPECT_EQ(widened(0x7FFFFFFF), 0x7FFFFFFFu);
    EXPECT_EQ(widened(0), 0u);
}

TEST(RealGateDisabled, TouchesNothingAndGives0) {
    Recorder64 recorder;
    GateEnabled = 0;
    EXPECT_EQ(GateCall(recorder.Address(), 2, values[0], values[1]), 0u);
    EXPECT_EQ(GateModuleBase(L"ntdll.dll"), 0u);
    GateEnabled = 1;
    EXPECT_EQ(recorder.Record().calls, 0u);
    EXPECT_EQ(GateCall(recorder.Address(), 2, values[0], values[1]), recorderResult);
}

TEST(RealGateEnabled, Is1FromTheStart) {
    EXPECT_EQ(GateEnabled, 1);
}

void ExpectSameState(const MarkedCall& call) {
    const MarkedState& before = call.before;
    const MarkedState& after = call.after;
    ASSERT_EQ(before.ebx, after.ebx);
    ASSERT_EQ(before.esi, after.esi);
    ASSERT_EQ(before.edi, after.edi);
    ASSERT_EQ(before.ebp, after.ebp);
    ASSERT_EQ(before.esp, after.esp);
    ASSERT_EQ(before.flags & 0x400, after.flags & 0x400);
    ASSERT_EQ(before.fs, after.fs);
    ASSERT_EQ(before.ss, after.ss);
    ASSERT_EQ(before.ds, after.ds);
    ASSERT_EQ(before.es, after.es);
    ASSERT_EQ(before.gs, after.gs);
    ASSERT_EQ(before.cs, after.cs);
    ASSERT_EQ(before.x87Control, after.x87Control);
    ASSERT_EQ(before.x87Status & 0x3800, after.x87Status & 0x3800); // the top of the register stack
    ASSERT_EQ(before.sseControl, after.sseControl);
    ASSERT_EQ(0, std::memcmp(before.x87Stack, after.x87Stack, sizeof before.x87Stack));
}

constexpr uint32_t callersSseControl = 0x3F80; // CallMarked sets these two
constexpr uint16_t callersX87Control = 0x067F;

TEST(RealGateState, TheFunctionHasTheControlWordsOfTheCaller) {
    Recorder64 recorder;
    const MarkedCall call = CallGateMarked(recorder.Address(), 2, values, 0);
    EXPECT_EQ(call.before.sseControl, callersSseControl);
    EXPECT_EQ(call.before.x87Control, callersX87Control);
    EXPECT_EQ(recorder.Record().sseControl, callersSseControl);
    EXPECT_EQ(recorder.Record().x87Control, callersX87Control);
}

// The gate saves and restores none of these: the calling convention obliges the function to preserve them.
TEST(RealGateState, TheCallerHasTheControlWordsAndTheDirectionThatTheFunctionLeaves) {
    Recorder64 recorder;
    recorder.ChangeState(0x5F80, 0x0B7F);
    for (int32_t count = 0; count <= 6; ++count) {
        const MarkedCall call = CallGateMarked(recorder.Address(), count, values, 0);
        EXPECT_EQ(call.before.flags & 0x400, 0u);
        EXPECT_EQ(call.after.flags & 0x400, 0x400u) << count;
        EXPECT_EQ(call.after.sseControl, 0x5F80u) << count;
        EXPECT_EQ(call.after.x87Control, 0x0B7Fu) << count;
        EXPECT_EQ(call.after.result, recorderResult) << count;
        EXPECT_EQ(call.after.esp, call.before.esp) << count;
        EXPECT_EQ(call.after.edi, call.before.edi) << count;
    }
}

// The function of these tests preserves what the convention demands, and changes the other registers.
TEST(RealGateState, TheGateChangesNothingAcross100000Calls) {
    Recorder64 recorder;
    for (uint64_t i = 0; i < 100000; ++i) {
        const MarkedCall call = CallGateMarked(recorder.Address(), 2, {i, ~i}, 0);
        ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << i;
        ASSERT_EQ(call.after.result, recorderResult);
        ASSERT_EQ(recorder.Record().arguments[0], i);
        ASSERT_EQ(recorder.Record().arguments[1], ~i);
        if (i == 0) {
            ASSERT_EQ(call.before.ebx, 0xB0B0B0B0u);
            ASSERT_NEAR(call.before.x87Stack[2], 3.14159265358979, 1e-14);
            ASSERT_EQ(call.before.cs, 0x23u);
        }
    }
    EXPECT_EQ(recorder.Record().calls, 100000u);
}

TEST(RealGateState, TheGateChangesNothingForEveryCount) {
    Recorder64 recorder;
    for (int32_t count = 0; count <= 6; ++count) {
        for (uint32_t i = 0; i < 1000; ++i) {
            const MarkedCall call = CallGateMarked(recorder.Address(), count, values, i % 4 * 4);
            ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << count << " " << i;
            ASSERT_EQ(call.after.result, recorderResult);
            for (int32_t argument = 0; argument < count; ++argument) {
                ASSERT_EQ(recorder.Record().arguments[argument], values[static_cast<size_t>(argument)]);
            }
        }
    }
}

TEST(RealGateState, TheGateChangesNothingAcrossCallsOfAnNtFunction) {
    const uint64_t function = GateResolve(GateNtdllBase(), "NtQueryVirtualMemory");
    ASSERT_NE(function, 0u);
    for (int i = 0; i < 1000; ++i) { // each call returns with a failure
        const MarkedCall call = CallGateMarked(function, 6, {UINT64_MAX, 0, 0, 0, 0, 0}, 0);
        ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << i;
        ASSERT_LT(GateStatus(call.after.result), 0);
    }
}

// The other routines, with the words of their arguments.
template <typename Routine>
MarkedCall CallRoutineMarked(Routine* routine, const std::vector<uint32_t>& words, uint32_t misalignment) {
    MarkedCall call;
    CallMarked(reinterpret_cast<const void*>(routine), words.data(), static_cast<uint32_t>(words.size()), misalignment,
               &call.before, &call.after);
    return call;
}

uint32_t WordOf(const void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}

TEST(RealGateState, CopiesChangeNothing) {
    const std::string source = "12345678";
    for (uint32_t size = 0; size <= 8; ++size) {
        for (const uint32_t misalignment : {0u, 4u, 8u, 12u}) {
            std::array<char, 9> copy{};
            const MarkedCall call =
                CallRoutineMarked(GateCopyIn, {WordOf(copy.data()), WordOf(source.data()), 0, size}, misalignment);
            ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << size << " " << misalignment;
            ASSERT_EQ(copy.data(), source.substr(0, size));
        }
    }
}

TEST(RealGateState, ComparisonsChangeNothing) {
    const std::string text = "12345678";
    for (uint32_t size = 0; size <= 8; ++size) {
        for (uint32_t place = 0; place <= 8; ++place) { // of the difference
            std::string other = text + "9";
            other[place] = 'x';
            for (const uint32_t misalignment : {0u, 4u, 8u, 12u}) {
                const MarkedCall call =
                    CallRoutineMarked(GateCompare, {WordOf(text.data()), WordOf(other.data()), 0, size}, misalignment);
                ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << size << " " << place;
                ASSERT_EQ(call.after.result & 0xFF, size != 0 && place >= size ? 1u : 0u) << size << " " << place;
            }
        }
    }
}

TEST(RealGateState, AQueryForTheThreadBlockChangesNothing) {
    for (const uint32_t misalignment : {0u, 4u, 8u, 12u}) {
        const MarkedCall call = CallRoutineMarked(GateThreadBlock, {}, misalignment);
        ASSERT_NO_FATAL_FAILURE(ExpectSameState(call)) << misalignment;
        EXPECT_EQ(call.after.result, GateThreadBlock());
    }
}

TEST(RealGateThreads, TwoCallAtOnceEachOnItsOwnStack) {
    std::array<int, 2> wrong{};
    const auto work = [&](size_t which) {
        Recorder64 recorder;
        for (uint64_t i = 0; i < 50000; ++i) {
            const auto [before, after] = CallGateMarked(recorder.Address(), 2, {i, i + which}, 0);
            const Record64& record = recorder.Record();
            const auto own = reinterpret_cast<uintptr_t>(&recorder);
            const bool right = after.result == recorderResult && record.arguments[0] == i &&
                               record.arguments[1] == i + which && record.stack < own && record.stack > own - 0x2000 &&
                               before.fs == after.fs && before.ss == after.ss && before.esp == after.esp;
            wrong[which] += right ? 0 : 1;
        }
    };
    std::thread first(work, 0);
    std::thread second(work, 1);
    first.join();
    second.join();
    EXPECT_EQ(wrong, (std::array<int, 2>{0, 0}));
}

TEST(RealGateThreadBlock, IsTheCallingThreadsOwn) {
    const auto check = [] {
        published::Teb<uint64_t> teb{};
        GateCopyIn(&teb, GateThreadBlock(), 232);
        EXPECT_EQ(teb.NtTib.Self, GateThreadBlock());
        EXPECT_EQ(teb.ClientId.UniqueThread, GetCurrentThreadId());
        EXPECT_EQ(teb.ClientId.UniqueProcess, GetCurrentProcessId());
    };
    check();
    std::thread(check).join();
}

// Copies and compares

TEST(RealGateCopy, CopiesEverySizeAndNothingBeyond) {
    std::array<char, 80> source{};
    for (size_t i = 0; i < source.size(); ++i) {
        source[i] = static_cast<char>(i + 1);
    }
    for (uint32_t size = 0; size <= 70; ++size) {
        for (const size_t offset : {0u, 1u, 3u}) {
            std::array<char, 80> copy{};
            GateCopyIn(copy.data() + offset, reinterpret_cast<uintptr_t>(source.data() + offset), size);
            for (size_t i = 0; i < copy.size(); ++i) {
                ASSERT_EQ(copy[i], i >= offset && i < offset + size ? source[i] : '\0') << size << " " << i;
            }
        }
    }
}

TEST(RealGateCopy, DoesNothingForANullPointerAddressOrSize) {
    char source = 'x';
    char copy = 'y';
    GateCopyIn(nullptr, reinterpret_cast<uintptr_t>(&source), 1);
    GateCopyIn(&copy, 0, 1);
    GateCopyIn(&copy, reinterpret_cast<uintptr_t>(&source), 0);
    EXPECT_EQ(copy, 'y');
    EXPECT_FALSE(GateCompare(nullptr, reinterpret_cast<uintptr_t>(&source), 1));
    EXPECT_FALSE(GateCompare(&source, 0, 1));
    EXPECT_FALSE(GateCompare(&source, reinterpret_cast<uintptr_t>(&source), 0));
    EXPECT_TRUE(GateCompare(&source, reinterpret_cast<uintptr_t>(&source), 1));
}

TEST(RealGateCompare, FindsADifferenceAtEveryPlaceOfEverySize) {
    std::array<char, 30> left{};
    for (size_t i = 0; i < left.size(); ++i) {
        left[i] = static_cast<char>('a' + i % 26);
    }
    for (uint32_t size = 1; size <= 25; ++size) { // 23 among them: a two-byte unit and a byte at the end
        std::array<char, 30> right = left;
        ASSERT_TRUE(GateCompare(left.data(), reinterpret_cast<uintptr_t>(right.data()), size)) << size;
        for (uint32_t place = 0; place < right.size(); ++place) {
            right[place] ^= 0x40;
            ASSERT_EQ(GateCompare(left.data(), reinterpret_cast<uintptr_t>(right.data()), size), place >= size)
                << size << " " << place;
            right[place] ^= 0x40;
        }
    }
}

TEST(RealGateCopy, ReachesAbove4GiB) {
    const uint64_t ntdll = GateNtdllBase();
    ASSERT_GT(ntdll, 0xFFFFFFFFu);
    char header[2] = {};
    GateCopyIn(header, ntdll, 2);
    EXPECT_EQ(std::string(header, 2), "MZ");
    EXPECT_TRUE(GateCompare("MZ", ntdll, 2));
    EXPECT_FALSE(GateCompare("ZM", ntdll, 2));
}

} // namespace
