// Destroying a stream with an unfinished record writes it to the standard wide output and to the debug output,
// independently of the flags.
#include <stdexcept>

#include "logging/logMacros.h"
#include "unit/logging/logFixture.h"

using Texts = std::vector<std::string>;

// Outside any namespace: that would be part of the names in the records.
struct AbandonedSample {
    static std::string Throwing() { throw std::runtime_error("during the message"); }
    static void Log() { LOG_TRACE(WIDE("half ") << Throwing()); }
    static void LogTwice() {
        try {
            Log();
        } catch (const std::runtime_error&) {
            LOG_ERROR(WIDE("whole"));
        }
    }
};

namespace {

class AbandonedRecord : public LogFixture {};

TEST_F(AbandonedRecord, IsWrittenToBothOutputsForAllFlags) {
    for (const bool file : {false, true}) {
        for (const bool debugView : {false, true}) {
            for (const bool logger : {false, true}) {
                SetLogState(file, debugView, logger);
                {
                    LogStream stream(LOG_LEVEL_ERROR);
                    stream << WIDE("half ") << int32_t{1};
                    EXPECT_EQ(TakeCalls(), Texts());
                }
                EXPECT_EQ(TakeCalls(), (Texts{"WriteStandardOutput(half 1)", "OutputDebugStringW(half 1)"}));
                EXPECT_EQ(TakeRawRecords(), Texts()) << "the logger receives complete records only";
            }
        }
    }
}

TEST_F(AbandonedRecord, EndedRecordsAreNotWrittenAgain) {
    SetLogState(false, false, false);
    {
        LogStream stream(LOG_LEVEL_TRACE);
        stream << WIDE("whole");
        stream.EndRecord();
        stream << WIDE("whole too");
        stream.EndRecord();
    }
    { const LogStream unused(LOG_LEVEL_TRACE); }
    EXPECT_EQ(TakeCalls(), Texts());
}

TEST_F(AbandonedRecord, ExcludesEarlierRecords) {
    SetLogState(true, false, true);
    {
        LogStream stream(LOG_LEVEL_TRACE);
        stream << WIDE("whole");
        stream.EndRecord();
        stream << WIDE("half");
    }
    EXPECT_EQ(TakeRawRecords(), Texts{"whole\r\n"});
    EXPECT_EQ(system.standardOutput.Take(), Texts{"half"});
    EXPECT_EQ(TakeDebugOutput(), Texts{"half"});
}

TEST_F(AbandonedRecord, EndsAtAFailedInsertion) {
    { LogStream(LOG_LEVEL_TRACE) << WIDE("before ") << static_cast<const WideChar*>(nullptr) << WIDE("after"); }
    EXPECT_EQ(system.standardOutput.Take(), Texts{"before "});
    EXPECT_EQ(TakeDebugOutput(), Texts{"before "});
}

TEST_F(AbandonedRecord, EndsAtAnException) {
    SetLogState(true, false, true);
    EXPECT_THROW(AbandonedSample::Log(), std::runtime_error);
    const std::string text = "TIME [TRACE][abandonedRecordTest.cpp LINE][AbandonedSample::Log] [THREAD] half ";
    EXPECT_EQ(TakeCalls(), (Texts{"GetModuleHandleW(ZelkBase.dll)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)",
                                  "create ITextConverter", "WriteStandardOutput(" + text + ")",
                                  "OutputDebugStringW(" + text + ")"}));
    EXPECT_EQ(TakeRawRecords(), Texts());
}

TEST_F(AbandonedRecord, NextRecordIsComplete) {
    SetLogState(true, false, true);
    AbandonedSample::LogTwice();
    EXPECT_EQ(siblings.TakeRecordTexts(),
              Texts{kit::Error("abandonedRecordTest.cpp AbandonedSample::LogTwice", "whole")});
}

} // namespace
