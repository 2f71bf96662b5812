// Where entries stand, by their hashes.
//
// An index over entries that stand elsewhere and have numbers. A filter answers most look-ups in vain, the most
// frequent ones, from a word; it is small enough to stay in the processor's cache for a hundred thousand entries.
// Behind it are the places of the entries: open addressing with linear probing, at most half full.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// A hash and what it leaves in its word of the filter: up to three bits, by the bits of the hash that have least to do
// with the place. For who looks up under a lock, and has the time before it.
struct MarkedHash {
    MarkedHash() = default;
    explicit MarkedHash(uint32_t hash)
        : value(hash),
          marks(uint32_t{1} << (hash & 31) | uint32_t{1} << (hash >> 5 & 31) | uint32_t{1} << (hash >> 10 & 31)) {}

    uint32_t value;
    uint32_t marks;
};

class HashIndex {
public:
    static constexpr uint32_t none = 0xFFFFFFFF;

    // Makes room for `more` entries. The index is as it was when that fails.
    void Reserve(size_t more = 1);

    // Adds the entry `number`, which is not none, and for which there must be room. Hashes may come more than once.
    void Add(const MarkedHash& hash, uint32_t number) noexcept;

    void Clear() noexcept;

    // False when there is no entry with this hash. When there is none, true for about one hash in a hundred; never
    // true for an empty index. Takes the same few steps whatever comes out, for loops over many hashes.
    bool MayHold(const MarkedHash& sought) const {
        return !m_filter.empty() && (m_filter[WordOf(sought.value)] & sought.marks) == sought.marks;
    }

    // The number of an entry with this hash for which `isSought(number)` is true, or none.
    template <typename IsSought>
    uint32_t Find(const MarkedHash& sought, const IsSought& isSought) const {
        if (!MayHold(sought)) {
            return none;
        }
        for (size_t at = PlaceOf(sought.value); m_slots[at].number != none; at = (at + 1) & (m_slots.size() - 1)) {
            if (m_slots[at].hash == sought.value && isSought(m_slots[at].number)) {
                return m_slots[at].number;
            }
        }
        return none;
    }

private:
    struct Slot {
        uint32_t hash = 0;
        uint32_t number = none; // of a free place
    };

    static constexpr unsigned slotsOfAWordLog2 = 2; // two entries in a word of the filter at most, on average

    size_t PlaceOf(uint32_t hash) const { return hash >> m_shift; }
    size_t WordOf(uint32_t hash) const { return hash >> (m_shift + slotsOfAWordLog2); }

    std::vector<uint32_t> m_filter; // a power of two, or none
    std::vector<Slot> m_slots;      // four for each word of the filter
    unsigned m_shift = 0;           // from the bits of a hash to those of a place
    size_t m_used = 0;
};
