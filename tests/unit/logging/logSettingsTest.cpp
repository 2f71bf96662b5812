// The settings of Zelklog.ini on the real system.
#include "kit/host/receiverFixture.h"
#include "kit/system/debugOutput.h"

namespace {

using Texts = std::vector<std::string>;

class LogSettings : public kit::ReceiverFixture {
protected:
    // Starts logging with this file and returns the masked debug output.
    std::string Start(const std::string& ini) {
        siblings.WriteIni(ini);
        return Start();
    }
    std::string Start() {
        const kit::DebugOutput output;
        EXPECT_TRUE(receiver->InitLogMoudle());
        return kit::MaskRecord(output.Text());
    }

    // The last call of this function of the logger.
    std::string LoggerCall(const std::string& beginning) {
        std::string found;
        for (const std::string& call : siblings.calls.All()) {
            if (call.starts_with("ILogWriter." + beginning)) {
                found = call;
            }
        }
        return found;
    }

    void ExpectOff() {
        EXPECT_FALSE(LogFileEnabled);
        EXPECT_FALSE(LogDebugViewEnabled);
        EXPECT_FALSE(LoggerObject);
        EXPECT_EQ(TakeRecords(), Texts());
        const Texts siblingCalls = siblings.calls.Take();
        EXPECT_EQ(std::count(siblingCalls.begin(), siblingCalls.end(), "create ILogWriter"), 0);
        EXPECT_EQ(std::count(siblingCalls.begin(), siblingCalls.end(), "create ITextConverter"), 0)
            << "nothing is converted";
    }

    const std::string ready = kit::Trace("mordRev.cpp CMordRecv::InitLogMoudle", "logger is ready");
};

TEST_F(LogSettings, WriteLogAloneSendsRecordsToTheLoggerOnly) {
    EXPECT_EQ(Start("[OUTLOG]\r\nWriteLog=1\r\nDebugView=0\r\n"), "");
    EXPECT_EQ(TakeRecords(), Texts{ready});
}

TEST_F(LogSettings, DebugViewAloneSendsRecordsToTheDebugOutputOnly) {
    EXPECT_EQ(Start("[OUTLOG]\r\nWriteLog=0\r\nDebugView=1\r\n"), ready);
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_FALSE(LoggerObject);
}

TEST_F(LogSettings, BothSendEachRecordToBoth) {
    EXPECT_EQ(Start("[OUTLOG]\r\nWriteLog=1\r\nDebugView=1\r\n"), ready);
    EXPECT_EQ(TakeRecords(), Texts{ready});
}

TEST_F(LogSettings, MissingFileLogsNothing) {
    EXPECT_EQ(Start(), "");
    ExpectOff();
}

TEST_F(LogSettings, ZeroMissingAndTextValuesLogNothing) {
    for (const char* const ini :
         {"[OUTLOG]\r\nWriteLog=0\r\nDebugView=0\r\nLogLevel=30\r\n", "[OUTLOG]\r\nSomething=1\r\n",
          "[OTHER]\r\nWriteLog=1\r\nDebugView=1\r\n", "[OUTLOG]\r\nWriteLog=yes\r\nDebugView=true\r\n"}) {
        SCOPED_TRACE(ini);
        EXPECT_EQ(Start(ini), "");
        ExpectOff();
    }
}

TEST_F(LogSettings, WriteLogOfTwoIsOn) {
    EXPECT_EQ(Start("[OUTLOG]\r\nWriteLog=2\r\n"), "");
    EXPECT_EQ(TakeRecords(), Texts{ready});
}

TEST_F(LogSettings, NegativeValueIsOn) {
    EXPECT_EQ(Start("[OUTLOG]\r\nWriteLog=0\r\nDebugView=-1\r\n"), ready);
}

TEST_F(LogSettings, LevelIsReadAndDefaultsToZero) {
    Start("[OUTLOG]\r\nWriteLog=1\r\nLogLevel=35\r\n");
    EXPECT_EQ(LoggerCall("SetLevel"), "ILogWriter.SetLevel(35)");
    Start("[OUTLOG]\r\nWriteLog=1\r\n");
    EXPECT_EQ(LoggerCall("SetLevel"), "ILogWriter.SetLevel(0)");
    EXPECT_EQ(LoggerCall("Start"), "ILogWriter.Start(MORD_Recv,0)");
}

TEST_F(LogSettings, NonAsciiRecordReachesBothSinks) {
    Start("[OUTLOG]\r\nWriteLog=1\r\nDebugView=1\r\n");
    TakeRecords();
    Fields().Mid() = "gr\xC3\xBC\xC3\x9F";
    const kit::DebugOutput output;
    EXPECT_TRUE(receiver->Init(&host));
    const std::string expected = kit::Trace("mordRev.cpp CMordRecv::Init", "init get mid=gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(TakeRecords(), (Texts{ready, expected}));
    const std::string text = output.Text();
    const size_t second = text.find("\r\n") + 2;
    EXPECT_EQ(kit::MaskRecord(text.substr(0, second)), ready);
    EXPECT_EQ(kit::MaskRecord(text.substr(second)), expected);
}

} // namespace
