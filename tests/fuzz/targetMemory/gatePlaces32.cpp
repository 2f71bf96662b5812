// The 64-bit half of a 32-bit caller.
#include "fuzz/targetMemory/memoryPlaces.h"
#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/gateHalf.h"
#include "native/gate.h"
#include "native/nativeWow64.h"

using namespace scripted;

namespace {

GateHalf half;

// A wrong address passed to the gate would end the process. Here it ends one operation.
template <typename Ask>
void AllowFault(const Ask& ask) {
    try {
        ask();
    } catch (const GateFault&) {
    }
}

} // namespace

void PrepareOnce() {
    static const bool prepared = [] {
        Reset();
        half.Build(ResetGate());
        char buffer[8192];
        NativeWow64 native(nullptr);
        native.QueryThreadInformation(nullptr, 9, buffer, 8);
        native.QueryVirtualMemory(0, 0, buffer, 48);
        native.ReadTeb64(nullptr, buffer);
        return native.GetThreadContext64(nullptr, buffer) == STATUS_OF_SUCCESS;
    }();
    (void)prepared;
}

void AskGate(const Text& name) {
    AllowFault([&] { GateModuleBase(name.c_str()); });
    AllowFault([&] { GateModuleBase(WIDE("not there")); });
    AllowFault([&] { GateLoaderResolver(); });
}

std::vector<MemoryPlace> BuildGatePlaces() {
    TargetMemory& memory = ResetGate().memory;
    half.Build(GateInstance());
    const auto functionCount = static_cast<size_t>(half.FunctionCount());
    std::vector<MemoryPlace> places = {
        {&memory, GateHalf::threadBlock, 0x70},
        {&memory, GateHalf::peb, 0x40},
        {&memory, GateHalf::ldr, sizeof(published::PebLdrData<uint64_t>)},
        {&memory, GateHalf::ntdll, sizeof(published::ImageDosHeader)},
        {&memory, GateHalf::ntdll + 0x80, sizeof(published::ImageNtHeaders64)},
        {&memory, GateHalf::ntdll + GateHalf::exportDirectory, sizeof(published::ImageExportDirectory)},
        {&memory, GateHalf::ntdll + GateHalf::functionTable, functionCount * 4},
        {&memory, GateHalf::ntdll + GateHalf::ordinalTable, functionCount * 2},
        {&memory, GateHalf::ntdll + GateHalf::nameTable, half.exports.size() * 4},
        {&memory, GateHalf::ntdll + GateHalf::nameTexts, 0x80},
    };
    for (size_t i = 0; i < half.modules.size(); ++i) {
        const uint64_t entry = GateHalf::firstEntry + i * 0x1000;
        places.push_back({&memory, entry, 0x70});
        places.push_back({&memory, entry + 0x200, half.modules[i].baseName.size() * sizeof(WideChar)});
    }
    return places;
}
