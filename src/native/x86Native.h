// The variant of the access layer for a 32-bit machine.
#pragma once

#include "native/native.h"

// Refuses all 64-bit requests. Reports every target as a 32-bit process on a 64-bit system, without a query, so that
// the code above needs no case for it. Contracts: native.h.
class x86Native final : public Native {
public:
    explicit x86Native(platform::Handle process);

    NtStatus GetThreadContext32(platform::Handle thread, void* context) override;
    uint64_t ReadPeb32(void* destination) override;
    uint64_t ReadTeb32(platform::Handle thread, void* destination) override;

    // Return STATUS_OF_REFUSED_REQUEST; those with an address as result return 0 and leave that status in the thread's
    // last-status value.
    NtStatus GetThreadContext64(platform::Handle thread, void* context) override;
    uint64_t ReadPeb64(void* destination) override;
    uint64_t ReadTeb64(platform::Handle thread, void* destination) override;

    // QueryVirtualMemory with a 32-bit size. Declared last: its slot follows those of the base class.
    virtual NtStatus QueryVirtualMemory32(uint64_t address, uint32_t informationClass, void* buffer, uint32_t size);
};
