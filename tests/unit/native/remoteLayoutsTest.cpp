// Every offset and size that the library reads by, held against the published structures. There is nothing to run: a
// number that is wrong does not compile.
#include "native/remoteLayouts.h"

#include <cstdint>

#include "kit/system/published/processLayouts.h"
#include "kit/system/published/queryLayouts.h"
#include "native/gateLayouts.h"
#include "native/systemBuffer.h"
#include "platform/processApi.h"

namespace {

template <typename Bits>
struct Held {
    using P = typename Bits::Pointer;

    using Peb = published::Peb<P>;
    static_assert(Bits::pebSize == sizeof(Peb));
    static_assert(Bits::pebImageBaseAddress == offsetof(Peb, ImageBaseAddress));
    static_assert(Bits::pebLdr == offsetof(Peb, Ldr));
    static_assert(Bits::pebProcessParameters == offsetof(Peb, ProcessParameters));

    using String = published::UnicodeString<P>;
    static_assert(Bits::unicodeStringSize == sizeof(String));
    static_assert(Bits::unicodeStringBuffer == offsetof(String, Buffer));
    static_assert(unicodeStringLength == offsetof(String, Length));
    static_assert(unicodeStringMaximumLength == offsetof(String, MaximumLength));

    using Parameters = published::RtlUserProcessParameters<P>;
    static_assert(sizeof Bits::parameterStrings == 8 * sizeof(size_t));
    static_assert(Bits::parameterStrings[0] == offsetof(Parameters, CurrentDirectory.DosPath));
    static_assert(Bits::parameterStrings[1] == offsetof(Parameters, DllPath));
    static_assert(Bits::parameterStrings[2] == offsetof(Parameters, ImagePathName));
    static_assert(Bits::parameterStrings[3] == offsetof(Parameters, CommandLine));
    static_assert(Bits::parameterStrings[4] == offsetof(Parameters, WindowTitle));
    static_assert(Bits::parameterStrings[5] == offsetof(Parameters, DesktopInfo));
    static_assert(Bits::parameterStrings[6] == offsetof(Parameters, ShellInfo));
    static_assert(Bits::parameterStrings[7] == offsetof(Parameters, RuntimeData));

    using LdrData = published::PebLdrData<P>;
    static_assert(Bits::ldrDataSize == sizeof(LdrData));
    static_assert(Bits::ldrInLoadOrderModuleList == offsetof(LdrData, InLoadOrderModuleList));

    using Entry = published::LdrDataTableEntry<P>;
    static_assert(Bits::entrySize == sizeof(Entry));
    static_assert(Bits::entryDllBase == offsetof(Entry, DllBase));
    static_assert(Bits::entrySizeOfImage == offsetof(Entry, SizeOfImage));
    static_assert(Bits::entryFullDllName == offsetof(Entry, FullDllName));

    using ProcessBasic = published::ProcessBasicInformation<P>;
    static_assert(Bits::processBasicInformationSize == sizeof(ProcessBasic));
    static_assert(Bits::processBasicPebBaseAddress == offsetof(ProcessBasic, PebBaseAddress));
    static_assert(Bits::processBasicInheritedFromUniqueProcessId ==
                  offsetof(ProcessBasic, InheritedFromUniqueProcessId));

    using ThreadBasic = published::ThreadBasicInformation<P>;
    static_assert(Bits::threadBasicInformationSize == sizeof(ThreadBasic));
    static_assert(Bits::threadBasicTebBaseAddress == offsetof(ThreadBasic, TebBaseAddress));

    static_assert(Bits::tebSize == sizeof(published::Teb<P>));
    using MemoryBasic = published::MemoryBasicInformation<P>;
    static_assert(Bits::memoryBasicInformationSize == sizeof(MemoryBasic));
    static_assert(memoryBasicBaseAddress == offsetof(MemoryBasic, BaseAddress));

    using Listed = published::SystemProcessInformation<P>;
    static_assert(listedNextEntryOffset == offsetof(Listed, NextEntryOffset));
    static_assert(Bits::listedImageNameBuffer == offsetof(Listed, ImageName.Buffer));
    static_assert(Bits::listedUniqueProcessId == offsetof(Listed, UniqueProcessId));
    static_assert(Bits::listedInheritedFromUniqueProcessId == offsetof(Listed, InheritedFromUniqueProcessId));
};

template struct Held<Bits32>;
template struct Held<Bits64>;
static_assert(sizeof(Bits32::Pointer) == 4 && sizeof(Bits64::Pointer) == 8);
static_assert(teb32AboveTeb64 == 8192);

// Room that no structure tells: a path of 260 characters with header and NUL fits either reply, and a name of 512 the
// other.
static_assert(mappedFileNameSize == 1048);
static_assert(moduleNameSize == 1024);
static_assert(sizeof(platform::ThreadEntry) == 28);

// What the gate reads of this process's own structures ends where an older or a shorter form of each ends.
using Teb = published::Teb<uint64_t>;
static_assert(gateLayouts::tebSize == offsetof(Teb, UserReserved));
static_assert(gateLayouts::tebProcessEnvironmentBlock == offsetof(Teb, ProcessEnvironmentBlock));

using Peb = published::Peb<uint64_t>;
static_assert(gateLayouts::pebSize == offsetof(Peb, CsrServerReadOnlySharedMemoryBase));
static_assert(gateLayouts::pebLdr == offsetof(Peb, Ldr));

using LdrData = published::PebLdrData<uint64_t>;
static_assert(gateLayouts::ldrDataSize == offsetof(LdrData, ShutdownThreadId) + sizeof(uint32_t));
static_assert(gateLayouts::ldrInLoadOrderModuleList == offsetof(LdrData, InLoadOrderModuleList));

using Entry = published::LdrDataTableEntry<uint64_t>;
static_assert(gateLayouts::entrySize == sizeof(published::LdrDataTableEntry7<uint64_t>));
static_assert(gateLayouts::entryFlink == offsetof(Entry, InLoadOrderLinks.Flink));
static_assert(gateLayouts::entryDllBase == offsetof(Entry, DllBase));
static_assert(gateLayouts::entryBaseDllNameMaximumLength == offsetof(Entry, BaseDllName.MaximumLength));
static_assert(gateLayouts::entryBaseDllNameBuffer == offsetof(Entry, BaseDllName.Buffer));

static_assert(gateLayouts::dosHeaderSize == sizeof(published::ImageDosHeader));
static_assert(gateLayouts::dosHeaderNewHeader == offsetof(published::ImageDosHeader, e_lfanew));

using NtHeaders = published::ImageNtHeaders64;
static_assert(gateLayouts::ntHeadersSize == sizeof(NtHeaders));
static_assert(gateLayouts::ntHeadersExportDirectory ==
              offsetof(NtHeaders, OptionalHeader.ExportDirectory.VirtualAddress));

using Exports = published::ImageExportDirectory;
static_assert(gateLayouts::exportDirectorySize == sizeof(Exports));
static_assert(gateLayouts::exportNumberOfFunctions == offsetof(Exports, NumberOfFunctions));
static_assert(gateLayouts::exportNumberOfNames == offsetof(Exports, NumberOfNames));
static_assert(gateLayouts::exportAddressOfFunctions == offsetof(Exports, AddressOfFunctions));
static_assert(gateLayouts::exportAddressOfNames == offsetof(Exports, AddressOfNames));
static_assert(gateLayouts::exportAddressOfNameOrdinals == offsetof(Exports, AddressOfNameOrdinals));

// Where the system writes.
static_assert(alignof(SystemBuffer<1>) == 8 && alignof(SystemBuffer<Bits32::processBasicInformationSize>) == 8);
static_assert(offsetof(SystemBuffer<Bits64::pebSize>, bytes) == 0);

using AnsiString = published::AnsiString<uint64_t>;
static_assert(sizeof(gateLayouts::AnsiString) == sizeof(AnsiString));
static_assert(offsetof(gateLayouts::AnsiString, Length) == offsetof(AnsiString, Length));
static_assert(offsetof(gateLayouts::AnsiString, MaximumLength) == offsetof(AnsiString, MaximumLength));
static_assert(offsetof(gateLayouts::AnsiString, zero) == offsetof(AnsiString, MaximumLength) + 2);
static_assert(offsetof(gateLayouts::AnsiString, Buffer) == offsetof(AnsiString, Buffer));

} // namespace
