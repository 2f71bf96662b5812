// What one open process's own memory, and the system, tell about it.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "native/native.h"
#include "native/records.h"
#include "platform/processApi.h"

// The strings of a process's parameters block.
enum ProcessParameterField : uint32_t {
    CurrentDirectory = 0,
    DllPath = 1,
    ImagePathName = 2,
    CommandLine = 3,
    WindowTitle = 4,
    DesktopInfo = 5,
    ShellInfo = 6,
    RuntimeData = 7,
};

// A string that was fetched from a target.
//
// `length` is the MaximumLength of the target's string, which counts bytes, taken as a count of wide characters: the
// buffer is twice as large as the target's string can be. It holds one more character, always NUL.
struct Wow64extStringW {
    explicit Wow64extStringW(const uint16_t& maximumLength);

    std::unique_ptr<WideChar[]> buffer;
    uint32_t length;
};

struct ModuleKey {
    std::basic_string<WideChar> path;
    ModuleKind kind;

    // By path first, code units as unsigned numbers and the shorter first; then by kind.
    std::strong_ordering operator<=>(const ModuleKey&) const = default;
};

// Nothing here logs, and nothing throws on a failed platform call: a failure is an empty pointer, an empty or shortened
// vector, or 0. The object belongs to one thread at a time.
class TargetProcess {
public:
    using ModuleMap = std::map<ModuleKey, std::shared_ptr<const ModuleData>>;
    using ModuleList = std::vector<std::shared_ptr<const ModuleData>>;
    using ThreadList = std::vector<std::shared_ptr<const TheradData>>;
    using ProcessList = std::vector<std::shared_ptr<const ProcessData>>;

    // The caller keeps `process` open for the life of the object and closes it. `flag` is 0; nothing reads it.
    TargetProcess(platform::Handle process, uint32_t flag);
    TargetProcess(const TargetProcess&) = delete;
    TargetProcess& operator=(const TargetProcess&) = delete;

    uint32_t ProcessId() const { return processId; }
    const Native& Access() const { return *native; }

    // Exchanges the variant of the access layer with `access`, which must have the same target and, while an operation
    // of this object runs, must not be null. The object deletes the variant that it holds at its end as a `Native`:
    // who puts in a class with more fields than that takes it out again before.
    void SwapAccess(std::unique_ptr<Native>& access) { native.swap(access); }

    // Strings of the parameters block as it stands in the target's memory; they end at their first NUL.
    std::shared_ptr<Wow64extStringW> ReadImagePath();
    std::shared_ptr<Wow64extStringW> ReadCommandLine();
    std::shared_ptr<Wow64extStringW> ReadCurrentDirectory();
    std::shared_ptr<Wow64extStringW> ReadParameterString(uint32_t fieldIndex);

    // The modules of one loader list, in load order.
    ModuleList ListModules(ModuleKind kind);

    // Adds the modules of one loader list to the map. What stands in it stays, unloaded modules too.
    void LoadModules(ModuleKind kind);

    // Adds those of all lists that the target has, and gives the map.
    const ModuleMap& LoadAllModules();

    // The first module of the map, in its order, that begins at `address`, or holds it where `strict` is false. `kind`
    // only says which list is loaded when nothing was found at first.
    std::shared_ptr<const ModuleData> FindTargetModule(uint64_t address, bool strict, ModuleKind kind);

    // The module of the program itself.
    std::shared_ptr<const ModuleData> GetMainModule();

    // The threads that have a file behind their start address.
    ThreadList ListThreads();
    std::shared_ptr<const TheradData> ReadThread(uint32_t threadId);

    // All processes of the system, in no useful order; empty on failure.
    ProcessList ListProcesses();

    // 0 on failure.
    uint32_t GetParentProcessId();

private:
    std::shared_ptr<Wow64extStringW> ReadParameterString32(uint32_t fieldIndex);
    std::shared_ptr<Wow64extStringW> ReadParameterString64(uint32_t fieldIndex);
    ModuleList ListModules32();
    ModuleList ListModules64();
    ThreadList ListThreads32();
    ThreadList ListThreads64();
    std::shared_ptr<const TheradData> ReadThread32(uint32_t threadId);
    std::shared_ptr<const TheradData> ReadThread64(uint32_t threadId);

    template <typename Bits>
    std::shared_ptr<Wow64extStringW> ReadParameterStringOf(uint32_t fieldIndex);
    template <typename Bits>
    ModuleList ListModulesOf();
    template <typename Bits>
    std::shared_ptr<const TheradData> ReadThreadOf(uint32_t threadId);
    ThreadList ListThreadsBy(std::shared_ptr<const TheradData> (TargetProcess::*readThread)(uint32_t));

    // The address of the PEB of width `Bits`, and its content in `peb`.
    template <typename Bits>
    uint64_t ReadPeb(void* peb);

    ModuleKind ResolveKind(ModuleKind kind) const;
    std::shared_ptr<const ModuleData> FindLoadedModule(uint64_t address, bool strict) const;

    platform::Handle processHandle;
    uint32_t processId = 0;
    ModuleMap modules;
    std::unique_ptr<Native> native;

    friend struct TargetProcessAccess; // tests reach what no target of their machine leads to through it
};

template <typename Bits>
uint64_t TargetProcess::ReadPeb(void* peb) {
    if constexpr (sizeof(typename Bits::Pointer) == 4) {
        return native->ReadPeb32(peb);
    } else {
        return native->ReadPeb64(peb);
    }
}
