// Output to a full disk (/dev/full), and output of the commands that watch the machine. Linux only.
#include "unit/host/loopback.h"
#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::ProcessResult;
using kit::StandardOutput;
using kit::WaitUntil;
using mordhostTest::LoopbackSocket;
using mordhostTest::MordhostTest;

namespace {

constexpr auto full = "/dev/full";
constexpr auto anyPolicy = R"({"rules": [{"guid": "G", "type": "t"}]})";

class FullDisk : public MordhostTest {
protected:
    // Runs mordhost from a shell that redirects the standard output.
    static ProcessResult WithFullOutput(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"-c", "exec \"$0\" \"$@\" > /dev/full", MORDHOST_PROGRAM});
        return kit::RunProcess({"/bin/sh", arguments, "", ""});
    }
};

// Runs a recording or a watch with a connection to write.
ProcessResult WithAConnection(const std::vector<std::string>& arguments, StandardOutput output) {
    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
    BackgroundProcess process({MORDHOST_PROGRAM, arguments, "", "", output});
    EXPECT_TRUE(WaitUntil([&] {
        return process.Error().find("mordhost: watching inbound connections\n") != std::string::npos ||
               process.Error().find("cannot write") != std::string::npos;
    }));
    const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.5", "127.0.0.1", listener.Port());
    const LoopbackSocket served = listener.Accept();
    return process.Wait(); // without a stop request
}

} // namespace

TEST_F(FullDisk, EndsAReplay) {
    const std::string rules = directory.Write("p.json", anyPolicy);
    const std::string events = directory.Write("e.jsonl", "{}\n");
    const ProcessResult result = WithFullOutput({"replay", rules, events});
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: cannot write the standard output: No space left on device\n");
    for (const std::string option : {"--reports", "--log"}) {
        const ProcessResult other = Mordhost({"replay", rules, events, option, full});
        EXPECT_EQ(other.code, 5) << option;
        EXPECT_EQ(other.error, "mordhost: cannot write /dev/full: No space left on device\n");
        EXPECT_NE(other.output.find("\n1 event: 1 block\n"), std::string::npos) << "the summary where it can be";
    }
}

TEST_F(FullDisk, EndsAReplayOfTheStandardInput) {
    const ProcessResult result = WithFullOutput({"replay", directory.Write("p.json", anyPolicy), "-"});
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: cannot write the standard output: No space left on device\n");
}

TEST_F(FullDisk, EndsAWatch) {
    const ProcessResult result = WithFullOutput({"watch", directory.Write("p.json", anyPolicy)});
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: cannot write the standard output: No space left on device\n");
    for (const std::string option : {"--reports", "--log"}) {
        const ProcessResult other =
            WithAConnection({"watch", directory.Write("p.json", anyPolicy), option, full}, StandardOutput::file);
        EXPECT_EQ(other.code, 5) << option;
        EXPECT_NE(other.error.find("mordhost: cannot write /dev/full: No space left on device\n"), std::string::npos);
        EXPECT_NE(other.output.find(" left\n"), std::string::npos) << "the summary";
    }
}

TEST_F(FullDisk, EndsARecording) {
    const ProcessResult result = WithAConnection({"record", "--out", full}, StandardOutput::file);
    EXPECT_EQ(result.code, 5);
    EXPECT_NE(result.error.find("mordhost: cannot write /dev/full: No space left on device\n"), std::string::npos)
        << result.error;
    EXPECT_NE(result.error.find("mordhost: recorded "), std::string::npos) << result.error;
}

TEST_F(FullDisk, AReadOnlyOutputEndsAWatchAndARecording) {
    const std::string rules = directory.Write("p.json", anyPolicy);
    for (const StandardOutput output : {StandardOutput::closed, StandardOutput::readOnly, StandardOutput::unreadPipe}) {
        for (const std::vector<std::string>& arguments :
             std::vector<std::vector<std::string>>{{"watch", rules}, {"record"}}) {
            const ProcessResult result = WithAConnection(arguments, output);
            EXPECT_EQ(result.code, 5) << arguments[0] << ", output " << static_cast<int>(output);
            EXPECT_NE(result.error.find("mordhost: cannot write the standard output: "), std::string::npos)
                << result.error;
        }
    }
}

// The next file that is opened must not reuse the descriptor of a closed standard output.
TEST_F(FullDisk, AClosedOutputIsNotReusedForAFile) {
    const ProcessResult result =
        kit::RunProcess({MORDHOST_PROGRAM,
                         {"replay", directory.Write("p.json", anyPolicy), directory.Write("e.jsonl", "{}\n"),
                          "--reports", directory.Name("reports"), "--log", directory.Name("log")},
                         "",
                         "",
                         StandardOutput::closed});
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: cannot write the standard output: Bad file descriptor\n");
    EXPECT_EQ(directory.Read("reports").find("TIME"), std::string::npos);
    EXPECT_EQ(directory.Read("log").find("TIME"), std::string::npos);
}
