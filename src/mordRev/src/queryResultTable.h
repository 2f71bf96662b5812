// What the host's answer to a query holds: machine ids by rule guid.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>

// The machine ids listed for one rule. Opaque text, compared whole; an id may be empty or hold a NUL.
using MidSet = std::unordered_set<std::string>;

// Rule guid to machine ids. A value: copies behave as independent tables, and making one costs the same whatever the
// table holds, since copies share their entries until one of them changes. Copies may be used on different threads.
class QueryResultTable {
public:
    // Adds an entry, unless `guid` has one already, which then stays as it is.
    void Insert(std::string guid, MidSet mids);

    // The entry of `guid`, or null. Valid until this table changes or goes away.
    const MidSet* Find(const std::string& guid) const;

    // The number of guids.
    size_t Size() const;

private:
    using Entries = std::unordered_map<std::string, MidSet>;

    std::shared_ptr<Entries> m_entries; // null while empty
};
