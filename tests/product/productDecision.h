// The receiver of the shipped library, running, with a sample event and one rule.
#pragma once

#include <deque>
#include <ostream>

#include "kit/host/decisionSamples.h"
#include "kit/host/productFixture.h"

// What a call of HandleEvent gave.
struct Verdict {
    bool result;
    uint32_t reply;

    friend bool operator==(const Verdict&, const Verdict&) = default;
    friend void PrintTo(const Verdict& verdict, std::ostream* out) {
        *out << (verdict.result ? "true" : "false") << " with reply " << verdict.reply;
    }
};

class ProductDecision : public kit::ProductFixture {
protected:
    using FakeRecord = kit::FakeRecord;
    using Lines = kit::Lines;

    static constexpr uint32_t unwritten = 0xDEADBEEF;

    void SetUp() override {
        ProductFixture::SetUp();
        receiver = RunningReceiver();
        AddRule("GUID-1", "TYPE-1");
    }

    // The process goes on after the test, and so does the receiver.
    void TearDown() override {
        if (receiver != nullptr) {
            receiver->SetReportSink(nullptr);
            receiver->Stop();
        }
    }

    void AddRule(const std::string& guid, const std::string& type) {
        rulePointers.push_back(&rules.emplace_back(kit::MakeRule(guid, type)));
    }

    bool SetNumber(uint32_t key, uint32_t value) { return receiver->SetProperty(key, &value, sizeof value); }
    bool SetText(uint32_t key, std::string text) { return receiver->SetProperty(key, text.data(), 1); }
    void Allow(const std::string& mid, const Lines& protocols) {
        ASSERT_TRUE(receiver->SetAllowList(kit::AllowText(mid, protocols).c_str()));
        siblings.TakeRecordTexts();
    }

    Verdict Decide() {
        Verdict verdict{false, unwritten};
        verdict.result = receiver->HandleEvent(&event, rulePointers.data(), static_cast<uint32_t>(rulePointers.size()),
                                               &verdict.reply);
        return verdict;
    }

    // The masked records since the last call. The level that came with each must be that of its text.
    Lines TakeRecords() {
        for (const auto& record : siblings.Records()) {
            const int32_t level = record.text.starts_with("TIME [ERROR]") ? 35 : 30;
            EXPECT_EQ(record.level, level) << record.text;
        }
        return siblings.TakeRecordTexts();
    }

    // A report of the one rule "GUID-1".
    static kit::ExpectedReport Report(bool block, bool blockModified = false) {
        return {.guids = {"GUID-1"}, .type = "TYPE-1", .block = block, .blockModified = blockModified};
    }

    IMordRev* receiver = nullptr;
    FakeRecord event = kit::SampleEvent();
    std::deque<FakeRecord> rules;
    std::vector<IEventRecord*> rulePointers;
    const std::string localMid = "SCRIPTED-MACHINE"; // as the machine id service gives it
    const std::string query = kit::QueryCall({"GUID-1"}, localMid);
};
