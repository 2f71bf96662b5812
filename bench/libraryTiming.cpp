// Measures the built library through its export: libraryTiming WHAT LIBRARIES SIBLINGS LOGS
//
//   events    events and allow lists, with their floors
//   threads   the gain by a second thread
//   records   a log record, with its floor; writes to the folder LOGS, which must not have an ini file yet
//   resident  the resident size after many events
//
// LIBRARIES and SIBLINGS are folders, so that another version of the library can be measured with the same siblings.
// Prints one figure per line: its name and its value, in nanoseconds, in bytes or as a ratio.
//
// Exit codes: 0 success, 1 failure, with a message, 2 wrong usage.
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "frame/values.h"
#include "measurements.h"
#include "system/hostSystem.h"
#include "workload.h"

namespace {

void* Load(const std::filesystem::path& folder, const char* name) {
    std::string reason;
    void* const library = mordhost::LoadLibraryFile(folder / mordhost::LibraryFileName(name), reason);
    if (library == nullptr) {
        throw std::runtime_error("cannot load " + std::string(name) + ": " + reason);
    }
    return library;
}

// The object with the id `id` from a library.
void* Obtain(void* library, const GUID& id) {
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(mordhost::FindExport(library, "CreateZelkObject"));
    void* object = nullptr;
    if (create == nullptr || create(&id, &object) != RESULT_OK || object == nullptr) {
        throw std::runtime_error("a library does not make its object");
    }
    return object;
}

void Run(const std::string& what, const std::filesystem::path& libraries, const std::filesystem::path& siblings,
         const std::filesystem::path& logFolder) {
    mordhost::SetEnvironment("ZELK_LOG_DIR", logFolder);
    Load(siblings, "ZelkBase");
    Load(siblings, "Ferrocore");
    auto& receiver = *static_cast<IMordRev*>(Obtain(Load(libraries, "mordRev"), IID_IMordRev));
    if (!receiver.Init(&bench::Host())) {
        throw std::runtime_error("the receiver cannot be initialised");
    }
    receiver.SetReportSink(&bench::Sink());
    receiver.Start();
    if (what == "events") {
        bench::MeasureEvents(receiver);
    } else if (what == "threads") {
        bench::MeasureThreads(receiver);
    } else if (what == "records") {
        bench::MeasureRecords(receiver, logFolder);
    } else if (what == "resident") {
        bench::MeasureResidentSize(receiver);
    } else {
        throw std::invalid_argument("nothing is called " + what);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: libraryTiming WHAT LIBRARIES SIBLINGS LOGS\n";
        return 2;
    }
    try {
        Run(argv[1], argv[2], argv[3], argv[4]);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "libraryTiming: " << failure.what() << '\n';
        return 1;
    }
}
