// The effect of signals on a run. Posix only.
#include <algorithm>
#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::ProcessResult;
using kit::ProcessSetup;
using kit::StandardOutput;
using kit::WaitUntil;
using mordhostTest::TidyMordhostTest;

namespace {

struct NamedSignal {
    int number;
    std::string name;
};

const NamedSignal requests[] = {{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}};

// Whether the signal is in the set `kind` of the process: SigBlk, SigIgn, SigCgt.
bool IsInSet(uint32_t process, const std::string& kind, int signal) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    const std::string text{std::istreambuf_iterator<char>(status), std::istreambuf_iterator<char>()};
    const size_t line = text.find(kind + ":\t");
    EXPECT_NE(line, std::string::npos) << text;
    return (std::stoull(text.substr(line + kind.size() + 2), nullptr, 16) >> (signal - 1) & 1U) != 0;
}

bool Catches(const BackgroundProcess& process, int signal) {
    return IsInSet(process.Id(), "SigCgt", signal);
}

class Signals : public TidyMordhostTest {
protected:
    std::string PolicyFile() const { return directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t"}]})"); }

    // A replay that decides one event and waits for the next.
    ProcessSetup WaitingReplay() const {
        return {MORDHOST_PROGRAM, {"replay", PolicyFile(), "-"}, "{}\n", "", StandardOutput::file, true};
    }

    static void Await(const BackgroundProcess& process, const std::string& text) {
        EXPECT_TRUE(WaitUntil([&] { return (process.Output() + process.Error()).find(text) != std::string::npos; }));
    }
};

constexpr auto ready = "mordhost: watching inbound connections\n";

} // namespace

TEST_F(Signals, EachRequestEndsAReplayWithItsSummary) {
    for (const NamedSignal& signal : requests) {
        BackgroundProcess process(WaitingReplay());
        Await(process, "no dot is held");
        process.Send(signal.number);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 5) << signal.name;
        EXPECT_EQ(result.error, "mordhost: interrupted by " + signal.name + ": the following events are not decided\n");
        EXPECT_NE(result.output.find("\n1 event: 1 block\n"), std::string::npos) << signal.name;
        ExpectNothingIsLeft();
    }
}

TEST_F(Signals, EachRequestEndsABusyReplayAfterTheCurrentEvent) {
    // Each decision takes some milliseconds. All events are read long before the last one is decided.
    std::string rules;
    for (int i = 0; i < 20000; ++i) {
        rules += (i == 0 ? "" : ",") + (R"({"type": "t", "guid": ")" + std::to_string(i)) + "\"}";
    }
    const std::string policy = directory.Write("many.json", "{\"rules\": [" + rules + "]}");
    std::string events;
    for (int i = 0; i < 3000; ++i) {
        events += "{}\n";
    }
    directory.Write("e.jsonl", events);
    for (const NamedSignal& signal : requests) {
        BackgroundProcess process({MORDHOST_PROGRAM, {"replay", policy, directory.Name("e.jsonl")}, "", ""});
        Await(process, "no dot is held");
        process.Send(signal.number);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 5) << signal.name;
        EXPECT_EQ(result.error, "mordhost: interrupted by " + signal.name + ": the following events are not decided\n");
        EXPECT_NE(result.output.find("\ntime per decision"), std::string::npos) << signal.name;
        EXPECT_EQ(result.output.find("3000 events"), std::string::npos) << "it was broken off";
        ExpectNothingIsLeft();
    }
}

TEST_F(Signals, EachRequestEndsAWatchWithSuccess) {
    for (const NamedSignal& signal : requests) {
        BackgroundProcess process({MORDHOST_PROGRAM, {"watch", PolicyFile()}, "", ""});
        Await(process, ready);
        process.Send(signal.number);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 0) << signal.name;
        EXPECT_NE(result.output.find(" left\n"), std::string::npos) << signal.name << ": the summary";
        ExpectNothingIsLeft();
    }
}

TEST_F(Signals, EachRequestEndsARecordingWithSuccess) {
    for (const NamedSignal& signal : requests) {
        BackgroundProcess process({MORDHOST_PROGRAM, {"record"}, "", ""});
        Await(process, ready);
        process.Send(signal.number);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 0) << signal.name;
        EXPECT_NE(result.error.find("mordhost: recorded "), std::string::npos) << signal.name;
    }
}

TEST_F(Signals, ARequestBeforeTheEndOfTheGivenTimeIsAFailure) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"watch", PolicyFile(), "--seconds", "60"}, {"record", "--seconds", "60"}}) {
        BackgroundProcess process({MORDHOST_PROGRAM, arguments, "", ""});
        Await(process, ready);
        process.Send(SIGTERM);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 5) << arguments[0];
        EXPECT_NE(result.error.find("mordhost: interrupted by SIGTERM before the end of --seconds\n"),
                  std::string::npos)
            << result.error;
    }
}

TEST_F(Signals, ARequestDuringTheReadOfAPipeIsReported) {
    const std::string pipe = directory.Name("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const bool isPolicy : {true, false}) {
        BackgroundProcess process(
            {MORDHOST_PROGRAM, {"replay", isPolicy ? pipe : PolicyFile(), isPolicy ? "-" : pipe}, "", ""});
        const int writer = open(pipe.c_str(), O_WRONLY | O_CLOEXEC); // blocks until there is a reader
        process.Send(SIGTERM);
        const ProcessResult result = process.Wait();
        close(writer);
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(Plain(result.error),
                  isPolicy ? "mordhost: interrupted by SIGTERM while reading pipe\n"
                           : "mordhost: interrupted by SIGTERM: the following events are not decided\n");
        ExpectNothingIsLeft();
    }
}

TEST_F(Signals, ARequestDuringTheOpeningOfAPipeIsReported) {
    const std::string pipe = directory.Name("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    BackgroundProcess process({MORDHOST_PROGRAM, {"replay", pipe, "-"}, "", ""});
    EXPECT_TRUE(WaitUntil([&process] { return Catches(process, SIGTERM); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // it opens the pipe
    process.Send(SIGTERM);
    const ProcessResult result = process.Wait();
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(Plain(result.error), "mordhost: interrupted by SIGTERM while reading pipe\n");
}

// timeout(1) sends a signal to the process and to its group.
TEST_F(Signals, ARepeatedSignalIsOneRequest) {
    const std::string policy = R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "staysOn"}})";
    for (const NamedSignal& signal : requests) {
        BackgroundProcess process(
            {MORDHOST_PROGRAM,
             {"replay", directory.Write("p.json", policy), "-", "--programs", MORDHOST_ODD_PROGRAMS},
             "{\"program\": \"a\"}\n",
             "",
             StandardOutput::file,
             true});
        Await(process, "no dot is held");
        process.Send(signal.number);
        // The program does not end. mordhost waits for it and still runs at the second signal.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        process.Send(signal.number);
        const ProcessResult result = process.Wait();
        EXPECT_EQ(result.code, 5) << signal.name;
        EXPECT_NE(result.output.find("\n1 event: 1 block\n"), std::string::npos) << signal.name;
        ExpectNothingIsLeft();
    }
}

TEST_F(Signals, ASecondInterruptionEndsTheProcessAtOnce) {
    std::string events;
    for (int i = 0; i < 100000; ++i) {
        events += "{}\n";
    }
    BackgroundProcess process({MORDHOST_PROGRAM,
                               {"replay", PolicyFile(), directory.Write("e.jsonl", events)},
                               "",
                               "",
                               StandardOutput::fullPipe});
    const auto hasStarted = [this] {
        const std::filesystem::directory_iterator files(directory.Path());
        return std::any_of(begin(files), end(files), [](const auto& entry) { return entry.is_directory(); });
    };
    ASSERT_TRUE(WaitUntil(hasStarted));
    std::this_thread::sleep_for(std::chrono::milliseconds(500)); // it blocks in a write
    process.Interrupt();
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    process.Interrupt();
    EXPECT_EQ(process.Wait().code, -1) << "the signal ended it";
}

TEST_F(Signals, AnIgnoredHangUpStaysIgnored) {
    const auto former = std::signal(SIGHUP, SIG_IGN); // inherited by the process, as under nohup
    BackgroundProcess process(WaitingReplay());
    std::signal(SIGHUP, former);
    Await(process, "no dot is held");
    process.Send(SIGHUP);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    process.Send(SIGTERM);
    const ProcessResult result = process.Wait();
    EXPECT_EQ(result.code, 5);
    EXPECT_EQ(result.error, "mordhost: interrupted by SIGTERM: the following events are not decided\n");
}

TEST_F(Signals, StartedProgramsInheritNoSignalDispositions) {
    const std::string program = R"({"rules": [{"guid": "G", "type": "t"}], "programs": {"a": "waiter32"}})";
    BackgroundProcess process({MORDHOST_PROGRAM,
                               {"replay", directory.Write("p.json", program), "-", "--format", "jsonl"},
                               "{\"program\": \"a\"}\n",
                               "",
                               StandardOutput::file,
                               true});
    Await(process, "no dot is held");
    const std::string output = process.Output();
    const std::string member = "\"pid\":";
    const auto id = static_cast<uint32_t>(std::stoul(output.substr(output.find(member) + member.size())));
    for (const std::string kind : {"SigBlk", "SigIgn"}) {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
            EXPECT_FALSE(IsInSet(id, kind, signal)) << kind << ' ' << signal;
        }
    }
    process.Interrupt();
    EXPECT_EQ(process.Wait().code, 5);
}
