// What the host's answer to a query holds: machine ids by rule guid.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

// The machine ids listed for one rule, in the order of the answer: a set, of which an element may stand here more than
// once. Opaque text, compared whole; an id may be empty or hold a NUL.
using MidSet = std::span<const std::string_view>;

// Rule guid to machine ids. A value: copies behave as independent tables, and making one costs the same whatever the
// table holds, since copies share their entries until one of them changes. Copies may be used on different threads.
//
// No text is copied. What owns the texts of an entry stays as long as a table has the entry.
class QueryResultTable {
public:
    // Adds an entry, unless `guid` has one already, which then stays as it is. `owner` owns the texts of both.
    void Insert(std::string_view guid, MidSet mids, const std::shared_ptr<const void>& owner);

    // The entry of `guid`, or null. Valid until this table changes or goes away.
    const MidSet* Find(std::string_view guid) const;

    // The number of guids.
    size_t Size() const;

private:
    struct Entries;

    std::shared_ptr<Entries> m_entries; // null while empty
};
