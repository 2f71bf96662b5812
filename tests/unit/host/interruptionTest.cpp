// Interrupted runs.
#include <algorithm>
#include <set>

#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::IsRunning;
using kit::ProcessResult;
using kit::StandardOutput;
using kit::WaitUntil;
using mordhostTest::TidyMordhostTest;

namespace {

constexpr auto usualPolicy = R"({"rules": [{"guid": "G", "type": "t"}]})";

// Wine kills a 32-bit process that is running code at Ctrl-C, in spite of its handler. The interruption therefore comes
// while mordhost waits. signalTest.cpp tests a busy process.
class Interruption : public TidyMordhostTest {
protected:
    // The name of an interruption by the user on this platform.
    static std::string Cause() { return std::string(MORDHOST_PROGRAM_ENDING).empty() ? "SIGINT" : "Ctrl-C"; }

    // Starts a replay of a standard input that does not end, interrupts it after `events` rows and waits for its end.
    ProcessResult OfReplay(const std::string& events, size_t awaited, const std::string& policy,
                           const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"replay", directory.Write("p.json", policy), "-", "--format", "jsonl"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        BackgroundProcess process({MORDHOST_PROGRAM, arguments, events, "", StandardOutput::file, true});
        const auto shown = [&process] {
            const std::string output = process.Output();
            return static_cast<size_t>(std::count(output.begin(), output.end(), '\n'));
        };
        EXPECT_TRUE(WaitUntil([&] { return shown() == awaited; })) << process.Error();
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // it waits for the next event
        process.Interrupt();
        return process.Wait();
    }
};

} // namespace

TEST_F(Interruption, EndsTheProgramsOfAReplay) {
    const ProcessResult result =
        OfReplay("{\"program\": \"a\"}\n{\"program\": \"b\"}\n", 2,
                 R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "waiter32", "b": "waiter64"}})");
    EXPECT_EQ(result.code, 5);
    EXPECT_NE(result.output.find("\"summary\":{\"events\":2,"), std::string::npos) << result.output;
    std::set<uint32_t> ids;
    for (size_t at = 0; ids.size() < 2 && (at = result.output.find("\"pid\":", at)) != std::string::npos;) {
        at += std::string("\"pid\":").size();
        ids.insert(static_cast<uint32_t>(std::stoul(result.output.substr(at))));
    }
    ASSERT_EQ(ids.size(), 2U);
    for (const uint32_t id : ids) {
        EXPECT_FALSE(IsRunning(id));
    }
}

TEST_F(Interruption, EndsTheWaitForAProgram) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = OfReplay("{}\n{\"program\": \"a\"}\n", 1,
                                          R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "neverReady"}})",
                                          {"--programs", MORDHOST_ODD_PROGRAMS});
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error.rfind("mordhost: interrupted by " + Cause() + " while the program ", 0), 0U) << result.error;
    EXPECT_NE(result.error.find("was not ready yet\n"), std::string::npos) << result.error;
    EXPECT_NE(result.output.find("\"summary\":{\"events\":1,"), std::string::npos) << "what was decided before";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9)) << "it would be waited for 10 s";
    ExpectNothingIsLeft();
}

TEST_F(Interruption, EndsTheWaitForTheNextEvent) {
    const ProcessResult result = OfReplay("{}\n{\"pid\": ", 1, usualPolicy);
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: interrupted by " + Cause() + ": the following events are not decided\n")
        << "and nothing about the line that was cut";
    EXPECT_NE(result.output.find("\"summary\":{\"events\":1,"), std::string::npos) << result.output;
    ExpectNothingIsLeft();
}
