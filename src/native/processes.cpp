// The list of the system's processes, and a target's parent.
#include <algorithm>
#include <memory>

#include "native/caller.h"
#include "native/ntFunctions.h"
#include "native/systemBuffer.h"
#include "native/targetProcess.h"

namespace {

struct VirtualFreeDeleter {
    void operator()(char* area) const { platform::VirtualFree(area); }
};

std::shared_ptr<const ProcessData> MakeRecord(const char* entry) {
    const auto id = static_cast<uint32_t>(LoadField<Caller::Pointer>(entry, Caller::listedUniqueProcessId));
    const auto parent =
        static_cast<uint32_t>(LoadField<Caller::Pointer>(entry, Caller::listedInheritedFromUniqueProcessId));
    const auto* const name = reinterpret_cast<const WideChar*>(
        static_cast<uintptr_t>(LoadField<Caller::Pointer>(entry, Caller::listedImageNameBuffer)));
    return std::make_shared<const ProcessData>(
        ProcessData{id, parent, name == nullptr ? std::basic_string<WideChar>() : std::basic_string<WideChar>(name)});
}

} // namespace

TargetProcess::ProcessList TargetProcess::ListProcesses() {
    ProcessList list;
    uint32_t size = 0;
    // The first call fails and delivers the length; there is no list to read if it succeeds.
    if (!Failed(native->QuerySystemInformation(SystemExtendedProcessInformationClass, nullptr, 0, &size))) {
        return list;
    }
    const std::unique_ptr<char, VirtualFreeDeleter> area(static_cast<char*>(platform::VirtualAlloc(size)));
    if (area == nullptr ||
        Failed(native->QuerySystemInformation(SystemExtendedProcessInformationClass, area.get(), size, &size))) {
        return list; // not repeated if the list grew since the first call
    }
    const char* entry = area.get();
    for (;;) {
        if (LoadField<Caller::Pointer>(entry, Caller::listedUniqueProcessId) != 0) {
            list.push_back(MakeRecord(entry));
        }
        const auto next = LoadField<uint32_t>(entry, listedNextEntryOffset);
        if (next == 0) {
            break;
        }
        entry += next;
    }
    std::sort(list.begin(), list.end()); // by the addresses of the records, by design: no useful order
    return list;
}

uint32_t TargetProcess::GetParentProcessId() {
    SystemBuffer<Bits64::processBasicInformationSize> block;
    const bool machineIs32Bit = native->IsX86System();
    const uint32_t size = machineIs32Bit ? Bits32::processBasicInformationSize : Bits64::processBasicInformationSize;
    if (Failed(native->QueryProcessInformation(ProcessBasicInformationClass, block.bytes, size, nullptr))) {
        return 0;
    }
    return LoadField<uint32_t>(block.bytes, machineIs32Bit ? Bits32::processBasicInheritedFromUniqueProcessId
                                                           : Bits64::processBasicInheritedFromUniqueProcessId);
}
