// Failures of the start of logging keep the flags and log nothing.
#include "mordRev/src/mordRev.h"
#include "unit/logging/startLoggerFixture.h"

namespace {

class StartLoggerFailure : public StartLoggerSteps, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        StartLoggerSteps::SetUp();
        SetLogState(GetParam(), GetParam(), GetParam());
        system.ini = {{"WriteLog", 1}, {"DebugView", GetParam() ? 0U : 1U}};
    }

    // Both functions return false, write no record and keep the flags.
    void ExpectFailure() {
        EXPECT_FALSE(StartLogger(WIDE("NAME")));
        EXPECT_FALSE(CMordRecv().InitLogMoudle());
        EXPECT_EQ(TakeRawRecords(), Calls());
        EXPECT_EQ(TakeDebugOutput(), Calls());
        EXPECT_EQ(LogFileEnabled, GetParam());
        EXPECT_EQ(LogDebugViewEnabled, GetParam());
        EXPECT_EQ(static_cast<bool>(LoggerObject), GetParam());
    }
};

TEST_P(StartLoggerFailure, NoModule) {
    siblings.foundModule = nullptr;
    ExpectFailure();
    EXPECT_EQ(TakeCalls(), (Calls{"IModuleFinder.FindModule(module.base)", "IModuleFinder.FindModule(module.base)"}));
}

TEST_P(StartLoggerFailure, NoFactory) {
    system.modules["empty.dll"] = nullptr;
    siblings.foundModule = system.Handle("empty.dll");
    ExpectFailure();
    EXPECT_EQ(TakeCalls(),
              (Calls{"IModuleFinder.FindModule(module.base)", "GetProcAddress(empty.dll,CreateZelkObject)",
                     "IModuleFinder.FindModule(module.base)", "GetProcAddress(empty.dll,CreateZelkObject)"}));
}

TEST_P(StartLoggerFailure, NoLogConfig) {
    siblings.refused = {"ILogConfig"};
    ExpectFailure();
    EXPECT_EQ(TakeCalls(), found + Calls{"refuse ILogConfig"} + found + Calls{"refuse ILogConfig"});
}

TEST_P(StartLoggerFailure, NoLoggerSetsTheDebugFlagOnly) {
    siblings.refused = {"ILogWriter"};
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    const Calls released = GetParam() ? Calls{"ILogWriter.Release"} : Calls();
    EXPECT_EQ(TakeCalls(), beginning + released + Calls({"refuse ILogWriter", "ILogConfig.Release"}));
    EXPECT_EQ(LogDebugViewEnabled, !GetParam());
    EXPECT_EQ(LogFileEnabled, GetParam());
    EXPECT_FALSE(LoggerObject);
    EXPECT_FALSE(CMordRecv().InitLogMoudle());
    EXPECT_EQ(TakeRawRecords(), Calls());
    EXPECT_EQ(TakeDebugOutput(), Calls()) << "a failed start logs nothing, although a flag is set";
}

INSTANTIATE_TEST_SUITE_P(WithTheFlags, StartLoggerFailure, testing::Values(false, true),
                         [](const auto& suite) { return suite.param ? "Set" : "Clear"; });

// Needs a process that has bound no service.
class StartLoggerFirst : public LogFixture {};

TEST_F(StartLoggerFirst, BindsTheServicesFirst) {
    siblings.configTexts = {"C:\\logs\\"};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(),
              (Calls{"GetModuleHandleW(Ferrocore.dll)", "GetProcAddress(Ferrocore.dll,CreateZelkObject)",
                     "create FerrocoreService", "GetModuleHandleW(ZelkBase.dll)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)", "create IModuleFinder", "create BaseServiceTwo",
                     "create BaseServiceOne", "create BaseServiceThree", "IModuleFinder.FindModule(module.base)",
                     "GetProcAddress(ZelkBase.dll,CreateZelkObject)", "create ILogConfig",
                     "ILogConfig.GetConfigText(2097154,0)", "ILogConfig.GetConfigText(2097154,0)",
                     "GetPrivateProfileIntW(OUTLOG,WriteLog,0,C:\\logs\\Zelklog.ini)",
                     "GetPrivateProfileIntW(OUTLOG,DebugView,0,C:\\logs\\Zelklog.ini)",
                     "GetPrivateProfileIntW(OUTLOG,LogLevel,0,C:\\logs\\Zelklog.ini)", "ILogConfig.Release"}));
}

TEST_F(StartLoggerFirst, NoModuleFinder) {
    siblings.refused = {"IModuleFinder"};
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}};
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    EXPECT_FALSE(CMordRecv().InitLogMoudle());
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput(), Calls());
    SetLogState(true, true, true);
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    EXPECT_FALSE(CMordRecv().InitLogMoudle());
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_TRUE(LogDebugViewEnabled);
    EXPECT_TRUE(LoggerObject);
    EXPECT_EQ(TakeRawRecords(), Calls());
    EXPECT_EQ(TakeDebugOutput(), Calls());
}

TEST_F(StartLoggerFirst, NextStartFindsALibraryLoadedLater) {
    const auto zelkBase = system.modules.extract("ZelkBase.dll");
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    system.modules["ZelkBase.dll"] = kit::ScriptedSiblings::Factory();
    siblings.foundModule = system.Handle("ZelkBase.dll");
    system.ini = {{"WriteLog", 1}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_TRUE(LogFileEnabled);
}

} // namespace
