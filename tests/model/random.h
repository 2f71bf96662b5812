// Random numbers that are the same on every platform and in every build for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace model {

class Random {
public:
    explicit Random(uint64_t seed) : m_state(seed) {}

    uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15U;
        uint64_t word = m_state;
        word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9U;
        word = (word ^ (word >> 27)) * 0x94D049BB133111EBU;
        return word ^ (word >> 31);
    }

    // 0 to count - 1; `count` is not 0.
    uint32_t Below(uint32_t count) { return static_cast<uint32_t>((Next() >> 32) % count); }

    // `least` to `most`, both included.
    uint32_t Between(uint32_t least, uint32_t most) { return least + Below(most - least + 1); }

    bool Percent(uint32_t share) { return Below(100) < share; }

    template <typename Item>
    Item Pick(std::initializer_list<Item> items) {
        return items.begin()[Below(static_cast<uint32_t>(items.size()))];
    }

    template <typename Item>
    const Item& Pick(const std::vector<Item>& items) {
        return items[Below(static_cast<uint32_t>(items.size()))];
    }

private:
    uint64_t m_state;
};

} // namespace model
