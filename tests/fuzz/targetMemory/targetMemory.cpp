// Process inspection of targets with any memory. Compiled once for each width of caller, over the scripted system of
// the tests.
//
// An input first chooses the pairing of caller and target and the contents of the system's lists, then changes a
// well-formed target (and, for a 32-bit caller, the 64-bit half of its process) place by place. Then every operation of
// the library runs on that target.
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/targetMemory/memoryPlaces.h"
#include "fuzz/targets.h"
#include "kit/system/scriptedProcess/lowStack.h"
#include "kit/system/scriptedProcess/pairings.h"
#include "native/devicePath.h"
#include "native/targetProcess.h"

#include <stdexcept>

namespace {

using namespace scripted;

constexpr uint32_t targetId = 7;
constexpr uint64_t readLimit = 400;              // ends cycles
constexpr uint64_t inputsBetweenChecks = 1024;   // of the restored memory
constexpr size_t largestArray = size_t{1} << 20; // the allocation of a larger table of exports fails

// The system's own lists are well-formed, with any contents.
void FillSystem(FuzzInput& input, System& system, Process& target) {
    const auto shape = input.Take<uint8_t>();
    for (unsigned i = 0; i < (shape & 3u); ++i) {
        system.processList.push_back({input.Take<uint16_t>(), input.Take<uint16_t>(), input.TakeText(20)});
    }
    for (unsigned i = 0; i < (shape >> 2 & 3u); ++i) {
        Thread thread{9 + i, targetId};
        thread.start = input.Take<uint64_t>();
        system.threads.push_back(thread);
        target.regions.push_back({thread.start & ~uint64_t{0xFFF}, 0x1000, input.TakeText(40)});
    }
    for (unsigned i = 0; i < (shape >> 4 & 3u); ++i) {
        system.devices[static_cast<char>('A' + input.Take<uint8_t>() % 26)] = input.TakeText(64);
    }
    if ((shape & 0x40) != 0) {
        system.mappedName.length = input.Take<uint16_t>();
    }
    if ((shape & 0x80) != 0) {
        system.mappedName.address = input.Take<uint64_t>();
    }
}

// The system for every input, with one target in it.
class TargetSystem {
public:
    static TargetSystem& Begin() {
        static auto* const one = new TargetSystem;
        one->Restore();
        return *one;
    }

    System& system;
    Process& target;
    MemoryPlaces places;

private:
    TargetSystem() : system(Prepared()), target(system.processes[targetId]), places(target) {
        system.keepsCalls = false;
        system.readLimit = readLimit;
        system.largestArrayAllocation = largestArray;
    }

    static System& Prepared() {
        PrepareOnce();
        return Reset();
    }

    // Undoes everything that an input can have changed.
    void Restore() {
        places.Restore();
        if (m_inputs++ % inputsBetweenChecks == 0) {
            Require(places.AreAsBuilt(), "undoing the changes restores the memory");
        }
        target.regions.clear();
        system.processList.clear();
        system.threads.clear();
        system.devices.clear();
        system.mappedName = {};
        system.lastError = 0;
        system.lastStatus = 0;
        system.reads = 0;
        system.arrayAllocations = 0;
        system.debugOutput.clear();
        system.handles.clear();
    }

    uint64_t m_inputs = 0;
};

void AskForStrings(TargetProcess& process) {
    for (uint32_t i = 0; i < 9; ++i) {
        const auto string = process.ReadParameterString(i);
        Require(string == nullptr || (i < 8 && string->length < 65536 && string->buffer[string->length] == WideChar{}),
                "a parameter string has a known index, its length and a NUL");
    }
}

void AskForModules(TargetProcess& process, uint64_t address) {
    for (const ModuleKind kind : {ModuleKind32, ModuleKind64, ModuleKindAuto}) {
        const auto list = process.ListModules(kind);
        Require(list.size() <= readLimit, "each module takes a read");
        for (const auto& module : list) {
            Require(module->path.size() <= 512 && module->path.find(WideChar{}) == module->path.npos,
                    "a module path has at most 512 units and no NUL");
        }
    }
    Require(process.LoadAllModules().size() <= 2 * readLimit, "each module of both widths takes a read");
    for (const bool strict : {false, true}) {
        const auto found = process.FindTargetModule(address, strict, ModuleKindAuto);
        Require(found == nullptr || !strict || found->baseAddress == address, "a strict search finds the exact base");
    }
    process.GetMainModule();
}

// A path that is shorter than a device name and a prefix of it makes the library throw.
template <typename Ask>
void AllowOutOfRange(const Ask& ask) {
    try {
        ask();
    } catch (const std::out_of_range&) {
    }
}

} // namespace

void FuzzTargetMemory(const uint8_t* data, size_t size) {
    FuzzInput input(data, size);
    TargetSystem& scene = TargetSystem::Begin();
    System& system = scene.system;
    Process& target = scene.target;

    static const auto pairings = PairingsOfThisCaller();
    const Pairing pairing = pairings[input.Take<uint8_t>() % pairings.size()];
    system.architecture = pairing == Pairing::Machine32 ? 0 : 9;
    system.callerIsWow64 = pairing == Pairing::Wow64CallerOf32 || pairing == Pairing::Wow64CallerOf64 ? 1 : 0;
    target.isWow64 = pairing == Pairing::Wow64CallerOf32 || pairing == Pairing::Caller64Of32 ? 1 : 0;
    FillSystem(input, system, target);
    const auto address = input.Take<uint64_t>();
    const auto path = input.TakeText(64);
    const auto name = input.TakeText(16);
    while (!input.AtEnd()) {
        scene.places.Change(input);
    }

    const platform::Handle handle = OpenProcessHandle(targetId);
    {
        TargetProcess process(handle, 0);
        const auto within = [&](const auto& ask) {
            system.reads = 0; // the limit is for one operation
            ask();
        };
        within([&] { AskForStrings(process); });
        within([&] { AskForModules(process, address); });
        // A reply of a 32-bit system has 32-bit pointers into itself.
        within([&] { OnLowStack([&] { AllowOutOfRange([&] { process.ListThreads(); }); }); });
        within([&] {
            Require(process.ListProcesses().size() <= system.processList.size(), "there are no more processes");
        });
        within([&] { process.GetParentProcessId(); });
        within([&] { AllowOutOfRange([&] { DevicePathToDosPath(path); }); });
        within([&] { AskGate(name); });
    }
    Require(system.handles.size() == 1 && system.wrongCloses == 0 && system.openAreas == 0,
            "handles and memory areas are released once");
}
