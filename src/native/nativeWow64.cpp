#include "native/nativeWow64.h"

#include "native/gate.h"
#include "native/nativeFunctionTable.h"
#include "native/ntFunctions.h"
#include "native/remoteLayouts.h"
#include "native/statusCall.h"
#include "native/systemBuffer.h"

NativeWow64::NativeWow64(platform::Handle process) : Native(process) {}

NtStatus NativeWow64::ReadMemory(uint64_t address, void* destination, uint64_t size, uint64_t* bytesRead) {
    const auto read = FindNativeFunction<NtWow64ReadVirtualMemory64Function>("NtWow64ReadVirtualMemory64");
    if (read == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    uint64_t count = 0; // the function requires a place for it
    return read(processHandle, address, destination, size, bytesRead != nullptr ? bytesRead : &count);
}

NtStatus NativeWow64::QueryProcessInformation(uint32_t informationClass, void* buffer, uint32_t size,
                                              uint32_t* returnedLength) {
    const auto query = FindNativeFunction<NtQueryInformationProcessFunction>("NtWow64QueryInformationProcess64");
    if (query == nullptr) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return query(processHandle, informationClass, buffer, size, returnedLength);
}

NtStatus NativeWow64::QueryThreadInformation(platform::Handle thread, uint32_t informationClass, void* buffer,
                                             uint64_t size) {
    static const uint64_t function = GateResolve(GateNtdllBase(), "NtQueryInformationThread");
    if (function == 0) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return GateStatus(GateCall(function, 5, GateArgument(thread), uint64_t{informationClass}, GateArgument(buffer),
                               size, uint64_t{0}));
}

NtStatus NativeWow64::QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) {
    static const uint64_t function = GateResolve(GateNtdllBase(), "NtQueryVirtualMemory");
    if (function == 0) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return GateStatus(GateCall(function, 6, GateArgument(processHandle), address, uint64_t{informationClass},
                               GateArgument(buffer), size, uint64_t{0}));
}

NtStatus NativeWow64::GetThreadContext32(platform::Handle thread, void* context) {
    if (!targetIsWow64) {
        return STATUS_OF_REFUSED_REQUEST;
    }
    return StatusOf([&] { platform::GetThreadContext(thread, context); });
}

NtStatus NativeWow64::GetThreadContext64(platform::Handle thread, void* context) {
    static const uint64_t function = GateResolve(GateNtdllBase(), "NtGetContextThread");
    if (function == 0) {
        return STATUS_OF_MISSING_FUNCTION;
    }
    return GateStatus(GateCall(function, 2, GateArgument(thread), GateArgument(context)));
}

// The status of the query is ignored: the required test is that the query returned data.
uint64_t NativeWow64::ReadPeb64(void* destination) {
    const auto query = FindNativeFunction<NtQueryInformationProcessFunction>("NtWow64QueryInformationProcess64");
    if (query == nullptr) {
        return 0;
    }
    SystemBuffer<Bits64::processBasicInformationSize> block;
    uint32_t returnedLength = 0;
    query(processHandle, ProcessBasicInformationClass, block.bytes, sizeof block.bytes, &returnedLength);
    if (returnedLength == 0) {
        return 0;
    }
    return ReadBlock(LoadField<uint64_t>(block.bytes, Bits64::processBasicPebBaseAddress), destination,
                     Bits64::pebSize);
}

// For a 32-bit caller the plain query describes the 32-bit PEB of a 32-bit target.
uint64_t NativeWow64::ReadPeb32(void* destination) {
    return targetIsWow64 ? ReadPlainPeb(destination) : 0;
}

uint64_t NativeWow64::ReadTeb64(platform::Handle thread, void* destination) {
    static const uint64_t function = GateResolve(GateNtdllBase(), "NtQueryInformationThread");
    if (function == 0) {
        platform::SetLastStatusValue(static_cast<uint32_t>(STATUS_OF_MISSING_FUNCTION));
        return 0;
    }
    SystemBuffer<Bits64::threadBasicInformationSize> block;
    uint32_t returnedLength = 0;
    GateCall(function, 5, GateArgument(thread), uint64_t{ThreadBasicInformationClass}, GateArgument(block.bytes),
             uint64_t{sizeof block.bytes}, GateArgument(&returnedLength));
    if (returnedLength == 0) {
        return 0;
    }
    return ReadBlock(LoadField<uint64_t>(block.bytes, Bits64::threadBasicTebBaseAddress), destination, Bits64::tebSize);
}

uint64_t NativeWow64::ReadTeb32(platform::Handle thread, void* destination) {
    return targetIsWow64 ? ReadPlainTeb32(thread, destination) : 0;
}

uint64_t NativeWow64::ReadBlock(uint64_t address, void* destination, size_t size) {
    return Failed(NativeWow64::ReadMemory(address, destination, size, nullptr)) ? 0 : address;
}
