// The published structures of a Windows process, field by field, for tests.
//
// They are written out here independently of the offsets that the library uses, so that the two can be held against
// each other, and tests build the memory of fake processes with them. `P` is an address of the process's own width.
// Only the natural alignment of the fields places them. Names follow the platform's.
#pragma once

#include <cstdint>

namespace published {

template <typename P>
struct ListEntry {
    P Flink;
    P Blink;
};

template <typename P>
struct UnicodeString {
    uint16_t Length;
    uint16_t MaximumLength;
    P Buffer;
};

template <typename P>
struct AnsiString {
    uint16_t Length;
    uint16_t MaximumLength;
    P Buffer;
};

template <typename P>
struct ClientId {
    P UniqueProcess;
    P UniqueThread;
};

struct Guid {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
};

template <typename P>
struct CurrentDirectory {
    UnicodeString<P> DosPath;
    P Handle;
};

template <typename P>
struct RtlUserProcessParameters {
    uint32_t MaximumLength;
    uint32_t Length;
    uint32_t Flags;
    uint32_t DebugFlags;
    P ConsoleHandle;
    uint32_t ConsoleFlags;
    P StandardInput;
    P StandardOutput;
    P StandardError;
    published::CurrentDirectory<P> CurrentDirectory;
    UnicodeString<P> DllPath;
    UnicodeString<P> ImagePathName;
    UnicodeString<P> CommandLine;
    P Environment;
    uint32_t StartingX;
    uint32_t StartingY;
    uint32_t CountX;
    uint32_t CountY;
    uint32_t CountCharsX;
    uint32_t CountCharsY;
    uint32_t FillAttribute;
    uint32_t WindowFlags;
    uint32_t ShowWindowFlags;
    UnicodeString<P> WindowTitle;
    UnicodeString<P> DesktopInfo;
    UnicodeString<P> ShellInfo;
    UnicodeString<P> RuntimeData;
};

template <typename P>
struct PebLdrData {
    uint32_t Length;
    uint8_t Initialized;
    P SsHandle;
    ListEntry<P> InLoadOrderModuleList;
    ListEntry<P> InMemoryOrderModuleList;
    ListEntry<P> InInitializationOrderModuleList;
    P EntryInProgress;
    uint8_t ShutdownInProgress;
    P ShutdownThreadId;
};

// As systems before Windows 7 have it; later ones only add at the end.
template <typename P>
struct LdrDataTableEntry {
    ListEntry<P> InLoadOrderLinks;
    ListEntry<P> InMemoryOrderLinks;
    ListEntry<P> InInitializationOrderLinks;
    P DllBase;
    P EntryPoint;
    uint32_t SizeOfImage;
    UnicodeString<P> FullDllName;
    UnicodeString<P> BaseDllName;
    uint32_t Flags;
    uint16_t LoadCount;
    uint16_t TlsIndex;
    ListEntry<P> HashLinks;
    P TimeDateStamp; // shares its place with a pointer
    P EntryPointActivationContext;
    P PatchInformation;
};

// As Windows 7 has it.
template <typename P>
struct LdrDataTableEntry7 {
    LdrDataTableEntry<P> before;
    ListEntry<P> ForwarderLinks;
    ListEntry<P> ServiceTagLinks;
    ListEntry<P> StaticLinks;
    P ContextInformation;
    P OriginalBase;
    int64_t LoadTime;
};

// As Windows 8 has it.
template <typename P>
struct Peb {
    uint8_t InheritedAddressSpace;
    uint8_t ReadImageFileExecOptions;
    uint8_t BeingDebugged;
    uint8_t BitField;
    P Mutant;
    P ImageBaseAddress;
    P Ldr;
    P ProcessParameters;
    P SubSystemData;
    P ProcessHeap;
    P FastPebLock;
    P AtlThunkSListPtr;
    P IFEOKey;
    uint32_t CrossProcessFlags;
    P KernelCallbackTable;
    uint32_t SystemReserved;
    uint32_t AtlThunkSListPtr32;
    P ApiSetMap;
    uint32_t TlsExpansionCounter;
    P TlsBitmap;
    uint32_t TlsBitmapBits[2];
    P ReadOnlySharedMemoryBase;
    P HotpatchInformation;
    P ReadOnlyStaticServerData;
    P AnsiCodePageData;
    P OemCodePageData;
    P UnicodeCaseTableData;
    uint32_t NumberOfProcessors;
    uint32_t NtGlobalFlag;
    int64_t CriticalSectionTimeout;
    P HeapSegmentReserve;
    P HeapSegmentCommit;
    P HeapDeCommitTotalFreeThreshold;
    P HeapDeCommitFreeBlockThreshold;
    uint32_t NumberOfHeaps;
    uint32_t MaximumNumberOfHeaps;
    P ProcessHeaps;
    P GdiSharedHandleTable;
    P ProcessStarterHelper;
    uint32_t GdiDCAttributeList;
    P LoaderLock;
    uint32_t OSMajorVersion;
    uint32_t OSMinorVersion;
    uint16_t OSBuildNumber;
    uint16_t OSCSDVersion;
    uint32_t OSPlatformId;
    uint32_t ImageSubsystem;
    uint32_t ImageSubsystemMajorVersion;
    uint32_t ImageSubsystemMinorVersion;
    P ActiveProcessAffinityMask;
    uint32_t GdiHandleBuffer[sizeof(P) == 4 ? 34 : 60];
    P PostProcessInitRoutine;
    P TlsExpansionBitmap;
    uint32_t TlsExpansionBitmapBits[32];
    uint32_t SessionId;
    uint64_t AppCompatFlags;
    uint64_t AppCompatFlagsUser;
    P pShimData;
    P AppCompatInfo;
    UnicodeString<P> CSDVersion;
    P ActivationContextData;
    P ProcessAssemblyStorageMap;
    P SystemDefaultActivationContextData;
    P SystemAssemblyStorageMap;
    P MinimumStackCommit;
    P FlsCallback;
    ListEntry<P> FlsListHead;
    P FlsBitmap;
    uint32_t FlsBitmapBits[4];
    uint32_t FlsHighIndex;
    P WerRegistrationData;
    P WerShipAssertPtr;
    P pUnused;
    P pImageHeaderHash;
    uint64_t TracingFlags;
    uint64_t CsrServerReadOnlySharedMemoryBase; // Windows 7 ends before it
};

template <typename P>
struct NtTib {
    P ExceptionList;
    P StackBase;
    P StackLimit;
    P SubSystemTib;
    P FiberData;
    P ArbitraryUserPointer;
    P Self;
};

template <typename P>
struct GdiTebBatch {
    uint32_t Offset;
    P HDC;
    uint32_t Buffer[310];
};

// What a 64-bit TEB alone has behind TlsExpansionSlots.
template <typename P>
struct BackingStore {
    P DeallocationBStore;
    P BStoreLimit;
};
template <>
struct BackingStore<uint32_t> {};

// As Windows 10 has it.
template <typename P>
struct Teb {
    published::NtTib<P> NtTib;
    P EnvironmentPointer;
    published::ClientId<P> ClientId;
    P ActiveRpcHandle;
    P ThreadLocalStoragePointer;
    P ProcessEnvironmentBlock;
    uint32_t LastErrorValue;
    uint32_t CountOfOwnedCriticalSections;
    P CsrClientThread;
    P Win32ThreadInfo;
    uint32_t User32Reserved[26];
    uint32_t UserReserved[5];
    P WOW32Reserved;
    uint32_t CurrentLocale;
    uint32_t FpSoftwareStatusRegister;
    P SystemReserved1[54];
    int32_t ExceptionCode;
    P ActivationContextStackPointer;
    uint8_t SpareBytes[sizeof(P) == 4 ? 36 : 24];
    uint32_t TxFsContext;
    published::GdiTebBatch<P> GdiTebBatch;
    published::ClientId<P> RealClientId;
    P GdiCachedProcessHandle;
    uint32_t GdiClientPID;
    uint32_t GdiClientTID;
    P GdiThreadLocalInfo;
    P Win32ClientInfo[62];
    P glDispatchTable[233];
    P glReserved1[29];
    P glReserved2;
    P glSectionInfo;
    P glSection;
    P glTable;
    P glCurrentRC;
    P glContext;
    uint32_t LastStatusValue;
    UnicodeString<P> StaticUnicodeString;
    uint16_t StaticUnicodeBuffer[261];
    P DeallocationStack;
    P TlsSlots[64];
    ListEntry<P> TlsLinks;
    P Vdm;
    P ReservedForNtRpc;
    P DbgSsReserved[2];
    uint32_t HardErrorMode;
    P Instrumentation[sizeof(P) == 4 ? 9 : 11];
    Guid ActivityId;
    P SubProcessTag;
    P PerflibData;
    P EtwTraceData;
    P WinSockData;
    uint32_t GdiBatchCount;
    uint32_t CurrentIdealProcessor;
    uint32_t GuaranteedStackBytes;
    P ReservedForPerf;
    P ReservedForOle;
    uint32_t WaitingOnLoaderLock;
    P SavedPriorityState;
    P ReservedForCodeCoverage;
    P ThreadPoolData;
    P TlsExpansionSlots;
    [[no_unique_address]] BackingStore<P> backingStore;
    uint32_t MuiGeneration;
    uint32_t IsImpersonating;
    P NlsCache;
    P pShimData;
    uint16_t HeapVirtualAffinity;
    uint16_t LowFragHeapDataSlot;
    P CurrentTransactionHandle;
    P ActiveFrame;
    P FlsData;
    P PreferredLanguages;
    P UserPrefLanguages;
    P MergedPrefLanguages;
    uint32_t MuiImpersonation;
    uint16_t CrossTebFlags;
    uint16_t SameTebFlags;
    P TxnScopeEnterCallback;
    P TxnScopeExitCallback;
    P TxnScopeContext;
    uint32_t LockCount;
    int32_t WowTebOffset;
    P ResourceRetValue;
    P ReservedForWdf;
    uint64_t ReservedForCrt;
    Guid EffectiveContainerId;
};

} // namespace published
