// The output of the examples is the expected one on every platform.
#include <regex>
#include <set>
#include <vector>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "kit/system/process.h"
#include "policy/policyReader.h"
#include "system/inputStream.h"
#include "unit/host/exampleHere.h"
#include "unit/host/temporaryDirectory.h"

using kit::ProcessResult;
using kit::RunProcess;
using kit::TemporaryDirectory;
using mordhost::PathOf;
using mordhost::Utf8Of;
using mordhostTest::MaskDirectories;
using mordhostTest::MaskIds;
using mordhostTest::ReportsHere;
using mordhostTest::TableHere;

namespace {

namespace fs = std::filesystem;

// The policies of all examples, relative to the source tree: "examples/office/policy.json".
std::vector<std::string> Policies() {
    const fs::path examples = PathOf(MORDHOST_SOURCE_DIRECTORY) / "examples";
    std::set<std::string> policies; // sorted
    for (const auto& example : fs::directory_iterator(examples)) {
        if (!fs::exists(example.path() / "events.jsonl")) {
            continue;
        }
        for (const auto& file : fs::directory_iterator(example.path())) {
            const std::string name = Utf8Of(file.path().filename());
            if (name.starts_with("policy") && name.ends_with(".json")) {
                policies.insert("examples/" + Utf8Of(example.path().filename()) + "/" + name);
            }
        }
    }
    return {policies.begin(), policies.end()};
}

ProcessResult Replay(const std::string& policy, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"replay", policy, policy.substr(0, policy.rfind('/')) + "/events.jsonl"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunProcess({MORDHOST_PROGRAM, arguments, "", MORDHOST_SOURCE_DIRECTORY});
}

// The expected output of a policy: the file "expected/NAME" beside it.
std::string Expected(const std::string& policy, const std::string& ending) {
    const size_t slash = policy.rfind('/');
    const std::string name = policy.substr(slash + 1, policy.rfind('.') - slash - 1);
    return mordhost::InputStream(std::string(MORDHOST_SOURCE_DIRECTORY) + "/" + policy.substr(0, slash) + "/expected/" +
                                 name + ending)
        .ReadAll();
}

// Whether the events of the policy name programs.
bool HasPrograms(const std::string& policy) {
    return !mordhost::ReadPolicy(std::string(MORDHOST_SOURCE_DIRECTORY) + "/" + policy).programs.empty();
}

std::string MaskTimes(const std::string& table) {
    static const std::regex times("median [0-9.]+ (us|ms), 99th percentile [0-9.]+ (us|ms)");
    return std::regex_replace(table, times, "median T, 99th percentile T");
}

// The library searches a process by its id among the present ones.
std::string MaskProcesses(const std::string& reports) {
    static const std::regex processes("(\"proc_(name|path)\": \")[^\\n]*\"");
    return std::regex_replace(reports, processes, "$1P\"");
}

std::string TestName(const testing::TestParamInfo<std::string>& info) {
    return std::regex_replace(info.param, std::regex("[^A-Za-z0-9]"), "_");
}

class Example : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Example, ShowsWhatIsExpected) {
    const TemporaryDirectory directory;
    const ProcessResult result = Replay(GetParam(), {"--reports", directory.Name("reports")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    const std::string table = MaskTimes(result.output);
    const std::string reports = directory.Read("reports");
    const std::string expectedTable = Expected(GetParam(), ".txt");
    const std::string expectedReports = Expected(GetParam(), ".reports.txt");
    if (HasPrograms(GetParam())) {
        EXPECT_EQ(MaskIds(table), TableHere(expectedTable));
        EXPECT_EQ(MaskDirectories(reports), ReportsHere(expectedReports));
    } else {
        EXPECT_EQ(table, expectedTable);
        EXPECT_EQ(MaskProcesses(reports), expectedReports);
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, Example, testing::ValuesIn(Policies()), TestName);

namespace {

// The output of all examples.
struct Shown {
    std::set<int> replies;
    std::set<std::string> reasons;
    std::set<std::string> remoteEnds;
    std::set<int> localPorts;
    size_t deletedDots = 0;
    size_t blocksModified = 0;
};

Shown ShowAll() {
    Shown shown;
    const TemporaryDirectory directory;
    for (const std::string& policy : Policies()) {
        const std::string text = Replay(policy, {"--format", "jsonl", "--reports", directory.Name("reports")}).output;
        for (size_t at = 0, end = 0; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
            rapidjson::Document line;
            line.Parse(text.substr(at, end - at).c_str());
            EXPECT_TRUE(line.IsObject()) << text.substr(at, end - at);
            if (line.HasMember("summary") || line["reply"].IsNull()) {
                continue;
            }
            shown.replies.insert(line["reply"].GetInt());
            shown.reasons.insert(line["reason"]["text"].GetString());
            shown.remoteEnds.insert(line["event"]["remote_addr_ip"].GetString());
            shown.localPorts.insert(line["event"]["local_addr_port"].GetInt());
            shown.deletedDots += line["dot"].IsObject() && line["dot"]["deleted"].GetBool() ? 1 : 0;
        }
        const std::string reports = directory.Read("reports");
        shown.blocksModified += reports.find("\"block_modified\": true") != std::string::npos ? 1 : 0;
    }
    return shown;
}

} // namespace

TEST(Examples, CoverAllVerdictsAndReasons) {
    const Shown shown = ShowAll();
    EXPECT_EQ(shown.replies, (std::set<int>{0, 1, 2}));
    EXPECT_GE(shown.remoteEnds.size(), 8U);
    EXPECT_GE(shown.localPorts.size(), 6U);
    EXPECT_GE(shown.deletedDots, 4U);
    EXPECT_GE(shown.blocksModified, 2U);
    for (const char* reason :
         {"disconnect", "network error, exception mode allows", "network error, exception mode blocks", "query error",
          "broken answer to the query", "no dot is held", "the dot names no machine", "no allowed machine holds a dot",
          "all-forbid mode blocks", "emergency mode allows everything",
          "action table lets type notes pass (no dot is held)",
          "allow-after-decision mode lets it pass (query error)"}) {
        EXPECT_TRUE(shown.reasons.contains(reason)) << reason;
    }
}

TEST(Examples, HaveAProcessForEachEventThatNamesAProgram) {
    const TemporaryDirectory directory;
    const std::string policy = "examples/processes/policy.json";
    EXPECT_TRUE(HasPrograms(policy));
    EXPECT_EQ(Replay(policy, {"--log", directory.Name("log")}).code, 0);
    EXPECT_EQ(directory.Read("log").find("Open process failed!"), std::string::npos);
}

TEST(Examples, HaveEveryDefenderMode) {
    std::set<std::string> modes;
    for (const std::string& policy : Policies()) {
        const std::string title = Replay(policy, {}).output;
        const size_t at = title.find("defender mode ") + std::string("defender mode ").size();
        modes.insert(title.substr(at, title.find(',', at) - at));
    }
    EXPECT_EQ(modes, (std::set<std::string>{"2", "action-table", "all-forbid", "allow-after-decision", "emergency"}));
}
