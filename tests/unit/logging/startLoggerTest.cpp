// The start of logging, step by step.
#include <algorithm>
#include <optional>

#include "unit/logging/startLoggerFixture.h"

namespace {

TEST_F(StartLoggerSteps, CreatesTheLoggerSetsItsLevelAndStartsIt) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 0}, {"LogLevel", 35}};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    EXPECT_EQ(TakeCalls(), beginning + Calls({"create ILogWriter", "ILogWriter.SetLevel(35)",
                                              "ILogWriter.Start(NAME,0)", "ILogConfig.Release"}));
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_TRUE(LoggerObject);
}

TEST_F(StartLoggerSteps, SetsTheDebugFlagBeforeAndTheFileFlagAfterTheLogger) {
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

TEST_F(StartLoggerSteps, ReadsAllKeysOfEveryFile) {
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

TEST_F(StartLoggerSteps, AnyNonZeroValueIsOn) {
    for (const uint32_t value : {1U, 2U, 77U, 0x80000000U, 0xFFFFFFFFU}) {
        ClearLogState();
        system.ini = {{"WriteLog", value}, {"DebugView", value}};
        EXPECT_TRUE(StartLogger(WIDE("NAME")));
        EXPECT_TRUE(LogFileEnabled) << value;
        EXPECT_TRUE(LogDebugViewEnabled) << value;
    }
}

TEST_F(StartLoggerSteps, PassesTheLevelUnchanged) {
    for (const auto& [value, call] : {std::pair{0U, "ILogWriter.SetLevel(0)"},
                                      {30U, "ILogWriter.SetLevel(30)"},
                                      {0xFFFFFFFFU, "ILogWriter.SetLevel(4294967295)"}}) {
        system.ini = {{"WriteLog", 1}, {"LogLevel", value}};
        EXPECT_TRUE(StartLogger(WIDE("NAME")));
        const Calls calls = TakeCalls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), call), 1) << call;
    }
}

TEST_F(StartLoggerSteps, CreatesNoLoggerWithoutWriteLogOrAModuleName) {
    using Ini = std::map<std::string, uint32_t>;
    const struct {
        const char* name;
        Ini ini;
        const WideChar* module;
        bool debugView;
    } cases[] = {
        {"missing file", {}, WIDE("NAME"), false},
        {"both keys zero", {{"WriteLog", 0}, {"DebugView", 0}, {"LogLevel", 30}}, WIDE("NAME"), false},
        {"debug view alone", {{"DebugView", 1}}, WIDE("NAME"), true},
        {"null module name", {{"WriteLog", 1}, {"DebugView", 1}}, nullptr, true},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        ClearLogState();
        system.ini = each.ini;
        EXPECT_TRUE(StartLogger(each.module));
        EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
        EXPECT_FALSE(LogFileEnabled);
        EXPECT_EQ(LogDebugViewEnabled, each.debugView);
        EXPECT_FALSE(LoggerObject);
    }
}

// The file name is appended to the second answer of the configuration, without a separator.
TEST_F(StartLoggerSteps, FindsItsFileInTheConfiguredDirectory) {
    using Answers = std::vector<std::optional<std::string>>;
    const struct {
        const char* name;
        Answers directories;
        std::string path;
    } cases[] = {
        {"no separator", {"D:\\no\\separator"}, "D:\\no\\separatorZelklog.ini"},
        {"non-ASCII", {"D:\\\xE4\xB8\xAD\xE6\x96\x87\\"}, "D:\\\xE4\xB8\xAD\xE6\x96\x87\\Zelklog.ini"},
        {"two answers", {"first\\", "second\\"}, "second\\Zelklog.ini"},
        {"second answer null", {"first\\", std::nullopt}, "Zelklog.ini"},
        {"empty", {""}, "Zelklog.ini"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        siblings.configTexts = each.directories;
        EXPECT_TRUE(StartLogger(WIDE("NAME")));
        EXPECT_EQ(TakeCalls(), found + configured + Reads(each.path) + Calls{"ILogConfig.Release"});
    }
}

TEST_F(StartLoggerSteps, ReadsANullDirectoryOnce) {
    siblings.configTexts = {std::nullopt};
    EXPECT_TRUE(StartLogger(WIDE("NAME")));
    const Calls configuredOnce{"create ILogConfig", "ILogConfig.GetConfigText(2097154,0)"};
    EXPECT_EQ(TakeCalls(), found + configuredOnce + Reads("Zelklog.ini") + Calls{"ILogConfig.Release"});
}

} // namespace
