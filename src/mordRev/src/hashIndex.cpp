#include "mordRev/src/hashIndex.h"

#include <algorithm>
#include <bit>

namespace {

constexpr size_t minimumSlots = 16;

} // namespace

void HashIndex::Reserve(size_t more) {
    // The table is at most half full, so that a search always ends at a free slot.
    const size_t needed = 2 * (m_used + more);
    if (needed <= m_slots.size()) {
        return;
    }
    HashIndex larger;
    const size_t size = std::max(minimumSlots, std::bit_ceil(needed));
    larger.m_slots.resize(size);
    larger.m_filter.resize(size >> slotsPerFilterWordLog2);
    larger.m_shift = 32 - static_cast<unsigned>(std::countr_zero(size));
    for (const Slot& slot : m_slots) {
        if (slot.number != none) {
            larger.Add(FilteredHash(slot.hash), slot.number);
        }
    }
    *this = std::move(larger);
}

void HashIndex::Add(const FilteredHash& hash, uint32_t number) noexcept {
    size_t at = PlaceOf(hash.value);
    while (m_slots[at].number != none) {
        at = (at + 1) & (m_slots.size() - 1);
    }
    m_slots[at] = {hash.value, number};
    m_filter[WordOf(hash.value)] |= hash.marks;
    ++m_used;
}

void HashIndex::Clear() noexcept {
    *this = HashIndex();
}
