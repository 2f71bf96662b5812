// The content of the host's answer to a query: machine ids by rule guid.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

// The machine ids of one rule, in the order of the answer. A set in which an element can occur more than once. The ids
// are opaque and compared whole; an id can be empty or contain NULs. The table owns the texts.
using MidSet = std::span<const std::string_view>;

// Maps a rule guid to machine ids. A value type: copies are independent tables, and copying takes constant time, since
// copies share their entries until one of them changes (copy on write). Threads may use different copies at once, but
// not the same one.
//
// The table copies no text; it shares the ownership of the texts of its entries.
class QueryResultTable {
public:
    // Adds an entry unless `guid` has one, which then stays unchanged. `owner` keeps both texts alive. Throws
    // std::bad_alloc and is then unchanged.
    void Insert(std::string_view guid, MidSet mids, const std::shared_ptr<const void>& owner);

    // Returns the entry of `guid`, or null. Valid until this table changes or is destroyed.
    const MidSet* Find(std::string_view guid) const;

    // Returns the number of guids.
    size_t Size() const;

private:
    struct Entries;

    std::shared_ptr<Entries> m_entries; // null while empty
};
