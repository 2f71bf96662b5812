// Rows appear when their events are decided.
#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::ProcessResult;
using kit::ProcessSetup;
using kit::WaitUntil;
using mordhostTest::TidyMordhostTest;

namespace {

class Rows : public TidyMordhostTest {
protected:
    ProcessSetup OfReplay(const std::string& policy, const std::string& events,
                          const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"replay", directory.Write("p.json", policy),
                                              directory.Write("e.jsonl", events)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return {MORDHOST_PROGRAM, arguments, "", ""};
    }

    static bool Shows(const BackgroundProcess& process, const std::string& text) {
        return process.Output().find(text) != std::string::npos;
    }
};

} // namespace

TEST_F(Rows, AppearBeforeTheNextEventWaitsForItsProgram) {
    BackgroundProcess process(OfReplay(R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "neverReady"}})",
                                       "{}\n{}\n{}\n{\"program\": \"a\"}\n", {"--programs", MORDHOST_ODD_PROGRAMS}));
    const auto start = std::chrono::steady_clock::now();
    const auto rows = [&process] {
        const std::string output = process.Output();
        size_t count = 0;
        for (size_t at = 0; (at = output.find("no dot is held", at)) != std::string::npos; ++at) {
            ++count;
        }
        return count;
    };
    EXPECT_TRUE(WaitUntil([&] { return rows() == 3; }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9)) << "the program is waited for 10 s";
    process.Interrupt();
    EXPECT_EQ(process.Wait().code, 5);
}

TEST_F(Rows, OfTheStandardInputAppearAtOnce) {
    BackgroundProcess process({MORDHOST_PROGRAM,
                               {"replay", directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t"}]})"), "-"},
                               "{}\n",
                               "",
                               kit::StandardOutput::file,
                               true});
    EXPECT_TRUE(WaitUntil([&] { return Shows(process, "no dot is held"); }));
    process.Interrupt();
    EXPECT_EQ(process.Wait().code, 5);
}

TEST_F(Rows, AreAlignedForTheFirstThousandEvents) {
    std::string events = "{}\n";
    for (int i = 0; i < 998; ++i) {
        events += "{\"remote_addr_ip\": \"1:2:3:4::9\"}\n";
    }
    events += "{\"remote_addr_ip\": \"1111:2222:3333:4444:5555:6666:7777:8888\"}\n";
    const ProcessResult result = RunProcess(OfReplay(R"({"rules": []})", events));
    EXPECT_NE(result.output.find("TIME          REMOTE END                                   LOCAL END"),
              std::string::npos)
        << result.output.substr(0, 300);
}
