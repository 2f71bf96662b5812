// What an interruption leaves of a replay. Posix alone.
#include <chrono>
#include <thread>

#include "host/environment.h"
#include "host/mordhostFixture.h"

using mordhostTest::BackgroundProcess;
using mordhostTest::MordhostTest;
using mordhostTest::ProcessResult;
using mordhostTest::ScopedVariable;

namespace {

class Interruption : public MordhostTest {
protected:
    // Starts a replay, interrupts it once it has written a row, and waits for its end.
    ProcessResult OfReplay(const std::string& events) const {
        BackgroundProcess process({MORDHOST_PROGRAM,
                                   {"replay", directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t"}]})"),
                                    directory.Write("e.jsonl", events), "--reports", directory.Name("reports")},
                                   "",
                                   ""});
        for (int i = 0; i < 1000 && directory.Read("reports").empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        process.Interrupt();
        return process.Wait();
    }
};

} // namespace

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
