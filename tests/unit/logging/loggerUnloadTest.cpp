// Unloading the shipped library releases the logger and nothing else.
#include "kit/heap/leakCheck.h"
#include "kit/host/productFixture.h"

namespace {

using Calls = std::vector<std::string>;

class Unloading : public kit::ProductFixture {
protected:
    void TearDown() override { EXPECT_EQ(calls.Take(), Calls()) << "host and sink are not called"; }

    // Takes a receiver through all its states. The leak check does not find the memory that the library keeps until the
    // process ends once the library is unloaded, so it is paused.
    void UseReceiver(const std::string& ini) {
        const PauseLeakCheck pause;
        siblings.WriteIni(ini);
        IMordRev* const receiver = Receiver();
        ASSERT_TRUE(receiver->Init(&host));
        receiver->SetReportSink(&sink);
        receiver->Start();
        ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})"));
        receiver->Stop();
        receiver->Uninit();
        siblings.calls.Take();
        siblings.TakeRecordTexts();
    }
};

TEST_F(Unloading, ReleasesTheLoggerAndNothingElse) {
    UseReceiver("[OUTLOG]\r\nWriteLog=1\r\nDebugView=0\r\n");
    product->Close();
    EXPECT_EQ(siblings.calls.Take(), Calls{"ILogWriter.Release"});
    EXPECT_EQ(siblings.ConverterReferences(), 0) << "the converter is not released";
    EXPECT_EQ(siblings.TakeRecordTexts(), Calls());
}

TEST_F(Unloading, ReleasesNothingWithoutALogger) {
    UseReceiver("[OUTLOG]\r\nWriteLog=0\r\n");
    product->Close();
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

TEST_F(Unloading, OfALibraryThatWasNeverUsedCallsNothing) {
    product->Close();
    EXPECT_EQ(siblings.calls.Take(), Calls());
}

} // namespace
