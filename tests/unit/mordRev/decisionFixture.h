// A running receiver with a sample event and rules that a test adds.
#pragma once

#include "kit/host/receiverFixture.h"
#include "kit/host/sampleDecision.h"

class DecisionFixture : public kit::ReceiverFixture, public kit::SampleDecision {
protected:
    using FakeRecord = kit::FakeRecord;
    using Lines = kit::Lines;
    using Verdict = kit::Verdict;

    void SetUp() override {
        ReceiverFixture::SetUp();
        MakeRunning();
        Fields().Mid() = "LOCAL-MID";
    }

    // From here on `calls` also lists the reads of the event and of the rules that are added.
    void WatchReads() { SampleDecision::WatchReads(calls); }

    Verdict Decide() { return DecideBy(*receiver); }

    // Sets the allow list and discards the records of this.
    void Allow(const std::string& mid, const Lines& protocols) {
        ASSERT_TRUE(receiver->SetAllowList(kit::AllowText(mid, protocols).c_str()));
        TakeRecords();
    }

    // Sets the action document and discards the records of this.
    void SetActions(const std::string& document) {
        ASSERT_TRUE(receiver->ParseActionJson(document.c_str()));
        TakeRecords();
    }

    // The masked records since the last call, in order.
    Lines TakeRecords() { return kit::TakeRecordsOf(siblings); }

    // The calls of host and sink since the last call, in order; of records too while reads are watched.
    Lines TakeCalls() { return calls.Take(); }
};
