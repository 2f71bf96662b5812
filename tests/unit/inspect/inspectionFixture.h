// A scripted process for mordinspect, for every pairing of caller and target.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "inspection.h"
#include "kit/system/scriptedProcess/lowStack.h"
#include "kit/system/scriptedProcess/pairingFixture.h"
#include "output.h"
#include "unit/native/threadGate.h"

class InspectionFixture : public scripted::PairingFixture {
protected:
    using Text = scripted::Text;

    void SetUp() override {
        PairingFixture::SetUp();
        scripted::BuildThreadGate();
        WithImage([this](auto& image) {
            image.AddText(target->memory, CurrentDirectory, WIDE("C:\\dir\\"));
            image.AddText(target->memory, ImagePathName, WIDE("C:\\dir\\Program.exe"));
            image.AddText(target->memory, CommandLine, WIDE("Program -x"));
            image.AddModules(target->memory, Modules());
            pointerAddress =
                image.pebAddress + offsetof(std::remove_reference_t<decltype(image.peb)>, ProcessParameters);
            headerAddress = image.HeaderAddress(ImagePathName);
            textAddress = image.TextAddress(ImagePathName);
            ldrAddress = image.ldrAddress;
        });
        MapImage();
        target->parent = 5;
        system.devices = {{'C', WIDE("\\Device\\Volume1")}};
        target->regions = {{base, 0x8000, WIDE("\\Device\\Volume1\\dir\\Program.exe")},
                           {privateBase, 0x1000, Text()},
                           {otherBase, 0x1000, WIDE("\\Device\\Volume2\\x.dll")}};
        AddThread(9, base + 0x1234);
    }

    // What the target's own loader list holds.
    virtual std::vector<scripted::LoadedModule> Modules() const {
        return {{0x400000, 0x5000, WIDE("C:\\dir\\Program.exe")},
                {0x77000000, 0x190000, WIDE("C:\\Windows\\ntdll.dll")}};
    }

    void AddThread(uint32_t id, uint64_t start, bool opens = true) {
        scripted::Thread thread{id, targetId};
        thread.start = start;
        thread.opens = opens;
        system.threads.push_back(thread);
    }

    // Has the module with that index lead to `next`.
    void Link(size_t index, uint64_t next) {
        WithImage([&](auto& image) {
            target->memory.Put(image.EntryAddress(index), static_cast<decltype(image.pebAddress)>(next));
        });
    }
    uint64_t EntryAddress(size_t index) {
        return WithImage([&](auto& image) -> uint64_t { return image.EntryAddress(index); });
    }
    uint64_t NameAddress(size_t index) {
        return WithImage([&](auto& image) -> uint64_t { return image.NameAddress(index); });
    }

    // On a low stack: a reply of a 32-bit system leads into itself.
    mordinspect::Inspection Look(const mordinspect::Limits& limits = {}) {
        Target(); // makes the handle
        mordinspect::Inspection inspection;
        scripted::OnLowStack([&] { inspection = mordinspect::Inspect(handle, limits); });
        EXPECT_EQ(system.handles.size(), 1U);
        EXPECT_EQ(system.wrongCloses, 0U);
        return inspection;
    }

    const mordinspect::Listing<mordinspect::Module>& Own(const mordinspect::Inspection& inspection) const {
        return TargetIs32() ? inspection.modules32 : inspection.modules64;
    }

    // "value", or why there is none.
    static std::string Told(const mordinspect::Reading<mordinspect::WideText>& reading) {
        return reading.value ? std::string(reading.value->begin(), reading.value->end()) : Words(reading.refusal);
    }

    // Each as its id and file.
    static std::vector<std::string> Told(const mordinspect::Listing<mordinspect::Thread>& threads) {
        std::vector<std::string> told;
        for (const auto& thread : threads.value.value_or(std::vector<mordinspect::Thread>())) {
            told.push_back(std::to_string(thread.id) + " " + Told(thread.file));
        }
        return told;
    }

    static std::string Status(const char* step, const char* status) {
        return std::string(step) + " (status " + status + ")";
    }

    const uint64_t base = TargetIs32() ? 0x400000 : 0x7FF600400000;
    const uint64_t privateBase = base + 0x100000;
    const uint64_t otherBase = base + 0x200000;
    uint64_t pointerAddress = 0;
    uint64_t headerAddress = 0;
    uint64_t textAddress = 0;
    uint64_t ldrAddress = 0;
};
