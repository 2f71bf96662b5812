// What is known of the requests to the access layer that one part of an inspection made.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "refusal.h"

namespace mordinspect {

// What a request was for.
enum class Step {
    noPeb32,    // the PEB of a width that the process does not have
    pebAddress, // where the PEB lies
    peb,        // its content
    memory,
    processInformation,
    threadInformation,
    memoryInformation,
    mappedFile,
    systemInformation,
};

struct Request {
    Step step;
    uint32_t number; // among those of its step, from 1
    NtStatus status;
};

struct AccessRecord {
    std::optional<Request> last;
    std::optional<Request> firstFailed;
    std::optional<std::string> limit; // the one that refused `last`, and each request after it
    WideText mappedFile;              // the device path of the last mapped file, as the system told it
};

} // namespace mordinspect
