// The access layer between the record logic and the platform: one set of operations on one target process, for every
// bitness of caller and target.
#pragma once

#include <cstdint>

#include "native/ntStatus.h"
#include "platform/processApi.h"

// The bitness of caller and target. "Wow64" means a 32-bit process, even on a 32-bit machine.
enum BitnessCrossing : uint32_t {
    CrossingWow64ToWow64 = 0,
    CrossingNativeToNative = 1,
    CrossingWow64ToNative = 2,
    CrossingNativeToWow64 = 3,
};

// The variant for a caller of the machine's own bitness, and the base class of the other variants.
//
// Addresses in the target have 64 bits. Every operation returns an NT status or an address, which is 0 on failure. A
// failure is neither thrown nor logged; std::bad_alloc passes through. If the system lacks the function that an
// operation needs, a status operation returns STATUS_OF_MISSING_FUNCTION and an address operation its failure value.
// Any thread may use a variant; it has no mutable state.
//
// The class has no virtual destructor and owns no resource. The library's variants add no fields, and an owner deletes
// them through this class.
class Native {
public:
    // The caller keeps `process` open for the life of the object. Throws std::bad_alloc.
    explicit Native(platform::Handle process);
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    // Copies `size` bytes at `address` to `destination`, and stores the number of bytes copied in `*bytesRead`, which
    // may be null. The system function of a 32-bit caller can store only its low 32 bits: clear it before the call.
    virtual NtStatus ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead);

    // The NT queries, with their information classes (ntFunctions.h). `size` is that of `buffer` in bytes;
    // `returnedLength` may be null. The layout of a reply depends on the variant.
    virtual NtStatus QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                             uint32_t* returnedLength);
    virtual NtStatus QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                            uint64_t size);
    virtual NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size);
    virtual NtStatus QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                            uint32_t* returnedLength);

    // Get a thread's 32-bit or 64-bit CONTEXT. `context` is a record of that bitness with its ContextFlags set.
    // Native::GetThreadContext32 succeeds without effect for a 64-bit target and on a system without
    // Wow64GetThreadContext.
    virtual NtStatus GetThreadContext32(platform::Handle thread, void* context);
    virtual NtStatus GetThreadContext64(platform::Handle thread, void* context);

    // Return the address of the block, and copy its content to `destination` unless that is null: 904, 592, 6200 and
    // 4096 bytes. If only the copy fails, they still return the address, except for the 64-bit blocks of NativeWow64.
    // The 32-bit blocks of a 64-bit target give 0. Native::ReadTeb32 returns 8192, not 0, if its query fails.
    virtual uint64_t ReadPeb64(void* destination);
    virtual uint64_t ReadPeb32(void* destination);
    virtual uint64_t ReadTeb64(platform::Handle thread, void* destination);
    virtual uint64_t ReadTeb32(platform::Handle thread, void* destination);

    // The facts that the code above this layer selects its 32-bit or 64-bit path by.
    bool TargetIsWow64() const { return targetIsWow64; }
    bool IsX86System() const { return isX86System; }

protected:
    Native(platform::Handle process, bool machineIs32Bit);

    // Reads the PEB that a query of the caller's own bitness finds.
    uint64_t ReadPlainPeb(void* destination);

    // Reads the TEB that a query of a 32-bit caller finds.
    uint64_t ReadPlainTeb32(platform::Handle thread, void* destination);

    platform::Handle processHandle;
    BitnessCrossing crossing = CrossingWow64ToWow64;
    bool selfIsWow64 = false;    // also true on a 32-bit machine
    bool targetIsWow64 = false;  // also true on a 32-bit machine
    bool isX86System = false;    // the machine is 32-bit
    bool bitnessDiffers = false; // of caller and target

    friend struct NativeFields; // gives tests access to the fields
};
