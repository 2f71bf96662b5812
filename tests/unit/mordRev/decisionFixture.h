// A running receiver with a sample event and rules that a test adds.
#pragma once

#include <deque>
#include <ostream>

#include "kit/host/decisionSamples.h"
#include "kit/host/receiverFixture.h"

// What a call of HandleEvent gave.
struct Verdict {
    bool result;
    uint32_t reply;

    friend bool operator==(const Verdict&, const Verdict&) = default;
    friend void PrintTo(const Verdict& verdict, std::ostream* out) {
        *out << (verdict.result ? "true" : "false") << " with reply " << verdict.reply;
    }
};

class DecisionFixture : public kit::ReceiverFixture {
protected:
    using FakeRecord = kit::FakeRecord;
    using Lines = kit::Lines;

    // What stands in the reply word before a call.
    static constexpr uint32_t unwritten = 0xDEADBEEF;

    void SetUp() override {
        ReceiverFixture::SetUp();
        MakeRunning();
        Fields().Mid() = "LOCAL-MID";
    }

    // From here on the reads of records that are added stand in `calls` as well: those of "event", "rule1" and so on.
    void WatchReads() {
        reads = &calls;
        event = kit::SampleEvent(reads);
    }

    FakeRecord& AddRule(const std::string& guid, const std::string& type) {
        FakeRecord& rule = rules.emplace_back("rule" + std::to_string(rules.size() + 1), reads);
        rulePointers.push_back(&rule);
        return rule.String("guid", guid).String("type", type);
    }

    Verdict Decide() {
        Verdict verdict{false, unwritten};
        verdict.result = receiver->HandleEvent(&event, rulePointers.data(), static_cast<uint32_t>(rulePointers.size()),
                                               &verdict.reply);
        return verdict;
    }

    // Sets the allow list, and forgets the records of that.
    void Allow(const std::string& mid, const Lines& protocols) {
        ASSERT_TRUE(receiver->SetAllowList(kit::AllowText(mid, protocols).c_str()));
        TakeRecords();
    }

    // Sets the action document, and forgets the records of that.
    void SetActions(const std::string& document) {
        ASSERT_TRUE(receiver->ParseActionJson(document.c_str()));
        TakeRecords();
    }

    // The masked records since the last call, in order. The level that came with each must be that of its text.
    Lines TakeRecords() {
        for (const auto& record : siblings.Records()) {
            const int32_t level = record.text.starts_with("TIME [ERROR]") ? 35 : 30;
            EXPECT_EQ(record.level, level) << record.text;
        }
        return ReceiverFixture::TakeRecords();
    }

    // The calls of host and sink since the last call, in order; of records too when reads are watched.
    Lines TakeCalls() { return calls.Take(); }

    kit::CallLog* reads = nullptr;
    FakeRecord event = kit::SampleEvent();
    std::deque<FakeRecord> rules;
    std::vector<IEventRecord*> rulePointers;
};
