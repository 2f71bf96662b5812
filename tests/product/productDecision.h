// The receiver of the shipped library, running, with a sample event and one rule.
#pragma once

#include "kit/host/productFixture.h"
#include "kit/host/sampleDecision.h"

class ProductDecision : public kit::ProductFixture, public kit::SampleDecision {
protected:
    using FakeRecord = kit::FakeRecord;
    using Lines = kit::Lines;
    using Verdict = kit::Verdict;

    void SetUp() override {
        ProductFixture::SetUp();
        receiver = RunningReceiver();
        AddRule("GUID-1", "TYPE-1");
    }

    // The receiver outlives the test.
    void TearDown() override {
        if (receiver != nullptr) {
            receiver->SetReportSink(nullptr);
            receiver->Stop();
        }
    }

    bool SetNumber(uint32_t key, uint32_t value) { return receiver->SetProperty(key, &value, sizeof value); }
    bool SetText(uint32_t key, std::string text) { return receiver->SetProperty(key, text.data(), 1); }
    void Allow(const std::string& mid, const Lines& protocols) {
        ASSERT_TRUE(receiver->SetAllowList(kit::AllowText(mid, protocols).c_str()));
        siblings.TakeRecordTexts();
    }

    Verdict Decide() { return DecideBy(*receiver); }

    // The masked records since the last call.
    Lines TakeRecords() { return kit::TakeRecordsOf(siblings); }

    // A report of the rule "GUID-1".
    static kit::ExpectedReport Report(bool block, bool blockModified = false) {
        return {.guids = {"GUID-1"}, .type = "TYPE-1", .block = block, .blockModified = blockModified};
    }

    IMordRev* receiver = nullptr;
    const std::string localMid = "SCRIPTED-MACHINE"; // from the machine id service
    const std::string query = kit::QueryCall({"GUID-1"}, localMid);
};
