#include "refusals.h"

#include <algorithm>
#include <iterator>

namespace mordinspect {

namespace {

constexpr uint32_t errorAccessDenied = 5;
constexpr uint32_t errorInvalidParameter = 87;
constexpr NtStatus statusInfoLengthMismatch = StatusFromWord(0xC0000004);

constexpr const char* stringReads[] = {"the address of the parameters", "the text's header",
                                       "the text, with as much behind it"};
constexpr const char* moduleReads[] = {"the loader's data", "the next module"};
constexpr const char* processQueries[] = {"the size of the system's list of processes",
                                          "the system's list of processes"};

// The last name applies to all further requests.
template <size_t count>
const char* Name(const char* const (&names)[count], uint32_t number) {
    return names[std::min<size_t>(number, count) - 1];
}

const char* Name(const Request& request, bool ofModules) {
    switch (request.step) {
    case Step::noPeb32:
        return "the 32-bit environment block";
    case Step::pebAddress:
        return "the address of the environment block";
    case Step::peb:
        return "the environment block";
    case Step::memory:
        return ofModules ? Name(moduleReads, request.number) : Name(stringReads, request.number);
    case Step::processInformation:
        return "the process's basic information";
    case Step::threadInformation:
        return "its start address";
    case Step::memoryInformation:
        return "the memory at its start address";
    case Step::mappedFile:
        return "the file at its start address";
    default:
        return Name(processQueries, request.number);
    }
}

const char* WhatWasSeen(Step step) {
    switch (step) {
    case Step::noPeb32:
        return "a 64-bit process, which has none";
    case Step::pebAddress:
        return "address 0";
    case Step::memoryInformation:
        return "base address 0";
    default:
        return "nothing in it";
    }
}

// A walk ends at a request that fails; if an earlier request failed too, that is the reason.
Refusal Why(const AccessRecord& record, bool ofModules = false) {
    const Request& last = *record.last;
    if (record.limit) {
        return ByLimit(Name(last, ofModules), *record.limit);
    }
    if (Failed(last.status)) {
        return ByStatus(Name(*record.firstFailed, ofModules), record.firstFailed->status);
    }
    if (last.status != STATUS_OF_SUCCESS) {
        return ByStatus(Name(last, ofModules), last.status);
    }
    return Seen(Name(last, ofModules), WhatWasSeen(last.step));
}

bool EndedWith(const AccessRecord& record, Step step) {
    return !record.limit && record.last->step == step && !Failed(record.last->status);
}

} // namespace

Refusal WhyNoString(const AccessRecord& record) {
    return Why(record);
}

Refusal WhyNoModules(const AccessRecord& record) {
    return Why(record, true);
}

Refusal WhyNoMoreModules(const AccessRecord& record) {
    constexpr auto step = "the next module";
    return record.limit ? ByLimit(step, *record.limit) : ByStatus(step, record.last->status);
}

Refusal WhyNoParent(const AccessRecord& record) {
    return EndedWith(record, Step::processInformation) ? Seen("it has none", "parent id 0") : Why(record);
}

Refusal WhyNoThread(const AccessRecord& record, uint32_t error) {
    if (!record.last) {
        return ByError("the thread", error); // OpenThread does not use the access layer
    }
    if (EndedWith(record, Step::mappedFile)) {
        constexpr auto step = "no drive letter fits the file's device path";
        return record.mappedFile.empty() ? Seen(step, "an empty path") : Seen(step, record.mappedFile);
    }
    return Why(record);
}

// The first query always fails and returns the size; the allocation of the list follows.
Refusal WhyNoProcesses(const AccessRecord& record, uint32_t error) {
    const Request& last = *record.last;
    if (record.limit || !Failed(last.status)) {
        return Why(record);
    }
    if (last.number == 1 && last.status == statusInfoLengthMismatch) {
        return ByError("memory for the system's list of processes", error);
    }
    return ByStatus(Name(last, false), last.status);
}

Refusal WhyNotOpened(uint32_t processId, uint32_t error) {
    const std::string id = std::to_string(processId);
    switch (error) {
    case errorInvalidParameter:
        return ByError("no process has the id " + id, error);
    case errorAccessDenied:
        return ByError("access to process " + id + " is denied", error);
    default:
        return ByError("process " + id + " cannot be opened", error);
    }
}

} // namespace mordinspect
