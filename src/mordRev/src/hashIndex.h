// An index from hashes to the numbers of entries that are stored elsewhere.
//
// A Bloom filter rejects most absent hashes, the most frequent case, with one memory access; for a hundred thousand
// entries it still fits in the processor's cache. Behind it is an open-addressing hash table with linear probing, at
// most half full.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// A hash and its bits in the filter: up to three bits of one word, from the bits of the hash that influence the slot
// least. Computed in advance by callers that look up under a lock.
struct FilteredHash {
    FilteredHash() = default;
    explicit FilteredHash(uint32_t hash)
        : value(hash),
          marks(uint32_t{1} << (hash & 31) | uint32_t{1} << (hash >> 5 & 31) | uint32_t{1} << (hash >> 10 & 31)) {}

    uint32_t value;
    uint32_t marks;
};

// Not thread-safe: const operations may run concurrently, others need exclusive access. Duplicate hashes are allowed.
class HashIndex {
public:
    // The number that no entry has.
    static constexpr uint32_t none = 0xFFFFFFFF;

    // Makes room for `more` entries. Throws std::bad_alloc and is then unchanged.
    void Reserve(size_t more = 1);

    // Adds the entry `number`, which must not be `none`. Reserve must have made room for it.
    void Add(const FilteredHash& hash, uint32_t number) noexcept;

    // Removes all entries and frees the memory.
    void Clear() noexcept;

    // Returns false if no entry has this hash. Returns true for about one absent hash in a hundred, and never for an
    // empty index. Takes the same few steps in either case, for loops over many hashes.
    bool MayHold(const FilteredHash& sought) const {
        return !m_filter.empty() && (m_filter[WordOf(sought.value)] & sought.marks) == sought.marks;
    }

    // Returns the number of an entry with this hash for which `isSought(number)` is true, or `none`. `isSought`
    // compares the entry itself, since hashes can collide.
    template <typename IsSought>
    uint32_t Find(const FilteredHash& sought, const IsSought& isSought) const {
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
        uint32_t number = none; // marks a free slot
    };

    static constexpr unsigned slotsPerFilterWordLog2 = 2; // at most two entries per filter word, on average

    size_t PlaceOf(uint32_t hash) const { return hash >> m_shift; }
    size_t WordOf(uint32_t hash) const { return hash >> (m_shift + slotsPerFilterWordLog2); }

    std::vector<uint32_t> m_filter; // its size is a power of two, or 0
    std::vector<Slot> m_slots;      // four per filter word
    unsigned m_shift = 0;           // from the bits of a hash to those of a place
    size_t m_used = 0;
};
