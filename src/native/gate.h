// Modules and functions of the 64-bit half of a 32-bit process.
//
// Any thread may call. Each address is kept once it is found, for the life of the process (foundValue.h).
#pragma once

#include <cstdint>

#include "native/gateEnter.h"
#include "native/ntStatus.h"
#include "platform/wideChar.h"

// The base of the 64-bit module with that file name, told apart without regard to the case of ASCII letters, or 0.
uint64_t GateModuleBase(const WideChar* name);

// The base of the 64-bit ntdll, or 0. A failure is tried again at the next call.
uint64_t GateNtdllBase();

// The address of LdrGetProcedureAddress in the 64-bit ntdll, or 0.
uint64_t GateLoaderResolver();

// The address that the 64-bit module at `module` exports under `name`, or 0.
uint64_t GateResolve(uint64_t module, const char* name);

// Makes the status of a 64-bit NT function the calling thread's last error, as a Windows error code.
void GateRecordStatus(uint64_t status);

// A 32-bit handle or pointer as the gate takes it: sign-extended, so that the pseudo handles stay what they are. A
// pointer at or above 2 GiB becomes a wrong address; this design accepts that.
inline uint64_t GateArgument(const void* value) {
    return static_cast<uint64_t>(static_cast<int64_t>(reinterpret_cast<intptr_t>(value)));
}

// The status in the result of a 64-bit NT function.
inline NtStatus GateStatus(uint64_t result) {
    return StatusFromWord(static_cast<uint32_t>(result));
}
