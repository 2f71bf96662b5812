// The start of logging, step by step, over a scripted system.
#include "logging/startLogger.h"

#include "logging/logFixture.h"
#include "mordRev/src/mordRev.h"

namespace {

using Calls = std::vector<std::string>;

Calls operator+(Calls left, const Calls& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

class StartLoggerSteps : public LogFixture {
protected:
    // All services of the holder are bound, and nothing of that is in the log.
    void SetUp() override {
        LogFixture::SetUp();
        siblings.configTexts = {"C:\\logs\\"};
        StartLogger(nullptr);
        LogDebugViewEnabled = false;
        TakeCalls();
    }

    static Calls Reads(const std::string& path) {
        return {"GetPrivateProfileIntW(OUTLOG,WriteLog,0," + path + ")",
                "GetPrivateProfileIntW(OUTLOG,DebugView,0," + path + ")",
                "GetPrivateProfileIntW(OUTLOG,LogLevel,0," + path + ")"};
    }

    const Calls found{"IModuleFinder.FindModule(module.base)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"};
    const Calls configured{"create ILogConfig", "ILogConfig.GetConfigText(2097154,0)",
                           "ILogConfig.GetConfigText(2097154,0)"}; // 0x200002
    const Calls beginning = found + configured + Reads("C:\\logs\\Zelklog.ini");
};

TEST_F(StartLoggerSteps, MissingFileSettlesLoggingAsOff) {
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_FALSE(LoggerObject);
}

TEST_F(StartLoggerSteps, LoggerIsMadeGetsItsLevelAndIsThenStarted) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 0}, {"LogLevel", 35}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), beginning + Calls({"create ILogWriter", "ILogWriter.SetLevel(35)",
                                              "ILogWriter.Start(NAME,0)", "ILogConfig.Release"}));
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_TRUE(LoggerObject);
}

TEST_F(StartLoggerSteps, DebugFlagIsSetBeforeTheLoggerIsUsedAndTheFileFlagBehindItsStart) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}};
    Calls seen;
    siblings.calls.onAdd = [&seen](const std::string& call) {
        seen.push_back(call + (LogFileEnabled ? " file" : "") + (LogDebugViewEnabled ? " debug" : ""));
    };
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    siblings.calls.onAdd = nullptr;
    EXPECT_EQ(seen, beginning + Calls({"create ILogWriter debug", "ILogWriter.SetLevel(0) debug",
                                       "ILogWriter.Start(NAME,0) debug", "ILogConfig.Release file debug"}));
}

TEST_F(StartLoggerSteps, AllThreeKeysAreReadWhateverTheOthersSay) {
    const std::vector<std::map<std::string, uint32_t>> files{
        {},
        {{"WriteLog", 0}, {"DebugView", 0}},
        {{"DebugView", 1}},
        {{"WriteLog", 1}, {"LogLevel", 1}},
    };
    for (const auto& file : files) {
        system.ini = file;
        StartLogger(WIDE("NAME"));
        const Calls calls = TakeCalls();
        EXPECT_TRUE(std::equal(beginning.begin(), beginning.end(), calls.begin()));
    }
}

TEST_F(StartLoggerSteps, BothKeysZeroMakeNoLogger) {
    system.ini = {{"WriteLog", 0}, {"DebugView", 0}, {"LogLevel", 30}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_FALSE(LoggerObject);
}

TEST_F(StartLoggerSteps, DebugViewAloneMakesNoLogger) {
    system.ini = {{"DebugView", 1}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_TRUE(LogDebugViewEnabled);
}

TEST_F(StartLoggerSteps, AnyValueButZeroIsOn) {
    for (const uint32_t value : {1U, 2U, 77U, 0x80000000U, 0xFFFFFFFFU}) {
        ClearLogState();
        system.ini = {{"WriteLog", value}, {"DebugView", value}};
        EXPECT_TRUE(StartLogger(WIDE("NAME")));
        EXPECT_TRUE(LogFileEnabled) << value;
        EXPECT_TRUE(LogDebugViewEnabled) << value;
    }
}

TEST_F(StartLoggerSteps, LevelGoesToTheLoggerAsItIs) {
    for (const auto& [value, call] : {std::pair{0U, "ILogWriter.SetLevel(0)"},
                                      {30U, "ILogWriter.SetLevel(30)"},
                                      {0xFFFFFFFFU, "ILogWriter.SetLevel(4294967295)"}}) {
        system.ini = {{"WriteLog", 1}, {"LogLevel", value}};
        EXPECT_TRUE(StartLogger(WIDE("NAME")));
        const Calls calls = TakeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 1) << call;
    }
}

TEST_F(StartLoggerSteps, NullModuleNameMakesNoLoggerButSettlesTheDebugOutput) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}};
    EXPECT_TRUE(StartLogger(nullptr));
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_TRUE(LogDebugViewEnabled);
    EXPECT_FALSE(LoggerObject);
}

// Where the file is looked for.

TEST_F(StartLoggerSteps, FileNameIsAppendedToTheDirectoryWithoutASeparator) {
    siblings.configTexts = {"D:\\no\\separator"};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), found + configured + Reads("D:\\no\\separatorZelklog.ini") + Calls{"ILogConfig.Release"});
}

TEST_F(StartLoggerSteps, NonAsciiDirectoryIsKept) {
    siblings.configTexts = {"D:\\\xE4\xB8\xAD\xE6\x96\x87\\"};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(),
              found + configured + Reads("D:\\\xE4\xB8\xAD\xE6\x96\x87\\Zelklog.ini") + Calls{"ILogConfig.Release"});
}

TEST_F(StartLoggerSteps, NullDirectoryIsAskedForOnceAndLeavesTheBareFileName) {
    siblings.configTexts = {std::nullopt};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    const Calls configuredOnce{"create ILogConfig", "ILogConfig.GetConfigText(2097154,0)"};
    EXPECT_EQ(TakeCalls(), found + configuredOnce + Reads("Zelklog.ini") + Calls{"ILogConfig.Release"});
}

TEST_F(StartLoggerSteps, ValueIsThatOfTheSecondAnswer) {
    siblings.configTexts = {"first\\", "second\\"};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), found + configured + Reads("second\\Zelklog.ini") + Calls{"ILogConfig.Release"});
}

TEST_F(StartLoggerSteps, SecondAnswerThatIsNullCountsAsTheEmptyText) {
    siblings.configTexts = {"first\\", std::nullopt};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), found + configured + Reads("Zelklog.ini") + Calls{"ILogConfig.Release"});
}

TEST_F(StartLoggerSteps, EmptyDirectoryLeavesTheBareFileName) {
    siblings.configTexts = {""};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), found + configured + Reads("Zelklog.ini") + Calls{"ILogConfig.Release"});
}

// What can be missing. The flags stay as they were, whatever they were; nothing is logged.

class StartLoggerFailure : public StartLoggerSteps, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        StartLoggerSteps::SetUp();
        SetLogState(GetParam(), GetParam(), GetParam());
        system.ini = {{"WriteLog", 1}, {"DebugView", GetParam() ? 0U : 1U}};
    }

    // False from the routine and from the member over it; no record anywhere.
    void ExpectFailure() {
        EXPECT_FALSE(StartLogger(WIDE("NAME")));
        EXPECT_FALSE(CMordRecv().InitLogMoudle());
        EXPECT_EQ(TakeRawRecords(), Calls());
        EXPECT_EQ(TakeDebugOutput(), Calls());
    }
    void ExpectFlagsAsTheyWere() {
        EXPECT_EQ(LogFileEnabled, GetParam());
        EXPECT_EQ(LogDebugViewEnabled, GetParam());
        EXPECT_EQ(static_cast<bool>(LoggerObject), GetParam());
    }
};

TEST_P(StartLoggerFailure, NoModuleGivesFalseAndLeavesTheFlags) {
    siblings.foundModule = nullptr;
    ExpectFailure();
    ExpectFlagsAsTheyWere();
    EXPECT_EQ(TakeCalls(), (Calls{"IModuleFinder.FindModule(module.base)", "IModuleFinder.FindModule(module.base)"}));
}

TEST_P(StartLoggerFailure, NoFactoryGivesFalseAndLeavesTheFlags) {
    system.modules["empty.dll"] = nullptr;
    siblings.foundModule = system.Handle("empty.dll");
    ExpectFailure();
    ExpectFlagsAsTheyWere();
    EXPECT_EQ(TakeCalls(),
              (Calls{"IModuleFinder.FindModule(module.base)", "GetProcAddress(empty.dll,CreateZelkObject)",
                     "IModuleFinder.FindModule(module.base)", "GetProcAddress(empty.dll,CreateZelkObject)"}));
}

TEST_P(StartLoggerFailure, NoLogConfigGivesFalseAndLeavesTheFlags) {
    siblings.refused = {"ILogConfig"};
    ExpectFailure();
    ExpectFlagsAsTheyWere();
    EXPECT_EQ(TakeCalls(), found + Calls{"refuse ILogConfig"} + found + Calls{"refuse ILogConfig"});
}

TEST_P(StartLoggerFailure, NoLoggerGivesFalseWithTheDebugFlagAsTheFileSaysAndTheFileFlagAsItWas) {
    siblings.refused = {"ILogWriter"};
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    const Calls released = GetParam() ? Calls{"ILogWriter.Release"} : Calls();
    EXPECT_EQ(TakeCalls(), beginning + released + Calls({"refuse ILogWriter", "ILogConfig.Release"}));
    EXPECT_EQ(LogDebugViewEnabled, !GetParam());
    EXPECT_EQ(LogFileEnabled, GetParam());
    EXPECT_FALSE(LoggerObject);
    EXPECT_FALSE(CMordRecv().InitLogMoudle());
    EXPECT_EQ(TakeRawRecords(), Calls());
    EXPECT_EQ(TakeDebugOutput(), Calls()) << "the member logs nothing when the start failed, though a flag is set";
}

INSTANTIATE_TEST_SUITE_P(WithTheFlags, StartLoggerFailure, testing::Values(false, true),
                         [](const auto& suite) { return suite.param ? "Set" : "Clear"; });

// A process of its own, in which no service was bound before.
class StartLoggerFirst : public LogFixture {};

TEST_F(StartLoggerFirst, BindsTheServicesBeforeAllElse) {
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

TEST_F(StartLoggerFirst, NoModuleFinderGivesFalseAndLeavesTheFlags) {
    siblings.refused = {"IModuleFinder"};
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}};
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    EXPECT_FALSE(CMordRecv().InitLogMoudle());
    EXPECT_FALSE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput(), Calls());
    SetLogState(true, true, true);
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_TRUE(LogDebugViewEnabled);
    EXPECT_TRUE(LoggerObject);
}

TEST_F(StartLoggerFirst, LibraryThatIsLoadedLateServesTheNextStart) {
    const auto zelkBase = system.modules.extract("ZelkBase.dll");
    EXPECT_FALSE(StartLogger(WIDE("NAME")));
    system.modules["ZelkBase.dll"] = hostKit::ScriptedSiblings::Factory();
    siblings.foundModule = system.Handle("ZelkBase.dll");
    system.ini = {{"WriteLog", 1}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_TRUE(LogFileEnabled);
}

// The member over it: the module name, and the first record.
class InitLogMoudle : public StartLoggerSteps {
protected:
    const std::string ready = hostKit::Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready");
    CMordRecv receiver;
};

TEST_F(InitLogMoudle, StartsTheLoggerUnderTheComponentsNameAndSaysSo) {
    system.ini = {{"WriteLog", 1}, {"LogLevel", 30}};
    siblings.logsRecords = true;
    EXPECT_TRUE(receiver.InitLogMoudle());
    EXPECT_EQ(TakeCalls(),
              beginning + Calls({"create ILogWriter", "ILogWriter.SetLevel(30)", "ILogWriter.Start(MORD_Recv,0)",
                                 "ILogConfig.Release", "GetModuleHandleW(ZelkBase.dll)",
                                 "GetProcAddress(ZelkBase.dll,CreateZelkObject)", "create ITextConverter",
                                 "ILogWriter.WriteRecord(" + ready + ",30)"}));
    EXPECT_EQ(TakeDebugOutput(), Calls());
}

TEST_F(InitLogMoudle, SaysSoInTheDebugOutputWhenThatAloneIsOn) {
    system.ini = {{"DebugView", 1}};
    EXPECT_TRUE(receiver.InitLogMoudle());
    const Calls output = TakeDebugOutput();
    ASSERT_EQ(output.size(), 1U);
    EXPECT_EQ(hostKit::MaskRecord(output[0]), ready);
    EXPECT_EQ(TakeRawRecords(), Calls());
}

TEST_F(InitLogMoudle, SaysNothingWhenBothAreOff) {
    EXPECT_TRUE(receiver.InitLogMoudle());
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
}

TEST_F(InitLogMoudle, LevelOfTheFileFiltersNothingHere) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}, {"LogLevel", 1000}};
    EXPECT_TRUE(receiver.InitLogMoudle());
    EXPECT_EQ(siblings.TakeRecordTexts(), Calls{ready});
    EXPECT_EQ(TakeDebugOutput().size(), 1U);
}

} // namespace
