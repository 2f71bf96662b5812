// Replays whose events name programs.
#include <algorithm>
#include <sstream>

#include <rapidjson/document.h>

#include "unit/host/mordhostFixture.h"
#include "unit/host/toldPath.h"

using kit::IsRunning;
using kit::ProcessResult;
using mordhost::PathOf;
using mordhostTest::MordhostTest;
using mordhostTest::ToldPath;

namespace {

const std::string programEnding = MORDHOST_PROGRAM_ENDING;

// A policy with these programs and one rule for all events.
std::string PolicyOf(const std::string& programs) {
    return R"({"rules": [{"guid": "G", "type": "t"}], "programs": {)" + programs + "}}";
}

constexpr auto both = R"("narrow": "waiter32", "wide": "waiter64")";

// Parses JSON Lines.
std::vector<rapidjson::Document> Lines(const std::string& text) {
    std::vector<rapidjson::Document> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.emplace_back().Parse(line.c_str());
        EXPECT_TRUE(lines.back().IsObject()) << line;
    }
    return lines;
}

// The values of "proc_path" in the reports, in order.
std::vector<std::string> Paths(const std::string& reports) {
    std::vector<std::string> paths;
    for (size_t begin = 0; begin < reports.size();) {
        const size_t end = reports.find("\n}\n", begin) + 3;
        rapidjson::Document report;
        report.Parse(reports.substr(begin, end - begin).c_str());
        EXPECT_TRUE(report.IsObject());
        paths.emplace_back(report["proc_path"].GetString());
        begin = end;
    }
    return paths;
}

std::string ToldOf(const std::string& program) {
    return ToldPath(PathOf(MORDHOST_PROGRAMS) / PathOf(program + programEnding));
}

class ProgramReplay : public MordhostTest {
protected:
    // The error message of mordhost about a program in MORDHOST_ODD_PROGRAMS.
    static std::string Message(const std::string& before, const std::string& program, const std::string& behind) {
        return "mordhost: " + before + "the program " + MORDHOST_ODD_PROGRAMS + "/" + program + programEnding + behind;
    }

    // With forward slashes.
    static std::string Slashed(std::string text) {
        std::replace(text.begin(), text.end(), '\\', '/');
        return text;
    }

    ProcessResult ReplayOdd(const std::string& program, const std::string& events,
                            const std::vector<std::string>& options = {}) const {
        std::vector<std::string> all = {"--programs", MORDHOST_ODD_PROGRAMS};
        all.insert(all.end(), options.begin(), options.end());
        return Replay(PolicyOf("\"odd\": \"" + program + '"'), events, all);
    }
};

} // namespace

TEST_F(ProgramReplay, EventsHaveTheIdsAndReportsThePaths) {
    const ProcessResult result =
        Replay(PolicyOf(both),
               "{\"program\": \"narrow\"}\n{\"program\": \"wide\"}\n{\"pid\": 4}\n{\"program\": \"narrow\"}\n{}\n",
               {"--format", "jsonl", "--reports", directory.Name("reports")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    const auto lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 6U);
    for (const size_t withId : {0U, 1U, 3U}) {
        ASSERT_TRUE(lines[withId]["event"]["pid"].IsUint());
        EXPECT_FALSE(IsRunning(lines[withId]["event"]["pid"].GetUint())) << "nothing is left behind";
    }
    EXPECT_EQ(lines[0]["event"]["pid"].GetUint(), lines[3]["event"]["pid"].GetUint());
    EXPECT_NE(lines[0]["event"]["pid"].GetUint(), lines[1]["event"]["pid"].GetUint());
    EXPECT_EQ(lines[2]["event"]["pid"].GetUint(), 4U);
    EXPECT_TRUE(lines[4]["event"]["pid"].IsNull());
    const std::string narrow = ToldOf("waiter32");
    const std::string wide = ToldOf("waiter64");
    EXPECT_EQ(Paths(directory.Read("reports")), (std::vector<std::string>{narrow, wide, "System", narrow, ""}));
    EXPECT_EQ(lines[0]["process"].IsString() ? lines[0]["process"].GetString() : "", narrow);
    EXPECT_EQ(lines[1]["process"].IsString() ? lines[1]["process"].GetString() : "", wide);
}

TEST_F(ProgramReplay, TheProcessOfAnEventHasPriorityOverItsProgram) {
    const ProcessResult result = Replay(PolicyOf(both), R"({"program": "narrow", "process": "/usr/sbin/sshd"})",
                                        {"--format", "jsonl", "--reports", directory.Name("reports")});
    EXPECT_NE(result.output.find(R"("process":"/usr/sbin/sshd")"), std::string::npos) << result.output;
    EXPECT_EQ(Paths(directory.Read("reports")), std::vector<std::string>{ToldOf("waiter32")});
}

TEST_F(ProgramReplay, AProgramIsSearchedBesideMordhostOrInTheGivenDirectory) {
    const std::string event = R"({"program": "p"})";
    const std::string file = "waiter32" + programEnding;
    std::filesystem::create_directory(directory.Path() / "bin");
    std::filesystem::copy_file(PathOf(MORDHOST_PROGRAMS) / PathOf(file), directory.Path() / "bin" / PathOf(file));
    EXPECT_EQ(Replay(PolicyOf(R"("p": "waiter32")"), event).code, 0);
    EXPECT_EQ(Replay(PolicyOf(R"("p": ")" + file + '"'), event).code, 0) << "its ending may be there";
    EXPECT_EQ(Replay(PolicyOf(R"("p": "bin/waiter32")"), event).code, 0) << "beside the policy";
    EXPECT_EQ(Replay(PolicyOf(R"("p": "bin/waiter64")"), event).code, 5) << "and there is no other one";
    EXPECT_EQ(Replay(PolicyOf(R"("p": "waiter32")"), event, {"--programs", directory.Name("bin")}).code, 0);
    EXPECT_EQ(Replay(PolicyOf(R"("p": "waiter64")"), event, {"--programs", directory.Name("bin")}).code, 5);
}

TEST_F(ProgramReplay, AnUnknownNameIsRefusedBeforeTheFirstDecision) {
    const ProcessResult result = Replay(PolicyOf(both), "{\"program\": \"narrow\"}\n{\"program\": \"slim\"}\n",
                                        {"--reports", directory.Name("reports")});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(Plain(result.error), "mordhost: e.jsonl:2:13: the policy has no program \"slim\"\n");
    EXPECT_FALSE(directory.Has("reports"));
}

TEST_F(ProgramReplay, AnUnknownNameOnTheStandardInputIsRefusedInItsTurn) {
    const ProcessResult result =
        Mordhost({"replay", directory.Write("p.json", PolicyOf(both)), "-", "--format", "jsonl"},
                 "{\"program\": \"narrow\"}\n{ \"program\": \"\"}\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error, "mordhost: standard input:2:14: the policy has no program \"\"\n");
    const auto lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 2U) << "the event and the summary";
    EXPECT_FALSE(IsRunning(lines[0]["event"]["pid"].GetUint())) << "also when a run is broken off";
}

TEST_F(ProgramReplay, AProgramBesideAnIdIsRefused) {
    const ProcessResult result = Replay(PolicyOf(both), "{}\n{\"program\": \"narrow\", \"pid\": 1}\n");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(Plain(result.error), "mordhost: e.jsonl:2:13: \"program\" and \"pid\" exclude each other\n");
}

TEST_F(ProgramReplay, AMissingProgramEndsTheRunAfterTheDecisionsBefore) {
    const ProcessResult result =
        ReplayOdd("none", "{\"flags\": 4}\n{\"program\": \"odd\"}\n{\"flags\": 4}\n", {"--format", "jsonl"});
    EXPECT_EQ(result.code, 5);
    const auto lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 2U) << "the event and the summary";
    EXPECT_EQ(lines[1]["summary"]["events"].GetUint(), 1U);
    EXPECT_EQ(Slashed(result.error).rfind(Message("cannot start ", "none", ": "), 0), 0U) << result.error;
}

TEST_F(ProgramReplay, AMissingProgramDoesNotAffectOtherEvents) {
    EXPECT_EQ(ReplayOdd("none", "{}\n").code, 0);
}

TEST_F(ProgramReplay, AProgramThatEndsBeforeItsLineEndsTheRun) {
    const ProcessResult result = ReplayOdd("endsAtOnce", "{\"program\": \"odd\"}\n");
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(Slashed(result.error),
              Message("", "endsAtOnce", " ended its output without a line that says that it is ready\n"));
}

TEST_F(ProgramReplay, AProgramThatDoesNotEndIsKilled) {
    const ProcessResult result = ReplayOdd("staysOn", "{\"program\": \"odd\"}\n", {"--format", "jsonl"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    const auto lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 2U) << "the event and the summary";
    EXPECT_FALSE(IsRunning(lines[0]["event"]["pid"].GetUint()));
}
