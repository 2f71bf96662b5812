// A receiver of its own for each test, with a host, a sink and siblings that the test scripts. For tests that link the
// library's objects; those of the shipped library use productFixture.h.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/host/fakeRecord.h"
#include "kit/host/midSets.h"
#include "kit/host/receiverFields.h"
#include "kit/host/recordingHost.h"
#include "kit/siblings/scriptedSiblings.h"
#include "kit/text/logRecords.h"
#include "logging/logState.h"
#include "mordRev/src/mordRev.h"

namespace kit {

class ReceiverFixture : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        LogFileEnabled = false;
        LogDebugViewEnabled = false;
        LoggerObject.Reset();
        receiver = std::make_unique<CMordRecv>();
    }

    void TearDown() override {
        receiver.reset();
        LogFileEnabled = false;
        LogDebugViewEnabled = false;
        LoggerObject.Reset();
    }

    // Sends records to the siblings' logger, as after a start with "WriteLog" 1, and forgets what led there.
    void StartLogging() {
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
        ASSERT_TRUE(receiver->InitLogMoudle());
        siblings.TakeRecordTexts();
        siblings.calls.Take();
    }

    // A receiver that is initialised with `host`, reports to `sink` and logs; nothing of that is in the logs
    // afterwards.
    void MakeReady() {
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
        ASSERT_TRUE(receiver->Init(&host));
        receiver->SetReportSink(&sink);
        siblings.TakeRecordTexts();
        siblings.calls.Take();
        calls.Take();
    }

    // The same, and started.
    void MakeRunning() {
        MakeReady();
        receiver->Start();
    }

    MordRevFields Fields() { return MordRevFields(*receiver); }

    // The masked records since the last call, in order.
    std::vector<std::string> TakeRecords() { return siblings.TakeRecordTexts(); }

    void SetMode(uint32_t mode) { ASSERT_TRUE(receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode)); }
    void SetExceptionMode(uint32_t mode) {
        ASSERT_TRUE(receiver->SetProperty(PROP_EXCEPTION_MODE, &mode, sizeof mode));
    }

    CallLog calls; // of host, sink and of the records that are given it
    ScriptedSiblings& siblings = ScriptedSiblings::Instance();
    RecordingHost host{calls};
    RecordingSink sink{calls};
    std::unique_ptr<CMordRecv> receiver;
};

} // namespace kit
