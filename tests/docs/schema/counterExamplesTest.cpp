// Documents that each schema rejects, and similar ones that it accepts.
#include <gtest/gtest.h>

#include "docs/schema/schemaFile.h"

namespace {

void ExpectFits(const char* name, std::initializer_list<const char*> texts) {
    const schema::SchemaFile schema(name);
    for (const char* const text : texts) {
        EXPECT_EQ(schema.Misfit(text), "") << name << ": " << text;
    }
}

void ExpectRejects(const char* name, std::initializer_list<const char*> texts) {
    const schema::SchemaFile schema(name);
    for (const char* const text : texts) {
        EXPECT_NE(schema.Misfit(text), "") << name << ": " << text;
    }
}

TEST(CounterExamples, AllowList) {
    ExpectFits("allowList", {R"({"mid_list": []})", R"({"mid_list": [{"mid": "", "protocol": []}], "version": 1})",
                             R"({"mid_list": [{"mid": "M", "protocol": ["", "A"], "note": null}]})"});
    ExpectRejects("allowList",
                  {"", "[]", "null", "{}", R"({"mid_list": {}})", R"({"MID_LIST": []})", R"({"mid_list": [1]})",
                   R"({"mid_list": [{"mid": "M"}]})", R"({"mid_list": [{"protocol": ["A"]}]})",
                   R"({"mid_list": [{"mid": 1, "protocol": []}]})", R"({"mid_list": [{"mid": "M", "protocol": "A"}]})",
                   R"({"mid_list": [{"mid": "M", "protocol": ["A", 1]}]})"});
}

TEST(CounterExamples, ActionTable) {
    ExpectFits("actionTable", {R"({"A": 1})", R"({"A": 0})", R"({"A": -2147483648, "B": 2147483647})", R"({" ": 1})"});
    ExpectRejects("actionTable", {"{}", "[]", "null", R"({"": 1})", R"({"A": 1, "": 1})", R"({"A": 1.0})",
                                  R"({"A": 1e0})", R"({"A": "1"})", R"({"A": true})", R"({"A": null})",
                                  R"({"A": 2147483648})", R"({"A": -2147483649})", R"({"A": 1, "B": []})"});
}

TEST(CounterExamples, QueryRequest) {
    ExpectFits("queryRequest", {R"({"guid": [""]})", R"({"guid": ["A", "A"]})"});
    ExpectRejects("queryRequest", {"[]", "{}", R"({"guid": []})", R"({"guid": "A"})", R"({"guid": [1]})",
                                   R"({"guid": ["A"], "mid": "M"})"});
}

TEST(CounterExamples, QueryResult) {
    ExpectFits("queryResult", {"{}", R"({"": {"value": -1, "mid": {"": 1}}})", R"({"A": {"value": 0}})",
                               R"({"A": {"value": 0, "mid": {}}, "B": {"value": 2147483647, "mid": {}, "more": 1}})"});
    ExpectRejects("queryResult",
                  {"[]", "null", R"({"A": 1})", R"({"A": {}})", R"({"A": {"mid": {}}})", R"({"A": {"value": 1}})",
                   R"({"A": {"value": 1, "mid": []}})", R"({"A": {"value": 1, "mid": "M"}})",
                   R"({"A": {"value": "1", "mid": {}}})", R"({"A": {"value": 1.0, "mid": {}}})",
                   R"({"A": {"value": true, "mid": {}}})", R"({"A": {"value": 2147483648, "mid": {}}})",
                   R"({"A": {"value": 1, "mid": {}}, "B": {"value": 1}})"});
}

// A report with one member replaced, or left out when `value` is empty.
std::string Report(const std::string& name, const std::string& value) {
    std::string text;
    for (const auto& [key, sound] : {std::pair<std::string, std::string>{"rule_guid", R"(["A"])"},
                                     {"type", R"("T")"},
                                     {"block", "true"},
                                     {"block_modified", "false"},
                                     {"proc_name", R"("")"},
                                     {"proc_path", R"("")"},
                                     {"send_ip", R"("")"},
                                     {"send_port", R"("0")"},
                                     {"recv_ip", R"("")"},
                                     {"recv_port", R"("4294967295")"},
                                     {"send_mid", R"("")"},
                                     {"net_drv_version", R"("-9223372036854775808")"},
                                     {"protocol", R"("T")"}}) {
        const std::string& shown = key == name ? value : sound;
        if (!shown.empty()) {
            text += (text.empty() ? "{" : ", ") + ('"' + key + "\": ") + shown;
        }
    }
    return text + "}";
}

TEST(CounterExamples, Report) {
    const schema::SchemaFile schema("report");
    EXPECT_EQ(schema.Misfit(Report("none", "")), "");
    for (const char* const name : {"rule_guid", "type", "block", "block_modified", "proc_name", "proc_path", "send_ip",
                                   "send_port", "recv_ip", "recv_port", "send_mid", "net_drv_version", "protocol"}) {
        EXPECT_NE(schema.Misfit(Report(name, "")), "") << "without " << name;
        EXPECT_NE(schema.Misfit(Report(name, "7")), "") << name << " as a number";
        EXPECT_NE(schema.Misfit(Report(name, "null")), "") << name << " as null";
    }
    EXPECT_NE(schema.Misfit(Report("rule_guid", "[]")), "");
    EXPECT_NE(schema.Misfit(Report("send_mid", R"("M")")), "");
    for (const char* const number : {R"("")", R"("01")", R"("1x")", R"("+1")", R"(" 1")"}) {
        EXPECT_NE(schema.Misfit(Report("send_port", number)), "") << number;
        EXPECT_NE(schema.Misfit(Report("recv_port", number)), "") << number;
        EXPECT_NE(schema.Misfit(Report("net_drv_version", number)), "") << number;
    }
    EXPECT_NE(schema.Misfit(Report("send_port", R"("-1")")), "");
    EXPECT_NE(schema.Misfit(Report("protocol", R"("T", "more": 1)")), "");
}

TEST(CounterExamples, Dots) {
    ExpectFits("dots", {"{}", R"({"": []})", R"({"A": ["M", ""]})"});
    ExpectRejects("dots", {"[]", R"({"A": "M"})", R"({"A": [1]})", R"({"A": {"M": 1}})"});
}

TEST(CounterExamples, Policy) {
    ExpectFits(
        "policy",
        {R"({"rules": []})",
         R"({"machine_id": "from the machine", "defender_mode": "emergency", "exception_mode": 7, "rules": []})",
         R"({"rules": [{"guid": "", "type": "", "local_ports": [0, "1-65535"]}]})",
         R"({"rules": [{"guid": "A", "type": "B", "local_addresses": ["::"], "remote_addresses": ["10.0.0.0/8"]}]})",
         R"({"allow_list": "list.json", "actions": "actions.json", "dots": "dots.json", "rules": []})",
         R"({"allow_list": {"mid_list": []}, "actions": {"A": 1}, "dots": {"A": ["M"]}, "rules": []})",
         R"({"failures": {"event 1": "network-error", "event 2": "broken-answer"}, "rules": []})",
         R"({"programs": {"web server": "server", "": "bin/other"}, "rules": []})",
         R"({"programs": {}, "rules": []})"});
    ExpectRejects("policy", {"[]",
                             "{}",
                             R"({"rules": {}})",
                             R"({"rules": [], "more": 1})",
                             R"({"rules": [], "machine_id": ""})",
                             R"({"rules": [], "defender_mode": "allow"})",
                             R"({"rules": [], "defender_mode": -1})",
                             R"({"rules": [], "exception_mode": "emergency"})",
                             R"({"rules": [], "exception_mode": 4294967296})",
                             R"({"rules": [], "allow_list": {}})",
                             R"({"rules": [], "allow_list": {"mid_list": [{"mid": "M"}]}})",
                             R"({"rules": [], "allow_list": 1})",
                             R"({"rules": [], "actions": {}})",
                             R"({"rules": [], "actions": {"A": "1"}})",
                             R"({"rules": [], "dots": {"A": "M"}})",
                             R"({"rules": [], "failures": {"event 1": "error"}})",
                             R"({"rules": [], "failures": ["event 1"]})",
                             R"({"rules": [], "programs": {"A": ""}})",
                             R"({"rules": [], "programs": {"A": 1}})",
                             R"({"rules": [], "programs": ["A"]})",
                             R"({"rules": [{"guid": "A"}]})",
                             R"({"rules": [{"type": "A"}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "port": 1}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "local_ports": []}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "local_ports": [65536]}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "local_ports": ["80"]}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "remote_addresses": []}]})",
                             R"({"rules": [{"guid": "A", "type": "B", "remote_addresses": "10.0.0.0/8"}]})"});
}

TEST(CounterExamples, Event) {
    ExpectFits("event", {"{}", R"({"time": "2026-11-20T09:54:12Z", "name": "", "process": "/usr/bin/x"})",
                         R"({"time": "2026-11-20T09:54:12.345Z", "flags": 4294967295, "pid": 0})",
                         R"({"remote_addr_ip": "::1", "remote_addr_port": 0, "local_addr_port": 65535})",
                         R"({"program": "web server", "process": "/usr/bin/x"})", R"({"program": ""})",
                         R"({"net_drv": -9223372036854775808})", R"({"net_drv": 9223372036854775807})"});
    ExpectRejects("event",
                  {"[]", R"({"more": 1})", R"({"time": "2026-11-20 09:54:12"})", R"({"time": 1})",
                   R"({"time": "2026-11-20T09:54:12.Z"})", R"({"flags": -1})", R"({"flags": 4294967296})",
                   R"({"pid": "4"})", R"({"program": 7})", R"({"program": "A", "pid": 4})", R"({"remote_addr_ip": ""})",
                   R"({"remote_addr_ip": 1})", R"({"local_addr_port": 65536})", R"({"local_addr_port": "22"})",
                   R"({"net_drv": 1.5})", R"({"net_drv": 9223372036854775808})"});
}

// A decision record with `from` replaced by `to`.
std::string Record(const std::string& from = "", const std::string& to = "") {
    std::string text =
        R"({"time": null, "event": {"line": 1, "time": null, "name": null, "flags": 4, "pid": null, "program": null, )"
        R"("process": null, "remote_addr_ip": "::1", "remote_addr_port": 1, "local_addr_ip": null, )"
        R"("local_addr_port": null, "net_drv": null}, "rules": [{"guid": "", "type": "t", )"
        R"("file": "p.json", "line": 1, )"
        R"("column": 2, "pointer": "/rules/0", "outcome": "no-dot", "machine": null}], "verdict": "allow", )"
        R"("reason": {"code": "action-table", "text": "x", "overruled": "no-dot"}, "allowed_by": null, "dot": null, )"
        R"("failure": "query-error", "process": null, "reply": 1, "result": true, "reports": 0, "duration_ns": 5, )"
        R"("policy": [{"file": "p.json", "sha256": ")" +
        std::string(64, 'a') + R"("}], "versions": {"library": null, "host": "1.0.0"}})";
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(CounterExamples, Decision) {
    const schema::SchemaFile schema("decision");
    EXPECT_EQ(schema.Misfit(Record()), "");
    EXPECT_EQ(schema.Misfit(Record(R"("duration_ns": 5, )")), "") << "it may be left out";
    EXPECT_EQ(schema.Misfit(Record(R"("dot": null)", R"("dot": {"guid": "", "machine": null, "deleted": true})")), "");
    EXPECT_EQ(schema.Misfit(Record(R"("verdict": "allow")", R"("verdict": "reply 7")")), "");
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {R"("time": null, )", ""},
             {R"("verdict": "allow", )", ""},
             {R"("reports": 0, )", ""},
             {R"("reports": 0)", R"("reports": -1)"},
             {R"("verdict": "allow")", R"("verdict": "maybe")"},
             {R"("code": "action-table")", R"("code": "other")"},
             {R"("overruled": "no-dot")", R"("overruled": "")"},
             {R"("text": "x")", R"("text": "")"},
             {R"("failure": "query-error")", R"("failure": "error")"},
             {R"("outcome": "no-dot")", R"("outcome": "query-error")"},
             {R"("line": 1, "column")", R"("line": 0, "column")"},
             {R"("pointer": "/rules/0")", R"("pointer": "rules/0")"},
             {R"("allowed_by": null)", R"("allowed_by": {"file": "p.json"})"},
             {R"("dot": null)", R"("dot": {"guid": "", "machine": "M"})"},
             {R"("remote_addr_port": 1)", R"("remote_addr_port": 65536)"},
             {R"("flags": 4)", R"("flags": "4")"},
             {R"("pid": null, )", ""},
             {"aaaa", "aaaA"},
             {"\"aaaa", "\"aaa"},
             {R"("host": "1.0.0")", R"("host": null)"},
             {R"("reply": 1)", R"("why": "x", "reply": 1)"}}) {
        EXPECT_NE(schema.Misfit(Record(from, to)), "") << from << " as " << to;
    }
}

TEST(CounterExamples, Summary) {
    const std::string counts = R"("queries": 0, "reports": 0, "dots_deleted": 0, "dots_left": 0)";
    const std::string sound = R"({"summary": {"events": 1, "verdicts": {"allow": 1}, )" + counts + "}}";
    ExpectFits("summary", {sound.c_str()});
    const std::string noEvents = R"({"summary": {"verdicts": {}, )" + counts + "}}";
    const std::string more = R"({"summary": {"events": 1, "verdicts": {}, "more": 1, )" + counts + "}}";
    const std::string negative = R"({"summary": {"events": -1, "verdicts": {}, )" + counts + "}}";
    ExpectRejects("summary", {"{}", "[]", R"({"summary": {}})", noEvents.c_str(), more.c_str(), negative.c_str()});
}

TEST(CounterExamples, Difference) {
    const std::string side = R"({"decision": )" + Record() + R"(, "setting": null})";
    const std::string both = R"("old": )" + side + R"(, "new": )" + side + "}";
    const std::string sound = R"({"line": 1, "change": "verdict", "follows_from": [], )" + both;
    const std::string deleted =
        R"({"line": 2, "change": "reason", "follows_from": [{"guid": "", "policy": "old", "line": 1}], )" + both;
    const std::string noSide = R"({"line": 1, "change": "verdict", "follows_from": [], "old": )" + side + "}";
    const std::string otherChange = R"({"line": 1, "change": "text", "follows_from": [], )" + both;
    const std::string otherPolicy =
        R"({"line": 2, "change": "reason", "follows_from": [{"guid": "", "policy": "both", "line": 1}], )" + both;
    ExpectFits("difference", {sound.c_str(), deleted.c_str(), R"({"summary": {"events": 0, "verdicts_changed": 0,
                "reasons_changed": 0, "following": 0, "matrix": [{"old": "allow", "new": "block", "events": 1}]}})"});
    ExpectRejects("difference", {"{}", R"({"summary": {}})", noSide.c_str(), otherChange.c_str(), otherPolicy.c_str(),
                                 R"({"summary": {"events": 0, "verdicts_changed": 0, "reasons_changed": 0,
                                    "following": 0, "matrix": [{"old": "allow", "new": "block", "events": 0}]}})"});
}

TEST(CounterExamples, Rehearsal) {
    const std::string head = R"({"line": 1, "time": null, "name": null, "verdict": "allow", "changes": [)";
    const std::string change =
        R"({"failure": "no-dots", "defender_mode": "emergency", "exception_mode": "block", "verdict": "block"})";
    const std::string sound = head + change + "]}";
    const std::string noChange = head + "]}";
    std::string otherFailure = sound;
    otherFailure.replace(otherFailure.find("no-dots"), 7, "no-dot");
    ExpectFits("rehearsal", {sound.c_str()});
    ExpectRejects("rehearsal", {"{}", noChange.c_str(), otherFailure.c_str(),
                                R"({"summary": {"events": 1, "without_rule": 0, "combinations": []}})"});
}

} // namespace
