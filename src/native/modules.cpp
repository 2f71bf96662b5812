// The modules of a target: its loader lists, and the map of the modules found so far.
#include <algorithm>
#include <iterator>

#include "native/remoteLayouts.h"
#include "native/systemBuffer.h"
#include "native/targetProcess.h"

namespace {

template <typename Bits>
constexpr ModuleKind kindOf = sizeof(typename Bits::Pointer) == 4 ? ModuleKind32 : ModuleKind64;

bool Matches(const ModuleData& module, uint64_t address, bool strict) {
    if (strict) {
        return module.baseAddress == address;
    }
    return module.baseAddress <= address && address < module.baseAddress + module.imageSize;
}

} // namespace

TargetProcess::ModuleList TargetProcess::ListModules(ModuleKind kind) {
    return ResolveKind(kind) == ModuleKind64 ? ListModules64() : ListModules32();
}

TargetProcess::ModuleList TargetProcess::ListModules32() {
    return ListModulesOf<Bits32>();
}

TargetProcess::ModuleList TargetProcess::ListModules64() {
    return ListModulesOf<Bits64>();
}

// A failed read of an entry is ignored, by design: the record then has base 0, size 0 and no path.
template <typename Bits>
TargetProcess::ModuleList TargetProcess::ListModulesOf() {
    using Pointer = typename Bits::Pointer;
    ModuleList list;
    SystemBuffer<Bits::pebSize> peb;
    if (ReadPeb<Bits>(peb.bytes) == 0) {
        return list;
    }
    const uint64_t ldr = LoadField<Pointer>(peb.bytes, Bits::pebLdr);
    SystemBuffer<Bits::ldrDataSize> ldrData;
    const NtStatus read = native->ReadMemory(ldr, ldrData.bytes, sizeof ldrData.bytes, nullptr);
    if (read != STATUS_OF_SUCCESS) { // by design: warnings end the walk here, unlike at the other reads
        return list;
    }
    const auto head = static_cast<Pointer>(ldr + Bits::ldrInLoadOrderModuleList);
    auto cursor = LoadField<Pointer>(ldrData.bytes, Bits::ldrInLoadOrderModuleList);
    while (cursor != head) {
        alignas(8) WideChar name[moduleNameSize / sizeof(WideChar)] = {};
        SystemBuffer<Bits::entrySize> entry;
        native->ReadMemory(cursor, entry.bytes, sizeof entry.bytes, nullptr);

        const auto nameLength = LoadField<uint16_t>(entry.bytes, Bits::entryFullDllName + unicodeStringLength);
        const auto nameAddress = LoadField<Pointer>(entry.bytes, Bits::entryFullDllName + Bits::unicodeStringBuffer);
        native->ReadMemory(nameAddress, name, std::min<uint64_t>(nameLength, sizeof name), nullptr);

        list.push_back(std::make_shared<const ModuleData>(ModuleData{
            LoadField<Pointer>(entry.bytes, Bits::entryDllBase),
            {std::begin(name), std::find(std::begin(name), std::end(name), WideChar{})},
            LoadField<uint32_t>(entry.bytes, Bits::entrySizeOfImage),
            kindOf<Bits>,
        }));
        // The first field of an entry is the link to the next one.
        if (Failed(native->ReadMemory(cursor, &cursor, sizeof cursor, nullptr))) {
            break;
        }
    }
    return list;
}

void TargetProcess::LoadModules(ModuleKind kind) {
    for (const auto& module : ListModules(kind)) {
        modules.emplace(ModuleKey{module->path, module->kind}, module);
    }
}

const TargetProcess::ModuleMap& TargetProcess::LoadAllModules() {
    if (native->TargetIsWow64()) {
        LoadModules(ModuleKind32); // a WOW64 process has both lists
    }
    LoadModules(ModuleKind64);
    return modules;
}

std::shared_ptr<const ModuleData> TargetProcess::FindTargetModule(uint64_t address, bool strict, ModuleKind kind) {
    if (auto module = FindLoadedModule(address, strict)) {
        return module;
    }
    LoadModules(ResolveKind(kind));
    return FindLoadedModule(address, strict);
}

// On a 64-bit machine even a 32-bit target is read through its 64-bit PEB.
std::shared_ptr<const ModuleData> TargetProcess::GetMainModule() {
    uint64_t base = 0;
    if (native->IsX86System()) {
        SystemBuffer<Bits32::pebSize> peb;
        if (native->ReadPeb32(peb.bytes) == 0) {
            return nullptr;
        }
        base = LoadField<uint32_t>(peb.bytes, Bits32::pebImageBaseAddress);
    } else {
        SystemBuffer<Bits64::pebSize> peb;
        if (native->ReadPeb64(peb.bytes) == 0) {
            return nullptr;
        }
        base = LoadField<uint64_t>(peb.bytes, Bits64::pebImageBaseAddress);
    }
    return FindTargetModule(base, true, ModuleKindAuto);
}

ModuleKind TargetProcess::ResolveKind(ModuleKind kind) const {
    if (kind != ModuleKindAuto) {
        return kind;
    }
    return native->TargetIsWow64() ? ModuleKind32 : ModuleKind64;
}

std::shared_ptr<const ModuleData> TargetProcess::FindLoadedModule(uint64_t address, bool strict) const {
    const auto found = std::find_if(modules.begin(), modules.end(),
                                    [=](const auto& entry) { return Matches(*entry.second, address, strict); });
    return found == modules.end() ? nullptr : found->second;
}
