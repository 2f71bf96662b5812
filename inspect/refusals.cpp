#include "refusals.h"

#include "native/ntFunctions.h"
#include "native/remoteLayouts.h"
#include "native/scopedHandle.h"
#include "platform/platform.h"

namespace mordinspect {

namespace {

constexpr uint32_t threadAllAccess = 0x1FFFFF;

NtStatus BasicInformationStatus(Native& native) {
    char block[Bits64::processBasicInformationSize] = {};
    const uint32_t size =
        native.IsX86System() ? Bits32::processBasicInformationSize : Bits64::processBasicInformationSize;
    return native.QueryProcessInformation(ProcessBasicInformationClass, block, size, nullptr);
}

// Where a process has no block of that width, or its address cannot be asked for.
template <typename Bits>
Refusal WhyNoPeb(Native& native) {
    constexpr bool narrow = sizeof(typename Bits::Pointer) == 4;
    if (narrow && !native.TargetIsWow64()) {
        return Nothing("a 64-bit process has no 32-bit environment block");
    }
    if (!narrow && native.IsX86System()) {
        return ByStatus("the 64-bit environment block", STATUS_OF_REFUSED_REQUEST);
    }
    const NtStatus status = BasicInformationStatus(native);
    const std::string step = "the address of the environment block";
    return Failed(status) ? ByStatus(step, status) : Nothing(step);
}

template <typename Bits>
uint64_t ReadPeb(Native& native, char (&peb)[Bits::pebSize]) {
    return sizeof(typename Bits::Pointer) == 4 ? native.ReadPeb32(peb) : native.ReadPeb64(peb);
}

template <typename Bits>
Refusal WhyNoString(Native& native, uint32_t fieldIndex) {
    char peb[Bits::pebSize] = {};
    const uint64_t pebAddress = ReadPeb<Bits>(native, peb);
    if (pebAddress == 0) {
        return WhyNoPeb<Bits>(native);
    }
    uint64_t parameters = 0;
    NtStatus status =
        native.ReadMemory(pebAddress + Bits::pebProcessParameters, &parameters, sizeof parameters, nullptr);
    if (Failed(status)) {
        return ByStatus("the address of the parameters", status);
    }
    char header[Bits::unicodeStringSize] = {};
    status = native.ReadMemory(parameters + Bits::parameterStrings[fieldIndex], header, sizeof header, nullptr);
    if (Failed(status)) {
        return ByStatus("the text's header", status);
    }
    const size_t size = size_t{LoadField<uint16_t>(header, unicodeStringMaximumLength)} * sizeof(WideChar);
    const uint64_t text = LoadField<typename Bits::Pointer>(header, Bits::unicodeStringBuffer);
    status = native.ReadMemory(text, std::vector<char>(size).data(), size, nullptr);
    return Failed(status) ? ByStatus("the text, with as much behind it", status) : Nothing("the text");
}

template <typename Bits>
Refusal WhyNoList(Native& native) {
    char peb[Bits::pebSize] = {};
    if (ReadPeb<Bits>(native, peb) == 0) {
        return WhyNoPeb<Bits>(native);
    }
    char data[Bits::ldrDataSize] = {};
    const NtStatus status =
        native.ReadMemory(LoadField<typename Bits::Pointer>(peb, Bits::pebLdr), data, sizeof data, nullptr);
    return status != STATUS_OF_SUCCESS ? ByStatus("the loader's data", status) : Nothing("the list is empty");
}

template <typename Bits>
Refusal WhyNoFile(Native& native, platform::Handle thread) {
    typename Bits::Pointer start = 0;
    NtStatus status = native.QueryThreadInformation(thread, ThreadQuerySetWin32StartAddressClass, &start, sizeof start);
    if (Failed(status)) {
        return ByStatus("its start address", status);
    }
    const bool narrow = native.IsX86System();
    char memory[Bits64::memoryBasicInformationSize] = {};
    status = native.QueryVirtualMemory(start, MemoryBasicInformationClass, memory,
                                       narrow ? Bits32::memoryBasicInformationSize : sizeof memory);
    if (Failed(status)) {
        return ByStatus("the memory at its start address", status);
    }
    const uint64_t base = narrow ? LoadField<uint32_t>(memory, memoryBasicBaseAddress)
                                 : LoadField<uint64_t>(memory, memoryBasicBaseAddress);
    if (base == 0) {
        return Nothing("the memory at its start address");
    }
    alignas(8) char reply[mappedFileNameSize] = {};
    status = native.QueryVirtualMemory(base, MemoryMappedFilenameInformationClass, reply, sizeof reply);
    return Failed(status) ? ByStatus("the file at its start address", status)
                          : Nothing("no drive letter fits the file's device path");
}

} // namespace

Refusal WhyNoParameterString(Native& native, uint32_t fieldIndex) {
    return native.TargetIsWow64() ? WhyNoString<Bits32>(native, fieldIndex) : WhyNoString<Bits64>(native, fieldIndex);
}

Refusal WhyNoModules(Native& native, ModuleKind kind) {
    return kind == ModuleKind32 ? WhyNoList<Bits32>(native) : WhyNoList<Bits64>(native);
}

Refusal WhyNoThread(Native& native, uint32_t threadId) {
    const ScopedHandle thread(platform::OpenThread(threadAllAccess, false, threadId));
    if (!thread) {
        return ByError("the thread", platform::GetLastError());
    }
    return native.TargetIsWow64() ? WhyNoFile<Bits32>(native, thread.Get()) : WhyNoFile<Bits64>(native, thread.Get());
}

Refusal WhyNoParent(Native& native) {
    const NtStatus status = BasicInformationStatus(native);
    return Failed(status) ? ByStatus("the process's basic information", status) : Nothing("it has none");
}

Refusal WhyNoProcesses(Native& native) {
    uint32_t size = 0;
    native.QuerySystemInformation(SystemExtendedProcessInformationClass, nullptr, 0, &size); // fails with the length
    std::vector<char> area(size);
    const NtStatus status =
        native.QuerySystemInformation(SystemExtendedProcessInformationClass, area.data(), size, &size);
    const std::string step = "the system's list of processes";
    return Failed(status) ? ByStatus(step, status) : Nothing(step);
}

} // namespace mordinspect
