// Rows appear without later rows. Posix only.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::WaitUntil;
using mordhostTest::TidyMordhostTest;

namespace {

class RowsPosix : public TidyMordhostTest {};

} // namespace

TEST_F(RowsPosix, AppearDuringASlowLaterEvent) {
    // Large reports go to a pipe that nobody reads. It is full after a few events. The replay then blocks, long before
    // its rows fill a buffer.
    std::string rules;
    for (int i = 0; i < 1000; ++i) {
        rules += (i == 0 ? "" : ",") + (R"({"type": "t", "guid": ")" + std::to_string(i)) + "\"}";
    }
    std::string events;
    for (int i = 0; i < 20; ++i) {
        events += "{}\n";
    }
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{{}, {"--no-log"}}) {
        // A new pipe for each run: the previous one may have filled its pipe.
        const std::string pipe = directory.Name("pipe" + std::to_string(options.size()));
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        std::vector<std::string> arguments = {"replay", directory.Write("p.json", "{\"rules\": [" + rules + "]}"),
                                              directory.Write("e.jsonl", events), "--reports", pipe};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const BackgroundProcess process({MORDHOST_PROGRAM, arguments, "", ""});
        EXPECT_TRUE(WaitUntil([&] { return process.Output().find("  block  ") != std::string::npos; }))
            << process.Error();
        EXPECT_EQ(process.Output().find("time per decision"), std::string::npos) << "it waits";
        close(reader);
    }
}
