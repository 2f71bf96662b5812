// What tests of the access layer start from: a target process with id 7, a thread with id 9 in it, a fresh table.
#pragma once

#include <array>
#include <cstring>

#include <gtest/gtest.h>

#include "kit/system/scriptedProcess/internals.h"
#include "native/native.h"
#include "native/nativeFunctionTable.h"

// The fields of a Native.
struct NativeFields {
    explicit NativeFields(const Native& native)
        : crossing(native.crossing), selfIsWow64(native.selfIsWow64), targetIsWow64(native.targetIsWow64),
          isX86System(native.isX86System), bitnessDiffers(native.bitnessDiffers) {}

    NativeFields(BitnessCrossing pairing, bool self, bool target, bool x86, bool differs)
        : crossing(pairing), selfIsWow64(self), targetIsWow64(target), isX86System(x86), bitnessDiffers(differs) {}

    bool operator==(const NativeFields&) const = default;

    BitnessCrossing crossing;
    bool selfIsWow64;
    bool targetIsWow64;
    bool isX86System;
    bool bitnessDiffers;
};

namespace scripted {

// Statuses that are failures: errors, and warnings too. And such that are none.
constexpr uint32_t negativeStatuses[] = {0xC0000005, 0xC0000022, 0xC000000D, 0x8000000D,
                                         0x80000005, 0x80000000, 0xFFFFFFFF};
constexpr uint32_t positiveStatuses[] = {0x00000001, 0x00000102, 0x40000003, 0x7FFFFFFF};

using Lines = std::vector<std::string>;

class NativeFixture : public testing::Test {
protected:
    static constexpr uint64_t peb32 = 0x80310000; // a sign to extend
    static constexpr uint64_t peb64 = 0x7FF600310000;
    static constexpr uint64_t teb32 = 0x80412000;
    static constexpr uint64_t teb64 = 0x7FF600410000;

    void SetUp() override {
        Reset();
        GetNativeFunctionTable().clear();
        NativeTableLoaded = false;
        target = &system.processes[7];
        target->peb32 = peb32;
        target->peb64 = peb64;
        system.threads.push_back({9, 7, teb32, teb64, 0x401000, true});
        process = OpenProcessHandle(7);
        thread = OpenThreadHandle(9);
    }

    // Makes `size` bytes at `address` readable, filled with a pattern that Holds looks for.
    void Fill(uint64_t address, size_t size) {
        target->memory.Map(address, size);
        for (size_t i = 0; i < size; ++i) {
            target->memory.Put(address + i, Pattern(i));
        }
    }

    // Whether the first `size` bytes of `buffer` are those, and no later one has been touched.
    template <size_t capacity>
    static testing::AssertionResult Holds(const std::array<char, capacity>& buffer, size_t size) {
        for (size_t i = 0; i < capacity; ++i) {
            if (buffer[i] != (i < size ? Pattern(i) : '\0')) {
                return testing::AssertionFailure() << "byte " << i << " is " << int{buffer[i]};
            }
        }
        return testing::AssertionSuccess();
    }

    System& system = Instance();
    Process* target = nullptr;
    platform::Handle process = nullptr;
    platform::Handle thread = nullptr;
    std::array<char, 8192> buffer{};

private:
    static char Pattern(size_t i) { return static_cast<char>(i % 251 + 1); }
};

} // namespace scripted
