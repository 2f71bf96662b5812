#include "output/decisionRecord.h"

#include <gtest/gtest.h>

#include "output/jsonText.h"

using namespace mordhost;

namespace {

Policy TestPolicy() {
    Policy policy;
    policy.files = {{"the policy", "p \"x\".json", false, "aa"}, {"the dots", "dots.json", true, "bb"}};
    policy.rules.resize(2);
    policy.rules[0].guid = "G1";
    policy.rules[0].type = "smb";
    policy.rules[1].guid = "G2";
    policy.rules[1].type = "web";
    policy.rules[0].place = {{"p.json", 3, 5}, 0, "/rules/0"};
    policy.rules[1].place = {{"p.json", 4, 9}, 0, "/rules/1"};
    policy.allowListEntries = {{"other", "smb", {}, {{"a.json", 1, 2}, 0, "/mid_list/0/protocol/0"}},
                               {"M", "web", {}, {{"a.json", 2, 2}, 0, "/mid_list/1/protocol/0"}},
                               {"M", "smb", {}, {{"a.json", 2, 9}, 0, "/mid_list/1/protocol/1"}},
                               {"M", "smb", {}, {{"a.json", 3, 2}, 0, "/mid_list/2/protocol/0"}},
                               {"M", "G2", {}, {{"a.json", 3, 9}, 0, "/mid_list/2/protocol/1"}}};
    return policy;
}

Decision Matched() {
    Decision decision;
    decision.event.line = 3;
    decision.event.time = "2025-11-20T09:54:12.345Z";
    decision.event.name = "connection-1";
    decision.event.flags = 0;
    decision.event.pid = 4242;
    decision.event.program = ProgramOfEvent{"server", {}};
    decision.event.process = "/usr/bin/\"old\"";
    decision.event.remoteAddress = "127.0.0.2";
    decision.event.remotePort = 40000;
    decision.event.localAddress = "127.0.0.1";
    decision.event.localPort = 445;
    decision.event.netDrv = -7;
    decision.rules = {0, 1};
    decision.asked = true;
    decision.reply = 1;
    decision.settled = true;
    decision.reason = {ReasonCode::machineAllowed, "machine M", {}, {{0, ReasonCode::machineAllowed, "M"}}};
    decision.reports = {"{}"};
    decision.deletion = DotHost::Deletion{"G1", "smb", true};
    decision.process = "/usr/bin/server";
    decision.duration = std::chrono::nanoseconds(1500);
    return decision;
}

std::string RecordOf(const Decision& decision, const RecordContext& context = {"1.2.3", "4.5.6", true}) {
    std::string record = "before ";
    const Policy policy = TestPolicy();
    DecisionRecords(policy, context).Append(record, decision);
    return record;
}

void ExpectIn(const std::string& record, const std::string& part) {
    EXPECT_NE(record.find(part), std::string::npos) << part << " in " << record;
}

} // namespace

TEST(DecisionRecord, HasAllMembers) {
    EXPECT_EQ(
        RecordOf(Matched()),
        R"(before {"time":"2025-11-20T09:54:12.345Z",)"
        R"("event":{"line":3,"time":"2025-11-20T09:54:12.345Z","name":"connection-1","flags":0,"pid":4242,)"
        R"("program":"server","process":"/usr/bin/\"old\"","remote_addr_ip":"127.0.0.2","remote_addr_port":40000,)"
        R"("local_addr_ip":"127.0.0.1","local_addr_port":445,"net_drv":-7},)"
        R"("rules":[{"guid":"G1","type":"smb","file":"p.json","line":3,"column":5,"pointer":"/rules/0",)"
        R"("outcome":"machine-allowed","machine":"M"},)"
        R"({"guid":"G2","type":"web","file":"p.json","line":4,"column":9,"pointer":"/rules/1",)"
        R"("outcome":null,"machine":null}],)"
        R"("verdict":"allow","reason":{"code":"machine-allowed","text":"machine M","overruled":null},)"
        R"("allowed_by":{"file":"a.json","line":2,"column":9,"pointer":"/mid_list/1/protocol/1"},)"
        R"("dot":{"guid":"G1","machine":"M","deleted":true},"failure":null,)"
        R"("process":"/usr/bin/server","reply":1,"result":true,"reports":1,"duration_ns":1500,)"
        R"("policy":[{"file":"p \"x\".json","sha256":"aa"},{"file":"dots.json","sha256":"bb"}],)"
        R"("versions":{"library":"1.2.3","host":"4.5.6"}})");
}

TEST(DecisionRecord, UnknownValuesAreNull) {
    EXPECT_EQ(RecordOf({}, {"", "1.0.0", true}),
              R"(before {"time":null,"event":{"line":0,"time":null,"name":null,"flags":null,"pid":null,"program":null,)"
              R"("process":null,"remote_addr_ip":null,"remote_addr_port":null,"local_addr_ip":null,)"
              R"("local_addr_port":null,"net_drv":null},"rules":[],"verdict":"no rule",)"
              R"("reason":{"code":"unknown","text":null,"overruled":null},"allowed_by":null,"dot":null,)"
              R"("failure":null,"process":null,"reply":null,"result":null,"reports":0,"duration_ns":null,)"
              R"("policy":[{"file":"p \"x\".json","sha256":"aa"},{"file":"dots.json","sha256":"bb"}],)"
              R"("versions":{"library":null,"host":"1.0.0"}})");
}

TEST(DecisionRecord, CanLeaveOutTheDuration) {
    EXPECT_EQ(RecordOf(Matched(), {"1.2.3", "4.5.6", false}).find("duration"), std::string::npos);
}

TEST(DecisionRecord, NamesTheOverruledBlockAndTheOutcomeOfEachRule) {
    Decision decision = Matched();
    decision.deletion.reset();
    decision.failure = Failure::brokenAnswer;
    decision.reason = {ReasonCode::actionTable,
                       "action table",
                       ReasonCode::noDot,
                       {{0, ReasonCode::noDot, ""}, {1, ReasonCode::noAllowedMachine, ""}}};
    const std::string record = RecordOf(decision);
    ExpectIn(record, R"("reason":{"code":"action-table","text":"action table","overruled":"no-dot"})");
    ExpectIn(record, R"("/rules/0","outcome":"no-dot","machine":null})");
    ExpectIn(record, R"("/rules/1","outcome":"no-allowed-machine","machine":null})");
    ExpectIn(record, R"("dot":null,"failure":"broken-answer")");
}

TEST(DecisionRecord, ARuleThatTheLibraryDidNotLookAtHasNoOutcome) {
    Decision decision = Matched();
    decision.reason.rules = {{1, ReasonCode::noDot, ""}};
    const std::string record = RecordOf(decision);
    ExpectIn(record, R"("/rules/0","outcome":null,"machine":null})");
    ExpectIn(record, R"("/rules/1","outcome":"no-dot","machine":null})");
}

TEST(DecisionRecord, NamesOfDotsMachinesAndProgramsMayBeEmpty) {
    Decision decision = Matched();
    decision.deletion = DotHost::Deletion{"", "", false};
    decision.reason.rules[0].machine = "";
    decision.event.program = ProgramOfEvent{"", {}};
    const std::string record = RecordOf(decision);
    ExpectIn(record, R"("dot":{"guid":"","machine":"","deleted":false})");
    ExpectIn(record, R"("program":"",)");
    decision.reason = {};
    ExpectIn(RecordOf(decision), R"("dot":{"guid":"","machine":null,"deleted":false})");
}

// The library looks up a web rule under its guid and any other rule under its type.
TEST(DecisionRecord, NamesTheFirstEntryThatAllowsTheMachineForTheRule) {
    Decision decision = Matched();
    decision.reason.rules = {{1, ReasonCode::machineAllowed, "M"}};
    ExpectIn(RecordOf(decision),
             R"("allowed_by":{"file":"a.json","line":3,"column":9,"pointer":"/mid_list/2/protocol/1"})");
    decision.reason.rules = {{0, ReasonCode::machineAllowed, "other"}};
    ExpectIn(RecordOf(decision),
             R"("allowed_by":{"file":"a.json","line":1,"column":2,"pointer":"/mid_list/0/protocol/0"})");
    decision.reason.rules = {{1, ReasonCode::machineAllowed, "other"}};
    ExpectIn(RecordOf(decision), R"("allowed_by":null)");
    decision.reason.rules = {{0, ReasonCode::noAllowedMachine, ""}};
    ExpectIn(RecordOf(decision), R"("allowed_by":null)");
}

TEST(JsonText, EscapesWhatItMust) {
    std::string text;
    AppendJsonString(text, std::string("\"\\\n\0\u00e4\x7f", 7));
    EXPECT_EQ(text, "\"\\\"\\\\\\n\\u0000\u00e4\x7f\"");
}

// Texts are checked eight bytes at a time.
TEST(JsonText, EscapesEveryByteAtEveryPlace) {
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        const bool plain = byte >= 0x20 && byte != '"' && byte != '\\';
        for (size_t place = 0; place < 19; ++place) {
            std::string text(19, '\x7f');
            text[place] = static_cast<char>(byte);
            std::string json;
            AppendJsonString(json, text);
            EXPECT_EQ(json == '"' + text + '"', plain) << byte << " at " << place;
        }
    }
}
