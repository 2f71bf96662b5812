// How the reads of one walk through a loader list ended.
#pragma once

#include <cstddef>
#include <vector>

#include "accessRecord.h"
#include "native/records.h"

namespace mordinspect {

// What of one loader entry could be read. The library's records do not tell.
struct EntryReads {
    NtStatus entry = STATUS_OF_SUCCESS;
    NtStatus name = STATUS_OF_SUCCESS;
    bool nameIsLonger = false; // than the library reads
};

class ModuleReads {
public:
    explicit ModuleReads(ModuleKind kind) : m_kind(kind) {}

    // Takes a read of the walk: that of the loader's data, then an entry, its name and its link by turns.
    void Take(const Request& read, const void* content);

    // In the order of the library's records.
    const std::vector<EntryReads>& Entries() const { return m_entries; }

private:
    const ModuleKind m_kind;
    std::vector<EntryReads> m_entries;
};

} // namespace mordinspect
