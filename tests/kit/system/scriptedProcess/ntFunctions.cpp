// The functions that a caller finds by name. What they answer: queries.cpp.
#include <algorithm>
#include <cstring>
#include <memory>

#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/internals.h"
#include "native/caller.h"
#include "native/ntFunctions.h"

namespace scripted {

namespace {

std::string QueryLine(const char* function, const std::string& subject, uint32_t informationClass, const void* buffer,
                      uint64_t size, const void* length) {
    return std::string(function) + "(" + subject + ", class " + std::to_string(informationClass) + ", " +
           Pointer(buffer, "buffer") + ", " + std::to_string(size) + ", " + Pointer(length, "length") + ")";
}

template <typename Length>
NtStatus Told(const Answer& answer, Length* returnedLength) {
    if (returnedLength != nullptr) {
        *returnedLength = static_cast<Length>(answer.written);
    }
    return StatusFromWord(answer.status);
}

NtStatus MORD_STDCALL QueryInformationProcess(platform::Handle process, uint32_t informationClass, void* buffer,
                                              uint32_t size, uint32_t* returnedLength) {
    constexpr auto name = "NtQueryInformationProcess";
    Note([&] { return QueryLine(name, Name(process), informationClass, buffer, size, returnedLength); });
    return Told(QueryProcess<Caller::Pointer>(name, process, informationClass, buffer, size), returnedLength);
}

NtStatus MORD_STDCALL Wow64QueryInformationProcess64(platform::Handle process, uint32_t informationClass, void* buffer,
                                                     uint32_t size, uint32_t* returnedLength) {
    constexpr auto name = "NtWow64QueryInformationProcess64";
    Note([&] { return QueryLine(name, Name(process), informationClass, buffer, size, returnedLength); });
    return Told(QueryProcess<uint64_t>(name, process, informationClass, buffer, size), returnedLength);
}

NtStatus MORD_STDCALL QueryInformationThread(platform::Handle thread, uint32_t informationClass, void* buffer,
                                             uint32_t size, uint32_t* returnedLength) {
    constexpr auto name = "NtQueryInformationThread";
    Note([&] { return QueryLine(name, Name(thread), informationClass, buffer, size, returnedLength); });
    // The layer's base asks for the reply of a 64-bit system, whatever this program's caller is.
    const bool is64Bit = Caller::is64Bit || size == sizeof(published::ThreadBasicInformation<uint64_t>);
    const auto query = is64Bit ? &QueryThread<uint64_t> : &QueryThread<uint32_t>;
    return Told(query(name, thread, informationClass, buffer, size), returnedLength);
}

NtStatus MORD_STDCALL QueryVirtualMemory(platform::Handle process, uintptr_t address, uint32_t informationClass,
                                         void* buffer, size_t size, size_t* returnedLength) {
    constexpr auto name = "NtQueryVirtualMemory";
    Note([&] {
        return QueryLine(name, Name(process) + ", " + Hex(address), informationClass, buffer, size, returnedLength);
    });
    return Told(QueryMemory<Caller::Pointer>(name, process, address, informationClass, buffer, size), returnedLength);
}

NtStatus MORD_STDCALL Wow64ReadVirtualMemory64(platform::Handle process, uint64_t address, void* buffer, uint64_t size,
                                               uint64_t* bytesRead) {
    constexpr auto name = "NtWow64ReadVirtualMemory64";
    Note([&] {
        return std::string(name) + "(" + Name(process) + ", " + Hex(address) + ", " + Pointer(buffer, "buffer") + ", " +
               std::to_string(size) + ", " + Pointer(bytesRead, "count") + ")";
    });
    return Told(ReadTarget(name, process, address, buffer, size), bytesRead);
}

int32_t MORD_STDCALL GetContextOfWow64(platform::Handle thread, void* context) {
    Note([&] { return "Wow64GetThreadContext(" + Name(thread) + ", " + Pointer(context, "context") + ")"; });
    const auto outcome = ScriptedOutcome("Wow64GetThreadContext");
    const uint32_t status = outcome ? outcome->status : (ThreadOf(thread) == nullptr ? invalidHandle : 0);
    if (status != 0) {
        Instance().lastStatus = status;
    }
    if (static_cast<int32_t>(status) < 0) {
        return 0;
    }
    std::memcpy(context, "wow64", 6);
    return 1;
}

size_t ListSize() {
    size_t size = 0;
    for (const ListedProcess& one : Instance().processList) {
        size += sizeof(published::SystemProcessInformation<Caller::Pointer>);
        size += one.name ? (one.name->size() * sizeof(WideChar) / 8 + 1) * 8 : 0;
    }
    return size;
}

// Each entry with the text of its name behind it, to which it leads by an address in this process.
void WriteList(char* area) {
    using Entry = published::SystemProcessInformation<Caller::Pointer>;
    const auto& list = Instance().processList;
    for (size_t i = 0; i < list.size(); ++i) {
        Entry entry{};
        char* next = area + sizeof entry;
        if (const auto& name = list[i].name) {
            const size_t length = name->size() * sizeof(WideChar);
            std::memcpy(next, name->c_str(), length + sizeof(WideChar));
            entry.ImageName = {static_cast<uint16_t>(length), static_cast<uint16_t>(length + sizeof(WideChar)),
                               static_cast<Caller::Pointer>(reinterpret_cast<uintptr_t>(next))};
            next += (length / 8 + 1) * 8;
        }
        entry.NextEntryOffset = i + 1 == list.size() ? 0 : static_cast<uint32_t>(next - area);
        entry.UniqueProcessId = static_cast<Caller::Pointer>(list[i].id);
        entry.InheritedFromUniqueProcessId = static_cast<Caller::Pointer>(list[i].parent);
        std::memcpy(area, &entry, sizeof entry);
        area = next;
    }
}

NtStatus MORD_STDCALL QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                             uint32_t* returnedLength) {
    constexpr auto name = "NtQuerySystemInformation";
    Note([&] { return QueryLine(name, "system", informationClass, buffer, size, returnedLength); });
    const size_t listSize = ListSize() + (buffer != nullptr ? Instance().processListGrowth : 0);
    if (returnedLength != nullptr) {
        *returnedLength = static_cast<uint32_t>(listSize);
    }
    const auto outcome = ScriptedOutcome(name);
    if (outcome && !outcome->performs) {
        return StatusFromWord(outcome->status);
    }
    if (size < listSize) {
        return StatusFromWord(outcome ? outcome->status : lengthMismatch);
    }
    WriteList(static_cast<char*>(buffer));
    return StatusFromWord(outcome ? outcome->status : 0);
}

uint32_t MORD_STDCALL StatusToDosError(uint32_t status) {
    Note([&] { return "RtlNtStatusToDosError(" + Hex(status) + ")"; });
    return status ^ 0x5A5A0000; // differs from the status and from every real error
}

void MORD_STDCALL SetLastError(uint32_t error) {
    Note([&] { return "RtlSetLastWin32Error(" + Hex(error) + ")"; });
    Instance().lastError = error;
}

int32_t MORD_STDCALL DisableRedirection(void** savedValue) {
    Note([&] { return std::string("Wow64DisableWow64FsRedirection()"); });
    const auto outcome = ScriptedOutcome("Wow64DisableWow64FsRedirection");
    if (outcome) {
        return static_cast<int32_t>(outcome->status);
    }
    *savedValue = reinterpret_cast<void*>(uintptr_t{0x5A7ED});
    return 1;
}

int32_t MORD_STDCALL RevertRedirection(void* savedValue) {
    Note([&] { return "Wow64RevertWow64FsRedirection(" + Hex(reinterpret_cast<uintptr_t>(savedValue)) + ")"; });
    return 1;
}

const std::map<std::string, void*> bodies = {
    {"NtQueryInformationProcess", reinterpret_cast<void*>(&QueryInformationProcess)},
    {"NtWow64QueryInformationProcess64", reinterpret_cast<void*>(&Wow64QueryInformationProcess64)},
    {"NtQueryInformationThread", reinterpret_cast<void*>(&QueryInformationThread)},
    {"NtQueryVirtualMemory", reinterpret_cast<void*>(&QueryVirtualMemory)},
    {"NtWow64ReadVirtualMemory64", reinterpret_cast<void*>(&Wow64ReadVirtualMemory64)},
    {"Wow64GetThreadContext", reinterpret_cast<void*>(&GetContextOfWow64)},
    {"NtQuerySystemInformation", reinterpret_cast<void*>(&QuerySystemInformation)},
    {"RtlNtStatusToDosError", reinterpret_cast<void*>(&StatusToDosError)},
    {"RtlSetLastWin32Error", reinterpret_cast<void*>(&SetLastError)},
    {"Wow64DisableWow64FsRedirection", reinterpret_cast<void*>(&DisableRedirection)},
    {"Wow64RevertWow64FsRedirection", reinterpret_cast<void*>(&RevertRedirection)},
};

} // namespace

void* FunctionOfCaller(const std::string& name) {
    if (name == "CreateZelkObject") {
        return Instance().converterFactory;
    }
    if (const auto body = bodies.find(name); body != bodies.end()) {
        return body->second;
    }
    static std::map<std::string, std::unique_ptr<char>> others;
    auto& other = others[name];
    if (other == nullptr) {
        other = std::make_unique<char>();
    }
    return other.get();
}

} // namespace scripted
