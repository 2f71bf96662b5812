// The bodies of processApi.h.
#include <algorithm>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

#include "kit/system/scriptedProcess/internals.h"

namespace platform {

using namespace scripted;

namespace {

// THREADENTRY32 of one thread after the other.
bool NextThread(Handle snapshot, ThreadEntry* entry) {
    System::Handle* const walk = SnapshotOf(snapshot);
    const auto& threads = Instance().threads;
    if (walk == nullptr || entry->dwSize != 28) {
        Instance().lastError = 6; // ERROR_INVALID_HANDLE
        return false;
    }
    if (walk->position == std::min(threads.size(), Instance().threadsUntilFailure)) {
        Instance().lastError = walk->position == threads.size() ? 18 : 24; // ERROR_NO_MORE_FILES, ERROR_BAD_LENGTH
        return false;
    }
    const Thread& thread = threads[walk->position++];
    entry->th32ThreadID = thread.id;
    entry->th32OwnerProcessID = thread.owner;
    return true;
}

// Whole pages for an area, and one more that cannot be touched: the area ends where that one begins.
struct Pages {
    void* begin;
    size_t size;
};
std::map<void*, Pages> areas;

size_t PageSize() {
    return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

Handle OpenProcess(uint32_t access, bool inherit, uint32_t processId) {
    Note([&] {
        return "OpenProcess(" + Hex(access) + ", " + (inherit ? "inherited" : "not inherited") + ", " +
               std::to_string(processId) + ")";
    });
    if (Instance().processes.count(processId) == 0) {
        Instance().lastError = 87; // ERROR_INVALID_PARAMETER
        return nullptr;
    }
    if (Instance().denied.count(processId) != 0) {
        Instance().lastError = 5; // ERROR_ACCESS_DENIED
        return nullptr;
    }
    return OpenProcessHandle(processId);
}

Handle OpenThread(uint32_t access, bool inherit, uint32_t threadId) {
    Note([&] {
        return "OpenThread(" + Hex(access) + ", " + (inherit ? "inherited" : "not inherited") + ", " +
               std::to_string(threadId) + ")";
    });
    const auto& threads = Instance().threads;
    const bool opens = std::any_of(threads.begin(), threads.end(),
                                   [=](const Thread& thread) { return thread.id == threadId && thread.opens; });
    if (!opens) {
        Instance().lastError = 5; // ERROR_ACCESS_DENIED
        return nullptr;
    }
    return OpenThreadHandle(threadId);
}

void CloseHandle(Handle handle) {
    Note([&] { return "CloseHandle(" + Name(handle) + ")"; });
    if (Instance().handles.erase(handle) == 0) {
        ++Instance().wrongCloses;
    }
    if (Instance().onClose) {
        Instance().onClose();
    }
}

Handle GetCurrentProcess() {
    return reinterpret_cast<Handle>(intptr_t{-1});
}

uint32_t GetProcessId(Handle process) {
    Note([&] { return "GetProcessId(" + Name(process) + ")"; });
    const auto found = Instance().handles.find(process);
    return found == Instance().handles.end() ? 0 : found->second.id;
}

SystemInfo GetNativeSystemInfo() {
    Note([&] { return std::string("GetNativeSystemInfo()"); });
    return {Instance().architecture};
}

bool IsWow64Process(Handle process, int32_t* isWow64) {
    Note([&] { return "IsWow64Process(" + Name(process) + ")"; });
    if (process == GetCurrentProcess()) {
        if (!Instance().callerWow64QueryFails) {
            *isWow64 = Instance().callerIsWow64;
        }
        return !Instance().callerWow64QueryFails;
    }
    const Process* const target = ProcessOf(process);
    if (target == nullptr || target->wow64QueryFails) {
        return false;
    }
    *isWow64 = target->isWow64;
    return true;
}

bool ReadProcessMemory(Handle process, uintptr_t address, void* destination, size_t size, size_t* bytesRead) {
    Note([&] {
        return "ReadProcessMemory(" + Name(process) + ", " + Hex(address) + ", " + Pointer(destination, "buffer") +
               ", " + std::to_string(size) + ", " + Pointer(bytesRead, "count") + ")";
    });
    const Answer answer = ReadTarget("ReadProcessMemory", process, address, destination, size);
    if (bytesRead != nullptr) {
        *bytesRead = answer.written;
    }
    if (answer.status != 0) {
        Instance().lastStatus = answer.status; // success leaves it alone
    }
    return static_cast<int32_t>(answer.status) >= 0;
}

bool GetThreadContext(Handle thread, void* context) {
    Note([&] { return "GetThreadContext(" + Name(thread) + ", " + Pointer(context, "context") + ")"; });
    const auto outcome = ScriptedOutcome("GetThreadContext");
    const uint32_t status = outcome ? outcome->status : (ThreadOf(thread) == nullptr ? invalidHandle : 0);
    if (status != 0) {
        Instance().lastStatus = status;
    }
    if (static_cast<int32_t>(status) < 0) {
        return false;
    }
    std::memcpy(context, "native", 6);
    return true;
}

uint32_t LastStatusValue() {
    return Instance().lastStatus;
}

void SetLastStatusValue(uint32_t status) {
    Note([&] { return "SetLastStatusValue(" + Hex(status) + ")"; });
    Instance().lastStatus = status;
}

Handle CreateToolhelp32Snapshot(uint32_t flags, uint32_t processId) {
    Note([&] { return "CreateToolhelp32Snapshot(" + std::to_string(flags) + ", " + std::to_string(processId) + ")"; });
    if (Instance().snapshotIsInvalid || Instance().snapshotFails) {
        Instance().lastError = 8; // ERROR_NOT_ENOUGH_MEMORY
    }
    if (Instance().snapshotIsInvalid) {
        return reinterpret_cast<Handle>(intptr_t{-1});
    }
    return Instance().snapshotFails ? nullptr : NewHandle(System::Handle::OfSnapshot, 0);
}

bool Thread32First(Handle snapshot, ThreadEntry* entry) {
    Note([&] { return "Thread32First(" + Name(snapshot) + ")"; });
    return NextThread(snapshot, entry);
}

bool Thread32Next(Handle snapshot, ThreadEntry* entry) {
    Note([&] { return "Thread32Next(" + Name(snapshot) + ")"; });
    return NextThread(snapshot, entry);
}

uint32_t QueryDosDeviceW(const WideChar* drive, WideChar* buffer, uint32_t capacity) {
    Note([&] { return "QueryDosDeviceW(" + Narrow(drive) + ", " + std::to_string(capacity) + ")"; });
    const auto device = Instance().devices.find(static_cast<char>(drive[0]));
    if (device == Instance().devices.end()) {
        return 0;
    }
    if (device->second.size() > capacity) { // a failure too, although the buffer is not left alone
        std::copy_n(device->second.begin(), capacity, buffer);
        return 0;
    }
    std::copy(device->second.begin(), device->second.end(), buffer);
    return static_cast<uint32_t>(device->second.size());
}

// Below 4 GiB, where a 32-bit caller has all its memory.
void* VirtualAlloc(size_t size) {
    Note([&] { return "VirtualAlloc(" + std::to_string(size) + ")"; });
    if (Instance().virtualAllocFails || size == 0) {
        Instance().lastError = size == 0 ? 87 : 8; // ERROR_INVALID_PARAMETER, ERROR_NOT_ENOUGH_MEMORY
        return nullptr;
    }
    const size_t whole = (size + PageSize() - 1) / PageSize() * PageSize();
    void* const pages =
        mmap(nullptr, whole + PageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0);
    if (pages == MAP_FAILED) {
        return nullptr;
    }
    mprotect(static_cast<char*>(pages) + whole, PageSize(), PROT_NONE);
    void* const area = static_cast<char*>(pages) + whole - size;
    areas[area] = {pages, whole + PageSize()};
    ++Instance().openAreas;
    return area;
}

void VirtualFree(void* area) {
    Note([&] { return "VirtualFree(" + Pointer(area, "area") + ")"; });
    const auto pages = areas.find(area);
    if (pages == areas.end()) {
        return;
    }
    munmap(pages->second.begin, pages->second.size);
    areas.erase(pages);
    --Instance().openAreas;
}

} // namespace platform
