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
    // The key that machine ids are hashed with, and the hash of a protocol key. Neither needs a list.
    static const HashKey& MidKey() { return ProcessHashKeys().mid; }
    static uint32_t HashOfProtocol(const std::string& protocol);

    // Makes room for one more pair; both list and index are as they were when that fails.
    void Reserve();

    // Adds the pair of `mid`, an element of `mids`, and the protocol key of that set. There must be room.
    void Add(uint32_t protocolHash, uint32_t midHash, const AllowedMids& mids, const std::string& mid) noexcept;

    void Clear() noexcept;

    // Asks the processor to have ready what Find reads first.
    void Prefetch(uint32_t protocolHash, uint32_t midHash) const { m_index.Prefetch(protocolHash ^ midHash); }

    // The element of `mids` that equals `mid`, or null. Here, to be part of the loop that calls it under the lock: the
    // longer the lock is held, the more often another thread has to be put to sleep for it.
    const std::string* Find(uint32_t protocolHash, const AllowedMids& mids, uint32_t midHash,
                            std::string_view mid) const {
        const uint32_t found = m_index.Find(protocolHash ^ midHash, [&](uint32_t number) {
            const Pair& pair = m_pairs[number];
            return pair.mids == &mids && *pair.mid == mid;
        });
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
