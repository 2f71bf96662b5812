// The two flags that each log site checks first.
#include "logging/logMacros.h"
#include "unit/logging/logFixture.h"

using Texts = std::vector<std::string>;

// Outside any namespace: that would be part of the names in the records.
struct FlagsSample {
    static const char* Evaluated() {
        ++evaluations;
        return "value";
    }
    static void Trace() { LOG_TRACE(WIDE("t=") << Evaluated()); }
    static void Error() { LOG_ERROR(WIDE("e=") << Evaluated()); }

    static inline int evaluations = 0;
};

namespace {

class LogFlags : public LogFixture {
protected:
    void SetUp() override {
        LogFixture::SetUp();
        siblings.keepsConversions = true;
        FlagsSample::evaluations = 0;
    }

    // Initialised before main, hence before a fixture or a test writes the log state.
    static inline const bool fileAtLoad = LogFileEnabled;
    static inline const bool debugViewAtLoad = LogDebugViewEnabled;
    static inline const bool loggerAtLoad = static_cast<bool>(LoggerObject);
    static inline const bool enabledAtLoad = LoggingEnabled();

    void LogBoth(bool file, bool debugView, bool logger) {
        SetLogState(file, debugView, logger);
        FlagsSample::Trace();
        FlagsSample::Error();
    }

    const Texts both{kit::Trace("logFlagsTest.cpp FlagsSample::Trace", "t=value"),
                     kit::Error("logFlagsTest.cpp FlagsSample::Error", "e=value")};
};

TEST_F(LogFlags, AreZeroAtLoad) {
    EXPECT_FALSE(fileAtLoad);
    EXPECT_FALSE(debugViewAtLoad);
    EXPECT_FALSE(loggerAtLoad);
    EXPECT_FALSE(enabledAtLoad);
}

TEST_F(LogFlags, BothOffEvaluateNothingAndWriteNothing) {
    for (const bool logger : {false, true}) {
        LogBoth(false, false, logger);
        EXPECT_EQ(FlagsSample::evaluations, 0);
        EXPECT_EQ(siblings.Conversions(), Texts());
        EXPECT_EQ(TakeCalls(), Texts());
        EXPECT_EQ(TakeRawRecords(), Texts());
        EXPECT_EQ(TakeDebugOutput(), Texts());
        EXPECT_EQ(system.standardOutput.Take(), Texts());
    }
}

TEST_F(LogFlags, FileAloneWritesToTheLoggerOnly) {
    LogBoth(true, false, true);
    EXPECT_EQ(siblings.TakeRecordTexts(), both);
    EXPECT_EQ(TakeDebugOutput(), Texts());
    EXPECT_EQ(FlagsSample::evaluations, 2);
}

TEST_F(LogFlags, DebugViewAloneBypassesTheLogger) {
    LogBoth(false, true, true);
    EXPECT_EQ(siblings.TakeRecordTexts(), Texts());
    Texts masked;
    for (const std::string& text : TakeDebugOutput()) {
        masked.push_back(kit::MaskRecord(text));
    }
    EXPECT_EQ(masked, both);
    EXPECT_EQ(FlagsSample::evaluations, 2);
}

TEST_F(LogFlags, BothOnWriteTheSameTextToBoth) {
    LogBoth(true, true, true);
    const Texts texts = TakeDebugOutput();
    EXPECT_EQ(texts.size(), 2U);
    EXPECT_EQ(TakeRawRecords(), texts);
    EXPECT_EQ(FlagsSample::evaluations, 2) << "once for each site";
}

TEST_F(LogFlags, FileWithoutALoggerWritesNothing) {
    LogBoth(true, false, false);
    EXPECT_EQ(TakeRawRecords(), Texts());
    EXPECT_EQ(TakeDebugOutput(), Texts());
    EXPECT_EQ(system.standardOutput.Take(), Texts());
    EXPECT_EQ(FlagsSample::evaluations, 2) << "the site checks only the flags";
}

} // namespace
