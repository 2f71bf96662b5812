// A receiver that is linked into the program, ready for events.
#pragma once

#include <memory>

#include "frame/interfaces.h"

class CMordRecv;

namespace bench {

// A receiver that is initialised and started, without logging, with the host and the sink of workload.h. Loads the
// sibling library that Init needs from the build. Throws std::runtime_error.
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
