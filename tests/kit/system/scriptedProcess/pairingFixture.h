// Tests that run for each pairing of machine, caller and target.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/system/scriptedProcess/pairings.h"
#include "kit/system/scriptedProcess/processImage.h"
#include "native/nativeFunctionTable.h"
#include "native/targetProcess.h"

namespace scripted {

// One target process, whose id is 7, on a system for the pairing, and the lines of the calls that its variant makes.
class PairingFixture : public testing::TestWithParam<Pairing> {
protected:
    static constexpr uint32_t targetId = 7;

    void SetUp() override;

    bool TargetIs32() const { return GetParam() != Pairing::Wow64CallerOf64 && GetParam() != Pairing::Caller64Of64; }
    bool CallerIsWow64() const {
        return GetParam() == Pairing::Wow64CallerOf32 || GetParam() == Pairing::Wow64CallerOf64;
    }

    // The object on the target; the calls of its construction are not among the calls afterwards.
    TargetProcess& Target();

    // Runs `use` with the image of the target's own width.
    template <typename Use>
    auto WithImage(const Use& use) {
        return TargetIs32() ? use(image32) : use(image64);
    }

    // The address of the PEB of the target's own width.
    uint64_t PebAddress() const { return TargetIs32() ? uint64_t{image32.pebAddress} : image64.pebAddress; }

    // Maps and writes the image that the target has of its own width.
    void MapImage();

    // What reads the target's memory behind ReadMemory.
    std::string Reader() const { return CallerIsWow64() ? "NtWow64ReadVirtualMemory64" : "ReadProcessMemory"; }

    // The lines of one ReadMemory, and of finding and reading the PEB of the target's own width, or the 64-bit one.
    std::vector<std::string> ReadLines(uint64_t address, uint64_t size) const;
    std::vector<std::string> PebLines() const;
    std::vector<std::string> Peb64Lines() const;

    System& system = Instance();
    Process* target = nullptr;
    platform::Handle handle = nullptr;
    ProcessImage<uint32_t> image32;
    ProcessImage<uint64_t> image64;

private:
    std::vector<std::string> PebLinesOf32() const;

    std::unique_ptr<TargetProcess> m_object;
};

std::vector<std::string> Join(std::initializer_list<std::vector<std::string>> parts);

} // namespace scripted
