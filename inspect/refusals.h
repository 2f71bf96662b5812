// Why a part of an inspection is not there, by the record of its requests.
#pragma once

#include <cstdint>

#include "accessRecord.h"

namespace mordinspect {

Refusal WhyNoString(const AccessRecord& record);
Refusal WhyNoModules(const AccessRecord& record);
Refusal WhyNoParent(const AccessRecord& record);

// `error` is the system's last error after the library gave nothing.
Refusal WhyNoThread(const AccessRecord& record, uint32_t error);
Refusal WhyNoProcesses(const AccessRecord& record, uint32_t error);

// Where a list goes on of which this much is there.
Refusal WhyNoMoreModules(const AccessRecord& record);

// For a process that cannot be opened.
Refusal WhyNotOpened(uint32_t processId, uint32_t error);

} // namespace mordinspect
