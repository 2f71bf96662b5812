// The two functions are looked for once in a process: what a test finds missing stays missing in its process.
#include "native/wow64Redirection.h"

#include <memory>

#include <gtest/gtest.h>

#include "kit/system/scriptedProcess/system.h"

namespace {

using namespace scripted;
using Lines = std::vector<std::string>;

class Redirection : public testing::Test {
protected:
    void SetUp() override { Reset(); }

    // Lines without those that look for the functions.
    Lines TakeUses() {
        Lines calls = system.TakeCalls();
        std::erase_if(calls, [](const std::string& call) { return call.starts_with("Get"); });
        return calls;
    }

    System& system = Instance();
};

TEST_F(Redirection, IsSwitchedOffForTheScopeAndGivenBackWithTheSavedValue) {
    {
        const CAutoWow64PauseDisable pause;
        EXPECT_TRUE(pause.Disabled());
        EXPECT_EQ(TakeUses(), Lines{"Wow64DisableWow64FsRedirection()"});
    }
    EXPECT_EQ(TakeUses(), Lines{"Wow64RevertWow64FsRedirection(0x5a7ed)"});
}

TEST_F(Redirection, IsNotGivenBackWhenItCouldNotBeSwitchedOff) {
    system.Next("Wow64DisableWow64FsRedirection", {0});
    {
        const CAutoWow64PauseDisable pause;
        EXPECT_FALSE(pause.Disabled());
    }
    EXPECT_EQ(TakeUses(), Lines{"Wow64DisableWow64FsRedirection()"});
}

TEST_F(Redirection, AnyResultButZeroIsGivenBack) {
    system.Next("Wow64DisableWow64FsRedirection", {0xFFFFFFFF});
    { const CAutoWow64PauseDisable pause; }
    EXPECT_EQ(TakeUses(), (Lines{"Wow64DisableWow64FsRedirection()", "Wow64RevertWow64FsRedirection(0x0)"}));
}

TEST_F(Redirection, EachFunctionIsLookedForOnceInKernel32) {
    { const CAutoWow64PauseDisable pause; }
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"GetModuleHandleW(Kernel32.dll)", "GetProcAddress(kernel32.dll, Wow64DisableWow64FsRedirection)",
                     "Wow64DisableWow64FsRedirection()", "GetModuleHandleW(Kernel32.dll)",
                     "GetProcAddress(kernel32.dll, Wow64RevertWow64FsRedirection)",
                     "Wow64RevertWow64FsRedirection(0x5a7ed)"}));
    { const CAutoWow64PauseDisable pause; }
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"Wow64DisableWow64FsRedirection()", "Wow64RevertWow64FsRedirection(0x5a7ed)"}));
}

TEST_F(Redirection, StaysAsItIsWithoutTheModule) {
    system.missingModules = {"kernel32.dll"};
    {
        const CAutoWow64PauseDisable pause;
        EXPECT_FALSE(pause.Disabled());
    }
    EXPECT_EQ(TakeUses(), Lines{});
}

TEST_F(Redirection, StaysAsItIsWithoutTheFunctionThatSwitchesItOff) {
    system.missing = {"Wow64DisableWow64FsRedirection"};
    {
        const CAutoWow64PauseDisable pause;
        EXPECT_FALSE(pause.Disabled());
    }
    EXPECT_EQ(TakeUses(), Lines{});
}

TEST_F(Redirection, IsNotGivenBackWithoutTheFunctionForIt) {
    system.missing = {"Wow64RevertWow64FsRedirection"};
    { const CAutoWow64PauseDisable pause; }
    EXPECT_EQ(TakeUses(), Lines{"Wow64DisableWow64FsRedirection()"});
}

TEST_F(Redirection, IsNotGivenBackOnceTheModuleIsOutOfReach) {
    {
        const CAutoWow64PauseDisable pause;
        EXPECT_TRUE(pause.Disabled());
        system.missingModules = {"kernel32.dll"};
        system.TakeCalls();
    }
    EXPECT_EQ(system.TakeCalls(), Lines{"GetModuleHandleW(Kernel32.dll)"});
}

} // namespace
