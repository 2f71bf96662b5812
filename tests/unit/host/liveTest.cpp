// mordhost record and mordhost watch, with real connections. Linux only.
#include <chrono>
#include <thread>

#include "policy/connectionEvent.h"
#include "unit/host/loopback.h"
#include "unit/host/mordhostFixture.h"

using kit::BackgroundProcess;
using kit::ProcessResult;
using kit::RunProcess;
using kit::StandardOutput;
using mordhostTest::LoopbackSocket;
using mordhostTest::MordhostTest;

namespace {

class Live : public MordhostTest {
protected:
    static constexpr auto ready = "mordhost: watching inbound connections\n";

    // Starts mordhost, waits until it is ready, calls `act`, waits some looks and interrupts mordhost.
    template <typename Act>
    static ProcessResult Watching(const std::vector<std::string>& arguments, Act act) {
        BackgroundProcess process({MORDHOST_PROGRAM, arguments, "", ""});
        for (int i = 0; i < 400 && process.Error().find(ready) == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        act();
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        process.Interrupt();
        return process.Wait();
    }

    // The events at the local port `port` in a recording.
    static std::vector<mordhost::ConnectionEvent> EventsAt(uint16_t port, const std::string& text) {
        std::vector<mordhost::ConnectionEvent> events;
        for (size_t at = 0, end = 0; (end = text.find('\n', at)) != std::string::npos; at = end + 1) {
            auto event = ReadEvent(mordhost::SourceText("recorded", text.substr(at, end - at)));
            if (event.localPort == port) {
                events.push_back(std::move(event));
            }
        }
        return events;
    }

    // Opens a connection and closes it after `time`.
    void ConnectFor(std::chrono::milliseconds time) const {
        const LoopbackSocket client = LoopbackSocket::Connect("127.0.0.5", "127.0.0.1", listener.Port());
        const LoopbackSocket served = listener.Accept();
        std::this_thread::sleep_for(time);
    }

    const LoopbackSocket listener = LoopbackSocket::Listen("127.0.0.1");
};

constexpr std::chrono::milliseconds aWhile(300);

} // namespace

TEST_F(Live, RecordWritesConnectionsAndTheirEndsAsEvents) {
    const ProcessResult result =
        Watching({"record", "--out", directory.Name("e.jsonl")}, [this] { ConnectFor(aWhile); });
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.error.find("mordhost: recorded "), std::string::npos) << result.error;
    const auto events = EventsAt(listener.Port(), directory.Read("e.jsonl"));
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].flags, 0U);
    EXPECT_EQ(events[0].remoteAddress, "127.0.0.5");
    EXPECT_EQ(events[1].flags, 4U);
    EXPECT_EQ(events[1].remotePort, events[0].remotePort);
}

TEST_F(Live, RecordWritesToTheStandardOutputByDefault) {
    const ProcessResult result = Watching({"record", "--flagged", "127.0.0.4/31"}, [this] { ConnectFor(aWhile); });
    EXPECT_EQ(result.code, 0);
    const auto events = EventsAt(listener.Port(), result.output);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].flags, 0x10U);
    EXPECT_EQ(events[1].flags, 0x14U);
}

TEST_F(Live, ARecordingCanBeReplayed) {
    Watching({"record", "--out", directory.Name("e.jsonl")}, [this] { ConnectFor(aWhile); });
    const std::string port = std::to_string(listener.Port());
    const ProcessResult result = Mordhost(
        {"replay",
         directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t", "local_ports": [)" + port + "]}]}"),
         directory.Name("e.jsonl")});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_NE(result.output.find("no dot is held"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("disconnect"), std::string::npos) << result.output;
}

TEST_F(Live, WatchDecidesConnectionsAsTheyCome) {
    const std::string policy =
        R"({"rules": [{"guid": "G", "type": "line", "local_ports": [)" + std::to_string(listener.Port()) +
        R"(]}], "dots": {"G": ["M"]}, "allow_list": {"mid_list": [{"mid": "M", "protocol": ["line"]}]}})";
    const ProcessResult result = Watching({"watch", directory.Write("p.json", policy)}, [this] {
        ConnectFor(aWhile);
        ConnectFor(aWhile);
    });
    EXPECT_EQ(result.code, 0);
    const size_t first = result.output.find("allow            machine M is allowed for line, its dot is deleted");
    const size_t second = result.output.find("block            no dot is held");
    ASSERT_NE(first, std::string::npos) << result.output;
    ASSERT_NE(second, std::string::npos) << result.output;
    EXPECT_LT(first, second);
    EXPECT_NE(result.output.find("1 dot deleted, 0 left"), std::string::npos) << "the summary stands at the end";
}

TEST_F(Live, SecondsEndTheWatching) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Mordhost({"record", "--seconds", "1"}).code, 0);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(990));
    EXPECT_EQ(Mordhost({"watch", directory.Write("p.json", R"({"rules": []})"), "--seconds", "1"}).code, 0);
}

TEST_F(Live, EndsWhenTheReaderOfItsOutputIsGone) {
    const std::string policy = directory.Write("p.json", R"({"rules": []})");
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"record"}, {"watch", policy, "--format", "jsonl"}}) {
        const ProcessResult result = RunProcess({MORDHOST_PROGRAM, arguments, "", "", StandardOutput::unreadPipe});
        EXPECT_EQ(result.code, 5) << arguments.front();
        EXPECT_NE(result.error.find("mordhost: cannot write the standard output: its reader is gone\n"),
                  std::string::npos)
            << result.error;
    }
}

TEST_F(Live, ARecordingToAFileNeedsNoReaderOfTheStandardOutput) {
    const ProcessResult result = RunProcess({MORDHOST_PROGRAM,
                                             {"record", "--seconds", "1", "--out", directory.Name("e.jsonl")},
                                             "",
                                             "",
                                             StandardOutput::unreadPipe});
    EXPECT_EQ(result.code, 0) << result.error;
}

TEST_F(Live, InvalidArgumentsExitWithTwo) {
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--seconds", "0"}, {"--seconds", "-1"}, {"--seconds", "soon"}, {"--flagged", "10.0.0.1/8"}}) {
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.begin(), "record");
        EXPECT_EQ(Mordhost(arguments).code, 2) << testing::PrintToString(options);
    }
    EXPECT_EQ(Mordhost({"record", "--seconds", "1", "--out", directory.Name("no/such/file")}).code, 2);
    EXPECT_EQ(Mordhost({"watch", directory.Name("none.json"), "--seconds", "1"}).code, 2);
    EXPECT_EQ(Mordhost({"watch", directory.Write("p.json", "{"), "--seconds", "1"}).code, 3);
}
