// What a TargetProcess is made of, and which variant of the access layer it chooses.
#include <cstddef>
#include <typeinfo>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"

namespace {

using namespace scripted;

class TargetProcessObject : public NativeFixture {
protected:
    // The route that a PEB is read by tells the variant.
    static bool Asks(const Lines& calls, const std::string& beginning) {
        return std::any_of(calls.begin(), calls.end(),
                           [&](const std::string& call) { return call.starts_with(beginning); });
    }
};

TEST_F(TargetProcessObject, AsksForTheIdThenForMachineAndWidths) {
    const TargetProcess object(process, 0);
    EXPECT_EQ(object.ProcessId(), 7u);
    Lines calls = system.TakeCalls();
    std::erase_if(calls, [](const std::string& call) {
        return call.starts_with("GetModuleHandleW") || call.starts_with("GetProcAddress");
    });
    if (Caller::is64Bit) { // can only be on a 64-bit machine, and is as wide as it
        EXPECT_EQ(calls, (Lines{"GetProcessId(process 7)", "IsWow64Process(self)", "IsWow64Process(process 7)"}));
    } else {
        EXPECT_EQ(calls, (Lines{"GetProcessId(process 7)", "GetNativeSystemInfo()", "IsWow64Process(self)",
                                "IsWow64Process(self)", "IsWow64Process(process 7)"}));
    }
}

TEST_F(TargetProcessObject, LeavesTheHandleAlone) {
    { const TargetProcess object(process, 0); }
    EXPECT_EQ(system.Count("CloseHandle"), 0u);
    EXPECT_EQ(system.handles.count(process), 1u);
}

TEST_F(TargetProcessObject, KnowsTheTargetsWidth) {
    for (const int32_t isWow64 : {0, 1}) {
        target->isWow64 = isWow64;
        const TargetProcess object(process, 0);
        EXPECT_EQ(object.Access().TargetIsWow64(), isWow64 == 1);
        EXPECT_FALSE(object.Access().IsX86System());
    }
}

TEST_F(TargetProcessObject, ATargetWhoseQueryFailsIsTakenFor64Bit) {
    target->isWow64 = 1;
    target->wow64QueryFails = true;
    const TargetProcess object(process, 0);
    EXPECT_FALSE(object.Access().TargetIsWow64());
}

TEST_F(TargetProcessObject, TheSecondParameterIsNotRead) {
    TargetProcess object(process, 0xFFFFFFFF);
    EXPECT_EQ(object.ProcessId(), 7u);
}

// A variant with a field of its own, which must not be deleted as a Native.
class CountingNative final : public Native {
public:
    using Native::Native;
    uint64_t ReadPeb64(void*) override { return ++count, 0; }
    int count = 0;
};

TEST_F(TargetProcessObject, TakesAnotherVariantAndGivesItBack) {
    TargetProcess object(process, 0);
    const Native* const chosen = &object.Access();
    const auto other = std::make_unique<CountingNative>(process);
    std::unique_ptr<Native> access(other.get());
    object.SwapAccess(access);
    EXPECT_EQ(access.get(), chosen);
    EXPECT_EQ(&object.Access(), other.get());
    EXPECT_TRUE(object.ListModules(ModuleKind64).empty());
    EXPECT_EQ(other->count, 1);
    object.SwapAccess(access);
    EXPECT_EQ(access.release(), other.get());
    EXPECT_EQ(&object.Access(), chosen);
    EXPECT_TRUE(object.ListModules(ModuleKind64).empty());
    EXPECT_EQ(other->count, 1);
}

TEST_F(TargetProcessObject, BeginsWithAnEmptyModuleMap) {
    TargetProcess object(process, 0);
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_TRUE(object.LoadAllModules().empty());
}

} // namespace
