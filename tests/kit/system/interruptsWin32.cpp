// Sends Ctrl-C to all other processes of its console.
#include <windows.h>

int main() {
    SetConsoleOutputCP(CP_UTF8); // attaches to the console, which some systems do at the first use
    SetConsoleCtrlHandler(nullptr, TRUE);
    return GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) ? 0 : 1;
}
