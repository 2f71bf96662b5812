// The console control events are stop requests.
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
std::atomic<HANDLE> reader = nullptr; // its thread

bool EndsProcessAfterwards(DWORD event) {
    return event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT;
}

// Windows calls this on a separate thread. When the console closes, at log-off and at shutdown, Windows ends the
// process as soon as this returns, or after a few seconds.
BOOL WINAPI NoteControlEvent(DWORD event) {
    DWORD former = none;
    if (!cause.compare_exchange_strong(former, event) && !EndsProcessAfterwards(event)) {
        return FALSE; // the default handler ends the process
    }
    // Repeated, because the reader may be about to start its read.
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
        reader = self; // never closed
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
