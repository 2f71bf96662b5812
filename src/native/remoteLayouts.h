// Layouts of the structures that process inspection reads in a target's memory.
//
// A target's bitness is a type: Bits32 or Bits64. It holds the pointer type and the sizes and offsets of the
// structures, in bytes. Code that walks a target's memory is a template over it. All are published layouts of the
// platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

struct Bits32 {
    using Pointer = uint32_t;

    // PEB
    static constexpr size_t pebSize = 592;
    static constexpr size_t pebImageBaseAddress = 8;
    static constexpr size_t pebLdr = 12;
    static constexpr size_t pebProcessParameters = 16;

    // UNICODE_STRING
    static constexpr size_t unicodeStringSize = 8;
    static constexpr size_t unicodeStringBuffer = 4;

    // RTL_USER_PROCESS_PARAMETERS: the strings, in the order of ProcessParameterField
    static constexpr size_t parameterStrings[] = {36, 48, 56, 64, 112, 120, 128, 136};

    // PEB_LDR_DATA
    static constexpr size_t ldrDataSize = 48;
    static constexpr size_t ldrInLoadOrderModuleList = 12;

    // LDR_DATA_TABLE_ENTRY
    static constexpr size_t entrySize = 80;
    static constexpr size_t entryDllBase = 24;
    static constexpr size_t entrySizeOfImage = 32;
    static constexpr size_t entryFullDllName = 36;

    // PROCESS_BASIC_INFORMATION and THREAD_BASIC_INFORMATION
    static constexpr size_t processBasicInformationSize = 24;
    static constexpr size_t processBasicPebBaseAddress = 4;
    static constexpr size_t processBasicInheritedFromUniqueProcessId = 20;
    static constexpr size_t threadBasicInformationSize = 28;
    static constexpr size_t threadBasicTebBaseAddress = 4;

    static constexpr size_t tebSize = 4096;
    static constexpr size_t memoryBasicInformationSize = 28;

    // SYSTEM_PROCESS_INFORMATION
    static constexpr size_t listedImageNameBuffer = 60;
    static constexpr size_t listedUniqueProcessId = 68;
    static constexpr size_t listedInheritedFromUniqueProcessId = 72;
};

// The same names as in Bits32, for 64-bit structures.
struct Bits64 {
    using Pointer = uint64_t;

    static constexpr size_t pebSize = 904;
    static constexpr size_t pebImageBaseAddress = 16;
    static constexpr size_t pebLdr = 24;
    static constexpr size_t pebProcessParameters = 32;

    static constexpr size_t unicodeStringSize = 16;
    static constexpr size_t unicodeStringBuffer = 8;

    static constexpr size_t parameterStrings[] = {56, 80, 96, 112, 176, 192, 208, 224};

    static constexpr size_t ldrDataSize = 88;
    static constexpr size_t ldrInLoadOrderModuleList = 16;

    static constexpr size_t entrySize = 152;
    static constexpr size_t entryDllBase = 48;
    static constexpr size_t entrySizeOfImage = 64;
    static constexpr size_t entryFullDllName = 72;

    static constexpr size_t processBasicInformationSize = 48;
    static constexpr size_t processBasicPebBaseAddress = 8;
    static constexpr size_t processBasicInheritedFromUniqueProcessId = 40;
    static constexpr size_t threadBasicInformationSize = 48;
    static constexpr size_t threadBasicTebBaseAddress = 8;

    static constexpr size_t tebSize = 6200;
    static constexpr size_t memoryBasicInformationSize = 48;

    static constexpr size_t listedImageNameBuffer = 64;
    static constexpr size_t listedUniqueProcessId = 80;
    static constexpr size_t listedInheritedFromUniqueProcessId = 88;
};

// Offsets that do not depend on the bitness: Length and MaximumLength of a UNICODE_STRING (16 bits each, a count of
// bytes), BaseAddress of a MEMORY_BASIC_INFORMATION, NextEntryOffset of a SYSTEM_PROCESS_INFORMATION.
constexpr size_t unicodeStringLength = 0;
constexpr size_t unicodeStringMaximumLength = 2;
constexpr size_t memoryBasicBaseAddress = 0;
constexpr size_t listedNextEntryOffset = 0;

// Sizes in bytes of the buffers for a module's full name, which is truncated to it, and for the reply that names a
// mapped file.
constexpr size_t moduleNameSize = 1024;
constexpr size_t mappedFileNameSize = 1048;

// Offset of a WOW64 thread's 32-bit TEB from its 64-bit TEB.
constexpr uint64_t teb32AboveTeb64 = 0x2000;

// Returns the field of type `Field` at `offset` bytes in `image`, a local copy of a structure. Needs no alignment.
template <typename Field>
Field LoadField(const void* image, size_t offset) {
    Field field;
    std::memcpy(&field, static_cast<const char*>(image) + offset, sizeof field);
    return field;
}
