// What process inspection tells of modules, processes and threads. Records are filled before they are shared and never
// change; they may go to any thread and outlive the object that made them.
#pragma once

#include <cstdint>
#include <string>

#include "platform/wideChar.h"

// The loader list that a module stands in, or is looked for in.
enum ModuleKind : uint32_t {
    ModuleKind32 = 0,
    ModuleKind64 = 1,
    ModuleKindAuto = 2, // the list that fits the target
};

struct ModuleData {
    uint64_t baseAddress;
    std::basic_string<WideChar> path; // as the loader has it
    uint32_t imageSize;               // bytes
    ModuleKind kind;                  // the list that the record came from
};

struct ProcessData {
    uint32_t processId;
    uint32_t parentProcessId;
    std::basic_string<WideChar> imageName; // file name; may be empty
};

struct TheradData { // sic
    uint32_t threadId;
    uint64_t startAddress;            // the Win32 start address
    std::basic_string<WideChar> path; // with its drive letter: the file that is mapped there
};
