// The allow list: the machines that may connect, by protocol key.
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

// A machine id that is allowed under a protocol key; neither has a NUL. Ordered by protocol key, then by machine id,
// both by unsigned bytes. Views: the texts must outlive it.
class AllowedPair {
public:
    AllowedPair(std::string_view protocol, std::string_view mid)
        : m_protocol(protocol), m_mid(mid), m_midBegin(BeginOf(mid)) {}

    std::string_view Protocol() const { return m_protocol; }
    std::string_view Mid() const { return m_mid; }

    // Most comparisons read no text: pairs of one key share its text, and ids differ in their first bytes.
    bool operator<(const AllowedPair& other) const {
        if (!HasProtocolOf(other)) {
            return m_protocol < other.m_protocol;
        }
        return m_midBegin != other.m_midBegin ? m_midBegin < other.m_midBegin : m_mid < other.m_mid;
    }
    bool operator==(const AllowedPair& other) const {
        return m_midBegin == other.m_midBegin && HasProtocolOf(other) && m_mid == other.m_mid;
    }

private:
    bool HasProtocolOf(const AllowedPair& other) const {
        return (m_protocol.data() == other.m_protocol.data() && m_protocol.size() == other.m_protocol.size()) ||
               m_protocol == other.m_protocol;
    }

    // The first bytes of `text`, padded with zeros, as a number whose order is that of the bytes.
    static uint64_t BeginOf(std::string_view text) {
        uint64_t begin = 0;
        for (size_t i = 0; i < sizeof begin; ++i) {
            begin = begin << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0);
        }
        return begin;
    }

    std::string_view m_protocol;
    std::string_view m_mid;
    uint64_t m_midBegin;
};

// A query: which of some machine ids does the list allow under one protocol key? The constructor computes what does not
// depend on the list, before the caller takes the lock of the list. Keeps references: `protocol` and `mids` with their
// texts must outlive the object. Throws std::bad_alloc.
class AllowQuery {
public:
    AllowQuery(const std::string& protocol, MidSet mids);
    AllowQuery(const AllowQuery&) = delete;
    AllowQuery& operator=(const AllowQuery&) = delete;

private:
    friend class AllowList;

    const std::string& m_protocol;
    MidSet m_mids;
    // The hash of each id combined with the protocol key, in the order of the ids. Up to 128 are stored in the object,
    // more on the heap.
    std::array<FilteredHash, 128> m_inline;
    std::vector<FilteredHash> m_heap;
    const FilteredHash* m_pairs;
};

// The table and a hash index over its pairs: the time of a look-up does not grow with the list, and absent ids need no
// text comparison. Not thread-safe: the receiver guards it with m_lock.
class AllowList {
public:
    // Fills an empty list and reorders `pairs`, which may repeat. Throws std::bad_alloc; the list then has some of the
    // pairs.
    void Fill(std::vector<AllowedPair>& pairs);

    // Removes all pairs and frees the memory.
    void Clear() noexcept;

    // Returns the smallest machine id of the query, in unsigned byte order, that is allowed under its key, or null. The
    // pointer is valid until the list changes. Throws nothing.
    const std::string* Match(const AllowQuery& query) const;

    // The table, valid until the list changes.
    const AllowTable& Table() const { return m_table; }

private:
    friend class AllowQuery;

    // An element of a set of the table. The address of the set identifies the protocol key.
    struct Pair {
        const AllowedMids* mids;
        const std::string* mid;
    };

    static uint32_t HashOfProtocol(const std::string& protocol);
    static FilteredHash HashOfPair(uint32_t protocolHash, std::string_view mid);

    AllowTable m_table;
    std::vector<Pair> m_pairs; // every pair of the table
    HashIndex m_index;         // from the hash of a pair to its position in m_pairs
};
