// The variant for a 32-bit machine, on this machine's 32-bit processes: to them it looks the same.
#include <cstddef>
#include <cstring>

#include <windows.h>

#include "kit/system/published/processLayouts.h"
#include "native/x86Native.h"
#include "unit/native/real/realChildFixture.h"
#include "unit/native/targetProcessAccess.h"

namespace {

class RealMachine32 : public testing::Test {
protected:
    RealMachine32() {
        auto variant = std::make_unique<x86Native>(child.Handle());
        native = variant.get();
        TargetProcessAccess{target}.SetVariant(std::move(variant));
    }

    ChildProcess child{32};
    TargetProcess target{child.Handle(), 0};
    x86Native* native = nullptr;
};

TEST_F(RealMachine32, FindsThePebOfTheChild) {
    published::Peb<uint32_t> peb{};
    const uint64_t address = native->ReadPeb32(&peb);
    EXPECT_EQ(address, std::stoull(child.Tell("peb").at(0), nullptr, 16));
    EXPECT_NE(peb.ProcessParameters, 0u);
}

TEST_F(RealMachine32, ReadsTheImagePath) {
    const auto path = target.ReadImagePath();
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(LowerCase(kit::ToNarrow(path->buffer.get())), LowerCase(ProgramOf(child.Handle())));
    child.Tell("setPath Q:\\Dir\\File.exe");
    EXPECT_EQ(kit::ToNarrow(target.ReadImagePath()->buffer.get()), "Q:\\Dir\\File.exe");
}

// Its reads take the low half of the address, so that the word behind the pointer plays no part.
TEST_F(RealMachine32, ReadsTheImagePathWhateverStandsBehindTheParametersPointer) {
    child.Tell("setWordBehindParameters 3");
    ASSERT_NE(target.ReadImagePath(), nullptr);
}

TEST_F(RealMachine32, ListsTheModulesOfTheOneListThatThereIs) {
    const auto list = target.ListModules(ModuleKindAuto);
    const auto expected = TargetProcess(child.Handle(), 0).ListModules(ModuleKind32); // by this machine's own variant
    ASSERT_GE(list.size(), 3u);
    ASSERT_EQ(list.size(), expected.size());
    for (size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i]->path, expected[i]->path);
        EXPECT_EQ(list[i]->baseAddress, expected[i]->baseAddress);
        EXPECT_EQ(list[i]->imageSize, expected[i]->imageSize);
        EXPECT_EQ(list[i]->kind, ModuleKind32);
    }
    EXPECT_EQ(LowerCase(kit::ToNarrow(list[0]->path)), LowerCase(ProgramOf(child.Handle())));
    EXPECT_TRUE(target.ListModules(ModuleKind64).empty());
    EXPECT_EQ(target.LoadAllModules().size(), list.size());
}

TEST_F(RealMachine32, FindsTheMainModuleAndTheParent) {
    const auto main = target.GetMainModule();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(LowerCase(kit::ToNarrow(main->path)), LowerCase(ProgramOf(child.Handle())));
    EXPECT_EQ(target.GetParentProcessId(), GetCurrentProcessId());
}

TEST_F(RealMachine32, ReadsTheTebOfAThread) {
    std::vector<char> teb(4096);
    EXPECT_NE(native->ReadTeb32(child.MainThread(), teb.data()), 0u);
    published::ClientId<uint32_t> id{};
    std::memcpy(&id, teb.data() + offsetof(published::Teb<uint32_t>, ClientId), sizeof id);
    EXPECT_EQ(id.UniqueThread, GetThreadId(child.MainThread()));
}

TEST_F(RealMachine32, Refuses64BitRequestsAndLeavesTheReasonAsTheLastStatus) {
    platform::SetLastStatusValue(0);
    EXPECT_EQ(native->ReadPeb64(nullptr), 0u);
    EXPECT_EQ(platform::LastStatusValue(), 0xC00000BBu);
    platform::SetLastStatusValue(0);
    EXPECT_EQ(native->ReadTeb64(child.MainThread(), nullptr), 0u);
    EXPECT_EQ(platform::LastStatusValue(), 0xC00000BBu);
    EXPECT_EQ(native->GetThreadContext64(child.MainThread(), nullptr), StatusFromWord(0xC00000BB));
}

TEST_F(RealMachine32, QueriesMemoryInThe32BitLayout) {
    struct {
        uint32_t BaseAddress;
        uint32_t AllocationBase;
        uint32_t rest[5];
    } information{};
    const auto address =
        reinterpret_cast<uintptr_t>(GetModuleHandleW(L"ntdll.dll")) + 0x10; // at the same place in both
    EXPECT_EQ(native->QueryVirtualMemory32(address, 0, &information, sizeof information), 0);
    EXPECT_LE(information.BaseAddress, address);
    EXPECT_NE(information.AllocationBase, 0u);
}

} // namespace
