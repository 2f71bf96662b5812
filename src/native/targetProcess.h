// Inspection of one open process through its memory and through system queries.
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

// The strings of a process's parameters block, as indices of ReadParameterString.
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

// A string that was read from a target.
//
// `length` is the MaximumLength of the target's string, a count of bytes, used as a count of wide characters: the
// buffer is twice as large as the target's string can be. It has room for one more character, which is always NUL. The
// content is not initialised. The text ends at its first NUL.
struct Wow64extStringW {
    explicit Wow64extStringW(const uint16_t& maximumLength);

    std::unique_ptr<WideChar[]> buffer;
    uint32_t length;
};

// The key of a module in the module map: the same path can be in both loader lists.
struct ModuleKey {
    std::basic_string<WideChar> path;
    ModuleKind kind;

    // Orders by path (UTF-16 code units as unsigned numbers, a prefix first), then by kind.
    std::strong_ordering operator<=>(const ModuleKey&) const = default;
};

// Reads one process. A failed platform call is neither logged nor thrown: the operation returns an empty pointer, an
// empty or shortened vector, or 0. std::bad_alloc passes through. An object must not be used by two threads at once.
//
// All operations but FindTargetModule and GetMainModule read the target anew at each call.
class TargetProcess {
public:
    using ModuleMap = std::map<ModuleKey, std::shared_ptr<const ModuleData>>;
    using ModuleList = std::vector<std::shared_ptr<const ModuleData>>;
    using ThreadList = std::vector<std::shared_ptr<const TheradData>>;
    using ProcessList = std::vector<std::shared_ptr<const ProcessData>>;

    // The caller keeps `process` open for the life of the object and closes it. `flag` is 0 and ignored.
    TargetProcess(platform::Handle process, uint32_t flag);
    TargetProcess(const TargetProcess&) = delete;
    TargetProcess& operator=(const TargetProcess&) = delete;

    // The id of the process, or 0 if the system did not deliver it; and the access layer in use.
    uint32_t ProcessId() const { return processId; }
    const Native& Access() const { return *native; }

    // Exchanges the access layer with `access`, which must serve the same target and must not be null while an
    // operation of this object runs. The object deletes the variant that it holds at its end as a `Native`: a class
    // with more fields than `Native` must be taken out before.
    void SwapAccess(std::unique_ptr<Native>& access) { native.swap(access); }

    // Read a string of the parameters block, ReadParameterString the one with the index `fieldIndex`
    // (ProcessParameterField). They return an empty pointer if a read fails or the index is unknown. They read twice
    // the string's capacity: if the memory behind it is unreadable, the whole read fails.
    std::shared_ptr<Wow64extStringW> ReadImagePath();
    std::shared_ptr<Wow64extStringW> ReadCommandLine();
    std::shared_ptr<Wow64extStringW> ReadCurrentDirectory();
    std::shared_ptr<Wow64extStringW> ReadParameterString(uint32_t fieldIndex);

    // Lists the modules of one loader list, in load order. A module whose entry cannot be read gives a record with base
    // 0, size 0 and no path. The walk ends early if a link cannot be read, and has no limit: a cyclic list does not
    // end.
    ModuleList ListModules(ModuleKind kind);

    // Adds the modules of one loader list to the map. Existing entries stay unchanged, those of unloaded modules too.
    void LoadModules(ModuleKind kind);

    // Adds the modules of all loader lists of the target and returns the map, which is valid until the object is
    // destroyed.
    const ModuleMap& LoadAllModules();

    // Returns the first module of the map, in map order, that begins at `address`, or, if `strict` is false, contains
    // it. If there is none, loads the list `kind` and searches again; records of both lists count. Returns an empty
    // pointer if there is no such module.
    std::shared_ptr<const ModuleData> FindTargetModule(uint64_t address, bool strict, ModuleKind kind);

    // Returns the module of the program itself, or an empty pointer.
    std::shared_ptr<const ModuleData> GetMainModule();

    // List the threads that have a file at their start address, and read one thread. Other threads are omitted, or give
    // an empty pointer. Throw std::out_of_range as DevicePathToDosPath does.
    ThreadList ListThreads();
    std::shared_ptr<const TheradData> ReadThread(uint32_t threadId);

    // Lists all processes of the system, in no particular order. Returns an empty vector on failure.
    ProcessList ListProcesses();

    // Returns the id of the parent process, or 0 on failure.
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

    // Returns the address of the target's PEB of the bitness `Bits`, and its content in `peb`; 0 on failure.
    template <typename Bits>
    uint64_t ReadPeb(void* peb);

    // Replaces ModuleKindAuto by the list of the target's bitness.
    ModuleKind ResolveKind(ModuleKind kind) const;
    std::shared_ptr<const ModuleData> FindLoadedModule(uint64_t address, bool strict) const;

    platform::Handle processHandle;
    uint32_t processId = 0;
    ModuleMap modules;
    std::unique_ptr<Native> native;

    friend struct TargetProcessAccess; // gives tests access to paths that no target of their machine takes
};

template <typename Bits>
uint64_t TargetProcess::ReadPeb(void* peb) {
    if constexpr (sizeof(typename Bits::Pointer) == 4) {
        return native->ReadPeb32(peb);
    } else {
        return native->ReadPeb64(peb);
    }
}
