// What mordinspect gathers of a target, and why something is not there, for every pairing of caller and target.
#include <cstddef>

#include "inspection.h"
#include "native/scripted/lowStack.h"
#include "native/scripted/pairingFixture.h"
#include "native/threadGate.h"
#include "output.h"

namespace {

using namespace scripted;
using mordinspect::Inspection;

const std::vector<LoadedModule> modules = {
    {0x400000, 0x5000, WIDE("C:\\dir\\Program.exe")},
    {0x77000000, 0x190000, WIDE("C:\\Windows\\ntdll.dll")},
};

class InspectionOf : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        BuildThreadGate();
        WithImage([this](auto& image) {
            image.AddText(target->memory, CurrentDirectory, WIDE("C:\\dir\\"));
            image.AddText(target->memory, ImagePathName, WIDE("C:\\dir\\Program.exe"));
            image.AddText(target->memory, CommandLine, WIDE("Program -x"));
            image.AddModules(target->memory, modules);
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

    void AddThread(uint32_t id, uint64_t start, bool opens = true) {
        Thread thread{id, targetId};
        thread.start = start;
        thread.opens = opens;
        system.threads.push_back(thread);
    }

    // On a low stack: a reply of a 32-bit system leads into itself.
    Inspection Look() {
        Target(); // makes the handle
        Inspection inspection;
        OnLowStack([&] { inspection = mordinspect::Inspect(handle); });
        EXPECT_EQ(system.handles.size(), 1U);
        EXPECT_EQ(system.wrongCloses, 0U);
        return inspection;
    }

    // "value" or "unavailable: " and why.
    static std::string Told(const mordinspect::Reading<mordinspect::WideText>& reading) {
        return reading.value ? std::string(reading.value->begin(), reading.value->end()) : Words(reading.refusal);
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

TEST_P(InspectionOf, AWholeProcessHasAllParts) {
    const Inspection seen = Look();
    EXPECT_EQ(seen.processId, targetId);
    EXPECT_EQ(seen.bits, TargetIs32() ? 32 : 64);
    EXPECT_EQ(seen.parent.value, 5U);
    EXPECT_EQ(Told(seen.imagePath), "C:\\dir\\Program.exe");
    EXPECT_EQ(Told(seen.commandLine), "Program -x");
    EXPECT_EQ(Told(seen.currentDirectory), "C:\\dir\\");
    const auto& own = TargetIs32() ? seen.modules32 : seen.modules64;
    ASSERT_TRUE(own.value);
    ASSERT_EQ(own.value->size(), 2U);
    EXPECT_EQ((*own.value)[1].base, 0x77000000U);
    EXPECT_EQ((*own.value)[1].size, 0x190000U);
    EXPECT_EQ((*own.value)[1].path, WIDE("C:\\Windows\\ntdll.dll"));
    ASSERT_TRUE(seen.threads.value);
    ASSERT_EQ(seen.threads.value->size(), 1U);
    EXPECT_EQ((*seen.threads.value)[0].start, base + 0x1234);
    EXPECT_EQ(Told((*seen.threads.value)[0].file), "C:\\dir\\Program.exe");
}

TEST_P(InspectionOf, A64BitProcessHasNo32BitModules) {
    if (TargetIs32()) {
        EXPECT_TRUE(Look().modules32.value);
    } else {
        EXPECT_EQ(Words(Look().modules32.refusal), "a 64-bit process has no 32-bit environment block");
    }
}

TEST_P(InspectionOf, AReadThatFailsIsNamedWithItsStatus) {
    system.byAddress = {{pointerAddress, {accessViolation}}};
    EXPECT_EQ(Told(Look().imagePath), Status("the address of the parameters", "0xC0000005"));
    system.byAddress = {{headerAddress, {partialCopy}}};
    EXPECT_EQ(Told(Look().imagePath), Status("the text's header", "0x8000000D"));
    EXPECT_EQ(Told(Look().commandLine), "Program -x");
    system.byAddress = {{textAddress, {partialCopy}}};
    EXPECT_EQ(Told(Look().imagePath), Status("the text, with as much behind it", "0x8000000D"));
    system.byAddress = {{ldrAddress, {1}}}; // the loader's data is the one that has to be read without a remark
    const Inspection seen = Look();
    EXPECT_EQ(Words((TargetIs32() ? seen.modules32 : seen.modules64).refusal),
              Status("the loader's data", "0x00000001"));
}

TEST_P(InspectionOf, AFunctionThatTheSystemLacksIsNamedByItsStatus) {
    NativeTableLoaded = false; // another look at what the system has
    GetNativeFunctionTable().clear();
    system.missing = {"NtQueryInformationProcess", "NtWow64QueryInformationProcess64"};
    const Inspection seen = Look();
    EXPECT_EQ(Told(seen.imagePath), Status("the address of the environment block", "0xC0000138"));
    EXPECT_EQ(Words(seen.parent.refusal), Status("the process's basic information", "0xC0000138"));
}

TEST_P(InspectionOf, AThreadWithoutAFileIsShownWithTheReason) {
    AddThread(3, privateBase);
    AddThread(12, otherBase + 5);
    AddThread(10, base, false);
    const Inspection seen = Look();
    ASSERT_TRUE(seen.threads.value);
    std::vector<std::string> told;
    for (const auto& thread : *seen.threads.value) {
        told.push_back(std::to_string(thread.id) + " " + Told(thread.file));
    }
    EXPECT_EQ(told, (std::vector<std::string>{"3 " + Status("the file at its start address", "0xC0000098"),
                                              "9 C:\\dir\\Program.exe",
                                              "10 the thread (error " + std::to_string(system.lastError) + ")",
                                              "12 no drive letter fits the file's device path"}));
}

TEST_P(InspectionOf, AProcessThatIsGoneHasNoThreads) {
    system.threads.clear();
    EXPECT_EQ(Words(Look().threads.refusal), "the system lists none");
}

TEST_P(InspectionOf, TheSystemListsItsProcessesById) {
    system.processList = {{3000, 100, WIDE("client.exe")}, {4, 0, WIDE("System")}, {100, 4, WIDE("smss.exe")}};
    const auto all = mordinspect::ListAll();
    ASSERT_TRUE(all.value);
    ASSERT_EQ(all.value->size(), 3U);
    EXPECT_EQ((*all.value)[0].processId, 4U);
    EXPECT_EQ((*all.value)[2].imageName, WIDE("client.exe"));
    EXPECT_EQ((*all.value)[2].parentProcessId, 100U);
}

TEST_P(InspectionOf, AListThatCannotBeHadIsNamedWithItsStatus) {
    system.processList = {{4, 0, WIDE("System")}};
    for (unsigned call = 1; call <= 8; ++call) {
        system.byCall[{"NtQuerySystemInformation", call}] = {accessViolation};
    }
    EXPECT_EQ(Words(mordinspect::ListAll().refusal), Status("the system's list of processes", "0xC0000005"));
}

INSTANTIATE_TEST_SUITE_P(, InspectionOf, testing::ValuesIn(PairingsOfThisCaller()), testing::PrintToStringParamName());

} // namespace
