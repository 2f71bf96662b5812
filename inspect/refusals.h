// The reasons why a part of an inspection is missing, derived from the record of its requests.
#pragma once

#include <cstdint>

#include "accessRecord.h"

namespace mordinspect {

// The record must contain a request, except for WhyNoThread. All throw std::bad_alloc.
Refusal WhyNoString(const AccessRecord& record);
Refusal WhyNoModules(const AccessRecord& record);
Refusal WhyNoParent(const AccessRecord& record);

// `error` is GetLastError after the library returned nothing.
Refusal WhyNoThread(const AccessRecord& record, uint32_t error);
Refusal WhyNoProcesses(const AccessRecord& record, uint32_t error);

// The reason why a list is incomplete. The record ends with the request that failed or was refused.
Refusal WhyNoMoreModules(const AccessRecord& record);

// The reason why a process cannot be opened, with the error of OpenProcess.
Refusal WhyNotOpened(uint32_t processId, uint32_t error);

} // namespace mordinspect
