// The outcome of the reads of one walk through a loader list.
#pragma once

#include <cstddef>
#include <vector>

#include "accessRecord.h"
#include "native/records.h"

namespace mordinspect {

// The outcome of the reads for one loader entry, which the records of the library do not contain.
struct EntryReads {
    NtStatus entry = STATUS_OF_SUCCESS;
    NtStatus name = STATUS_OF_SUCCESS;
    bool nameIsLonger = false; // longer than the library reads
};

// Assigns the reads of TargetProcess::ListModules to its entries. Relies on the order of these reads.
class ModuleReads {
public:
    explicit ModuleReads(ModuleKind kind) : m_kind(kind) {}

    // Takes the next read of the walk: first the loader data, then an entry, its name and its link in turn.
    void Take(const Request& read, const void* content);

    // The outcomes, in the order of the library's records.
    const std::vector<EntryReads>& Entries() const { return m_entries; }

private:
    const ModuleKind m_kind;
    std::vector<EntryReads> m_entries;
};

} // namespace mordinspect
