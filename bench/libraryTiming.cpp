// Measures the built library through its export: libraryTiming WHAT LIBRARY-FOLDER [SIBLING-FOLDER LOG-FOLDER]
//
//   events    each event beside its floor, each allow list beside its
//   threads   events on one and on two threads
//   records   what a log record costs; writes into LOG-FOLDER
//   resident  the resident size after many events
//
// Prints a figure a line: its name and its value, in nanoseconds or bytes. The siblings are those of SIBLING-FOLDER, so
// that another version of the library can be measured with them.
//
// Exit codes: 0 measured, 1 something is not as it has to be (what, is told), 2 wrong use.
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

// The object of a library that `id` names.
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
    void* const base = Load(siblings, "ZelkBase");
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
        bench::MeasureRecords(receiver, logFolder, *static_cast<ILogWriter*>(Obtain(base, SID_LogWriter)));
    } else if (what == "resident") {
        bench::MeasureResidentSize(receiver);
    } else {
        throw std::invalid_argument("nothing is called " + what);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3 && argc != 5) {
        std::cerr << "usage: libraryTiming WHAT LIBRARY-FOLDER [SIBLING-FOLDER LOG-FOLDER]\n";
        return 2;
    }
    try {
        // Without a log folder, one where no ini file stands.
        Run(argv[1], argv[2], argv[argc == 5 ? 3 : 2], argc == 5 ? argv[4] : "no log");
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "libraryTiming: " << failure.what() << '\n';
        return 1;
    }
}
