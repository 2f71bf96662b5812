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

// A machine id that is allowed under a protocol key; neither has a NUL. Ordered by protocol key, then by machine id.
class AllowedPair {
public:
    AllowedPair(std::string_view protocol, std::string_view mid)
        : m_protocol(protocol), m_mid(mid), m_midBegin(BeginOf(mid)) {}

    std::string_view Protocol() const { return m_protocol; }
    std::string_view Mid() const { return m_mid; }

    // Most comparisons look at no text: pairs of one protocol key share its text, and ids differ in their beginning.
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

    // Its first bytes, with zeros behind a shorter text, as a number in their order.
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

    // Fills a list that is empty, and changes the order of `pairs`. When memory runs out, the list has some of them.
    void Fill(std::vector<AllowedPair>& pairs);

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
