// mordinspect: shows what the library finds out about a process.
#include <cstdint>
#include <exception>
#include <iostream>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "inspection.h"
#include "native/scopedHandle.h"
#include "output.h"
#include "platform/platform.h"
#include "processId.h"
#include "refusals.h"
#include "streams.h"

namespace {

using namespace mordinspect;

enum ExitCode : int { EXIT_DONE = 0, EXIT_UNAVAILABLE = 1, EXIT_BAD_ARGUMENTS = 2 };

constexpr uint32_t processVmRead = 0x10;
constexpr uint32_t processQueryInformation = 0x400;

int Refuse(const Refusal& refusal) {
    std::cerr << "mordinspect: unavailable: " << Words(refusal) << '\n';
    return EXIT_UNAVAILABLE;
}

template <typename Shown>
int Show(const Shown& shown, bool asJson) {
    if (asJson) {
        WriteJson(std::cout, shown);
    } else {
        WriteText(std::cout, shown);
    }
    std::cout.flush();
    return std::cout ? EXIT_DONE : EXIT_UNAVAILABLE;
}

int ShowProcess(uint32_t processId, bool asJson) {
    // The access rights that the library itself uses for the process behind a connection.
    const ScopedHandle process(platform::OpenProcess(processQueryInformation | processVmRead, false, processId));
    if (!process) {
        const uint32_t error = platform::GetLastError();
        return Refuse(WhyNotOpened(processId, error));
    }
    return Show(Inspect(process.Get()), asJson);
}

int ShowAll(bool asJson) {
    const auto processes = ListAll();
    return processes.value ? Show(*processes.value, asJson) : Refuse(processes.refusal);
}

int Run(int argc, char** argv) {
    CLI::App app("Shows what mordRev sees of a process: its paths, its modules, the files behind its threads.",
                 "mordinspect");
    app.set_version_flag("--version", std::string("mordinspect ") + MORDINSPECT_VERSION);
    app.allow_windows_style_options(false);
    std::string processText;
    std::optional<uint32_t> processId;
    bool all = false;
    bool asJson = false;
    CLI::Option* const process = app.add_option("PID", processText, "The id of the process, in decimal digits");
    CLI::Option* const everything = app.add_flag("--all", all, "List all processes instead");
    process->excludes(everything);
    app.add_flag("--json", asJson, "Write one JSON object");
    try {
        app.parse(argc, argv);
        if (!all && process->empty()) {
            throw CLI::RequiredError("PID or --all");
        }
        processId = ParseProcessId(processText);
        if (!all && !processId) {
            throw CLI::ValidationError("PID", "\"" + processText +
                                                  "\" is no process id: it takes decimal digits, at most " +
                                                  std::to_string(UINT32_MAX));
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == static_cast<int>(CLI::ExitCodes::Success) ? EXIT_DONE
                                                                                                  : EXIT_BAD_ARGUMENTS;
    }
    return all ? ShowAll(asJson) : ShowProcess(*processId, asJson);
}

} // namespace

int main(int argc, char** argv) {
    PrepareStreams();
    try {
        return Run(argc, argv);
    } catch (const std::exception& error) { // usually std::bad_alloc
        std::cerr << "mordinspect: " << error.what() << '\n';
        return EXIT_UNAVAILABLE;
    }
}
