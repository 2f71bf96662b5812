// Both sides of the measurement of `mordhost replay`:
//
//   replayWork record FOLDER COUNT                 writes a recording of COUNT events, and its policy, into FOLDER
//   replayWork library FOLDER LIBRARIES on|off     decides it by the library alone, with or without log records
//
// The second prints the elapsed time and the processor time of the library for the whole recording, in seconds. Events
// and rules are in memory beforehand, the answers to the queries are the texts that mordhost gave, and the report sink
// and the log writer discard what they receive.
//
// Exit codes: 0 success, 1 failure, with a message, 2 wrong usage.
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "decide/libraries.h"
#include "decide/receiver.h"
#include "frame/values.h"
#include "preparedEvents.h"
#include "recording.h"
#include "system/hostSystem.h"
#include "zelkBase/hostLog.h"

namespace {

class Host final : public IDotHost {
public:
    int32_t DeleteDot(const char*, const char*, int32_t, const char*) override { return 0; }
    int32_t QueryDot(const char*, const char*, char** result) override {
        *result = const_cast<char*>(current->answer); // the library returns it unchanged
        return current->queryCode;
    }
    int32_t FreeResult(char*) override { return 0; }

    const bench::PreparedEvent* current = nullptr;
};

class Sink final : public IReportSink {
public:
    int32_t Report(int32_t, const char*, uint32_t) override { return 0; }
};

// Discards every record.
class Writer final : public ILogWriter {
public:
    int32_t AddRef() override { return 1; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return RESULT_NO_INTERFACE; }
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; }
    int32_t WriteRecord(const WideChar*, int32_t) override {
        ++records;
        return 0;
    }

    size_t records = 0;
};

Writer writer; // outlives the library, which releases it at the end of the process

void WriteSettings(const std::filesystem::path& folder, bool logging) {
    std::ofstream(folder / "Zelklog.ini", std::ios::binary) << "[OUTLOG]\nWriteLog=" << (logging ? 1 : 0) << '\n';
}

void MeasureLibrary(const std::filesystem::path& folder, const std::filesystem::path& libraryFolder, bool logging) {
    mordhost::SetEnvironment("ZELK_LOG_DIR", folder);
    WriteSettings(folder, false);
    const mordhost::Libraries libraries(libraryFolder);
    const bench::PreparedEvents events(folder, libraries.Receiver());

    WriteSettings(folder, logging);
    libraries.Base().Make<IHostLog>(SID_HostLog)->SetLogWriter(&writer);
    Host host;
    Sink sink;
    const mordhost::Receiver receiver(libraries.Receiver(), events.Policy(), host, sink);
    size_t different = 0;
    const auto begin = std::chrono::steady_clock::now();
    const std::clock_t processorBegin = std::clock();
    for (const bench::PreparedEvent& event : events.Asked()) {
        host.current = &event;
        uint32_t reply = REPLY_BLOCK;
        libraries.Receiver().HandleEvent(event.record, event.rules, event.ruleCount, &reply);
        different += reply != event.reply ? 1 : 0;
    }
    const std::clock_t processorEnd = std::clock();
    const auto end = std::chrono::steady_clock::now();
    if (different != 0) {
        throw std::runtime_error(std::to_string(different) + " events are decided otherwise than before");
    }
    std::printf("%.6f %.6f\n", std::chrono::duration<double>(end - begin).count(),
                static_cast<double>(processorEnd - processorBegin) / CLOCKS_PER_SEC);
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 3 && arguments[0] == "record") {
        bench::WriteRecording(arguments[1], static_cast<uint32_t>(std::stoul(arguments[2])));
        return 0;
    }
    if (arguments.size() == 4 && arguments[0] == "library" && (arguments[3] == "on" || arguments[3] == "off")) {
        MeasureLibrary(arguments[1], arguments[2], arguments[3] == "on");
        return 0;
    }
    std::cerr << "usage: replayWork record FOLDER COUNT | replayWork library FOLDER LIBRARIES on|off\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return Run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "replayWork: " << failure.what() << '\n';
        return 1;
    }
}
