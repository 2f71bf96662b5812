// Sends Ctrl-C to all processes of its console, and is not interrupted by that itself.
#include <windows.h>

int main() {
    SetConsoleOutputCP(CP_UTF8); // some systems attach a process to its console at the first call that needs it
    SetConsoleCtrlHandler(nullptr, TRUE);
    return GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) ? 0 : 1;
}
