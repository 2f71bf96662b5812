// What the library can tell about one process, or about all, with the reason where it can tell nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "inspectionLimits.h"
#include "native/records.h"
#include "platform/processApi.h"
#include "refusal.h"

namespace mordinspect {

// A value, or why there is none.
template <typename Value>
struct Reading {
    std::optional<Value> value;
    Refusal refusal; // counts only without a value
};

// A list, or why there is none; and why there is no more of it, where it is not whole.
template <typename Entry>
struct Listing {
    std::optional<std::vector<Entry>> value;
    Refusal refusal; // counts only without a value
    std::optional<Refusal> cut;
};

struct Module {
    uint64_t base;
    uint32_t size; // bytes
    Reading<WideText> path;
    bool pathIsCut; // only the beginning of the path could be read
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
    Listing<Module> modules32; // in load order
    Listing<Module> modules64;
    Listing<Thread> threads; // by id
};

// Looks at the process behind `process`, a handle with the rights to query it and to read its memory. Whatever that
// memory holds, it makes no more requests than `limits` allows. A failure to allocate is a reason like others, unless
// not even the reason can be allocated: then it throws std::bad_alloc.
Inspection Inspect(platform::Handle process, const Limits& limits = {});

// All processes of the system, by id.
Reading<std::vector<ProcessData>> ListAll();

} // namespace mordinspect
