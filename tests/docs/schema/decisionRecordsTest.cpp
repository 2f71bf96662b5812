// The decision records of all example replays fit their schema, and the codes in it are those of the host.
#include <sstream>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "decide/reasonCode.h"
#include "docs/schema/schemaFile.h"
#include "docs/sourceTree.h"
#include "kit/system/process.h"

namespace {

// The codes of the list in the schema.
std::vector<std::string> CodesOfTheSchema() {
    rapidjson::Document document;
    document.Parse(docs::ReadText(docs::InTree("docs/schema/decision.schema.json")).c_str());
    std::vector<std::string> codes;
    for (const auto& code : document["definitions"]["reasonCode"]["enum"].GetArray()) {
        codes.emplace_back(code.GetString());
    }
    return codes;
}

std::vector<std::string> CodesOfTheHost() {
    std::vector<std::string> codes;
    for (const mordhost::NamedReason& reason : mordhost::ReasonCodes()) {
        codes.emplace_back(reason.name);
    }
    return codes;
}

std::string Output(const char* command, const std::filesystem::path& policy, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {command, policy.string(), (policy.parent_path() / "events.jsonl").string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const kit::ProcessResult result = kit::RunProcess({MORDHOST_PROGRAM, arguments, "", ""});
    EXPECT_EQ(result.code, 0) << result.error;
    return result.output;
}

// The policies of the examples that have events.
std::vector<std::filesystem::path> Policies() {
    std::vector<std::filesystem::path> policies;
    for (const auto& file : docs::FilesBelow("examples", ".json")) {
        if (file.filename().string().starts_with("policy") && exists(file.parent_path() / "events.jsonl")) {
            policies.push_back(file);
        }
    }
    return policies;
}

TEST(DecisionRecords, OfAllExamplesFitTheirSchema) {
    const schema::SchemaFile decision("decision");
    const schema::SchemaFile summary("summary");
    size_t records = 0;
    for (const auto& policy : Policies()) {
        SCOPED_TRACE(policy.string());
        for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
                 {}, {"--no-duration"}, {"--no-log"}, {"--dots-down", "query-error"}}) {
            std::vector<std::string> all = {"--format", "jsonl"};
            all.insert(all.end(), options.begin(), options.end());
            std::istringstream lines(Output("replay", policy, all));
            std::string last;
            for (std::string line; std::getline(lines, line); last = line) {
                if (!last.empty()) {
                    ++records;
                    EXPECT_EQ(decision.Misfit(last), "") << last;
                }
            }
            EXPECT_EQ(summary.Misfit(last), "") << last;
        }
    }
    EXPECT_GE(records, 200U);
}

TEST(Explanations, OfAllExamplesFitTheirSchema) {
    const schema::SchemaFile explanation("explanation");
    size_t explanations = 0;
    for (const auto& policy : Policies()) {
        SCOPED_TRACE(policy.string());
        for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
                 {}, {"--no-duration", "--records"}, {"--dots-down", "network-error"}, {"--event", "1"}}) {
            std::vector<std::string> all = {"--format", "jsonl"};
            all.insert(all.end(), options.begin(), options.end());
            std::istringstream lines(Output("explain", policy, all));
            for (std::string line; std::getline(lines, line); ++explanations) {
                EXPECT_EQ(explanation.Misfit(line), "") << line;
            }
        }
    }
    EXPECT_GE(explanations, 100U);
}

TEST(DecisionRecords, OfADocumentFitTheirSchema) {
    const schema::SchemaFile decision("decision");
    rapidjson::Document document;
    document.Parse(Output("replay", Policies().front(), {"--format", "json"}).c_str());
    ASSERT_TRUE(document.IsObject());
    EXPECT_GE(document["decisions"].Size(), 5U);
    EXPECT_TRUE(document["summary"].IsObject());
    EXPECT_EQ(document.MemberCount(), 2U);
}

// The lines of every pair of policies over the events of the first, of one example.
TEST(DecisionRecords, OfDifferencesAndRehearsalsFitTheirSchemas) {
    const schema::SchemaFile difference("difference");
    const schema::SchemaFile rehearsal("rehearsal");
    size_t differences = 0;
    size_t rehearsed = 0;
    for (const auto& policy : Policies()) {
        SCOPED_TRACE(policy.string());
        std::istringstream events(Output("rehearse", policy, {"--format", "jsonl"}));
        for (std::string line; std::getline(events, line); ++rehearsed) {
            EXPECT_EQ(rehearsal.Misfit(line), "") << line;
        }
        const std::string recording = (policy.parent_path() / "events.jsonl").string();
        for (const auto& other : Policies()) {
            if (other.parent_path() != policy.parent_path()) {
                continue;
            }
            const kit::ProcessResult result = kit::RunProcess(
                {MORDHOST_PROGRAM, {"diff", policy.string(), other.string(), recording, "--format", "jsonl"}, "", ""});
            EXPECT_LE(result.code, 1) << result.error;
            std::istringstream lines(result.output);
            for (std::string line; std::getline(lines, line); ++differences) {
                EXPECT_EQ(difference.Misfit(line), "") << line;
            }
        }
    }
    EXPECT_GE(differences, 30U);
    EXPECT_GE(rehearsed, 30U);
}

TEST(DecisionRecords, HaveTheCodesOfTheSchema) {
    EXPECT_EQ(CodesOfTheSchema(), CodesOfTheHost());
}

// The table of docs/documents.md: "| `no-dot` | … |" below the heading "Reason codes".
TEST(DecisionRecords, HaveTheCodesOfTheirPage) {
    std::istringstream lines(docs::ReadText(docs::InTree("docs/documents.md")));
    std::vector<std::string> codes;
    bool inTable = false;
    for (std::string line; std::getline(lines, line);) {
        inTable = line.starts_with("#") ? line == "### Reason codes" : inTable;
        if (inTable && line.starts_with("| `")) {
            codes.push_back(line.substr(3, line.find('`', 3) - 3));
        }
    }
    EXPECT_EQ(codes, CodesOfTheHost());
}

} // namespace
