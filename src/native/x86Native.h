// The variant for a 32-bit machine: it refuses all 64-bit requests, and claims that its target is a 32-bit process on a
// 64-bit system without asking, so that everything above treats both alike.
#pragma once

#include "native/native.h"

class x86Native final : public Native {
public:
    explicit x86Native(platform::Handle process);

    NtStatus GetThreadContext32(platform::Handle thread, void* context) override;
    uint64_t ReadPeb32(void* destination) override;
    uint64_t ReadTeb32(platform::Handle thread, void* destination) override;

    // Refuse; those that give an address leave the refusal in the thread's last-status value.
    NtStatus GetThreadContext64(platform::Handle thread, void* context) override;
    uint64_t ReadPeb64(void* destination) override;
    uint64_t ReadTeb64(platform::Handle thread, void* destination) override;

    // Behind the operations of the base in the table.
    virtual NtStatus QueryVirtualMemory32(uint64_t address, uint32_t informationClass, void* buffer, uint32_t size);
};
