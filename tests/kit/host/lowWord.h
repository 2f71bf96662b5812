// A word whose address fits into 32 bits, as hosts pass it to GetProperty.
#pragma once

#include <cstdint>

namespace kit {

// Allocates the word from the operating system, and frees it. Throws std::bad_alloc if no such address is free.
class LowWord {
public:
    LowWord();
    ~LowWord();
    LowWord(const LowWord&) = delete;
    LowWord& operator=(const LowWord&) = delete;

    uint32_t& Value() const { return *m_word; }
    uint32_t Address() const { return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(m_word)); }

private:
    uint32_t* m_word;
};

} // namespace kit
