#include "mordRev/src/hashIndex.h"

#include <algorithm>
#include <bit>

namespace {

constexpr size_t leastSize = 16;

} // namespace

void HashIndex::Reserve() {
    if (2 * (m_used + 1) <= m_tags.size()) {
        return;
    }
    HashIndex larger;
    const size_t size = std::max(leastSize, 2 * m_tags.size());
    larger.m_tags.resize(size);
    larger.m_slots.resize(size);
    larger.m_shift = 32 - static_cast<unsigned>(std::countr_zero(size));
    for (size_t at = 0; at < m_tags.size(); ++at) {
        if (m_tags[at] != free) {
            larger.Add(m_slots[at].hash, m_slots[at].number);
        }
    }
    *this = std::move(larger);
}

void HashIndex::Add(uint32_t hash, uint32_t number) noexcept {
    size_t at = PlaceOf(hash);
    while (m_tags[at] != free) {
        at = (at + 1) & (m_tags.size() - 1);
    }
    m_tags[at] = TagOf(hash);
    m_slots[at] = {hash, number};
    ++m_used;
}

void HashIndex::Clear() noexcept {
    *this = HashIndex();
}
