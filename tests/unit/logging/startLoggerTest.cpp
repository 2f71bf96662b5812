// The start of logging, step by step.
#include <algorithm>

#include "unit/logging/startLoggerFixture.h"

namespace {

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

} // namespace
