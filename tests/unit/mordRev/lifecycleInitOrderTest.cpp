// The order of all calls of an Init, over a scripted system: log start first, then the machine id. A process of its own
// for each case, in which nothing was bound before.
#include "kit/host/receiverFixture.h"
#include "kit/system/scriptedSystem.h"

namespace {

using Texts = std::vector<std::string>;
using kit::Trace;

class LifecycleInitOrder : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        kit::ScriptedSystem::Instance().Reset();
        kit::ScriptedSystem::Instance().ini = {{"WriteLog", 1}, {"LogLevel", 30}};
        siblings.configTexts = {"C:\\logs\\"};
        siblings.logsRecords = true;
    }

    static std::string Written(const char* site, const char* message) {
        return "ILogWriter.WriteRecord(" + Trace(site, message) + ",30)";
    }
};

TEST_F(LifecycleInitOrder, IsBindingLogConfigIniLoggerFirstRecordMachineIdAndItsRecords) {
    EXPECT_TRUE(receiver->Init(&host));
    EXPECT_EQ(siblings.calls.Take(),
              (Texts{"GetModuleHandleW(Ferrocore.dll)",
                     "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                     "create FerrocoreService",
                     "GetModuleHandleW(ZelkBase.dll)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                     "create IModuleFinder",
                     "create BaseServiceTwo",
                     "create BaseServiceOne",
                     "create BaseServiceThree",
                     "IModuleFinder.FindModule(module.base)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                     "create ILogConfig",
                     "ILogConfig.GetConfigText(2097154,0)",
                     "ILogConfig.GetConfigText(2097154,0)",
                     "GetPrivateProfileIntW(OUTLOG,WriteLog,0,C:\\logs\\Zelklog.ini)",
                     "GetPrivateProfileIntW(OUTLOG,DebugView,0,C:\\logs\\Zelklog.ini)",
                     "GetPrivateProfileIntW(OUTLOG,LogLevel,0,C:\\logs\\Zelklog.ini)",
                     "create ILogWriter",
                     "ILogWriter.SetLevel(30)",
                     "ILogWriter.Start(MORD_Recv,0)",
                     "ILogConfig.Release",
                     "GetModuleHandleW(ZelkBase.dll)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                     "create ITextConverter",
                     Written("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready"),
                     "IModuleFinder.FindModule(module.base)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                     "create IMachineIdService",
                     "IMachineIdService.GetMachineId",
                     Written("localMid.cpp CMordRecv::GetLocalMid", "GetLocalMid()-Get local mid is:SCRIPTED-MACHINE"),
                     Written("mordRev.cpp CMordRecv::Init", "init get mid=SCRIPTED-MACHINE")}));
}

TEST_F(LifecycleInitOrder, BindsAgainForTheMachineIdWhatTheLogStartDidNotGet) {
    siblings.refused = {"BaseServiceThree"};
    kit::ScriptedSystem::Instance().ini.clear();
    EXPECT_TRUE(receiver->Init(&host));
    const Texts rebound{"GetModuleHandleW(ZelkBase.dll)",
                        "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                        "IModuleFinder.Release",
                        "create IModuleFinder",
                        "BaseServiceTwo.Release",
                        "create BaseServiceTwo",
                        "BaseServiceOne.Release",
                        "create BaseServiceOne",
                        "refuse BaseServiceThree",
                        "IModuleFinder.FindModule(module.base)",
                        "GetProcAddress(ZelkBase.dll,CreateZelkObject)"};
    const Texts first{"create IMachineIdService", "IMachineIdService.GetMachineId", "GetModuleHandleW(ZelkBase.dll)",
                      "GetProcAddress(ZelkBase.dll,CreateZelkObject)", "create ITextConverter"};
    Texts expected = rebound;
    expected.insert(expected.end(), first.begin(), first.end());
    const Texts all = siblings.calls.Take();
    ASSERT_GE(all.size(), expected.size());
    EXPECT_EQ(Texts(all.end() - static_cast<std::ptrdiff_t>(expected.size()), all.end()), expected);
}

TEST_F(LifecycleInitOrder, FlagIsSetLastAndTheHostBeforeTheMachineId) {
    Texts seen;
    siblings.calls.onAdd = [&](const std::string& call) {
        if (call == "ILogWriter.Start(MORD_Recv,0)" || call == "IMachineIdService.GetMachineId" ||
            call.find("init get mid") != std::string::npos) {
            seen.push_back(std::string(Fields().Host() == &host ? "host " : "no host ") +
                           (Fields().Inited() ? "inited" : "not inited"));
        }
    };
    EXPECT_TRUE(receiver->Init(&host));
    siblings.calls.onAdd = nullptr;
    EXPECT_EQ(seen, (Texts{"no host not inited", "host not inited", "host not inited"}));
    EXPECT_TRUE(Fields().Inited());
}

TEST_F(LifecycleInitOrder, WithoutTheBaseLibraryNothingFollowsTheSearchForIt) {
    kit::ScriptedSystem::Instance().modules.clear();
    EXPECT_FALSE(receiver->Init(&host));
    EXPECT_EQ(siblings.calls.Take(), (Texts{"GetModuleHandleW(Ferrocore.dll)", "GetModuleHandleW(ZelkBase.dll)",
                                            "GetModuleHandleW(Ferrocore.dll)", "GetModuleHandleW(ZelkBase.dll)"}))
        << "once when the holder is made, once by Bind";
}

} // namespace
