// The variant for a 32-bit caller on a 64-bit machine, for targets of either width.
#pragma once

#include "native/native.h"

class NativeWow64 final : public Native {
public:
    explicit NativeWow64(platform::Handle process);

    NtStatus ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) override;
    NtStatus QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                     uint32_t* returnedLength) override;

    // These run in the 64-bit half of this process, through the gate: replies have the 64-bit layout.
    NtStatus QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                    uint64_t size) override;
    NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) override;
    NtStatus GetThreadContext64(platform::Handle thread, void* context) override;

    NtStatus GetThreadContext32(platform::Handle thread, void* context) override;

    // A null destination goes to the read as it is; the address is given only if the read did not fail.
    uint64_t ReadPeb64(void* destination) override;
    uint64_t ReadTeb64(platform::Handle thread, void* destination) override;

    uint64_t ReadPeb32(void* destination) override;
    uint64_t ReadTeb32(platform::Handle thread, void* destination) override;

private:
    // `address` if `size` bytes there could be read into `destination`, else 0.
    uint64_t ReadBlock(uint64_t address, void* destination, size_t size);
};
