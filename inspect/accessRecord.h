// The record of the requests to the access layer that one part of an inspection makes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "refusal.h"

namespace mordinspect {

// The purpose of a request.
enum class Step {
    noPeb32,    // the 32-bit PEB of a 64-bit process
    pebAddress, // the address of the PEB
    peb,        // the content of the PEB
    memory,
    processInformation,
    threadInformation,
    memoryInformation,
    mappedFile,
    systemInformation,
};

// A request and its outcome.
struct Request {
    Step step;
    uint32_t number; // position among consecutive requests of the same step, from 1
    NtStatus status;
};

// What the reasons in refusals.h are derived from. Belongs to one thread, like the recorder that fills it.
struct AccessRecord {
    std::optional<Request> last;
    std::optional<Request> firstFailed;
    std::optional<std::string> limit; // the limit that refused `last` and all requests after it
    WideText mappedFile;              // device path of the last mapped file, as the system returned it
};

} // namespace mordinspect
