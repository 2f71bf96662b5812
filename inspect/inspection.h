// What the library can tell about one process, or about all, with the reason where it can tell nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "native/ntStatus.h"
#include "native/records.h"
#include "platform/processApi.h"

namespace mordinspect {

using WideText = std::basic_string<WideChar>;

// Why something could not be had: the step that failed, in words, and the system's reason. A step that did not fail but
// gave nothing has no reason.
struct Refusal {
    enum class Kind { none, status, error };

    std::string step;
    Kind kind = Kind::none;
    uint32_t code = 0; // an NT status or a Windows error code, by `kind`
};

Refusal Nothing(std::string step);
Refusal ByStatus(std::string step, NtStatus status);
Refusal ByError(std::string step, uint32_t error);

// A value, or why there is none.
template <typename Value>
struct Reading {
    std::optional<Value> value;
    Refusal refusal; // counts only without a value
};

struct Module {
    uint64_t base;
    uint32_t size; // bytes
    WideText path; // empty for a loader entry that could not be read
};

struct Thread {
    uint32_t id;
    uint64_t start; // counts only with a file
    Reading<WideText> file;
};

struct Inspection {
    uint32_t processId;
    int bits; // 32 or 64
    Reading<uint32_t> parent;
    Reading<WideText> imagePath;
    Reading<WideText> commandLine;
    Reading<WideText> currentDirectory;
    Reading<std::vector<Module>> modules32; // in load order
    Reading<std::vector<Module>> modules64;
    Reading<std::vector<Thread>> threads; // by id
};

// Looks at the process behind `process`, a handle with the rights to query it and to read its memory.
Inspection Inspect(platform::Handle process);

// All processes of the system, by id.
Reading<std::vector<ProcessData>> ListAll();

} // namespace mordinspect
