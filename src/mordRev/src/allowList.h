// The allow list as a table, and the index beside it.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "mordRev/src/hashIndex.h"
#include "mordRev/src/seededHash.h"

using AllowedMids = std::set<std::string>;
using AllowList = std::map<std::string, AllowedMids>; // protocol key to machine ids; no set is empty

// Finds a machine id under a protocol key in a time that does not grow with the list, and without a comparison of texts
// when it is not there. Holds exactly the pairs of the list that it stands beside: whoever changes one changes both,
// under the same lock.
class AllowIndex {
public:
    // The hash of a protocol key, and that of a pair with it. Neither needs a list.
    static uint32_t HashOfProtocol(const std::string& protocol);
    static MarkedHash HashOfPair(uint32_t protocolHash, std::string_view mid) {
        return MarkedHash(protocolHash ^ HashText(mid, ProcessHashKeys().mid));
    }

    // Makes room for one more pair; both list and index are as they were when that fails.
    void Reserve();

    // Adds the pair of `mid`, an element of `mids`, and the protocol key of that set. There must be room.
    void Add(const MarkedHash& pair, const AllowedMids& mids, const std::string& mid) noexcept;

    void Clear() noexcept;

    // False when the pair is not here; seldom true without it. Looks at no list and calls nothing, to be part of the
    // loop that runs under the lock: the longer the lock is held, the more often another thread is put to sleep for it.
    bool MayHold(const MarkedHash& pair) const { return m_index.MayHold(pair); }

    // The element of `mids` that equals `mid`, or null. `pair` is that of the protocol key of `mids` with `mid`.
    const std::string* Find(const MarkedHash& pair, const AllowedMids& mids, std::string_view mid) const {
        const uint32_t found = m_index.Find(
            pair, [&](uint32_t number) { return m_pairs[number].mids == &mids && *m_pairs[number].mid == mid; });
        return found == HashIndex::none ? nullptr : m_pairs[found].mid;
    }

private:
    struct Pair {
        const AllowedMids* mids; // stands for the protocol key
        const std::string* mid;
    };

    std::vector<Pair> m_pairs;
    HashIndex m_index;
};

// Adds a pair to both. Neither is changed when memory runs out.
void Allow(AllowList& list, AllowIndex& index, std::string protocol, std::string mid);
