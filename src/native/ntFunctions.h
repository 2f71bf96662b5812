// Types of the NT functions that are called through a pointer, and the information classes in use.
//
// Pointers and sizes have the caller's width, except for the NtWow64 functions, which take 64-bit ones from a 32-bit
// caller.
#pragma once

#include <cstddef>
#include <cstdint>

#include "native/ntStatus.h"
#include "platform/callConv.h"
#include "platform/processApi.h"

using NtQueryInformationProcessFunction = NtStatus(MORD_STDCALL*)(platform::Handle process, uint32_t informationClass,
                                                                  void* buffer, uint32_t size,
                                                                  uint32_t* returnedLength);
using NtQueryInformationThreadFunction = NtStatus(MORD_STDCALL*)(platform::Handle thread, uint32_t informationClass,
                                                                 void* buffer, uint32_t size, uint32_t* returnedLength);
using NtQueryVirtualMemoryFunction = NtStatus(MORD_STDCALL*)(platform::Handle process, uintptr_t address,
                                                             uint32_t informationClass, void* buffer, size_t size,
                                                             size_t* returnedLength);
using NtQuerySystemInformationFunction = NtStatus(MORD_STDCALL*)(uint32_t informationClass, void* buffer, uint32_t size,
                                                                 uint32_t* returnedLength);
using NtWow64ReadVirtualMemory64Function = NtStatus(MORD_STDCALL*)(platform::Handle process, uint64_t address,
                                                                   void* buffer, uint64_t size, uint64_t* bytesRead);
using Wow64GetThreadContextFunction = int32_t(MORD_STDCALL*)(platform::Handle thread, void* context);

constexpr uint32_t ProcessBasicInformationClass = 0;
constexpr uint32_t ProcessWow64InformationClass = 26;
constexpr uint32_t ThreadBasicInformationClass = 0;
constexpr uint32_t ThreadQuerySetWin32StartAddressClass = 9;
constexpr uint32_t MemoryBasicInformationClass = 0;
constexpr uint32_t MemoryMappedFilenameInformationClass = 2;
constexpr uint32_t SystemExtendedProcessInformationClass = 57;
