// The records of process inspection: modules, processes and threads. A record is filled before it is shared and never
// changes; any thread may use it, and it can outlive the object that made it.
#pragma once

#include <cstdint>
#include <string>

#include "platform/wideChar.h"

// The loader list that contains a module, or that a search covers.
enum ModuleKind : uint32_t {
    ModuleKind32 = 0,
    ModuleKind64 = 1,
    ModuleKindAuto = 2, // the list of the target's own bitness
};

// A module of a process.
struct ModuleData {
    uint64_t baseAddress;
    std::basic_string<WideChar> path; // as recorded by the loader; can be empty
    uint32_t imageSize;               // bytes
    ModuleKind kind;                  // the list that contains it; never ModuleKindAuto
};

// A process of the system.
struct ProcessData {
    uint32_t processId;
    uint32_t parentProcessId;
    std::basic_string<WideChar> imageName; // file name; can be empty
};

// A thread with the file that its start address belongs to.
struct TheradData { // sic
    uint32_t threadId;
    uint64_t startAddress;            // the Win32 start address, in the target
    std::basic_string<WideChar> path; // with a drive letter: the file mapped at startAddress
};
