// InitLogMoudle: the module name and the first record.
#include "mordRev/src/mordRev.h"
#include "unit/logging/startLoggerFixture.h"

namespace {

class InitLogMoudle : public StartLoggerSteps {
protected:
    const std::string ready = kit::Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready");
    CMordRecv receiver;
};

TEST_F(InitLogMoudle, StartsTheLoggerAndWritesTheFirstRecord) {
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

TEST_F(InitLogMoudle, WritesTheFirstRecordToTheDebugOutputOnly) {
    system.ini = {{"DebugView", 1}};
    EXPECT_TRUE(receiver.InitLogMoudle());
    const Calls output = TakeDebugOutput();
    ASSERT_EQ(output.size(), 1U);
    EXPECT_EQ(kit::MaskRecord(output[0]), ready);
    EXPECT_EQ(TakeRawRecords(), Calls());
}

TEST_F(InitLogMoudle, WritesNothingWithBothOff) {
    EXPECT_TRUE(receiver.InitLogMoudle());
    EXPECT_EQ(TakeCalls(), beginning + Calls{"ILogConfig.Release"});
}

TEST_F(InitLogMoudle, LogLevelDoesNotFilterRecords) {
    system.ini = {{"WriteLog", 1}, {"DebugView", 1}, {"LogLevel", 1000}};
    EXPECT_TRUE(receiver.InitLogMoudle());
    EXPECT_EQ(siblings.TakeRecordTexts(), Calls{ready});
    EXPECT_EQ(TakeDebugOutput().size(), 1U);
}

} // namespace
