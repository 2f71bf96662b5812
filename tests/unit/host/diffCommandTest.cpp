// mordhost diff and mordhost rehearse, as built.
#include <rapidjson/document.h>

#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;

namespace {

// A policy with a rule for port 1, whose dot G is used up by its first connection.
std::string PolicyWith(const std::string& members) {
    return R"({"machine_id": "HERE", "rules": [{"guid": "G", "type": "x", "local_ports": [1]}], "dots": {"G": ["M"]},
 "allow_list": {"mid_list": [{"mid": "M", "protocol": ["x"]}]})" +
           members + "}";
}

constexpr auto allForbid = R"(, "defender_mode": "all-forbid")";
constexpr auto twoEvents = "{\"name\": \"e1\", \"local_addr_port\": 1}\n\n{\"name\": \"e2\", \"local_addr_port\": 1}\n";

class Comparing : public MordhostTest {
protected:
    ProcessResult Diff(const std::string& before, const std::string& after, const std::string& events,
                       const std::vector<std::string>& options = {}) const {
        return Run({"diff", directory.Write("old.json", before), directory.Write("new.json", after)}, events, options);
    }

    ProcessResult Rehearse(const std::string& policy, const std::string& events,
                           const std::vector<std::string>& options = {}) const {
        return Run({"rehearse", directory.Write("p.json", policy)}, events, options);
    }

private:
    ProcessResult Run(std::vector<std::string> arguments, const std::string& events,
                      const std::vector<std::string>& options) const {
        arguments.push_back(directory.Write("e.jsonl", events));
        arguments.insert(arguments.end(), options.begin(), options.end());
        ProcessResult result = Mordhost(arguments);
        result.output = Plain(result.output);
        result.error = Plain(result.error);
        return result;
    }
};

rapidjson::Document Parsed(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

bool HasControl(const std::string& text) {
    for (const char c : text) {
        if ((static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == 0x7F) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST_F(Comparing, DiffShowsBothReasonsTheirPlacesTheCauseAndTheMatrix) {
    const ProcessResult result = Diff(PolicyWith(""), PolicyWith(allForbid), twoEvents);
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(
        result.output.substr(result.output.find("\n\n") + 2),
        "line 1 \"e1\": -  -:- -> -:1  -  connection\n"
        "  old: allow, machine M is allowed for x, its dot is deleted\n"
        "        old.json:1:34: rule G, type x: machine-allowed\n"
        "        old.json:2:56: entry of the allow list\n"
        "  new: block, all-forbid mode blocks\n"
        "        new.json:2:82: defender mode\n"
        "\n"
        "line 3 \"e2\": -  -:- -> -:1  -  connection\n"
        "  old: block, no dot is held\n"
        "        old.json:1:34: rule G, type x: no-dot\n"
        "  new: block, all-forbid mode blocks\n"
        "        new.json:2:82: defender mode\n"
        "  follows from line 1: only the old policy deleted the dot of G\n"
        "\n"
        "2 events: 1 verdict changed, 1 reason changed under the same verdict; 1 difference after a dot that only "
        "one policy deleted\n"
        "\n"
        "old \\ new              block\n"
        "allow                      1\n"
        "block                      1\n");
}

TEST_F(Comparing, DiffExitsByTheVerdictsAndRefusesWhatAReplayRefuses) {
    const std::string emergency = PolicyWith(R"(, "defender_mode": "emergency")");
    EXPECT_EQ(Diff(PolicyWith(""), PolicyWith(""), twoEvents).code, 0);
    EXPECT_EQ(Diff(PolicyWith(""), PolicyWith(allForbid), "").code, 0);
    EXPECT_EQ(Diff(PolicyWith(""), emergency, "{\"local_addr_port\": 1}\n").code, 0) << "only the reason differs";
    EXPECT_EQ(Diff(PolicyWith(""), emergency, twoEvents).code, 1);
    EXPECT_EQ(Diff(PolicyWith(""), "{", twoEvents).error,
              "mordhost: new.json:1:2: Missing a name for object member.\n");
    EXPECT_EQ(Diff("{}", PolicyWith(""), twoEvents).code, 3);
    const ProcessResult badEvent = Diff(PolicyWith(""), PolicyWith(""), std::string(twoEvents) + "7\n");
    EXPECT_EQ(badEvent.code, 3);
    EXPECT_EQ(badEvent.output, "");
    EXPECT_EQ(Mordhost({"diff", directory.Name("old.json"), directory.Name("none"), directory.Name("e.jsonl")}).code,
              2);
    EXPECT_EQ(Diff(PolicyWith(""), PolicyWith(""), twoEvents, {"--libraries", directory.Name("")}).code, 4);
}

// The library in the second process refuses a document that mordhost does not.
TEST_F(Comparing, DiffReportsWhatTheLibraryRefusesInTheNewPolicy) {
    const ProcessResult result =
        Diff(PolicyWith(""), R"({"rules": [], "allow_list": {}})", twoEvents, {"--format", "jsonl"});
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.error.find("new.json:1:"), std::string::npos) << result.error;
    EXPECT_EQ(result.output, "");
}

TEST_F(Comparing, ALateFaultEndsTheRunAfterTheEventsBeforeIt) {
    std::string events;
    for (int i = 0; i < 1500; ++i) {
        events += "{\"local_addr_port\": 1}\n";
    }
    const ProcessResult diff = Diff(PolicyWith(""), PolicyWith(allForbid), events + "{", {"--format", "json"});
    EXPECT_EQ(diff.code, 3);
    const rapidjson::Document differences = Parsed(diff.output);
    EXPECT_EQ(differences["summary"]["events"].GetInt(), 1500);
    EXPECT_EQ(differences["summary"]["verdicts_changed"].GetInt(), 1);
    EXPECT_EQ(differences["differences"].Size(), 1500U);
    const ProcessResult rehearse = Rehearse(PolicyWith(""), events + "{", {"--format", "json", "--summary"});
    EXPECT_EQ(rehearse.code, 3);
    EXPECT_EQ(Parsed(rehearse.output)["summary"]["events"].GetInt(), 1500);
}

TEST_F(Comparing, EventsMayBeTheStandardInput) {
    const std::string before = directory.Write("old.json", PolicyWith(""));
    const std::string after = directory.Write("new.json", PolicyWith(allForbid));
    const ProcessResult diff = Mordhost({"diff", before, after, "-", "--format", "json"}, twoEvents);
    EXPECT_EQ(diff.code, 1);
    EXPECT_EQ(Parsed(diff.output)["summary"]["events"].GetInt(), 2);
    const ProcessResult rehearse = Mordhost({"rehearse", before, "-", "--format", "json"}, twoEvents);
    EXPECT_EQ(rehearse.code, 0);
    EXPECT_EQ(Parsed(rehearse.output)["summary"]["events"].GetInt(), 2);
}

TEST_F(Comparing, HostileTextReachesNoTerminal) {
    const std::string hostile = R"("A\u001b[31m\u009b\r\n")";
    const std::string policy = R"({"rules": [{"guid": )" + hostile + R"(, "type": )" + hostile + R"(}], "dots": {)" +
                               hostile + ": [" + hostile + R"(]}, "allow_list": {"mid_list": [{"mid": )" + hostile +
                               R"(, "protocol": [)" + hostile + "]}]}";
    const std::string events = R"({"name": )" + hostile + R"(, "process": )" + hostile + "}\n";
    for (const char* const format : {"text", "json", "jsonl"}) {
        const ProcessResult diff = Diff(policy + "}", policy + allForbid + "}", events + events, {"--format", format});
        EXPECT_LE(diff.code, 1) << diff.error;
        EXPECT_FALSE(HasControl(diff.output)) << diff.output;
        EXPECT_NE(diff.output.find("31m"), std::string::npos);
        const ProcessResult rehearse = Rehearse(policy + "}", events, {"--format", format});
        EXPECT_EQ(rehearse.code, 0) << rehearse.error;
        EXPECT_FALSE(HasControl(rehearse.output)) << rehearse.output;
        EXPECT_NE(rehearse.output.find("31m"), std::string::npos);
    }
}

TEST_F(Comparing, RehearseListsChangesAndCountsEachCombination) {
    const ProcessResult lines =
        Rehearse(PolicyWith(""), "{\"local_addr_port\": 1, \"flags\": 16}\n{}\n", {"--format", "json"});
    EXPECT_EQ(lines.code, 0);
    EXPECT_EQ(lines.error, "");
    const rapidjson::Document document = Parsed(lines.output);
    ASSERT_EQ(document["events"].Size(), 1U);
    EXPECT_STREQ(document["events"][0]["verdict"].GetString(), "allow (flagged)");
    const auto& summary = document["summary"];
    EXPECT_EQ(summary["without_rule"].GetInt(), 1);
    ASSERT_EQ(summary["combinations"].Size(), 40U);
    size_t changed = 0;
    for (const auto& row : summary["combinations"].GetArray()) {
        const std::string failure = row["failure"].GetString();
        const std::string mode = row["defender_mode"].GetString();
        const std::string exception = row["exception_mode"].GetString();
        const bool allows = mode == "allow-after-decision" || mode == "emergency" ||
                            (failure == "none" && mode == "action-table") ||
                            (failure == "network-error" && exception == "allow");
        EXPECT_EQ(row["verdicts"].HasMember(allows ? "allow (flagged)" : "block"), true)
            << failure << ' ' << mode << ' ' << exception;
        EXPECT_EQ(row["changed"].GetInt(), allows ? 0 : 1);
        changed += allows ? 0 : 1;
    }
    EXPECT_EQ(document["events"][0]["changes"].Size(), changed);
    EXPECT_EQ(Rehearse(PolicyWith(""), twoEvents, {"--summary"}).output.find("\nline"), std::string::npos);
}
