#include "libraryReceiver.h"

#include <stdexcept>
#include <string>

#include "mordRev/src/mordRev.h"
#include "system/hostSystem.h"
#include "workload.h"

namespace bench {

LibraryReceiver::LibraryReceiver() : m_receiver(std::make_unique<CMordRecv>()) {
    std::string reason;
    const auto folder = mordhost::OwnDirectory() / BENCH_LIBRARY_FOLDER;
    if (mordhost::LoadLibraryFile(folder / mordhost::LibraryFileName("ZelkBase"), reason) == nullptr) {
        throw std::runtime_error("cannot load ZelkBase: " + reason);
    }
    if (!m_receiver->Init(&Host())) {
        throw std::runtime_error("the receiver cannot be initialised");
    }
    m_receiver->SetReportSink(&Sink());
    m_receiver->Start();
}

LibraryReceiver::~LibraryReceiver() = default;

IMordRev& LibraryReceiver::Interface() const {
    return *m_receiver;
}

} // namespace bench
