// The verdict for one rule.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class RuleDecision : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        SetRule("GUID-1", "TYPE-1");
        InsertMids(table, "GUID-1", {"MID-1"});
        Allow("MID-1", {"TYPE-1"});
        reply = unwritten;
    }

    void SetRule(const std::string& guid, const std::string& type) { rule.String("guid", guid).String("type", type); }

    bool DecideRule() { return receiver->HandleEventInner(&event, &rule, table, &reply); }

    // The records of a match of `mid`.
    static Lines MatchRecords(const std::string& mid, const std::string& guid, const char* deleted) {
        return {inIsMatchmid.Trace("CMordRecv::IsMatchmid success,mid_match_output matched" + mid),
                inHandleEventInner.Trace("match mid=" + mid + ",rule guid=" + guid + ",reply:1"),
                inHandleEventInner.Trace(std::string("del dot,ret=") + deleted + ",rule guid" + guid)};
    }
    static Lines NoMatchRecords(const std::string& guid) {
        return {inIsMatchmid.Trace("CMordRecv::IsMatchmid fail end"),
                inHandleEventInner.Trace("not match any mid,guid:" + guid + ",reply:0")};
    }

    FakeRecord rule{"rule", &calls};
    QueryResultTable table;
    uint32_t reply = unwritten;
    const Lines ruleReads{"rule.GetString.size(guid)", "rule.GetString(guid)", "rule.GetString.size(type)",
                          "rule.GetString(type)"};
};

TEST_F(RuleDecision, NullReplyIsAParameterError) {
    EXPECT_FALSE(receiver->HandleEventInner(&event, &rule, table, nullptr));
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Error("parameter error")});
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(RuleDecision, NullEventIsAParameterErrorAndTheReplyIsNotWritten) {
    EXPECT_FALSE(receiver->HandleEventInner(nullptr, &rule, table, &reply));
    EXPECT_EQ(reply, unwritten);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Error("parameter error")});
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(RuleDecision, WithoutAHostIsAParameterErrorAndTheReplyIsNotWritten) {
    Fields().Host() = nullptr;
    EXPECT_FALSE(DecideRule());
    EXPECT_EQ(reply, unwritten);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Error("parameter error")});
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(RuleDecision, NotStartedIsAnErrorOfItsOwnAndTheReplyIsNotWritten) {
    receiver->Stop();
    EXPECT_FALSE(DecideRule());
    EXPECT_EQ(reply, unwritten);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Error("receving end not start")});
    EXPECT_EQ(TakeCalls(), Lines{});
}

TEST_F(RuleDecision, AParameterErrorGoesBeforeNotStarted) {
    receiver->Stop();
    EXPECT_FALSE(receiver->HandleEventInner(nullptr, &rule, table, &reply));
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Error("parameter error")});
}

TEST_F(RuleDecision, GuidThatIsNotInTheAnswerGivesBlock) {
    SetRule("GUID-2", "TYPE-1");
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-2")});
    EXPECT_EQ(TakeCalls(), ruleReads);
}

TEST_F(RuleDecision, GuidWithoutMachineIdsGivesBlockWithATextOfItsOwn) {
    InsertMids(table, "GUID-2", {});
    SetRule("GUID-2", "TYPE-1");
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Trace("query dot result mid is empty, reply=0,rule guidGUID-2")});
    EXPECT_EQ(TakeCalls(), ruleReads);
}

TEST_F(RuleDecision, BothGoBeforeAnyLookAtTheAllowList) {
    receiver->ClearAllowList();
    TakeRecords();
    InsertMids(table, "GUID-2", {});
    SetRule("GUID-2", "TYPE-1");
    DecideRule();
    SetRule("GUID-3", "TYPE-1");
    DecideRule();
    EXPECT_EQ(TakeRecords(), (Lines{inHandleEventInner.Trace("query dot result mid is empty, reply=0,rule guidGUID-2"),
                                    inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-3")}));
}

TEST_F(RuleDecision, NoMatchingEntryGivesBlockAndTheDotStays) {
    SetRule("GUID-1", "TYPE-2");
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeRecords(), NoMatchRecords("GUID-1"));
    EXPECT_EQ(TakeCalls(), ruleReads);
}

TEST_F(RuleDecision, AMatchGivesAllowAndDeletesTheDot) {
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), MatchRecords("MID-1", "GUID-1", "1"));
    EXPECT_EQ(TakeCalls(), Joined({ruleReads, {DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1")}}));
}

TEST_F(RuleDecision, ADeletionThatFailsChangesNothingAndIsNotTriedAgain) {
    for (const int32_t code : {1, -1, 2, 1007, 0x7FFFFFFF}) {
        host.deleteCode = code;
        reply = unwritten;
        EXPECT_TRUE(DecideRule());
        EXPECT_EQ(reply, REPLY_ALLOW);
        EXPECT_EQ(TakeRecords(), MatchRecords("MID-1", "GUID-1", "0"));
        EXPECT_EQ(TakeCalls(), Joined({ruleReads, {DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1")}}));
    }
}

TEST_F(RuleDecision, TheReplyIsWrittenOverWhateverStoodThere) {
    for (const uint32_t before : {0U, 1U, 2U, 77U}) {
        reply = before;
        DecideRule();
        EXPECT_EQ(reply, REPLY_ALLOW);
        reply = before;
        EXPECT_TRUE(receiver->HandleEventInner(&event, &rule, QueryResultTable(), &reply));
        EXPECT_EQ(reply, REPLY_BLOCK);
    }
}

TEST_F(RuleDecision, NothingIsReadFromTheEvent) {
    WatchReads();
    DecideRule();
    EXPECT_EQ(TakeCalls(), Joined({ruleReads, {DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1")}}));
}

TEST_F(RuleDecision, NeitherTableNorAllowListChanges) {
    DecideRule();
    ASSERT_NE(table.Find("GUID-1"), nullptr);
    EXPECT_EQ(TextsOf(*table.Find("GUID-1")), std::set<std::string>{"MID-1"});
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"TYPE-1", {"MID-1"}}}));
}

TEST_F(RuleDecision, AWebRuleIsMatchedUnderItsOwnGuid) {
    SetRule("GUID-1", "web");
    Allow("MID-1", {"GUID-1"});
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(TakeCalls(), Joined({ruleReads, {DeleteCall("GUID-1", "LOCAL-MID", "web")}}));
}

TEST_F(RuleDecision, AnEntryUnderTheWordWebServesNoWebRule) {
    SetRule("GUID-1", "web");
    Allow("MID-1", {"web"});
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeRecords(), NoMatchRecords("GUID-1"));
}

TEST_F(RuleDecision, ARuleOfAnotherTypeIsNotMatchedUnderItsGuid) {
    Allow("MID-1", {"GUID-1"});
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
}

TEST_F(RuleDecision, ATypeThatDiffersFromWebIsMatchedUnderThatWord) {
    for (const char* const type : {"Web", "WEB", "weB", "web ", " web", "we", "webs", "GUID-1"}) {
        SetRule("GUID-1", type);
        Allow("MID-1", {type});
        reply = unwritten;
        EXPECT_TRUE(DecideRule());
        EXPECT_EQ(reply, REPLY_ALLOW) << type;
    }
}

TEST_F(RuleDecision, ATypeThatDiffersFromWebInCaseIsNoWebRule) {
    SetRule("GUID-1", "Web");
    Allow("MID-1", {"GUID-1", "web"});
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
}

TEST_F(RuleDecision, TheEmptyTypeIsMatchedUnderTheEmptyKey) {
    SetRule("GUID-1", "");
    Allow("MID-1", {""});
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(TakeCalls(), Joined({ruleReads, {DeleteCall("GUID-1", "LOCAL-MID", "")}}));
}

TEST_F(RuleDecision, GuidAndTypeThatCannotBeReadAreEmpty) {
    FakeRecord bare("rule", &calls);
    InsertMids(table, "", {"MID-1"});
    Allow("MID-1", {""});
    EXPECT_TRUE(receiver->HandleEventInner(&event, &bare, table, &reply));
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), MatchRecords("MID-1", "", "1"));
    EXPECT_EQ(TakeCalls(),
              (Lines{"rule.GetString.size(guid)", "rule.GetString.size(type)", DeleteCall("", "LOCAL-MID", "")}));
}

TEST_F(RuleDecision, AnEmptyGuidWithoutAnEntryIsAbsent) {
    SetRule("", "TYPE-1");
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_BLOCK);
    EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Trace("query dot result is empty, reply=0,rule guid")});
}

// Each guid is the only one of the answer, and its id is allowed.
TEST_F(RuleDecision, GuidsAreComparedByteForByte) {
    const std::string others[] = {"",       "GUID-",   "GUID-10", "GUID-2",   "guid-1",
                                  "gUID-1", "GUID-1 ", " GUID-1", "{GUID-1}", std::string("GUID-1\0x", 8)};
    for (const std::string& guid : others) {
        table = {};
        InsertMids(table, guid, {"MID-1"});
        reply = unwritten;
        EXPECT_TRUE(DecideRule()) << guid;
        EXPECT_EQ(reply, REPLY_BLOCK) << guid;
        EXPECT_EQ(TakeRecords(), Lines{inHandleEventInner.Trace("query dot result is empty, reply=0,rule guidGUID-1")});
    }
    table = {};
    for (const std::string& guid : others) {
        InsertMids(table, guid, {"OTHER-MID"});
    }
    InsertMids(table, "GUID-1", {"MID-1"});
    reply = unwritten;
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_ALLOW);
}

TEST_F(RuleDecision, OneAllowedIdAmongManyIsEnough) {
    Lines many;
    for (int i = 0; i < 100; ++i) {
        many.push_back("OTHER-" + std::to_string(i));
    }
    many.push_back("MID-1");
    table = {};
    InsertMids(table, "GUID-1", many);
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(TakeRecords(), MatchRecords("MID-1", "GUID-1", "1"));
}

TEST_F(RuleDecision, OfSeveralAllowedIdsTheLeastIsNamed) {
    table = {};
    InsertMids(table, "GUID-1", {"MID-3", "MID-2", "MID-1", "A"});
    receiver->SetAllowList(
        R"({"mid_list":[{"mid":"MID-3","protocol":["TYPE-1"]},{"mid":"MID-2","protocol":["TYPE-1"]}]})");
    TakeRecords();
    EXPECT_TRUE(DecideRule());
    EXPECT_EQ(TakeRecords(), MatchRecords("MID-2", "GUID-1", "1"));
}

} // namespace
