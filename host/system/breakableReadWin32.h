// A read that a request to stop can break off.
#pragma once

namespace mordhost {

// While it lives, a request to stop cancels what the thread that made it waits for in a read. That thread has to look
// at StopRequested between making this and reading. For one thread of the process.
class BreakableRead {
public:
    BreakableRead();
    ~BreakableRead();
    BreakableRead(const BreakableRead&) = delete;
    BreakableRead& operator=(const BreakableRead&) = delete;
};

} // namespace mordhost
