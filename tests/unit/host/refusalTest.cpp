// Invalid documents: mordhost names file, line and column, and decides nothing.
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;

namespace {

constexpr auto oneRule = R"({"rules": [{"guid": "G", "type": "smb"}]})";

class Refusal : public MordhostTest {
protected:
    // The error message. For a run that succeeded or wrote other output, a description of that.
    std::string Of(const ProcessResult& result) const {
        if (result.code != 3 || !result.output.empty()) {
            return "exit code " + std::to_string(result.code) + ", output \"" + result.output + '"';
        }
        return Plain(result.error);
    }
};

} // namespace

TEST_F(Refusal, NamesTheLineAndColumnInThePolicy) {
    EXPECT_EQ(Of(Replay("{\n  \"rules\": [],\n  \"defender_mode\": \"none\"\n}", "")),
              "mordhost: p.json:3:20: \"none\" is not one of \"all-forbid\", \"action-table\", "
              "\"allow-after-decision\", \"emergency\"\n");
    EXPECT_EQ(Of(Replay("{\n  \"rules\": [}", "")), "mordhost: p.json:2:13: Invalid value.\n");
}

TEST_F(Refusal, NamesTheLineAndColumnInAFileOfThePolicy) {
    directory.Write("allow.json", "{\"list\": 1,\n    \"mid_list\": [}");
    EXPECT_EQ(Of(Replay(R"({"rules": [], "allow_list": "allow.json"})", "")),
              "mordhost: allow.json:2:18: Invalid value.\n");
    directory.Write("dots.json", "{\n\n  \"G\": \"M\"}");
    EXPECT_EQ(Of(Replay(R"({"rules": [], "dots": "dots.json"})", "")),
              "mordhost: dots.json:3:8: the machine ids of a dot must be an array, and this is a string\n");
}

TEST_F(Refusal, NamesTheLineAndColumnInTheEvents) {
    EXPECT_EQ(Of(Replay(oneRule, "{}\n{\"pid\": 1}\n{\"pid\": \"1\"}\n")),
              "mordhost: e.jsonl:3:9: \"pid\" must be a number, and this is a string\n");
    EXPECT_EQ(Of(Replay(oneRule, "{}\r\n\r\n{\"pid\": 1,}\r\n")),
              "mordhost: e.jsonl:3:11: Missing a name for object member.\n");
}

TEST_F(Refusal, ComesBeforeTheFirstDecisionAndOutput) {
    const ProcessResult result =
        Replay(R"({"rules": [{"guid": "G", "type": "smb"}], "dots": {"G": ["M"]},
                   "allow_list": {"mid_list": [{"mid": "M", "protocol": ["smb"]}]}})",
               "{}\nbad\n", {"--dots", directory.Name("dots.json"), "--reports", directory.Name("reports")});
    EXPECT_EQ(Of(result), "mordhost: e.jsonl:2:1: Invalid value.\n");
    EXPECT_FALSE(directory.Has("dots.json"));
    EXPECT_FALSE(directory.Has("reports"));
}

TEST_F(Refusal, OfTheStandardInputComesAfterTheDecisionsBefore) {
    const ProcessResult result =
        Mordhost({"replay", directory.Write("p.json", oneRule), "-"}, "{\"flags\": 4}\n{\"pid\": true}\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.output.find("disconnect"), std::string::npos) << result.output;
    EXPECT_EQ(result.error, "mordhost: standard input:2:9: \"pid\" must be a number, and this is a boolean\n");
}

TEST_F(Refusal, OfALateEventComesAfterTheDecisionsBefore) {
    std::string events;
    for (int i = 0; i < 1500; ++i) {
        events += "{\"flags\": 4}\n";
    }
    const ProcessResult result = Replay(oneRule, events + "bad\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(Plain(result.error), "mordhost: e.jsonl:1501:1: Invalid value.\n");
    EXPECT_NE(result.output.find("\n1500 events: 1500 allow\n"), std::string::npos) << "and their summary";
}

TEST_F(Refusal, OfAnEventInAnotherEncodingNamesIt) {
    EXPECT_EQ(Of(Replay(oneRule, std::string("\xFF\xFE{\0}\0\n\0", 8))),
              "mordhost: e.jsonl:1:1: the text is UTF-16, and JSON is UTF-8: save the file as UTF-8\n");
    EXPECT_EQ(Of(Replay(oneRule, std::string(1000, '\0'))),
              "mordhost: e.jsonl:1:1: the text contains a NUL byte: the file is not a text, or it is damaged\n");
}

TEST_F(Refusal, OfAGuidThatTwoRulesHaveNamesBoth) {
    EXPECT_EQ(Of(Replay("{\"rules\": [{\"guid\": \"G\", \"type\": \"a\"},\n{\"guid\": \"G\", \"type\": \"b\"}]}", "")),
              "mordhost: p.json:2:10: the guid \"G\" is the guid of another rule: p.json:1:21\n");
}
