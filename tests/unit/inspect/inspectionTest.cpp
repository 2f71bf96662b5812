// What mordinspect reads of a target, and the reason for each missing part, for every pairing of caller and target.
#include <new>

#include "inspectionFixture.h"

namespace {

using namespace scripted;
using mordinspect::Inspection;

constexpr auto accessDenied = 0xC0000022;

class InspectionOf : public InspectionFixture {
protected:
    // Scripts the next calls of `function`, more than one inspection makes.
    void Fail(const char* function, uint32_t status) {
        for (unsigned call = 1; call <= 200; ++call) {
            system.byCall[{function, system.callCounts[function] + call}] = {status};
        }
    }
};

TEST_P(InspectionOf, AWholeProcessHasAllParts) {
    const Inspection seen = Look();
    EXPECT_EQ(seen.processId, targetId);
    EXPECT_EQ(seen.bits, TargetIs32() ? 32 : 64);
    EXPECT_EQ(seen.parent.value, 5U);
    EXPECT_EQ(Told(seen.imagePath), "C:\\dir\\Program.exe");
    EXPECT_EQ(Told(seen.commandLine), "Program -x");
    EXPECT_EQ(Told(seen.currentDirectory), "C:\\dir\\");
    ASSERT_TRUE(Own(seen).value);
    ASSERT_EQ(Own(seen).value->size(), 2U);
    const auto& second = (*Own(seen).value)[1];
    EXPECT_EQ(second.base, 0x77000000U);
    EXPECT_EQ(second.size, 0x190000U);
    EXPECT_EQ(Told(second.path), "C:\\Windows\\ntdll.dll");
    EXPECT_FALSE(second.pathIsCut);
    EXPECT_FALSE(Own(seen).cut);
    ASSERT_EQ(Told(seen.threads), std::vector<std::string>{"9 C:\\dir\\Program.exe"});
    EXPECT_EQ((*seen.threads.value)[0].start, base + 0x1234);
    EXPECT_FALSE(seen.threads.cut);
}

TEST_P(InspectionOf, A64BitProcessHasNo32BitModules) {
    if (TargetIs32()) {
        EXPECT_TRUE(Look().modules32.value);
    } else {
        EXPECT_EQ(Words(Look().modules32.refusal),
                  "the 32-bit environment block (seen: a 64-bit process, which has none)");
    }
}

TEST_P(InspectionOf, A32BitMachineRefuses64BitModules) {
    const std::string reason = Words(Look().modules64.refusal);
    if (GetParam() == Pairing::Machine32) {
        EXPECT_EQ(reason, Status("the address of the environment block", "0xC00000BB"));
    } else {
        EXPECT_EQ(reason.find("0xC00000BB"), std::string::npos) << reason;
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
    EXPECT_EQ(Words(Own(Look()).refusal), Status("the loader's data", "0x00000001"));
}

// The reason comes from the walk that failed: a second one could end differently.
TEST_P(InspectionOf, NothingIsReadAgainToFindTheReason) {
    system.byAddress = {{headerAddress, {accessViolation}}};
    Look();
    const auto lines = ReadLines(headerAddress, TargetIs32() ? 8 : 16);
    EXPECT_EQ(system.Count(lines.back()), 1U);
    system.TakeCalls();
    system.byAddress = {{ldrAddress, {accessViolation}}};
    Look();
    EXPECT_EQ(system.Count(ReadLines(ldrAddress, TargetIs32() ? 48 : 88).back()), 1U);
    EXPECT_EQ(system.Count("OpenThread"), 1U);
}

TEST_P(InspectionOf, AReadThatFailsOnceIsTheReasonThoughItWouldSucceedNow) {
    unsigned read = 0;
    system.onRead = [&] {
        // The first of all but for blocks: the pointer to the parameters.
        const auto& line = system.calls.back();
        if (line == ReadLines(pointerAddress, 8).back() && ++read == 1) {
            system.byAddress = {{pointerAddress, {accessViolation}}};
        } else {
            system.byAddress.clear();
        }
    };
    EXPECT_EQ(Told(Look().imagePath), Status("the address of the parameters", "0xC0000005"));
}

// Only a WOW64 caller uses the second function, for 64-bit blocks.
TEST_P(InspectionOf, AFunctionThatTheSystemLacksIsNamedByItsStatus) {
    const auto lookWithout = [this](const char* function) {
        NativeTableLoaded = false; // the next look loads the table again
        GetNativeFunctionTable().clear();
        system.missing = {function};
        Inspection seen = Look();
        EXPECT_EQ(GetNativeFunctionTable().count(function), 0U);
        return seen;
    };
    const std::string noBlock = Status("the address of the environment block", "0xC0000138");
    const std::string noParent = Status("the process's basic information", "0xC0000138");
    const bool usesSecondForStrings = CallerIsWow64() && !TargetIs32();

    const Inspection withoutFirst = lookWithout("NtQueryInformationProcess");
    EXPECT_EQ(Told(withoutFirst.imagePath), usesSecondForStrings ? "C:\\dir\\Program.exe" : noBlock);
    EXPECT_EQ(withoutFirst.parent.value.has_value(), CallerIsWow64());
    if (!CallerIsWow64()) {
        EXPECT_EQ(Words(withoutFirst.parent.refusal), noParent);
    }

    const Inspection withoutSecond = lookWithout("NtWow64QueryInformationProcess64");
    EXPECT_EQ(Told(withoutSecond.imagePath), usesSecondForStrings ? noBlock : "C:\\dir\\Program.exe");
    EXPECT_EQ(withoutSecond.parent.value.has_value(), !CallerIsWow64());
    if (CallerIsWow64()) {
        EXPECT_EQ(Words(withoutSecond.parent.refusal), noParent);
    }
}

TEST_P(InspectionOf, AQueryForABlockThatFailsIsNamedWithTheStatusOfItsOwnFunction) {
    const bool own32 = TargetIs32();
    Fail("NtQueryInformationProcess", accessDenied);
    const Inspection seen = Look();
    const std::string reason = Status("the address of the environment block", "0xC0000022");
    EXPECT_EQ(Told(seen.imagePath), CallerIsWow64() && !own32 ? "C:\\dir\\Program.exe" : reason);
    EXPECT_EQ(seen.parent.value.has_value(), CallerIsWow64());
    system.byCall.clear();
    Fail("NtWow64QueryInformationProcess64", accessDenied);
    const Inspection other = Look();
    EXPECT_EQ(Told(other.imagePath), CallerIsWow64() && !own32 ? reason : "C:\\dir\\Program.exe");
    if (CallerIsWow64()) {
        EXPECT_EQ(Words(other.modules64.refusal), reason);
        EXPECT_EQ(Words(other.parent.refusal), Status("the process's basic information", "0xC0000022"));
    }
}

TEST_P(InspectionOf, ABlockThatCannotBeReadIsNotOneWithoutAnAddress) {
    system.byAddress = {{PebAddress(), {accessViolation}}};
    const Inspection seen = Look();
    const std::string reason = Status("the environment block", "0xC0000005");
    EXPECT_EQ(Words(Own(seen).refusal), reason);
    // This variant alone gives no address then; the others' address is good enough for the strings.
    EXPECT_EQ(Told(seen.imagePath), GetParam() == Pairing::Wow64CallerOf64 ? reason : "C:\\dir\\Program.exe");
}

TEST_P(InspectionOf, ABlockThatIsNotThereHasAddress0) {
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_EQ(Told(Look().imagePath), GetParam() == Pairing::Wow64CallerOf64
                                          ? Status("the environment block", "0xC0000005")
                                          : "the address of the environment block (seen: address 0)");
}

TEST_P(InspectionOf, AnEmptyLoaderListIsSeenAsOne) {
    WithImage([this](auto& image) {
        image.ldr.InLoadOrderModuleList.Flink = image.HeadAddress();
        image.Put(target->memory);
    });
    EXPECT_EQ(Words(Own(Look()).refusal), "the loader's data (seen: nothing in it)");
}

TEST_P(InspectionOf, AProcessWithoutAParentIsSeenAsOne) {
    target->parent = 0;
    EXPECT_EQ(Words(Look().parent.refusal), "it has none (seen: parent id 0)");
}

TEST_P(InspectionOf, ALinkThatCannotBeReadCutsTheListWithItsStatus) {
    Link(1, 0x10);
    const Inspection seen = Look();
    ASSERT_TRUE(Own(seen).value);
    ASSERT_EQ(Own(seen).value->size(), 3U);
    EXPECT_EQ(Words((*Own(seen).value)[2].path.refusal), Status("the loader entry", "0xC0000005"));
    ASSERT_TRUE(Own(seen).cut);
    EXPECT_EQ(Words(*Own(seen).cut), Status("the next module", "0xC0000005"));
}

TEST_P(InspectionOf, AModulePathThatCannotBeReadIsNamedWithItsStatus) {
    system.byAddress = {{NameAddress(0), {accessViolation}}};
    const Inspection seen = Look();
    ASSERT_EQ(Own(seen).value->size(), 2U);
    EXPECT_EQ(Words((*Own(seen).value)[0].path.refusal), Status("the path", "0xC0000005"));
    EXPECT_EQ((*Own(seen).value)[0].base, 0x400000U);
    EXPECT_EQ(Told((*Own(seen).value)[1].path), "C:\\Windows\\ntdll.dll");
    EXPECT_FALSE(Own(seen).cut);
}

TEST_P(InspectionOf, AThreadWithoutAFileIsShownWithTheReason) {
    AddThread(3, privateBase);
    AddThread(12, otherBase + 5);
    AddThread(10, base, false);
    AddThread(14, base - 0x1000);
    EXPECT_EQ(Told(Look().threads),
              (std::vector<std::string>{
                  "3 " + Status("the file at its start address", "0xC0000098"),
                  "9 C:\\dir\\Program.exe",
                  "10 the thread (error 5)",
                  "12 no drive letter fits the file's device path (seen: \\Device\\Volume2\\x.dll)",
                  "14 " + Status("the memory at its start address", "0xC0000141"),
              }));
}

TEST_P(InspectionOf, AThreadThatStartsInMemoryWithoutABaseIsShownWithWhatWasSeen) {
    target->regions = {{0, 0x1000, WIDE("\\Device\\Volume1\\x.dll")}};
    system.threads.clear();
    AddThread(9, 0x10);
    EXPECT_EQ(Told(Look().threads),
              (std::vector<std::string>{"9 the memory at its start address (seen: base address 0)"}));
}

// The library gives such a path to a function that throws.
TEST_P(InspectionOf, AFileWithAPathWithinTheNameOfADeviceEndsNothing) {
    target->regions[2].file = WIDE("\\Device\\Vol");
    AddThread(3, otherBase);
    EXPECT_EQ(Told(Look().threads),
              (std::vector<std::string>{
                  "3 the file's device path ends within the name of a drive's device (seen: \\Device\\Vol)",
                  "9 C:\\dir\\Program.exe",
              }));
}

TEST_P(InspectionOf, AReplyWithoutANameIsSeenAsAnEmptyPath) {
    system.mappedName.address = 0x10;
    EXPECT_EQ(Told(Look().threads),
              (std::vector<std::string>{"9 no drive letter fits the file's device path (seen: an empty path)"}));
}

TEST_P(InspectionOf, AProcessThatIsGoneHasNoThreads) {
    system.threads.clear();
    EXPECT_EQ(Words(Look().threads.refusal), "the process's threads (seen: none in the system's list)");
}

TEST_P(InspectionOf, ASnapshotThatFailsIsNamedWithItsError) {
    system.snapshotFails = true;
    EXPECT_EQ(Words(Look().threads.refusal), "the snapshot of the system's threads (error 8)");
    system.snapshotFails = false;
    system.snapshotIsInvalid = true;
    system.TakeCalls();
    EXPECT_EQ(Words(Look().threads.refusal), "the snapshot of the system's threads (error 8)");
    EXPECT_EQ(system.Count("CloseHandle"), 0U);
}

TEST_P(InspectionOf, AWalkThroughASnapshotThatFailsIsNamedWithItsError) {
    AddThread(3, base);
    system.threadsUntilFailure = 1;
    const Inspection seen = Look();
    EXPECT_EQ(Told(seen.threads), std::vector<std::string>{"9 C:\\dir\\Program.exe"});
    ASSERT_TRUE(seen.threads.cut);
    EXPECT_EQ(Words(*seen.threads.cut), "the next thread (error 24)");
    system.threadsUntilFailure = 0;
    EXPECT_EQ(Words(Look().threads.refusal), "the next thread (error 24)");
}

TEST_P(InspectionOf, MemoryThatRunsOutEndsNoMoreThanItsPart) {
    unsigned reads = 0;
    system.onRead = [&] {
        if (system.calls.back() == ReadLines(headerAddress, TargetIs32() ? 8 : 16).back()) {
            throw std::bad_alloc();
        }
        reads += system.calls.back() == ReadLines(ldrAddress, TargetIs32() ? 48 : 88).back() ? 1 : 0;
    };
    const Inspection seen = Look();
    EXPECT_EQ(Told(seen.imagePath), "the text (seen: no memory left for it)");
    EXPECT_EQ(Told(seen.commandLine), "Program -x");
    EXPECT_EQ(reads, 1U);
    EXPECT_TRUE(Own(seen).value);
    EXPECT_TRUE(seen.threads.value);
    system.onRead = [&] {
        if (system.calls.back() == ReadLines(EntryAddress(1), TargetIs32() ? 80 : 152).back()) {
            throw std::bad_alloc();
        }
    };
    EXPECT_EQ(Words(Own(Look()).refusal), "the list (seen: no memory left for it)");
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

TEST_P(InspectionOf, AListThatCannotBeReadIsNamedWithItsReason) {
    system.processList = {{4, 0, WIDE("System")}};
    system.byCall = {{{"NtQuerySystemInformation", 2}, {accessViolation}}};
    EXPECT_EQ(Words(mordinspect::ListAll().refusal), Status("the system's list of processes", "0xC0000005"));
    system.processListGrowth = 1;
    EXPECT_EQ(Words(mordinspect::ListAll().refusal), Status("the system's list of processes", "0xC0000004"));
    system.processListGrowth = 0;
    system.virtualAllocFails = true;
    EXPECT_EQ(Words(mordinspect::ListAll().refusal), "memory for the system's list of processes (error 8)");
    system.virtualAllocFails = false;
    system.Next("NtQuerySystemInformation", {0});
    EXPECT_EQ(Words(mordinspect::ListAll().refusal),
              "the size of the system's list of processes (seen: nothing in it)");
    system.processList = {{0, 0, WIDE("Idle")}};
    EXPECT_EQ(Words(mordinspect::ListAll().refusal), "the system's list of processes (seen: nothing in it)");
    system.missing = {"NtQuerySystemInformation"};
    NativeTableLoaded = false;
    GetNativeFunctionTable().clear();
    EXPECT_EQ(Words(mordinspect::ListAll().refusal),
              Status("the size of the system's list of processes", "0xC0000138"));
}

INSTANTIATE_TEST_SUITE_P(, InspectionOf, testing::ValuesIn(PairingsOfThisCaller()), testing::PrintToStringParamName());

} // namespace
