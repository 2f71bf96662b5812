// The published structures that NT queries answer with, and those of a PE file, field by field, for tests. See
// processLayouts.h.
#pragma once

#include <cstdint>

#include "kit/system/published/processLayouts.h"

namespace published {

template <typename P>
struct ProcessBasicInformation {
    int32_t ExitStatus;
    P PebBaseAddress;
    P AffinityMask;
    int32_t BasePriority;
    P UniqueProcessId;
    P InheritedFromUniqueProcessId;
};

template <typename P>
struct ThreadBasicInformation {
    int32_t ExitStatus;
    P TebBaseAddress;
    published::ClientId<P> ClientId;
    P AffinityMask;
    int32_t Priority;
    int32_t BasePriority;
};

template <typename P>
struct MemoryBasicInformation {
    P BaseAddress;
    P AllocationBase;
    uint32_t AllocationProtect;
    P RegionSize;
    uint32_t State;
    uint32_t Protect;
    uint32_t Type;
};

// The beginning of an entry, as far as its parent's id.
template <typename P>
struct SystemProcessInformation {
    uint32_t NextEntryOffset;
    uint32_t NumberOfThreads;
    int64_t WorkingSetPrivateSize;
    uint32_t HardFaultCount;
    uint32_t NumberOfThreadsHighWatermark;
    uint64_t CycleTime;
    int64_t CreateTime;
    int64_t UserTime;
    int64_t KernelTime;
    UnicodeString<P> ImageName;
    int32_t BasePriority;
    P UniqueProcessId;
    P InheritedFromUniqueProcessId;
};

// The head of the list of all handles, and one entry of it.
template <typename P>
struct SystemHandleInformationEx {
    P NumberOfHandles;
    P Reserved;
};

template <typename P>
struct SystemHandleTableEntryInfoEx {
    P Object;
    P UniqueProcessId;
    P HandleValue;
    uint32_t GrantedAccess;
    uint16_t CreatorBackTraceIndex;
    uint16_t ObjectTypeIndex;
    uint32_t HandleAttributes;
    uint32_t Reserved;
};

struct ImageDosHeader {
    uint16_t e_magic;
    uint16_t e_cblp;
    uint16_t e_cp;
    uint16_t e_crlc;
    uint16_t e_cparhdr;
    uint16_t e_minalloc;
    uint16_t e_maxalloc;
    uint16_t e_ss;
    uint16_t e_sp;
    uint16_t e_csum;
    uint16_t e_ip;
    uint16_t e_cs;
    uint16_t e_lfarlc;
    uint16_t e_ovno;
    uint16_t e_res[4];
    uint16_t e_oemid;
    uint16_t e_oeminfo;
    uint16_t e_res2[10];
    int32_t e_lfanew;
};

struct ImageFileHeader {
    uint16_t Machine;
    uint16_t NumberOfSections;
    uint32_t TimeDateStamp;
    uint32_t PointerToSymbolTable;
    uint32_t NumberOfSymbols;
    uint16_t SizeOfOptionalHeader;
    uint16_t Characteristics;
};

struct ImageDataDirectory {
    uint32_t VirtualAddress;
    uint32_t Size;
};

struct ImageOptionalHeader64 {
    uint16_t Magic;
    uint8_t MajorLinkerVersion;
    uint8_t MinorLinkerVersion;
    uint32_t SizeOfCode;
    uint32_t SizeOfInitializedData;
    uint32_t SizeOfUninitializedData;
    uint32_t AddressOfEntryPoint;
    uint32_t BaseOfCode;
    uint64_t ImageBase;
    uint32_t SectionAlignment;
    uint32_t FileAlignment;
    uint16_t MajorOperatingSystemVersion;
    uint16_t MinorOperatingSystemVersion;
    uint16_t MajorImageVersion;
    uint16_t MinorImageVersion;
    uint16_t MajorSubsystemVersion;
    uint16_t MinorSubsystemVersion;
    uint32_t Win32VersionValue;
    uint32_t SizeOfImage;
    uint32_t SizeOfHeaders;
    uint32_t CheckSum;
    uint16_t Subsystem;
    uint16_t DllCharacteristics;
    uint64_t SizeOfStackReserve;
    uint64_t SizeOfStackCommit;
    uint64_t SizeOfHeapReserve;
    uint64_t SizeOfHeapCommit;
    uint32_t LoaderFlags;
    uint32_t NumberOfRvaAndSizes;
    ImageDataDirectory ExportDirectory;
    ImageDataDirectory OtherDirectories[15];
};

struct ImageNtHeaders64 {
    uint32_t Signature;
    ImageFileHeader FileHeader;
    ImageOptionalHeader64 OptionalHeader;
};

struct ImageExportDirectory {
    uint32_t Characteristics;
    uint32_t TimeDateStamp;
    uint16_t MajorVersion;
    uint16_t MinorVersion;
    uint32_t Name;
    uint32_t Base;
    uint32_t NumberOfFunctions;
    uint32_t NumberOfNames;
    uint32_t AddressOfFunctions;
    uint32_t AddressOfNames;
    uint32_t AddressOfNameOrdinals;
};

} // namespace published
