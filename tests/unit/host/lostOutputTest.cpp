// Output that cannot be written: exit code, message, no temporary files.
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using kit::StandardOutput;
using mordhostTest::ScopedVariable;
using mordhostTest::TidyMordhostTest;

namespace {

constexpr auto rulePolicy = R"({"rules": [{"guid": "G", "type": "t"}]})";

class LostOutput : public TidyMordhostTest {
protected:
    ProcessResult Run(const std::vector<std::string>& arguments, StandardOutput output) const {
        return kit::RunProcess({MORDHOST_PROGRAM, arguments, "", "", output});
    }

    // Runs with an unusable standard output.
    void ExpectFailure(const std::vector<std::string>& arguments) const {
        for (const StandardOutput output :
             {StandardOutput::closed, StandardOutput::readOnly, StandardOutput::unreadPipe}) {
            const ProcessResult result = Run(arguments, output);
            EXPECT_EQ(result.code, 5) << arguments[0] << ", output " << static_cast<int>(output);
            EXPECT_NE(result.error.find("mordhost: cannot write the standard output: "), std::string::npos)
                << arguments[0] << ", output " << static_cast<int>(output) << ": " << result.error;
            EXPECT_EQ(result.error.find("output is lost"), std::string::npos) << "there is a reason: " << result.error;
        }
        ExpectNothingIsLeft();
    }
};

} // namespace

TEST_F(LostOutput, OfAReplayIsAFailure) {
    const std::string rules = directory.Write("p.json", rulePolicy);
    const std::string events = directory.Write("e.jsonl", "{}\n");
    ExpectFailure({"replay", rules, events});
    ExpectFailure({"replay", rules, events, "--format", "jsonl"});
    ExpectFailure({"replay", rules, directory.Write("none.jsonl", "")});
}

TEST_F(LostOutput, EndsALongReplayEarly) {
    std::string events;
    for (int i = 0; i < 5000; ++i) {
        events += "{}\n";
    }
    events += "no event\n"; // must not be reached
    const ProcessResult result =
        Run({"replay", directory.Write("p.json", rulePolicy), directory.Write("e.jsonl", events)},
            StandardOutput::unreadPipe);
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error.rfind("mordhost: cannot write the standard output: ", 0), 0U) << result.error;
}

TEST_F(LostOutput, OfHelpIsAFailure) {
    ExpectFailure({"--help"});
    ExpectFailure({"replay", "--help"});
    ExpectFailure({"--version"});
}

TEST_F(LostOutput, OfDotsIsAFailure) {
    // The program removes the directory of the dots during the replay.
    std::filesystem::create_directory(directory.Path() / "there");
    const ScopedVariable removed("MORDHOST_TEST_REMOVES", directory.Name("there"));
    const ProcessResult result = Replay(
        R"({"rules": [{"guid": "G", "type": "smb"}], "dots": {"G": ["M"]},
            "allow_list": {"mid_list": [{"mid": "M", "protocol": ["smb"]}]}, "programs": {"a": "removesDirectory"}})",
        "{\"program\": \"a\"}\n{}\n",
        {"--dots", directory.Name("there/dots.json"), "--programs", MORDHOST_ODD_PROGRAMS});
    EXPECT_EQ(result.code, 5);
    EXPECT_NE(result.output.find("machine M is allowed for smb, its dot could not be deleted"), std::string::npos);
    EXPECT_NE(result.output.find("\n2 events: "), std::string::npos) << "the run goes on to its end";
    EXPECT_EQ(Plain(result.error)
                  .rfind("mordhost: the remaining dots could not be written: cannot write "
                         "there/dots.json: ",
                         0),
              0U)
        << result.error;
}
