// The console control events are requests to stop.
#include "system/stopRequest.h"

#include <atomic>

#include <windows.h>

#include "system/breakableReadWin32.h"

namespace mordhost {

namespace {

constexpr DWORD none = ~0UL;
constexpr DWORD betweenTries = 10; // milliseconds

std::atomic<DWORD> cause = none;
std::atomic<bool> reading = false;
std::atomic<HANDLE> reader = nullptr; // the thread

bool EndsProcessAfterwards(DWORD event) {
    return event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
}

// Runs on a thread of its own. The system ends the process when the console is closed, at a log-off and at a shutdown,
// but not before this returns; for a few seconds it is patient.
BOOL WINAPI NoteControlEvent(DWORD event) {
    DWORD former = none;
    if (!cause.compare_exchange_strong(former, event) && !EndsProcessAfterwards(event)) {
        return FALSE; // what is not taken ends the process
    }
    // The reader may be about to read, so that one try is not enough.
    while (reading || EndsProcessAfterwards(event)) {
        CancelSynchronousIo(reader);
        Sleep(betweenTries);
    }
    return TRUE;
}

} // namespace

BreakableRead::BreakableRead() {
    if (reader == nullptr) {
        HANDLE self = nullptr;
        DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
        reader = self; // for the rest of the process
    }
    reading = true;
}

BreakableRead::~BreakableRead() {
    reading = false;
}

void HoldStopRequests() {
    if (!SetConsoleCtrlHandler(NoteControlEvent, TRUE)) {
        throw RunError("cannot wait for console control events");
    }
}

bool StopRequested() {
    return cause != none;
}

std::string StopCause() {
    switch (cause) {
    case none:
        return "";
    case CTRL_C_EVENT:
        return "Ctrl-C";
    case CTRL_BREAK_EVENT:
        return "Ctrl-Break";
    case CTRL_CLOSE_EVENT:
        return "the closing of the console";
    case CTRL_LOGOFF_EVENT:
        return "the log-off";
    case CTRL_SHUTDOWN_EVENT:
        return "the shutdown";
    default:
        return "a console control event";
    }
}

} // namespace mordhost
