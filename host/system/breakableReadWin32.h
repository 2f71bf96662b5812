// A blocking read that a stop request cancels.
#pragma once

namespace mordhost {

// While an object of this class exists, a stop request cancels the blocking read of the thread that created it. The
// thread must check StopRequested after it creates the object and before it reads. Only one thread of the process may
// use this class.
class BreakableRead {
public:
    BreakableRead();
    ~BreakableRead();
    BreakableRead(const BreakableRead&) = delete;
    BreakableRead& operator=(const BreakableRead&) = delete;
};

} // namespace mordhost
