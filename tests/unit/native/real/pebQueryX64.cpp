#include <cstddef>
#include <map>
#include <mutex>

#include <windows.h>

#include <tlhelp32.h>

#include "kit/system/published/processLayouts.h"
#include "kit/system/published/queryLayouts.h"
#include "native/native.h"
#include "native/nativeFunctionTable.h"
#include "native/ntFunctions.h"
#include "native/scopedHandle.h"
#include "unit/native/real/pebQuery.h"
#include "unit/native/real/systemTellsPeb.h"

namespace {

NtQueryInformationProcessFunction systems = nullptr;

// The id of any thread of the process, or 0.
DWORD ThreadOf(DWORD processId) {
    const ScopedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot.Get(), &entry); more; more = Thread32Next(snapshot.Get(), &entry)) {
        if (entry.th32OwnerProcessID == processId) {
            return entry.th32ThreadID;
        }
    }
    return 0;
}

// The 32-bit TEB of one of the process's threads leads to its 32-bit PEB.
uint32_t FindPeb32(platform::Handle process) {
    const ScopedHandle thread(OpenThread(THREAD_QUERY_INFORMATION, FALSE, ThreadOf(GetProcessId(process))));
    published::ThreadBasicInformation<uint64_t> information{};
    const auto query = FindNativeFunction<NtQueryInformationThreadFunction>("NtQueryInformationThread");
    query(thread.Get(), ThreadBasicInformationClass, &information, sizeof information, nullptr);
    const uint64_t teb32 = information.TebBaseAddress + 0x2000;
    uint32_t peb = 0;
    ReadProcessMemory(
        process, reinterpret_cast<const void*>(teb32 + offsetof(published::Teb<uint32_t>, ProcessEnvironmentBlock)),
        &peb, sizeof peb, nullptr);
    return peb;
}

// The same, remembered: the way there leads over all threads of the system.
uint32_t Peb32Of(platform::Handle process) {
    static std::mutex lock;
    static std::map<DWORD, uint32_t> known; // by process id
    const std::lock_guard guard(lock);
    const auto [place, isNew] = known.try_emplace(GetProcessId(process), 0);
    if (isNew) {
        place->second = FindPeb32(process);
    }
    return place->second;
}

NtStatus MORD_STDCALL QueryByThreads(platform::Handle process, uint32_t informationClass, void* buffer, uint32_t size,
                                     uint32_t* returnedLength) {
    const NtStatus status = systems(process, informationClass, buffer, size, returnedLength);
    if (informationClass == ProcessWow64InformationClass && !Failed(status)) {
        auto& peb = *static_cast<uint64_t*>(buffer);
        peb = peb == 0 ? 0 : Peb32Of(process);
    }
    return status;
}

} // namespace

bool LacksPebQuery(platform::Handle process) {
    return !SystemTellsPeb(process);
}

void ProvidePebQuery() {
    const Native loadsTheTable(platform::GetCurrentProcess());
    constexpr auto name = "NtQueryInformationProcess";
    if (systems == nullptr) {
        systems = FindNativeFunction<NtQueryInformationProcessFunction>(name);
    }
    GetNativeFunctionTable()[name] = reinterpret_cast<void*>(&QueryByThreads);
}

void WithdrawPebQuery() {
    if (systems != nullptr) {
        GetNativeFunctionTable()["NtQueryInformationProcess"] = reinterpret_cast<void*>(systems);
    }
}
