// What the library finds out about one process, or about all, with a reason for each missing part.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "inspectionLimits.h"
#include "native/records.h"
#include "platform/processApi.h"
#include "refusal.h"

namespace mordinspect {

// A value, or the reason why it is missing.
template <typename Value>
struct Reading {
    std::optional<Value> value;
    Refusal refusal; // valid only without a value
};

// A list, or the reason why it is missing. `cut` is set if the list is incomplete, with the reason why it ends.
template <typename Entry>
struct Listing {
    std::optional<std::vector<Entry>> value;
    Refusal refusal; // valid only without a value
    std::optional<Refusal> cut;
};

// A module. Addresses are those of the inspected process.
struct Module {
    uint64_t base;
    uint32_t size; // bytes
    Reading<WideText> path;
    bool pathIsCut; // the path is truncated
};

// A thread, and the file at its start address.
struct Thread {
    uint32_t id;
    uint64_t start; // start address; valid only if `file` has a value
    Reading<WideText> file;
};

// The result for one process.
struct Inspection {
    uint32_t processId;
    int bits; // 32 or 64
    Reading<uint32_t> parent;
    Reading<WideText> imagePath;
    Reading<WideText> commandLine;
    Reading<WideText> currentDirectory;
    Listing<Module> modules32; // in load order
    Listing<Module> modules64;
    Listing<Thread> threads; // by id
};

// Inspects the process behind `process`, a handle with the rights PROCESS_QUERY_INFORMATION and PROCESS_VM_READ, which
// the caller keeps open. Whatever the memory of the process contains, it makes no more requests than `limits` allows. A
// failure is a reason in the result, even if memory runs out within a string, a list or a thread; otherwise it throws
// std::bad_alloc. One thread at a time may call, since PebSteps redirects process-wide function pointers.
Inspection Inspect(platform::Handle process, const Limits& limits = {});

// Lists all processes of the system, by id. A failure is the reason in the result, except for std::bad_alloc. One
// thread at a time may call.
Reading<std::vector<ProcessData>> ListAll();

} // namespace mordinspect
