// A repeated start with another ini file.
#include "mordRev/src/mordRev.h"
#include "unit/logging/logFixture.h"

namespace {

using Calls = std::vector<std::string>;

class RepeatedStart : public LogFixture {
protected:
    void SetUp() override {
        LogFixture::SetUp();
        siblings.configTexts = {std::nullopt};
        siblings.logsRecords = true;
    }

    void Start(uint32_t writeLog, uint32_t debugView, uint32_t level = 0) {
        system.ini = {{"WriteLog", writeLog}, {"DebugView", debugView}, {"LogLevel", level}};
        EXPECT_TRUE(receiver.InitLogMoudle());
    }

    // The calls to the logger since the last call of this function.
    Calls TakeLoggerCalls() {
        Calls calls = TakeCalls();
        std::erase_if(calls, [](const std::string& call) { return call.find("ILogWriter") == std::string::npos; });
        return calls;
    }

    const std::string written =
        "ILogWriter.WriteRecord(" + kit::Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready") + ",30)";
    CMordRecv receiver;
};

TEST_F(RepeatedStart, ReleasesTheFormerLoggerAndCreatesANewOne) {
    Start(1, 0, 30);
    EXPECT_EQ(TakeLoggerCalls(),
              (Calls{"create ILogWriter", "ILogWriter.SetLevel(30)", "ILogWriter.Start(MORD_Recv,0)", written}));
    Start(1, 0, 35);
    EXPECT_EQ(TakeLoggerCalls(), (Calls{"ILogWriter.Release", "create ILogWriter", "ILogWriter.SetLevel(35)",
                                        "ILogWriter.Start(MORD_Recv,0)", written}));
}

TEST_F(RepeatedStart, WriteLogOffKeepsTheFlagAndTheLogger) {
    Start(1, 0);
    TakeLoggerCalls();
    Start(0, 0);
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_TRUE(LoggerObject);
    EXPECT_EQ(TakeLoggerCalls(), Calls{written}) << "neither released nor created";
}

TEST_F(RepeatedStart, WriteLogOffAndOnReplacesTheLogger) {
    Start(1, 0);
    Start(0, 0);
    TakeLoggerCalls();
    Start(1, 0, 35);
    EXPECT_EQ(TakeLoggerCalls(), (Calls{"ILogWriter.Release", "create ILogWriter", "ILogWriter.SetLevel(35)",
                                        "ILogWriter.Start(MORD_Recv,0)", written}));
}

TEST_F(RepeatedStart, DebugViewFollowsTheFileEachTime) {
    Start(1, 1);
    EXPECT_TRUE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput().size(), 1U);
    Start(1, 0);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput(), Calls());
    Start(0, 1);
    EXPECT_TRUE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput().size(), 1U);
    Start(0, 0);
    EXPECT_FALSE(LogDebugViewEnabled);
    EXPECT_EQ(TakeDebugOutput(), Calls());
}

TEST_F(RepeatedStart, FailedReplacementRemovesTheLoggerAndKeepsTheFlag) {
    Start(1, 0);
    TakeLoggerCalls();
    siblings.refused = {"ILogWriter"};
    EXPECT_FALSE(receiver.InitLogMoudle());
    EXPECT_EQ(TakeLoggerCalls(), (Calls{"ILogWriter.Release", "refuse ILogWriter"}));
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_FALSE(LoggerObject);
    EXPECT_FALSE(receiver.SetProperty(8, nullptr, 0)); // writes a record, which is lost
    EXPECT_EQ(TakeLoggerCalls(), Calls());
    siblings.refused.clear();
    Start(1, 0);
    EXPECT_EQ(TakeLoggerCalls(),
              (Calls{"create ILogWriter", "ILogWriter.SetLevel(0)", "ILogWriter.Start(MORD_Recv,0)", written}));
}

TEST_F(RepeatedStart, FailureBeforeTheFileIsReadKeepsTheLogger) {
    Start(1, 1);
    TakeLoggerCalls();
    TakeDebugOutput();
    siblings.refused = {"ILogConfig"};
    EXPECT_FALSE(receiver.InitLogMoudle());
    EXPECT_EQ(TakeLoggerCalls(), Calls());
    EXPECT_FALSE(receiver.SetProperty(8, nullptr, 0));
    EXPECT_EQ(TakeLoggerCalls(),
              Calls{"ILogWriter.WriteRecord(" +
                    kit::Error("mordRev.cpp CMordRecv::SetProperty", "param error, set property fail") + ",35)"});
    EXPECT_EQ(TakeDebugOutput().size(), 1U);
}

} // namespace
