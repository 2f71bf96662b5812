// Everything that an event asks of records, host and sink, in its order, on each way.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class CallOrder : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        WatchReads();
        AddRule("GUID-1", "TYPE-1");
        AddRule("GUID-2", "TYPE-2");
    }

    static Lines ReadOf(const std::string& record, const std::string& key) {
        return {record + ".GetString.size(" + key + ")", record + ".GetString(" + key + ")"};
    }

    const Lines entry = Joined({{"event.GetInt32(flags)"}, ReadOf("rule1", "type")});
    const Lines query =
        Joined({ReadOf("rule1", "guid"), ReadOf("rule2", "guid"), {QueryCall({"GUID-1", "GUID-2"}, "LOCAL-MID")}});

    // The rules of the report as `rules`, of which the first gives the type.
    Lines ReportReads(const Lines& ruleNames) const {
        Lines before{"event.GetInt32(flags)", "event.GetInt32(pid)"};
        for (const std::string& rule : ruleNames) {
            before = Joined({before, ReadOf(rule, "guid")});
        }
        return Joined({before,
                       ReadOf(ruleNames.front(), "type"),
                       ReadOf("event", "remote_addr_ip"),
                       {"event.GetInt32(remote_addr_port)"},
                       ReadOf("event", "local_addr_ip"),
                       {"event.GetInt32(local_addr_port)", "event.GetInt64(net_drv)"}});
    }

    Lines ReportOfAll(bool block) const {
        return Joined({ReportReads({"rule1", "rule2"}),
                       {ReportCall({.guids = {"GUID-1", "GUID-2"}, .type = "TYPE-1", .block = block})}});
    }
};

TEST_F(CallOrder, OfARuleThatMatches) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry,
                                   query,
                                   {"FreeResult(answer 1)"},
                                   ReadOf("rule1", "guid"),
                                   ReadOf("rule1", "type"),
                                   {DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1")},
                                   ReportReads({"rule1"}),
                                   {ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}}));
}

TEST_F(CallOrder, OfALaterRuleThatMatches) {
    host.answer = AnswerText("GUID-2", {"MID-2"});
    Allow("MID-2", {"TYPE-2"});
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry,
                                   query,
                                   {"FreeResult(answer 1)"},
                                   ReadOf("rule1", "guid"),
                                   ReadOf("rule1", "type"),
                                   ReadOf("rule2", "guid"),
                                   ReadOf("rule2", "type"),
                                   {DeleteCall("GUID-2", "LOCAL-MID", "TYPE-2")},
                                   ReportReads({"rule2"}),
                                   {ReportCall({.guids = {"GUID-2"}, .type = "TYPE-2", .block = false})}}));
}

TEST_F(CallOrder, OfRulesThatDoNotMatch) {
    host.answer = "{}";
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry,
                                   query,
                                   {"FreeResult(answer 1)"},
                                   ReadOf("rule1", "guid"),
                                   ReadOf("rule1", "type"),
                                   ReadOf("rule2", "guid"),
                                   ReadOf("rule2", "type"),
                                   ReportOfAll(true)}));
}

TEST_F(CallOrder, OfAStoppedReceiver) {
    receiver->Stop();
    host.answer = "{}";
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, {"FreeResult(answer 1)"}, ReportOfAll(true)}));
}

TEST_F(CallOrder, OfANetworkError) {
    host.queryCode = DOT_QUERY_NETWORK_ERROR;
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, {"FreeResult(null)"}, ReportOfAll(true)}));
}

TEST_F(CallOrder, OfAQueryError) {
    host.queryCode = 1;
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, {"FreeResult(null)"}, ReportOfAll(true)}));
}

TEST_F(CallOrder, OfAllForbid) {
    SetMode(MODE_ALL_FORBID);
    host.answer = "{}";
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, ReportOfAll(true)}));
}

TEST_F(CallOrder, OfAnAnswerThatCannotBeParsed) {
    host.answer = "{";
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, {"FreeResult(answer 1)"}, ReportOfAll(true)}));
}

TEST_F(CallOrder, OfEmergencyMode) {
    SetMode(MODE_EMERGENCY);
    Decide();
    EXPECT_EQ(TakeCalls(), entry);
}

TEST_F(CallOrder, OfADisconnectEvent) {
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, {"event.GetInt32(flags)"}}));
}

TEST_F(CallOrder, ReplyWordIs0DuringTheQueryAnd1DuringTheDeletion) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    uint32_t word = 77;
    Lines seen;
    calls.onAdd = [&](const std::string& call) {
        const std::string name = call.substr(0, call.find('('));
        if (name.find('.') == std::string::npos) { // no read
            seen.push_back(name + " " + std::to_string(word));
        }
    };
    receiver->HandleEvent(&event, rulePointers.data(), 2, &word);
    calls.onAdd = nullptr;
    EXPECT_EQ(seen, (Lines{"QueryDot 0", "FreeResult 0", "DeleteDot 1", "Report 2"}));
}

TEST_F(CallOrder, OfAnEventWithoutASink) {
    receiver->SetReportSink(nullptr);
    host.queryCode = 1;
    Decide();
    EXPECT_EQ(TakeCalls(), Joined({entry, query, {"FreeResult(null)"}}));
}

} // namespace
