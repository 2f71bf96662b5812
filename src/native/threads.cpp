// The threads of a target, and the file at the start address of each.
#include <algorithm>

#include "native/devicePath.h"
#include "native/ntFunctions.h"
#include "native/remoteLayouts.h"
#include "native/scopedHandle.h"
#include "native/systemBuffer.h"
#include "native/targetProcess.h"

namespace {

// More rights than the queries need, by design.
constexpr uint32_t threadAllAccess = 0x1FFFFF;

// Returns the text of the UNICODE_STRING of bitness `Bits` at the start of `reply`. Its address must point into the
// same reply; the text is truncated at the end of the reply.
template <typename Bits>
std::basic_string<WideChar> TextOfReply(const char (&reply)[mappedFileNameSize]) {
    const auto begin = reinterpret_cast<uintptr_t>(reply);
    const auto address = static_cast<uintptr_t>(LoadField<typename Bits::Pointer>(reply, Bits::unicodeStringBuffer));
    if (address < begin || address >= begin + mappedFileNameSize) {
        return {};
    }
    const size_t length = LoadField<uint16_t>(reply, unicodeStringLength);
    const size_t bytes = std::min(length, begin + mappedFileNameSize - address);
    std::basic_string<WideChar> text(bytes / sizeof(WideChar), WideChar{});
    std::memcpy(text.data(), reinterpret_cast<const void*>(address), text.size() * sizeof(WideChar));
    return text;
}

// Returns the name in `reply`, for a target of bitness `Bits`. The reply has the layout of the machine; only on a
// 32-bit machine does a 32-bit target get the 32-bit one.
template <typename Bits>
std::basic_string<WideChar> NameInReply(const char (&reply)[mappedFileNameSize], bool machineIs32Bit) {
    if constexpr (sizeof(typename Bits::Pointer) == 4) {
        if (machineIs32Bit) {
            return TextOfReply<Bits32>(reply);
        }
    }
    return TextOfReply<Bits64>(reply);
}

} // namespace

TargetProcess::ThreadList TargetProcess::ListThreads() {
    return native->TargetIsWow64() ? ListThreads32() : ListThreads64();
}

TargetProcess::ThreadList TargetProcess::ListThreads32() {
    return ListThreadsBy(&TargetProcess::ReadThread32);
}

TargetProcess::ThreadList TargetProcess::ListThreads64() {
    return ListThreadsBy(&TargetProcess::ReadThread64);
}

TargetProcess::ThreadList
TargetProcess::ListThreadsBy(std::shared_ptr<const TheradData> (TargetProcess::*readThread)(uint32_t)) {
    ThreadList list;
    const ScopedHandle snapshot(platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPTHREAD_FLAG, 0));
    if (!snapshot) { // only null is a failure here, by design
        return list;
    }
    platform::ThreadEntry entry{};
    entry.dwSize = sizeof entry;
    for (bool more = platform::Thread32First(snapshot.Get(), &entry); more;
         more = platform::Thread32Next(snapshot.Get(), &entry)) {
        if (entry.th32OwnerProcessID != processId) {
            continue;
        }
        if (auto thread = (this->*readThread)(entry.th32ThreadID)) {
            list.push_back(std::move(thread));
        }
    }
    return list;
}

std::shared_ptr<const TheradData> TargetProcess::ReadThread(uint32_t threadId) {
    return native->TargetIsWow64() ? ReadThread32(threadId) : ReadThread64(threadId);
}

std::shared_ptr<const TheradData> TargetProcess::ReadThread32(uint32_t threadId) {
    return ReadThreadOf<Bits32>(threadId);
}

std::shared_ptr<const TheradData> TargetProcess::ReadThread64(uint32_t threadId) {
    return ReadThreadOf<Bits64>(threadId);
}

template <typename Bits>
std::shared_ptr<const TheradData> TargetProcess::ReadThreadOf(uint32_t threadId) {
    const ScopedHandle thread(platform::OpenThread(threadAllAccess, false, threadId));
    if (!thread) {
        return nullptr;
    }
    alignas(8) typename Bits::Pointer start = 0;
    if (Failed(
            native->QueryThreadInformation(thread.Get(), ThreadQuerySetWin32StartAddressClass, &start, sizeof start))) {
        return nullptr;
    }
    // Replies have the layout of the machine, whatever the target's bitness.
    const bool machineIs32Bit = native->IsX86System();
    SystemBuffer<Bits64::memoryBasicInformationSize> memory;
    const size_t memorySize = machineIs32Bit ? Bits32::memoryBasicInformationSize : Bits64::memoryBasicInformationSize;
    if (Failed(native->QueryVirtualMemory(start, MemoryBasicInformationClass, memory.bytes, memorySize))) {
        return nullptr;
    }
    using SignedPointer = std::make_signed_t<typename Bits::Pointer>;
    const uint64_t base = machineIs32Bit ? static_cast<typename Bits::Pointer>(
                                               SignedPointer{LoadField<int32_t>(memory.bytes, memoryBasicBaseAddress)})
                                         : LoadField<uint64_t>(memory.bytes, memoryBasicBaseAddress);
    if (base == 0) {
        return nullptr;
    }
    SystemBuffer<mappedFileNameSize> reply;
    if (Failed(
            native->QueryVirtualMemory(base, MemoryMappedFilenameInformationClass, reply.bytes, sizeof reply.bytes))) {
        return nullptr;
    }
    auto path = DevicePathToDosPath(NameInReply<Bits>(reply.bytes, machineIs32Bit));
    if (path.empty()) {
        return nullptr;
    }
    return std::make_shared<const TheradData>(TheradData{threadId, start, std::move(path)});
}
