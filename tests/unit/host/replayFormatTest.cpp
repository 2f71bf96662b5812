// The formats of a replay, and failures of all its queries.
#include <rapidjson/document.h>

#include "unit/host/mordhostFixture.h"

using mordhostTest::MordhostTest;
using kit::ProcessResult;

namespace {

// A policy with one rule and these additional members.
std::string Policy(const std::string& members) {
    return R"({"rules": [{"guid": "G", "type": "smb"}])" + (members.empty() ? "" : ", " + members) + "}";
}

class ReplayFormat : public MordhostTest {};

} // namespace

TEST_F(ReplayFormat, WritesOneJsonDocument) {
    const auto replayed = [&](const std::string& format) {
        return Replay(Policy(""), "{}\n{\"flags\": 4}\n", {"--no-duration", "--format", format}).output;
    };
    const std::string lines = replayed("jsonl");
    const size_t first = lines.find('\n');
    const size_t second = lines.find('\n', first + 1);
    const std::string summary = lines.substr(second + std::string("\n{").size());
    EXPECT_EQ(replayed("json"), "{\"decisions\":[\n" + lines.substr(0, first) + ",\n" +
                                    lines.substr(first + 1, second - first - 1) + "\n]," + summary);
}

TEST_F(ReplayFormat, AJsonDocumentIsCompleteAfterAnError) {
    const ProcessResult result =
        Mordhost({"replay", directory.Write("p.json", Policy("")), "-", "--format", "json"}, "{}\n{\n");
    EXPECT_EQ(result.code, 3);
    rapidjson::Document document;
    document.Parse(result.output.c_str());
    ASSERT_FALSE(document.HasParseError()) << result.output;
    EXPECT_EQ(document["decisions"].Size(), 1U);
    EXPECT_EQ(document["summary"]["events"].GetUint(), 1U);
}

TEST_F(ReplayFormat, OutputsWithoutDurationsAreEqual) {
    for (const char* format : {"text", "json", "jsonl"}) {
        const std::vector<std::string> options = {"--no-duration", "--format", format};
        const std::string first = Replay(Policy(""), "{}\n{\"flags\": 4}\n", options).output;
        EXPECT_EQ(first, Replay(Policy(""), "{}\n{\"flags\": 4}\n", options).output) << format;
        EXPECT_EQ(first.find("_ns\""), std::string::npos);
    }
}

TEST_F(ReplayFormat, EveryQueryFailsWhileTheDotsAreDown) {
    const std::string policy =
        Policy(R"("exception_mode": "allow", "dots": {"G": ["M1"]}, "failures": {"e": "broken-answer"})");
    const auto reasons = [&](const char* failure) {
        const std::string text =
            Replay(policy, "{\"name\": \"e\"}\n{}\n", {"--format", "jsonl", "--dots-down", failure}).output;
        EXPECT_NE(text.find("\"failure\":\"" + std::string(failure) + "\",\"process\":null,\"reply\""),
                  std::string::npos)
            << text;
        std::string codes;
        const std::string before = "\"reason\":{\"code\":\"";
        for (size_t at = text.find(before); at != std::string::npos; at = text.find(before, at + 1)) {
            codes += text.substr(at + before.size(), text.find('"', at + before.size()) - at - before.size()) + ' ';
        }
        return codes;
    };
    EXPECT_EQ(reasons("network-error"), "network-error-allowed network-error-allowed ");
    EXPECT_EQ(reasons("query-error"), "query-error query-error ");
    EXPECT_EQ(reasons("broken-answer"), "broken-answer broken-answer ");
}
