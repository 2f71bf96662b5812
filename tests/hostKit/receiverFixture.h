// A receiver of its own for each test, with a host, a sink and siblings that the test scripts. For tests that link the
// library's objects; those of the shipped library use productFixture.h.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hostKit/fakeRecord.h"
#include "hostKit/logRecords.h"
#include "hostKit/recordingHost.h"
#include "hostKit/scriptedSiblings.h"
#include "logging/logState.h"
#include "mordRev/src/mordRev.h"

// The receiver's fields, for tests.
struct MordRevFields {
    explicit MordRevFields(CMordRecv& object) : receiver(object) {}

    bool& Inited() const { return receiver.m_inited; }
    IDotHost*& Host() const { return receiver.m_host; }
    bool& Started() const { return receiver.m_started; }
    AllowList& AllowedMids() const { return receiver.m_allowList; }
    std::timed_mutex& Lock() const { return receiver.m_lock; }
    IReportSink*& ReportSink() const { return receiver.m_reportSink; }
    std::string& Mid() const { return receiver.m_mid; }
    uint32_t& Mode() const { return receiver.m_defenderMode; }
    uint32_t& ExceptionMode() const { return receiver.m_exceptionMode; }
    ActionTable& Actions() const { return receiver.m_actionTable; }
    std::string& SpareText() const { return receiver.m_spareText; }
    int32_t ReferenceCount() const { return receiver.m_refCount; }
    bool HasMidService() const { return static_cast<bool>(receiver.m_midService); }

    CMordRecv& receiver;
};

namespace hostKit {

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

} // namespace hostKit
