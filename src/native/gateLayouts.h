// Layouts of the calling process's own 64-bit structures that the gate reads: sizes and offsets in bytes. Some sizes
// differ from those in remoteLayouts.h, since the gate reads more or less of a structure than process inspection does.
#pragma once

#include <cstddef>

namespace gateLayouts {

constexpr size_t tebSize = 232;
constexpr size_t tebProcessEnvironmentBlock = 96;

constexpr size_t pebSize = 896;
constexpr size_t pebLdr = 24;

constexpr size_t ldrDataSize = 84;
constexpr size_t ldrInLoadOrderModuleList = 16;

constexpr size_t entrySize = 224;
constexpr size_t entryFlink = 0;
constexpr size_t entryDllBase = 48;
constexpr size_t entryBaseDllNameMaximumLength = 90;
constexpr size_t entryBaseDllNameBuffer = 96;

constexpr size_t dosHeaderSize = 64;
constexpr size_t dosHeaderNewHeader = 60;

constexpr size_t ntHeadersSize = 264;
constexpr size_t ntHeadersExportDirectory = 136; // VirtualAddress of the data directory

constexpr size_t exportDirectorySize = 40;
constexpr size_t exportNumberOfFunctions = 20;
constexpr size_t exportNumberOfNames = 24;
constexpr size_t exportAddressOfFunctions = 28;
constexpr size_t exportAddressOfNames = 32;
constexpr size_t exportAddressOfNameOrdinals = 36;

// ANSI_STRING, 64-bit
struct AnsiString {
    uint16_t Length;
    uint16_t MaximumLength;
    uint32_t zero;
    uint64_t Buffer;
};
static_assert(sizeof(AnsiString) == 16 && offsetof(AnsiString, Buffer) == 8);

} // namespace gateLayouts
