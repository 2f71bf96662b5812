// mordhost unused and mordhost suggest, as built.
#include <algorithm>

#include <rapidjson/document.h>

#include "system/inputStream.h"
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;
using mordhostTest::TidyMordhostTest;

namespace {

// Two services; the dot of the second names two machines of which none is allowed.
constexpr auto policy = R"({"machine_id": "HERE", "rules": [
 {"guid": "A", "type": "a", "local_ports": [1]}, {"guid": "B", "type": "b", "local_ports": [2]}],
 "allow_list": {"mid_list": [{"mid": "M", "protocol": ["a", "c"]}]}, "actions": {"c": 1},
 "dots": {"A": ["M"], "B": ["N", "O"]}})";
constexpr auto onOne = R"({"name": "one", "local_addr_port": 1, "remote_addr_ip": "192.0.2.1"})";
constexpr auto onTwo = R"({"name": "two", "local_addr_port": 2, "remote_addr_ip": "192.0.2.2"})";

class UsageCommand : public TidyMordhostTest {
protected:
    // Runs the command on the policy and the events. "POLICY" and "EVENTS" in the arguments are their files.
    ProcessResult Run(std::vector<std::string> arguments, const std::string& events = std::string(onOne) + '\n' + onTwo,
                      const std::string& input = "") const {
        std::replace(arguments.begin(), arguments.end(), std::string("POLICY"), m_policy);
        std::replace(arguments.begin(), arguments.end(), std::string("EVENTS"), directory.Write("e.jsonl", events));
        ProcessResult result = Mordhost(arguments, input);
        result.output = Plain(result.output);
        result.error = Plain(result.error);
        return result;
    }

    const std::string m_policy = directory.Write("p.json", policy);
};

rapidjson::Document Parsed(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.c_str());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

// Whether the text has a byte that a terminal interprets, besides line feeds.
bool HasControl(const std::string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte < 0x20 && byte != '\n') || byte == 0x7F ||
            (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0)) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST_F(UsageCommand, UnusedListsWhatTheEventsDidNotUse) {
    const ProcessResult result = Run({"unused", "POLICY", "EVENTS"});
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output, "rules: 2 of 2 used (100 %)\n"
                             "allow-list entries: 1 of 2 used (50 %)\n"
                             "    p.json:3:61: M for c, unused\n"
                             "action rows: 0 of 1 used (0 %)\n"
                             "    p.json:3:82: c: 1, unused\n"
                             "dots: 1 of 2 used (50 %)\n"
                             "    p.json:4:23: B, unused\n"
                             "2 events\n");
    const std::string all = Run({"unused", "POLICY", "EVENTS", "EVENTS", "--all"}).output;
    EXPECT_NE(all.find("    p.json:2:2: A of type a, applied to 2 events, used by 2 events\n"), std::string::npos)
        << all;
    EXPECT_NE(all.find("    p.json:4:11: A, used by 1 event\n"), std::string::npos) << all;
    EXPECT_NE(all.find("\n4 events\n"), std::string::npos) << all;
}

TEST_F(UsageCommand, UnusedWritesJsonAndLines) {
    const auto document = Parsed(Run({"unused", "POLICY", "EVENTS", "--format", "json"}).output);
    const auto& parts = document["parts"];
    ASSERT_EQ(parts.Size(), 3U);
    EXPECT_STREQ(parts[0]["part"].GetString(), "allow-list-entry");
    EXPECT_STREQ(parts[0]["machine"].GetString(), "M");
    EXPECT_STREQ(parts[0]["key"].GetString(), "c");
    EXPECT_STREQ(parts[0]["pointer"].GetString(), "/allow_list/mid_list/0/protocol/1");
    EXPECT_EQ(parts[0]["events"].GetUint(), 0U);
    EXPECT_STREQ(parts[1]["part"].GetString(), "action-row");
    EXPECT_EQ(parts[1]["action"].GetInt(), 1);
    EXPECT_STREQ(parts[2]["part"].GetString(), "dot");
    EXPECT_EQ(document["summary"]["rules"]["used"].GetUint(), 2U);
    EXPECT_EQ(document["summary"]["dots"]["total"].GetUint(), 2U);
    const std::string lines = Run({"unused", "POLICY", "EVENTS", "--format", "jsonl", "--all"}).output;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 8);
    EXPECT_STREQ(Parsed(lines.substr(0, lines.find('\n')))["part"].GetString(), "rule");
    EXPECT_EQ(Parsed(lines.substr(lines.rfind('\n', lines.size() - 2)))["summary"]["events"].GetUint(), 2U);
}

TEST_F(UsageCommand, SuggestNamesTheEventsOfEachMissingEntry) {
    const std::string events = std::string(onTwo) + '\n' + onTwo + '\n' + onOne;
    const ProcessResult result = Run({"suggest", "EVENTS", "--policy", "POLICY"}, events);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output, "N for b allows 1 event\n"
                             "    e.jsonl:1 two from 192.0.2.2 to port 2\n"
                             "    the dot also names O\n"
                             "1 missing entry; of 3 events 1 allowed without and 2 with it\n"
                             "still blocked, no-dot: 1\n");
}

TEST_F(UsageCommand, SuggestDraftsAnAllowListFromEventsAlone) {
    const std::string events = std::string(onTwo) + '\n' + onTwo + '\n' + onOne + "\n{}\n{\"flags\": 4}\n";
    const ProcessResult result = Run({"suggest", "EVENTS", "--most", "1"}, events);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, "192.0.2.2 for port-2 allows 2 events\n"
                             "    e.jsonl:1 two from 192.0.2.2 to port 2\n"
                             "    and 1 more\n"
                             "192.0.2.1 for port-1 allows 1 event\n"
                             "    e.jsonl:3 one from 192.0.2.1 to port 1\n"
                             "2 draft entries for 3 of 5 events; 1 disconnect, 1 without remote address or local port\n"
                             "Replace each address by the id of the machine, and each port-N by the protocol key of "
                             "the rule.\n");
    const auto document = Parsed(Run({"suggest", "EVENTS", "--format", "json"}, events).output);
    EXPECT_EQ(document["summary"]["incomplete"].GetUint(), 1U);
    EXPECT_EQ(document["summary"]["allowed"].GetUint(), 3U);
}

// The JSON document is an allow list: with it, the policy allows the event.
TEST_F(UsageCommand, TheJsonOfSuggestIsAnAllowList) {
    const ProcessResult result = Run({"suggest", "EVENTS", "--policy", "POLICY", "--format", "json"});
    const auto document = Parsed(result.output);
    const auto& events = document["mid_list"][0]["events"];
    EXPECT_EQ(events["count"].GetUint(), 1U);
    EXPECT_EQ(events["more"].GetUint(), 0U);
    EXPECT_STREQ(events["first"][0]["name"].GetString(), "two");
    EXPECT_EQ(document["summary"]["allowed_before"].GetUint(), 1U);
    EXPECT_EQ(document["summary"]["allowed_after"].GetUint(), 2U);
    const std::string lines = Run({"suggest", "EVENTS", "--policy", "POLICY", "--format", "jsonl"}).output;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
    EXPECT_STREQ(Parsed(lines.substr(0, lines.find('\n')))["mid"].GetString(), "N");
    const std::string file = directory.Write("allow.json", result.output);
    EXPECT_EQ(Mordhost({"check", "--allow-list", file, "--strict"}).code, 0);
    std::string applied = policy;
    const std::string inlined = R"({"mid_list": [{"mid": "M", "protocol": ["a", "c"]}]})";
    applied.replace(applied.find(inlined), inlined.size(), "\"allow.json\"");
    const std::string decisions = Replay(applied, onTwo, {"--format", "jsonl"}).output;
    EXPECT_NE(decisions.find("\"verdict\":\"allow\""), std::string::npos) << decisions;
}

TEST_F(UsageCommand, TheStandardInputGivesTheSame) {
    const std::string events = std::string(onOne) + '\n' + onTwo + '\n';
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"unused", "POLICY"}, {"suggest", "--policy", "POLICY"}, {"suggest"}}) {
        std::vector<std::string> fromFile = command;
        fromFile.emplace_back("EVENTS");
        std::vector<std::string> fromInput = command;
        fromInput.emplace_back("-");
        std::string expected = Run(fromFile, events).output;
        for (size_t at; (at = expected.find("e.jsonl")) != std::string::npos;) {
            expected.replace(at, 7, "standard input");
        }
        EXPECT_EQ(Run(fromInput, events, events).output, expected);
        EXPECT_NE(expected, "");
        ExpectNothingIsLeft();
    }
}

TEST_F(UsageCommand, ExitsByWhatItFinds) {
    const std::string odd = directory.Write("odd.jsonl", "{}\n{\"local_addr_port\": -1}\n");
    const std::string bad = directory.Write("bad.json", "{}");
    const std::pair<std::vector<std::string>, int> cases[] = {
        {{"unused", "POLICY", "EVENTS", "--strict"}, 1},
        {{"unused"}, 2},
        {{"unused", "POLICY"}, 2},
        {{"unused", "POLICY", directory.Name("none")}, 2},
        {{"unused", "POLICY", "-", "-"}, 2},
        {{"unused", "POLICY", "EVENTS", "--format", "junit"}, 2},
        {{"unused", bad, "EVENTS"}, 3},
        {{"unused", "POLICY", "EVENTS", odd}, 3},
        {{"unused", "POLICY", "EVENTS", "--libraries", directory.Name("")}, 4},
        {{"suggest"}, 2},
        {{"suggest", "EVENTS", "--policy", directory.Name("none")}, 2},
        {{"suggest", "EVENTS", "--policy", bad}, 3},
        {{"suggest", odd}, 3},
        {{"suggest", "EVENTS", "--policy", "POLICY", "--libraries", directory.Name("")}, 4},
    };
    for (const auto& [arguments, code] : cases) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.code, code) << result.output << result.error;
        EXPECT_EQ(result.error.empty(), code == 1) << result.error;
    }
    const std::string used = directory.Write("used.json", R"({"rules": [{"guid": "A", "type": "a"}]})");
    EXPECT_EQ(Run({"unused", used, "EVENTS", "--strict"}).code, 0);
    ExpectNothingIsLeft();
}

TEST_F(UsageCommand, NoFormatWritesControlCharacters) {
    const std::string text = "a\\u001b[31m\\u009b\x7F\\n\xC2\x9B";
    const std::string hostile = "{\"rules\": [{\"guid\": \"" + text + "\", \"type\": \"" + text + "\"}, {\"guid\": \"" +
                                text + "2\", \"type\": \"x\"}],\"allow_list\": {\"mid_list\": " + "[{\"mid\": \"" +
                                text + "\", \"protocol\": [\"x\"]}]}, \"actions\": {\"" + text +
                                "2\": 1}, \"dots\": {\"" + text + "\": [\"" + text + "\"]}}";
    const std::string file = directory.Write("hostile.json", hostile);
    const std::string events = "{\"name\": \"" + text + "\", \"local_addr_port\": 1}\n";
    for (const std::string format : {"text", "json", "jsonl"}) {
        for (const std::vector<std::string>& command :
             {std::vector<std::string>{"unused", file, "EVENTS", "--all"}, {"suggest", "EVENTS", "--policy", file}}) {
            std::vector<std::string> arguments = command;
            arguments.insert(arguments.end(), {"--format", format});
            const ProcessResult result = Run(arguments, events);
            EXPECT_EQ(result.code, 0) << result.error;
            EXPECT_FALSE(HasControl(result.output)) << result.output;
            EXPECT_NE(result.output.find("31m"), std::string::npos) << result.output;
        }
    }
}

TEST_F(UsageCommand, TheExamplesShowWhatIsExpected) {
    const std::string folder = "examples/office/";
    const std::string events = folder + "events.jsonl";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"unused", folder + "policy.json", events}, "unused.txt"},
        {{"suggest", events, "--policy", folder + "policy.json"}, "suggest.txt"},
        {{"suggest", events}, "draft.txt"},
    };
    for (const auto& [arguments, expected] : cases) {
        const ProcessResult result = kit::RunProcess({MORDHOST_PROGRAM, arguments, "", MORDHOST_SOURCE_DIRECTORY});
        EXPECT_EQ(result.code, 0) << result.error;
        const std::string file = std::string(MORDHOST_SOURCE_DIRECTORY) + '/' + folder + "expected/" + expected;
        EXPECT_EQ(result.output, mordhost::InputStream(file).ReadAll());
    }
}
