// A sample event with rules that a test adds, and the call that decides it. For fixtures that have a receiver.
#pragma once

#include <deque>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "frame/interfaces.h"
#include "kit/host/decisionSamples.h"
#include "kit/siblings/scriptedSiblings.h"

namespace kit {

// The result of HandleEvent and the reply that it wrote.
struct Verdict {
    bool result;
    uint32_t reply;

    friend bool operator==(const Verdict&, const Verdict&) = default;
    friend void PrintTo(const Verdict& verdict, std::ostream* out) {
        *out << (verdict.result ? "true" : "false") << " with reply " << verdict.reply;
    }
};

class SampleDecision {
public:
    // The reply before a call.
    static constexpr uint32_t unwritten = 0xDEADBEEF;

    // From here on `log` also lists the reads of the event, which is reset, and of the rules that are added: those of
    // "event", "rule1" and so on.
    void WatchReads(CallLog& log) {
        m_reads = &log;
        event = SampleEvent(m_reads);
    }

    FakeRecord& AddRule(const std::string& guid, const std::string& type) {
        FakeRecord& rule = rules.emplace_back("rule" + std::to_string(rules.size() + 1), m_reads);
        rulePointers.push_back(&rule);
        return rule.String("guid", guid).String("type", type);
    }

    Verdict DecideBy(IMordRev& receiver) {
        Verdict verdict{false, unwritten};
        verdict.result = receiver.HandleEvent(&event, rulePointers.data(), static_cast<uint32_t>(rulePointers.size()),
                                              &verdict.reply);
        return verdict;
    }

    FakeRecord event = SampleEvent();
    std::deque<FakeRecord> rules; // a deque does not move its elements
    std::vector<IEventRecord*> rulePointers;

private:
    CallLog* m_reads = nullptr;
};

// The masked records that `siblings` received since the last call. Expects the level of each to be that of its text.
inline Lines TakeRecordsOf(ScriptedSiblings& siblings) {
    for (const auto& record : siblings.Records()) {
        const int32_t level = record.text.starts_with("TIME [ERROR]") ? 35 : 30;
        EXPECT_EQ(record.level, level) << record.text;
    }
    return siblings.TakeRecordTexts();
}

} // namespace kit
