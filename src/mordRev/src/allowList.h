// The allow list: which machines may connect, by protocol key.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "mordRev/src/hashIndex.h"
#include "mordRev/src/queryResultTable.h"

using AllowedMids = std::set<std::string>;
using AllowTable = std::map<std::string, AllowedMids>; // protocol key to machine ids; no set is empty

// Which of some machine ids are allowed under one protocol key? Holds what can be computed without the list, and so
// without its lock. The texts that it was made of must outlive it.
class AllowQuery {
public:
    AllowQuery(const std::string& protocol, MidSet mids);
    AllowQuery(const AllowQuery&) = delete;
    AllowQuery& operator=(const AllowQuery&) = delete;

private:
    friend class AllowList;

    const std::string& m_protocol;
    MidSet m_mids;
    // The hash of each id with the protocol key, in the order of the ids. Those of a few ids take no memory from the
    // heap.
    std::array<MarkedHash, 128> m_few;
    std::vector<MarkedHash> m_many;
    const MarkedHash* m_pairs;
};

// The table, and an index over its pairs: a look-up takes a time that does not grow with the list, and compares no
// texts when the id is not there. Not for several threads at once: the receiver guards it by its lock.
class AllowList {
public:
    // Adds a pair, unless it is there already. Nothing has changed when memory runs out.
    void Add(std::string protocol, std::string mid);

    // Empties the list and returns its memory.
    void Clear() noexcept;

    // The least of the machine ids of the query, by unsigned bytes, that is allowed under its key; null when none is.
    // Valid until the list changes.
    const std::string* Match(const AllowQuery& query) const;

    const AllowTable& Table() const { return m_table; }

private:
    friend class AllowQuery;

    // An element of a set of the table. The set stands for its protocol key.
    struct Pair {
        const AllowedMids* mids;
        const std::string* mid;
    };

    static uint32_t HashOfProtocol(const std::string& protocol);
    static MarkedHash HashOfPair(uint32_t protocolHash, std::string_view mid);

    AllowTable m_table;
    std::vector<Pair> m_pairs; // all of the table
    HashIndex m_index;         // by the hash of a pair, to its number in m_pairs
};
