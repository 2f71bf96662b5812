#include "native/native.h"

#include "native/caller.h"
#include "native/nativeFunctionTable.h"
#include "native/ntFunctions.h"
#include "native/statusCall.h"
#include "native/systemBuffer.h"

namespace {

struct TebAddress {
    bool valid;       // the query succeeded
    uint64_t address; // as the query left it; initially 0
};

// Queries the TEB address of a thread, with the layout `Bits`.
template <typename Bits>
TebAddress QueryTeb(platform::Handle thread) {
    const auto query = FindNativeFunction<NtQueryInformationThreadFunction>("NtQueryInformationThread");
    if (query == nullptr) {
        return {false, 0};
    }
    SystemBuffer<Bits::threadBasicInformationSize> block;
    uint32_t returnedLength = 0;
    const NtStatus status =
        query(thread, ThreadBasicInformationClass, block.bytes, sizeof block.bytes, &returnedLength);
    return {!Failed(status), LoadField<typename Bits::Pointer>(block.bytes, Bits::threadBasicTebBaseAddress)};
}

} // namespace

Native::Native(platform::Handle process) : Native(process, false) {}

Native::Native(platform::Handle process, bool machineIs32Bit) : processHandle(process) {
    LoadNativeFunctionsOnce();
    if (machineIs32Bit) {
        selfIsWow64 = true;
        targetIsWow64 = true;
        isX86System = true;
        return;
    }
    int32_t self = 0;
    int32_t target = 0;
    platform::IsWow64Process(platform::GetCurrentProcess(), &self);
    platform::IsWow64Process(processHandle, &target); // a failed query counts as 64-bit
    selfIsWow64 = self == 1;
    targetIsWow64 = target == 1;
    // Compares the raw flags: a flag that is neither 0 nor 1 makes the bitness differ, even if both flags are equal.
    if (self == 1 && target == self) {
        crossing = CrossingWow64ToWow64;
    } else if (self == 0 && target == 0) {
        crossing = CrossingNativeToNative;
    } else {
        bitnessDiffers = true;
        crossing = selfIsWow64 ? CrossingWow64ToNative : CrossingNativeToWow64;
    }
}

NtStatus Native::ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) {
    return StatusOf([&] {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(address), destination, TruncateToCaller(size),
                                    reinterpret_cast<size_t*>(bytesRead)); // passed on unchanged
    });
}

NtStatus Native::QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                         uint32_t* returnedLength) {
    const auto query = FindNativeFunction<NtQueryInformationProcessFunction>("NtQueryInformationProcess");
    if (query == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return query(processHandle, informationClass, buffer, size, returnedLength);
}

NtStatus Native::QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                        uint64_t size) {
    const auto query = FindNativeFunction<NtQueryInformationThreadFunction>("NtQueryInformationThread");
    if (query == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return query(thread, informationClass, buffer, static_cast<uint32_t>(size), nullptr);
}

NtStatus Native::QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) {
    const auto query = FindNativeFunction<NtQueryVirtualMemoryFunction>("NtQueryVirtualMemory");
    if (query == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    size_t returnedLength = 0;
    return query(processHandle, TruncateToCaller(address), informationClass, buffer, TruncateToCaller(size),
                 &returnedLength);
}

NtStatus Native::QuerySystemInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                        uint32_t* returnedLength) {
    const auto query = FindNativeFunction<NtQuerySystemInformationFunction>("NtQuerySystemInformation");
    if (query == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return query(informationClass, buffer, size, returnedLength);
}

// For a 64-bit target this succeeds without any effect, by design. It also returns success if the system lacks
// Wow64GetThreadContext.
NtStatus Native::GetThreadContext32(platform::Handle thread, void* context) {
    if (!targetIsWow64) {
        return STATUS_OF_SUCCESS;
    }
    return StatusOf([&] {
        if (const auto get = FindNativeFunction<Wow64GetThreadContextFunction>("Wow64GetThreadContext")) {
            get(thread, context);
        }
    });
}

NtStatus Native::GetThreadContext64(platform::Handle thread, void* context) {
    return StatusOf([&] { platform::GetThreadContext(thread, context); });
}

uint64_t Native::ReadPeb64(void* destination) {
    return ReadPlainPeb(destination);
}

uint64_t Native::ReadPeb32(void* destination) {
    if (!targetIsWow64) {
        return 0;
    }
    const auto query = FindNativeFunction<NtQueryInformationProcessFunction>("NtQueryInformationProcess");
    if (query == nullptr) {
        return 0;
    }
    uint64_t address = 0; // the result is what the query stores, whatever its status
    const NtStatus status = query(processHandle, ProcessWow64InformationClass, &address, sizeof address, nullptr);
    if (!Failed(status) && destination != nullptr) {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(address), destination, Bits32::pebSize, nullptr);
    }
    return address;
}

uint64_t Native::ReadTeb64(platform::Handle thread, void* destination) {
    const TebAddress teb = QueryTeb<Bits64>(thread);
    if (teb.valid && destination != nullptr) {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(teb.address), destination, Bits64::tebSize,
                                    nullptr);
    }
    return teb.address;
}

// If the query for a 32-bit target fails, the result is the bare offset, 8192, by design. Callers must not take it
// for a TEB.
uint64_t Native::ReadTeb32(platform::Handle thread, void* destination) {
    if (!targetIsWow64) {
        return 0;
    }
    const TebAddress teb64 = QueryTeb<Bits64>(thread);
    const uint64_t address = teb64.address + teb32AboveTeb64;
    if (teb64.valid && destination != nullptr) {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(address), destination, Bits32::tebSize, nullptr);
    }
    return address;
}

uint64_t Native::ReadPlainPeb(void* destination) {
    const auto query = FindNativeFunction<NtQueryInformationProcessFunction>("NtQueryInformationProcess");
    if (query == nullptr) {
        return 0;
    }
    SystemBuffer<Caller::processBasicInformationSize> block;
    uint32_t returnedLength = 0;
    if (Failed(query(processHandle, ProcessBasicInformationClass, block.bytes, sizeof block.bytes, &returnedLength))) {
        return 0;
    }
    const auto address = LoadField<Caller::Pointer>(block.bytes, Caller::processBasicPebBaseAddress);
    if (destination != nullptr) {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(address), destination, Caller::pebSize, nullptr);
    }
    return To64BitAddress(address);
}

uint64_t Native::ReadPlainTeb32(platform::Handle thread, void* destination) {
    const TebAddress teb = QueryTeb<Bits32>(thread);
    if (teb.valid && destination != nullptr) {
        platform::ReadProcessMemory(processHandle, TruncateToCaller(teb.address), destination, Bits32::tebSize,
                                    nullptr);
    }
    return teb.address;
}
