// Where entries stand, by their hashes.
//
// An index over entries that stand elsewhere and have numbers. Open addressing with linear probing, at most half full,
// over one byte of each hash: a look-up in vain, the most frequent one, reads one or two of these bytes and nothing
// else, and those of a hundred thousand entries fit into the processor's cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class HashIndex {
public:
    static constexpr uint32_t none = 0xFFFFFFFF;

    // Makes room for one more entry. The index is as it was when that fails.
    void Reserve();

    // Adds the entry `number`, for which there must be room. Hashes may come more than once.
    void Add(uint32_t hash, uint32_t number) noexcept;

    void Clear() noexcept;

    // Asks the processor to have ready what a look-up of this hash reads first.
    void Prefetch(uint32_t hash) const {
        if (!m_tags.empty()) {
            __builtin_prefetch(&m_tags[PlaceOf(hash)]);
        }
    }

    // The number of an entry with this hash for which `isSought(number)` is true, or none.
    template <typename IsSought>
    uint32_t Find(uint32_t hash, const IsSought& isSought) const {
        if (m_tags.empty()) {
            return none;
        }
        const uint8_t tag = TagOf(hash);
        for (size_t at = PlaceOf(hash); m_tags[at] != free; at = (at + 1) & (m_tags.size() - 1)) {
            if (m_tags[at] == tag && m_slots[at].hash == hash && isSought(m_slots[at].number)) {
                return m_slots[at].number;
            }
        }
        return none;
    }

private:
    struct Slot {
        uint32_t hash;
        uint32_t number;
    };

    static constexpr uint8_t free = 0;

    size_t PlaceOf(uint32_t hash) const { return hash >> m_shift; }

    // The bits that have least to do with the place.
    static uint8_t TagOf(uint32_t hash) {
        const auto tag = static_cast<uint8_t>(hash);
        return tag == free ? uint8_t{1} : tag;
    }

    std::vector<uint8_t> m_tags; // a power of two, or none
    std::vector<Slot> m_slots;   // as many; one is valid where its tag is not `free`
    unsigned m_shift = 0;        // from the bits of a hash to those of a place
    size_t m_used = 0;
};
