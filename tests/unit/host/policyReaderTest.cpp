#include "policy/policyReader.h"

#include <gtest/gtest.h>

#include "system/fileError.h"
#include "unit/host/refusal.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using mordhostTest::RefusalOf;

namespace {

Policy PolicyFrom(const std::string& text) {
    const TemporaryDirectory directory;
    return ReadPolicy(directory.Write("p.json", text));
}

// The error of a policy in the file p.json, without the directory.
std::string PolicyRefusal(const std::string& text) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("p.json", text);
    std::string refusal = RefusalOf([&] { ReadPolicy(name); });
    const std::string place = directory.Name("");
    for (size_t at = refusal.find(place); at != std::string::npos; at = refusal.find(place)) {
        refusal.erase(at, place.size());
    }
    return refusal;
}

// A policy with the single rule {"guid": "G", "type": "T", MEMBER}, whose member begins in column 38.
std::string RuleWith(const std::string& member) {
    return R"({"rules": [{"guid":"G", "type":"T",  )" + member + "}]}";
}

} // namespace

TEST(Policy, NeedsOnlyRules) {
    const Policy policy = PolicyFrom(R"({"rules": []})");
    EXPECT_FALSE(policy.machineId || policy.defenderMode || policy.exceptionMode || policy.allowList || policy.actions);
    EXPECT_TRUE(policy.rules.empty() && policy.dots.empty() && policy.failures.empty());
    EXPECT_EQ(PolicyRefusal("{}"), "p.json:1:1: the key \"rules\" is missing in this object");
}

TEST(Policy, TheMachineIdIsGivenOrTakenFromTheMachine) {
    EXPECT_EQ(PolicyFrom(R"({"machine_id": "HOST-A", "rules": []})").machineId, "HOST-A");
    EXPECT_EQ(PolicyFrom(R"({"machine_id": "from the machine", "rules": []})").machineId, std::nullopt);
    EXPECT_EQ(PolicyRefusal(R"({"machine_id": "", "rules": []})"), "p.json:1:16: \"machine_id\" must not be empty");
    EXPECT_EQ(PolicyRefusal(R"({"machine_id": 7, "rules": []})"),
              "p.json:1:16: \"machine_id\" must be a string, and this is a number");
}

TEST(Policy, AModeIsANameOrANumber) {
    const auto defenderMode = [](const std::string& mode) {
        return PolicyFrom("{\"defender_mode\": " + mode + ", \"rules\": []}").defenderMode;
    };
    EXPECT_EQ(defenderMode("\"all-forbid\""), 1U);
    EXPECT_EQ(defenderMode("\"action-table\""), 3U);
    EXPECT_EQ(defenderMode("\"allow-after-decision\""), 4U);
    EXPECT_EQ(defenderMode("\"emergency\""), 5U);
    EXPECT_EQ(defenderMode("77"), 77U) << "a mode without behaviour of its own";
    EXPECT_EQ(PolicyFrom(R"({"exception_mode": "allow", "rules": []})").exceptionMode, 1U);
    EXPECT_EQ(PolicyFrom(R"({"exception_mode": "block", "rules": []})").exceptionMode, 2U);
    EXPECT_EQ(PolicyFrom(R"({"exception_mode": 4294967295, "rules": []})").exceptionMode, 4294967295U);
}

TEST(Policy, AnInvalidModeIsRefused) {
    EXPECT_EQ(PolicyRefusal(R"({"defender_mode": "Emergency", "rules": []})"),
              "p.json:1:19: \"Emergency\" is not one of \"all-forbid\", \"action-table\", \"allow-after-decision\", "
              "\"emergency\"");
    EXPECT_EQ(PolicyRefusal(R"({"exception_mode": "deny", "rules": []})"),
              "p.json:1:20: \"deny\" is not one of \"allow\", \"block\"");
    EXPECT_EQ(PolicyRefusal(R"({"defender_mode": -1, "rules": []})"),
              "p.json:1:19: \"defender_mode\" must be a whole number from 0 to 4294967295, and this is -1");
    EXPECT_EQ(PolicyRefusal(R"({"defender_mode": true, "rules": []})"),
              "p.json:1:19: \"defender_mode\" must be a name or a number, and this is a boolean");
}

TEST(Policy, AnInlineDocumentKeepsItsTextByteForByte) {
    const Policy policy =
        PolicyFrom("{\"allow_list\":\n  { \"mid_list\" : [ ] ,\"note\": 1.50 } , \"actions\": {\"ssh\":1} , "
                   "\"rules\": []}");
    EXPECT_EQ(policy.allowList->text, "{ \"mid_list\" : [ ] ,\"note\": 1.50 }");
    EXPECT_EQ(policy.allowList->where.line, 2U);
    EXPECT_EQ(policy.allowList->where.column, 3U);
    EXPECT_EQ(policy.actions->text, "{\"ssh\":1}");
}

TEST(Policy, ADocumentMayBeAFileRelativeToThePolicy) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.Path() / "lists");
    directory.Write("lists/allow.json", " {\"mid_list\": []}\n");
    directory.Write("lists/actions.json", "\xEF\xBB\xBF{\"ssh\": 1}\n");
    directory.Write("dots.json", "{\"G\": [\"M\"]}");
    const Policy policy = ReadPolicy(directory.Write(
        "p.json",
        R"({"allow_list": "lists/allow.json", "actions": "lists/actions.json", "dots": "dots.json", "rules": []})"));
    EXPECT_EQ(policy.allowList->text, "{\"mid_list\": []}");
    EXPECT_EQ(policy.allowList->where.Text(), directory.Name("lists/allow.json") + ":1:2");
    EXPECT_EQ(policy.actions->text, "{\"ssh\": 1}") << "without the byte order mark, which is no JSON";
    EXPECT_EQ(policy.dots, (DotTable{{"G", {"M"}}}));
}

TEST(Policy, AMissingFileIsRefusedAtItsName) {
    EXPECT_EQ(PolicyRefusal("{\"rules\": [],\n \"actions\": \"none.json\"}"),
              "p.json:2:13: cannot read none.json: No such file or directory");
}

TEST(Policy, AnErrorInAFileNamesThatFile) {
    const TemporaryDirectory directory;
    directory.Write("allow.json", "[]");
    const std::string name = directory.Write("p.json", R"({"allow_list": "allow.json", "rules": []})");
    EXPECT_EQ(RefusalOf([&] { ReadPolicy(name); }),
              directory.Name("allow.json") + ":1:1: the allow list must be an object, and this is an array");
}

namespace {

// The findings of a document under `name` in the second line of a policy, one per line, without file and line.
std::string FindingsOf(const std::string& name, const std::string& text) {
    const std::string policy = "{\"rules\": [], \"" + name + "\":\n" + text + "}";
    PolicyReading reading = ReadWholePolicy(SourceText("p.json", policy));
    EXPECT_EQ(reading.policy.skippedParts, reading.findings.Warnings());
    std::string lines;
    for (const Finding& finding : reading.findings.InOrder()) {
        lines += finding.severity == Severity::error ? "error " : "";
        lines += std::to_string(finding.where.column) + ' ' + finding.code + ' ' + finding.pointer + '\n';
    }
    return lines;
}

} // namespace

TEST(Policy, WhatTheLibraryRefusesOfAnAllowListIsAnError) {
    EXPECT_EQ(FindingsOf("allow_list", "[]"), "error 1 wrong-kind /allow_list\n");
    EXPECT_EQ(FindingsOf("allow_list", "{}"), "error 1 missing-key /allow_list\n");
    EXPECT_EQ(FindingsOf("allow_list", R"({"mid_list": [{"mid": "", "protocol": [""], "note": 1}], "note": 2})"), "");
}

TEST(Policy, WhatTheLibrarySkipsOfAnAllowListIsAWarning) {
    const auto found = [](const std::string& text) { return FindingsOf("allow_list", text); };
    EXPECT_EQ(found(R"({"mid_list": 1})"), "14 mid-list-not-array /allow_list/mid_list\n");
    EXPECT_EQ(found(R"({"mid_list": [7, {"mid": "M"}, {"protocol": []}]})"),
              "15 entry-not-object /allow_list/mid_list/0\n"
              "18 entry-without-protocol /allow_list/mid_list/1\n"
              "32 entry-without-mid /allow_list/mid_list/2\n");
    EXPECT_EQ(found(R"({"mid_list": [{"mid": 1, "protocol": "smb"}]})"),
              "23 mid-not-string /allow_list/mid_list/0/mid\n"
              "38 protocol-not-array /allow_list/mid_list/0/protocol\n");
    EXPECT_EQ(found(R"({"mid_list": [{"mid": "M\u0000", "protocol": [null, "a\u0000"]}]})"),
              "23 text-after-nul /allow_list/mid_list/0/mid\n"
              "47 key-not-string /allow_list/mid_list/0/protocol/0\n"
              "53 text-after-nul /allow_list/mid_list/0/protocol/1\n");
    EXPECT_EQ(found(R"({"mid_list": [{"mid": "M", "mid": "N", "protocol": []}]})"),
              "28 repeated-member /allow_list/mid_list/0/mid\n");
}

TEST(Policy, WhatTheLibraryRefusesOfAnActionTableIsAnError) {
    EXPECT_EQ(FindingsOf("actions", "[]"), "error 1 wrong-kind /actions\n");
    EXPECT_EQ(FindingsOf("actions", "{}"), "error 1 no-action-row /actions\n");
    EXPECT_EQ(FindingsOf("actions", R"({"ssh": true})"),
              "error 1 no-action-row /actions\n9 action-not-integer /actions/ssh\n");
    EXPECT_EQ(FindingsOf("actions", R"({"ssh": -2147483648, "smb": 0})"), "");
}

TEST(Policy, WhatTheLibrarySkipsOfAnActionTableIsAWarning) {
    EXPECT_EQ(FindingsOf("actions", R"({"a": 1, "b": 1.5, "c": 2147483648, "": 1, "d\u0000": 1})"),
              "15 action-not-integer /actions/b\n25 action-not-integer /actions/c\n37 action-without-type /actions/\n"
              "44 text-after-nul /actions/d" +
                  std::string(1, '\0') + "\n");
    EXPECT_EQ(FindingsOf("actions", R"({"ssh": 1, "ssh": 0})"), "2 replaced-action /actions/ssh\n");
}

TEST(Policy, EveryErrorIsFoundInDocumentOrder) {
    const TemporaryDirectory directory;
    directory.Write("allow.json", "{\n 7");
    directory.Write("dots.json", R"({"A": [1, "M", null], "B": 2})");
    const std::string name = directory.Name("p.json");
    PolicyReading reading = ReadWholePolicy(SourceText(name, R"({"dots": "dots.json",
 "allow_list": "allow.json", "actions": "none.json", "machine_id": "",
 "rules": [{"guid": 1, "type": 2, "local_ports": [70000, "x"]}, 5, {"guid": "A", "type": "x", "port": 1}],
 "defender_mode": "off", "failures": {"a": "x", "b": 1}, "programs": {"a": "", "a": 1}, "other": 1})"));
    std::string codes;
    for (const Finding& finding : reading.findings.InOrder()) {
        codes += finding.code + ' ' + (finding.where.file == name ? "" : "in a file ") + finding.pointer + '\n';
    }
    EXPECT_EQ(codes, "wrong-kind in a file /A/0\nwrong-kind in a file /A/2\nwrong-kind in a file /B\n"
                     "syntax in a file \nunreadable-file /actions\ninvalid-value /machine_id\n"
                     "wrong-kind /rules/0/guid\nwrong-kind /rules/0/type\nnumber-out-of-range /rules/0/local_ports/0\n"
                     "port-range /rules/0/local_ports/1\nwrong-kind /rules/1\nunknown-key /rules/2/port\n"
                     "unknown-name /defender_mode\nunknown-name /failures/a\nwrong-kind /failures/b\n"
                     "invalid-value /programs/a\nrepeated-key /programs/a\nwrong-kind /programs/a\n"
                     "unknown-key /other\n");
    EXPECT_EQ(reading.findings.Errors(), 19U);
    EXPECT_EQ(reading.policy.rules.size(), 2U) << "the parts without faults are read";
    EXPECT_EQ(reading.policy.dots, (DotTable{{"A", {"M"}}, {"B", {}}}));
    EXPECT_EQ(RefusalOf([&] { reading.findings.ThrowFirstError(); }),
              directory.Name("dots.json") + ":1:8: a machine id must be a string, and this is a number");
}

TEST(Policy, ARuleHasItsPortsAndRanges) {
    const Policy policy =
        PolicyFrom(R"({"rules": [{"guid": "G", "type": "T", "local_ports": [445, "8000-8080", "0-65535"],
        "local_addresses": ["127.0.0.0/8", "::1"], "remote_addresses": ["10.0.0.7"]}, {"guid": "", "type": ""}]})");
    ASSERT_EQ(policy.rules.size(), 2U);
    const Rule& rule = policy.rules[0];
    EXPECT_EQ(rule.guid, "G");
    EXPECT_EQ(rule.type, "T");
    EXPECT_EQ(rule.localPorts, (std::vector<PortRange>{{445, 445}, {8000, 8080}, {0, 65535}}));
    ASSERT_EQ(rule.localAddresses.size(), 2U);
    EXPECT_EQ(rule.localAddresses[0].prefixBits, 8);
    EXPECT_EQ(rule.localAddresses[1].prefixBits, 128);
    EXPECT_EQ(rule.remoteAddresses.size(), 1U);
    EXPECT_EQ(policy.rules[1].guid, "");
}

TEST(Policy, RulesKeepTheirOrder) {
    const Policy policy = PolicyFrom(R"({"rules": [{"guid": "B", "type": "x"}, {"guid": "A", "type": "x"},
                                             {"guid": "C", "type": "y"}]})");
    ASSERT_EQ(policy.rules.size(), 3U);
    EXPECT_EQ(policy.rules[0].guid + policy.rules[1].guid + policy.rules[2].guid, "BAC");
}

TEST(Policy, AnInvalidRuleIsRefused) {
    EXPECT_EQ(PolicyRefusal(R"({"rules": {}})"), "p.json:1:11: \"rules\" must be an array, and this is an object");
    EXPECT_EQ(PolicyRefusal(R"({"rules": ["G"]})"), "p.json:1:12: a rule must be an object, and this is a string");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [{"guid": "G"}]})"),
              "p.json:1:12: the key \"type\" is missing in this object");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [{"type": "T"}]})"),
              "p.json:1:12: the key \"guid\" is missing in this object");
    EXPECT_EQ(
        PolicyRefusal(RuleWith("\"port\": 1")),
        "p.json:1:38: unknown key \"port\"; known here: \"guid\", \"type\", \"local_ports\", \"local_addresses\", "
        "\"remote_addresses\"");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [{"guid": "a\u0000", "type": ""}]})"),
              "p.json:1:21: \"guid\" must not hold a NUL character");
}

TEST(Policy, AnInvalidPortIsRefused) {
    EXPECT_EQ(PolicyRefusal(RuleWith("\"local_ports\": 445")),
              "p.json:1:53: \"local_ports\" must be an array, and this is a number");
    EXPECT_EQ(PolicyRefusal(RuleWith("\"local_ports\": []")),
              "p.json:1:53: \"local_ports\" must not be empty: omit the key to accept every value");
    EXPECT_EQ(PolicyRefusal(RuleWith("\"local_ports\": [65536]")),
              "p.json:1:54: a port must be a whole number from 0 to 65535, and this is 65536");
    EXPECT_EQ(PolicyRefusal(RuleWith("\"local_ports\": [null]")),
              "p.json:1:54: a port must be a number, or a string such as \"8000-8080\", and this is null");
    for (const std::string text : {"", "445", "-", "1-", "-1", "2-1", "1-65536", "a-b", "1-2-3", "1 - 2", "+1-2"}) {
        EXPECT_EQ(PolicyRefusal(RuleWith("\"local_ports\": [\"" + text + "\"]")),
                  "p.json:1:54: \"" + text + "\" is not a port range such as \"8000-8080\"");
    }
}

TEST(Policy, AnInvalidAddressRangeIsRefused) {
    EXPECT_EQ(PolicyRefusal(RuleWith("\"local_addresses\": []")),
              "p.json:1:57: \"local_addresses\" must not be empty: omit the key to accept every value");
    EXPECT_EQ(PolicyRefusal(RuleWith("\"remote_addresses\": [\"10.0.0.1/8\"]")),
              "p.json:1:59: 10.0.0.1 has bits set after the first 8");
    EXPECT_EQ(PolicyRefusal(RuleWith("\"remote_addresses\": [1]")),
              "p.json:1:59: an address range must be a string, and this is a number");
}

TEST(Policy, AFailureIsPrescribedByTheNameOfItsEvent) {
    const Policy policy =
        PolicyFrom("{\"rules\": [], \"failures\": {\"a\": \"network-error\",\n \"b\": \"query-error\", "
                   "\"c\": \"broken-answer\"}}");
    EXPECT_EQ(policy.failures.at("a").failure, Failure::networkError);
    EXPECT_EQ(policy.failures.at("b").failure, Failure::queryError);
    EXPECT_EQ(policy.failures.at("b").where.line, 2U);
    EXPECT_EQ(policy.failures.at("b").where.column, 2U);
    EXPECT_EQ(policy.failures.at("c").failure, Failure::brokenAnswer);
}

TEST(Policy, AnInvalidFailureIsRefused) {
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "failures": {"a": "network error"}})"),
              "p.json:1:33: \"network error\" is not one of \"network-error\", \"query-error\", \"broken-answer\"");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "failures": {"a": 1}})"),
              "p.json:1:33: a failure must be a string, and this is a number");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "failures": ["a"]})"),
              "p.json:1:27: \"failures\" must be an object, and this is an array");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "failures": {"a": "query-error", "a": "query-error"}})"),
              "p.json:1:48: \"a\" is repeated");
}

TEST(Policy, AProgramIsAFileUnderAName) {
    const TemporaryDirectory directory;
    const Policy policy = ReadPolicy(directory.Write(
        "p.json", R"({"rules": [], "programs": {"web server": "server", "": "bin/x.exe", "near": "./y"}})"));
    EXPECT_EQ(policy.programs, (std::map<std::string, std::filesystem::path>{
                                   {"web server", "server"},
                                   {"", PathOf(directory.Name("bin/x.exe"))},
                                   {"near", PathOf(directory.Name("./y"))},
                               }))
        << "a file with a directory is relative to the policy, one without is not";
    EXPECT_TRUE(PolicyFrom(R"({"rules": [], "programs": {}})").programs.empty());
}

TEST(Policy, AnInvalidProgramIsRefused) {
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "programs": ["a"]})"),
              "p.json:1:27: \"programs\" must be an object, and this is an array");
    EXPECT_EQ(PolicyRefusal("{\"rules\": [], \"programs\": {\n  \"a\": 1}}"),
              "p.json:2:8: the file of a program must be a string, and this is a number");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "programs": {"a": ""}})"),
              "p.json:1:33: the file of a program must have a name");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "programs": {"a": "bin/"}})"),
              "p.json:1:33: the file of a program must have a name");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "programs": {"a": "x\u0000"}})"),
              "p.json:1:33: the file of a program must not hold a NUL character");
    EXPECT_EQ(PolicyRefusal(R"({"rules": [], "programs": {"a": "x", "a": "x"}})"), "p.json:1:38: \"a\" is repeated");
}

TEST(Policy, AnUnknownKeyIsRefused) {
    EXPECT_EQ(PolicyRefusal("{\"rules\": [],\n  \"exceptionMode\": 1}"),
              "p.json:2:3: unknown key \"exceptionMode\"; known here: \"machine_id\", \"defender_mode\", "
              "\"exception_mode\", \"allow_list\", \"actions\", \"rules\", \"dots\", \"failures\", \"programs\"");
}

TEST(Policy, ASyntaxErrorIsRefused) {
    EXPECT_EQ(PolicyRefusal("{\"rules\": []\n"), "p.json:2:1: Missing a comma or '}' after an object member.");
    EXPECT_EQ(PolicyRefusal("[]"), "p.json:1:1: a policy must be an object, and this is an array");
}

TEST(Policy, AnUnreadablePolicyIsAFileError) {
    const TemporaryDirectory directory;
    EXPECT_THROW(ReadPolicy(directory.Name("none.json")), FileError);
}

TEST(Policy, ARepeatedGuidIsRefused) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("p.json", "{\"rules\": [\n"
                                                       "  {\"guid\": \"A\", \"type\": \"x\"},\n"
                                                       "  {\"guid\": \"B\", \"type\": \"x\"},\n"
                                                       "  {\"type\": \"y\", \"guid\": \"A\"}]}");
    EXPECT_EQ(RefusalOf([&] { ReadPolicy(name); }),
              name + ":4:25: the guid \"A\" is the guid of another rule: " + name + ":2:12");
    EXPECT_EQ(PolicyFrom(R"({"rules": [{"guid": "A", "type": "x"}, {"guid": "a", "type": "x"},
                                           {"guid": "A ", "type": "x"}]})")
                  .rules.size(),
              3U);
    EXPECT_EQ(PolicyRefusal(R"({"rules": [{"guid": "A", "type": "x"}, {"guid": "\u0041", "type": "x"}]})"),
              "p.json:1:49: the guid \"A\" is the guid of another rule: p.json:1:21")
        << "however it is written";
}

TEST(Policy, ListsItsFiles) {
    const TemporaryDirectory directory;
    directory.Write("allow.json", R"({"mid_list": []})");
    directory.Write("actions.json", R"({"t": 1})");
    directory.Write("dots.json", "{}");
    const std::string name = directory.Write(
        "p.json", R"({"rules": [], "allow_list": "allow.json", "actions": "actions.json", "dots": "dots.json"})");
    std::string files;
    for (const PolicyFile& file : ReadPolicy(name).files) {
        files += file.what + '=' + Utf8Of(PathOf(file.name).filename()) + (file.holdsDots ? " dots; " : "; ");
    }
    EXPECT_EQ(files, "the policy=p.json; the allow list=allow.json; the action table=actions.json; "
                     "the dots=dots.json dots; ");
}
