// The layer between the record logic and the platform: one set of operations on one target process, whatever the widths
// of caller and target.
#pragma once

#include <cstdint>

#include "native/ntStatus.h"
#include "platform/processApi.h"

// Which pairing of caller and target this is. "Wow64" stands for a 32-bit process, on a 32-bit machine too.
enum BitnessCrossing : uint32_t {
    CrossingWow64ToWow64 = 0,
    CrossingNativeToNative = 1,
    CrossingWow64ToNative = 2,
    CrossingNativeToWow64 = 3,
};

// For a caller that is as wide as the machine; the base of the variants for the other pairings.
//
// Addresses in the target are 64 bits wide everywhere. Every operation answers with a status or with an address, 0
// being its failure; nothing is thrown or logged. A function that the system lacks gives STATUS_OF_MISSING_FUNCTION, or
// the failure value of an operation that gives an address. Any thread may use any variant.
//
// The object has no virtual destructor and no resource of its own: the variants have the same fields, and an owner
// deletes them through this class.
class Native {
public:
    // The caller keeps `process` open for the life of the object.
    explicit Native(platform::Handle process);
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    // Copies `size` bytes at `address` to `destination`; `bytesRead` may be null.
    virtual NtStatus ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead);

    virtual NtStatus QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                             uint32_t* returnedLength);
    virtual NtStatus QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                            uint64_t size);
    virtual NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size);
    virtual NtStatus QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                            uint32_t* returnedLength);

    // Fill the platform's context record of that width.
    virtual NtStatus GetThreadContext32(platform::Handle thread, void* context);
    virtual NtStatus GetThreadContext64(platform::Handle thread, void* context);

    // The address of the block, and its content in `destination` unless that is null: 904, 592, 6200 and 4096 bytes.
    // The address is given also when the content could not be read, but for the 64-bit blocks of NativeWow64.
    virtual uint64_t ReadPeb64(void* destination);
    virtual uint64_t ReadPeb32(void* destination);
    virtual uint64_t ReadTeb64(platform::Handle thread, void* destination);
    virtual uint64_t ReadTeb32(platform::Handle thread, void* destination);

    // What the 32/64-bit decisions above this layer go by.
    bool TargetIsWow64() const { return targetIsWow64; }
    bool IsX86System() const { return isX86System; }

protected:
    Native(platform::Handle process, bool machineIs32Bit);

    // The PEB that a plain query of the caller's own width finds.
    uint64_t ReadPlainPeb(void* destination);

    // The 32-bit TEB that a plain query of a 32-bit caller finds.
    uint64_t ReadPlainTeb32(platform::Handle thread, void* destination);

    platform::Handle processHandle;
    BitnessCrossing crossing = CrossingWow64ToWow64;
    bool selfIsWow64 = false;    // or the machine is 32-bit
    bool targetIsWow64 = false;  // or the machine is 32-bit
    bool isX86System = false;    // the machine is 32-bit
    bool bitnessDiffers = false; // caller and target

    friend struct NativeFields; // tests look at the fields through it
};
