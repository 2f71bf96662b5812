// The receiver in the program itself, ready for events.
#pragma once

#include <memory>

#include "frame/interfaces.h"

class CMordRecv;

namespace bench {

// A receiver of its own, initialised and started, without logging, over the host and the sink of workload.h. The
// sibling library that Init asks for is loaded from where the build puts it. Throws std::runtime_error when that fails.
class LibraryReceiver {
public:
    LibraryReceiver();
    ~LibraryReceiver();
    LibraryReceiver(const LibraryReceiver&) = delete;
    LibraryReceiver& operator=(const LibraryReceiver&) = delete;

    IMordRev& Interface() const;
    CMordRecv& Object() const { return *m_receiver; }

private:
    std::unique_ptr<CMordRecv> m_receiver;
};

} // namespace bench
