// The variant of the access layer for a 32-bit caller on a 64-bit machine.
#pragma once

#include "native/native.h"

// Serves targets of both bitnesses. It reads memory and 64-bit process information with the NtWow64 functions of the
// 32-bit ntdll, and queries threads and memory regions through the gate (gate.h). Contracts: native.h.
class NativeWow64 final : public Native {
public:
    explicit NativeWow64(platform::Handle process);

    NtStatus ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) override;
    NtStatus QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                     uint32_t* returnedLength) override;

    // Run in the 64-bit half of this process, through the gate: replies have the 64-bit layout. `context` is a 64-bit
    // CONTEXT. Each looks its function up once; a failure lasts for the process.
    NtStatus QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                    uint64_t size) override;
    NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) override;
    NtStatus GetThreadContext64(platform::Handle thread, void* context) override;

    // Returns STATUS_OF_REFUSED_REQUEST for a 64-bit target.
    NtStatus GetThreadContext32(platform::Handle thread, void* context) override;

    // Pass a null destination on to the read, unlike the base class, and return the address only if the read succeeds.
    uint64_t ReadPeb64(void* destination) override;
    uint64_t ReadTeb64(platform::Handle thread, void* destination) override;

    // Return 0 for a 64-bit target.
    uint64_t ReadPeb32(void* destination) override;
    uint64_t ReadTeb32(platform::Handle thread, void* destination) override;

private:
    // Returns `address` if `size` bytes there could be read into `destination`, otherwise 0.
    uint64_t ReadBlock(uint64_t address, void* destination, size_t size);
};
