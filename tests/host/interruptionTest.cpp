// What an interruption leaves of a replay. Posix alone.
#include <chrono>
#include <thread>

#include "host/environment.h"
#include "host/mordhostFixture.h"

using mordhostTest::BackgroundProcess;
using mordhostTest::IsRunning;
using mordhostTest::MordhostTest;
using mordhostTest::ProcessResult;
using mordhostTest::ScopedVariable;

namespace {

constexpr auto usualPolicy = R"({"rules": [{"guid": "G", "type": "t"}]})";

class Interruption : public MordhostTest {
protected:
    // Starts a replay, interrupts it once it has written a report, and waits for its end. It reads the events from its
    // standard input where it is told to by `name`.
    ProcessResult OfReplay(const std::string& events, const std::string& rules = usualPolicy,
                           const std::vector<std::string>& options = {}, const std::string& name = "") const {
        std::vector<std::string> arguments = {"replay", directory.Write("p.json", rules),
                                              name.empty() ? directory.Write("e.jsonl", events) : name, "--reports",
                                              directory.Name("reports")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        BackgroundProcess process({MORDHOST_PROGRAM, arguments, name.empty() ? "" : events, ""});
        for (int i = 0; i < 1000 && directory.Read("reports").empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(300)); // and is in the midst of what comes then
        process.Interrupt();
        return process.Wait();
    }
};

} // namespace

TEST_F(Interruption, EndsTheProgramsOfAReplay) {
    std::string events = "{\"program\": \"a\"}\n{\"program\": \"b\"}\n";
    for (int i = 0; i < 500000; ++i) {
        events += "{}\n";
    }
    const ProcessResult result =
        OfReplay(events, R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "waiter32", "b": "waiter64"}})",
                 {"--json"});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.output.find("\"summary\""), std::string::npos);
    EXPECT_EQ(result.output.find("\"events\":500002"), std::string::npos) << "it was broken off";
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

TEST_F(Interruption, DoesNotWaitForAProgramToGetReady) {
    const auto start = std::chrono::steady_clock::now();
    const ProcessResult result = OfReplay("{}\n{\"program\": \"a\"}\n",
                                          R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "neverReady"}})",
                                          {"--programs", MORDHOST_ODD_PROGRAMS}, "-");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "mordhost: interrupted while the program " + std::string(MORDHOST_ODD_PROGRAMS) +
                                "/neverReady was not ready yet\n");
    EXPECT_NE(result.output.find("no dot is held"), std::string::npos) << "what was decided before";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9)) << "it would be waited for 10 s";
}

TEST_F(Interruption, EndsAReplayWithItsSummaryAndLeavesNothingBehind) {
    const ScopedVariable place("TMPDIR", mordhost::Utf8Of(directory.Path()));
    std::string events;
    for (int i = 0; i < 500000; ++i) {
        events += "{}\n";
    }
    const ProcessResult result = OfReplay(events);
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "mordhost: interrupted: the events behind these are not decided\n");
    EXPECT_NE(result.output.find("time per decision"), std::string::npos);
    EXPECT_EQ(result.output.find("500000 events"), std::string::npos) << "it was broken off";
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
        EXPECT_EQ(mordhost::Utf8Of(entry.path().filename()).rfind("mordhost-", 0), std::string::npos) << entry.path();
    }
}
