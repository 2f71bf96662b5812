// Modules and functions of the 64-bit half of a 32-bit process.
//
// Any thread may call. GateNtdllBase caches its result for the life of the process, and so does GateResolve for the
// resolver that it uses (cachedAddress.h); the others search at each call. A failure is 0, never an exception; it is
// not logged, and the next call tries again.
#pragma once

#include <cstdint>

#include "native/gateEnter.h"
#include "native/ntStatus.h"
#include "platform/wideChar.h"

// Returns the base of the 64-bit module with the file name `name`, without regard to the case of ASCII letters, or 0.
uint64_t GateModuleBase(const WideChar* name);

// Returns the base of the 64-bit ntdll, or 0.
uint64_t GateNtdllBase();

// Returns the address of LdrGetProcedureAddress in the 64-bit ntdll, or 0. Reads the export table itself, since no
// resolver is known yet.
uint64_t GateLoaderResolver();

// Returns the address that the 64-bit module with the base `module` exports under `name`, or 0.
uint64_t GateResolve(uint64_t module, const char* name);

// Sets the calling thread's last error to the Windows error code of an NT status. Does nothing if ntdll lacks the
// functions for it.
void GateRecordStatus(uint64_t status);

// Widens a 32-bit handle or pointer for the gate, sign-extended, so that pseudo handles keep their value. A pointer at
// or above 2 GiB becomes a wrong address; the library accepts that.
inline uint64_t GateArgument(const void* value) {
    return static_cast<uint64_t>(static_cast<int64_t>(reinterpret_cast<intptr_t>(value)));
}

// Returns the status from the result of a 64-bit NT function.
inline NtStatus GateStatus(uint64_t result) {
    return StatusFromWord(static_cast<uint32_t>(result));
}
