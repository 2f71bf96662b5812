// The 64-bit loader list of this process, and the one export that is found by reading tables.
#include <algorithm>
#include <memory>
#include <new>
#include <string_view>

#include "native/cachedAddress.h"
#include "native/gate.h"
#include "native/gateLayouts.h"
#include "native/remoteLayouts.h"
#include "native/systemBuffer.h"

namespace {

constinit CachedAddress<uint64_t> ntdllBase;

// A local copy of a 64-bit structure of `size` bytes.
template <size_t size>
struct Image {
    SystemBuffer<size> buffer;

    explicit Image(uint64_t address) { GateCopyIn(buffer.bytes, address, size); }

    template <typename Field>
    Field At(size_t offset) const {
        return LoadField<Field>(buffer.bytes, offset);
    }
};

WideChar FoldCase(WideChar unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<WideChar>(unit - 'A' + 'a') : unit;
}

bool SameName(std::basic_string_view<WideChar> left, std::basic_string_view<WideChar> right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (size_t i = 0; i < left.size(); ++i) {
        if (FoldCase(left[i]) != FoldCase(right[i])) {
            return false;
        }
    }
    return true;
}

// A local copy of a table; `entries` is null if memory ran out.
template <typename Entry>
struct Table {
    uint32_t count;
    std::unique_ptr<Entry[]> entries;

    explicit Table(uint32_t size) : count(size), entries(new (std::nothrow) Entry[size]()) {}

    void CopyIn(uint64_t address) { GateCopyIn(entries.get(), address, count * static_cast<uint32_t>(sizeof(Entry))); }
};

} // namespace

uint64_t GateModuleBase(const WideChar* name) {
    using namespace gateLayouts;
    if (GateEnabled == 0) {
        return 0;
    }
    const uint64_t peb = Image<tebSize>(GateThreadBlock()).At<uint64_t>(tebProcessEnvironmentBlock);
    const uint64_t ldr = Image<pebSize>(peb).At<uint64_t>(pebLdr);
    const uint64_t end = ldr + ldrInLoadOrderModuleList;
    uint64_t cursor = Image<ldrDataSize>(ldr).At<uint64_t>(ldrInLoadOrderModuleList);
    do { // the list of a running process is not empty
        const Image<entrySize> entry(cursor);
        const auto nameSize = entry.At<uint16_t>(entryBaseDllNameMaximumLength);
        const size_t units = (nameSize + size_t{1}) / sizeof(WideChar); // an odd size needs one more
        const std::unique_ptr<WideChar[]> copy(new (std::nothrow) WideChar[units + 1]());
        if (copy == nullptr) {
            return 0;
        }
        GateCopyIn(copy.get(), entry.At<uint64_t>(entryBaseDllNameBuffer), nameSize);
        if (SameName(name, copy.get())) {
            return entry.At<uint64_t>(entryDllBase);
        }
        cursor = entry.At<uint64_t>(entryFlink);
    } while (cursor != end && cursor != 0); // an intact list has no link of 0
    return 0;
}

uint64_t GateNtdllBase() {
    return ntdllBase.Get([] { return GateModuleBase(WIDE("ntdll.dll")); });
}

uint64_t GateLoaderResolver() {
    using namespace gateLayouts;
    static constexpr char wanted[] = "LdrGetProcedureAddress";

    const uint64_t base = GateNtdllBase();
    if (base == 0) {
        return 0;
    }
    const auto newHeader = Image<dosHeaderSize>(base).At<int32_t>(dosHeaderNewHeader);
    const Image<ntHeadersSize> headers(base + static_cast<uint64_t>(int64_t{newHeader}));
    const auto directoryAddress = headers.At<uint32_t>(ntHeadersExportDirectory);
    if (directoryAddress == 0) {
        return 0;
    }
    const Image<exportDirectorySize> directory(base + directoryAddress);
    // The ordinal table is read, and the names are searched, up to the number of functions, by design; the search
    // ends at the match.
    Table<uint32_t> functions(directory.At<uint32_t>(exportNumberOfFunctions));
    Table<uint16_t> ordinals(functions.count);
    Table<uint32_t> names(directory.At<uint32_t>(exportNumberOfNames));
    if (functions.entries == nullptr || ordinals.entries == nullptr || names.entries == nullptr) {
        return 0;
    }
    functions.CopyIn(base + directory.At<uint32_t>(exportAddressOfFunctions));
    ordinals.CopyIn(base + directory.At<uint32_t>(exportAddressOfNameOrdinals));
    names.CopyIn(base + directory.At<uint32_t>(exportAddressOfNames));
    const uint32_t bound = std::min(functions.count, names.count); // but not beyond the local copy of the names
    for (uint32_t i = 0; i < bound; ++i) {
        if (GateCompare(wanted, base + names.entries[i], sizeof wanted)) {
            const uint16_t ordinal = ordinals.entries[i];
            return ordinal < functions.count ? base + functions.entries[ordinal] : 0;
        }
    }
    return 0;
}
