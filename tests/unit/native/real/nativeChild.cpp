// A process that tests inspect, and that changes its own structures when it is told to.
//
// It reads commands from its standard input, a line each, and answers each by a line on its standard output: "done",
// with values behind it where the command has some, or "failed". It ends with "exit" and with its input, without any of
// the usual end of a process: its loader data may no longer hold.
#include <cstdint>
#include <cstdio>
#include <string>

#include <windows.h>

#include "unit/native/real/ownStructures.h"
#include "unit/native/real/unreadableEnd.h"

namespace {

// Asked for once: the system looks them up in the parameters block, which a command may take away.
const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);

bool WriteLine(std::string line) {
    line += '\n';
    DWORD written = 0;
    return WriteFile(output, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) != FALSE;
}

// False at the end of the input.
bool ReadLine(std::string& line) {
    line.clear();
    char c = 0;
    DWORD count = 0;
    while (ReadFile(input, &c, 1, &count, nullptr) && count == 1) {
        if (c == '\n') {
            return true;
        }
        line += c;
    }
    return false;
}

std::wstring Wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string Hex(uint64_t value) {
    char digits[20];
    std::snprintf(digits, sizeof digits, "%llx", static_cast<unsigned long long>(value));
    return digits;
}

DWORD WINAPI WaitForever(void*) {
    Sleep(INFINITE);
    return 0;
}

// Waits until the system knows where the thread starts; under Wine a new one takes a while to tell.
bool AwaitStart(HANDLE thread, const void* start) {
    using Function = LONG(WINAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationThread")));
    constexpr ULONG threadQuerySetWin32StartAddress = 9;
    for (int i = 0; i < 1000; ++i) {
        const void* told = nullptr;
        if (query(thread, threadQuerySetWin32StartAddress, &told, sizeof told, nullptr) >= 0 && told == start) {
            return true;
        }
        Sleep(10);
    }
    return false;
}

// A thread that never runs, with that start address. Its id, and the address.
std::string AddThread(void* start) {
    DWORD id = 0;
    const HANDLE thread =
        CreateThread(nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(start), nullptr, CREATE_SUSPENDED, &id);
    return thread == nullptr || !AwaitStart(thread, start)
               ? ""
               : " " + std::to_string(id) + " " + Hex(reinterpret_cast<uintptr_t>(start));
}

// The answer's values, with a blank before each; empty when the command failed.
std::string Carry(const std::string& command, const std::string& argument) {
    const auto number = [&] { return std::stoull(argument, nullptr, 0); };
    const auto done = [](bool could) { return std::string(could ? " " : ""); };
    if (command == "setPath") {
        return done(SetImagePath(Wide(argument)));
    }
    if (command == "setPathBeforeUnreadable") { // readable with its NUL, and not as far again
        return done(SetImagePathBeforeUnreadable(Wide(argument)));
    }
    if (command == "setPathWithoutNul") {
        return done(SetImagePathWithoutNul(static_cast<size_t>(number())));
    }
    if (command == "setMaximumLength") {
        OwnParameters().ImagePathName.MaximumLength = static_cast<uint16_t>(number());
        return " ";
    }
    if (command == "setWordBehindParameters") {
        OwnPeb().SubSystemData = static_cast<uintptr_t>(number());
        return " ";
    }
    if (command == "setParameters") {
        OwnPeb().ProcessParameters = static_cast<uintptr_t>(number());
        return " ";
    }
    if (command == "linkToUnreadable") { // behind the first module
        FirstModule().InLoadOrderLinks.Flink = UnreadableEnd();
        return " " + Hex(UnreadableEnd());
    }
    if (command == "linkToItself") { // the first module, so that the list goes on without an end
        FirstModule().InLoadOrderLinks.Flink = reinterpret_cast<uintptr_t>(&FirstModule());
        return " ";
    }
    if (command == "addEntryOfWhichOnlyTheLinkIsReadable") {
        return " " + Hex(AddEntryBeforeUnreadable());
    }
    if (command == "setModuleName") { // of the first one, as long as that, in bytes
        return done(SetFirstModuleName(static_cast<size_t>(number())));
    }
    if (command == "peb") {
        return " " + Hex(reinterpret_cast<uintptr_t>(&OwnPeb()));
    }
    if (command == "addThreadInFile") {
        return AddThread(reinterpret_cast<void*>(&WaitForever));
    }
    if (command == "addThreadInPrivateMemory") {
        return AddThread(VirtualAlloc(nullptr, 0x1000, MEM_RESERVE | MEM_COMMIT, PAGE_EXECUTE_READWRITE));
    }
    return "";
}

} // namespace

int main() {
    if (!WriteLine("ready")) {
        return 1;
    }
    std::string line;
    while (ReadLine(line) && line != "exit") {
        const size_t blank = line.find(' ');
        const std::string values =
            Carry(line.substr(0, blank), blank == std::string::npos ? "" : line.substr(blank + 1));
        if (!WriteLine(values.empty() ? "failed" : "done" + values)) {
            break;
        }
    }
    TerminateProcess(GetCurrentProcess(), 0);
}
