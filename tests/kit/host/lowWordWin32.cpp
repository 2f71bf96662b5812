#include <new>

#include <windows.h>

#include "kit/host/lowWord.h"

namespace kit {

namespace {

constexpr uintptr_t firstCandidate = 0x20000000;
constexpr uintptr_t lastCandidate = 0x60000000;
constexpr uintptr_t step = 0x100000;

// Returns null if `address` is not free.
uint32_t* AllocateAt(uintptr_t address) {
    return static_cast<uint32_t*>(
        VirtualAlloc(reinterpret_cast<void*>(address), sizeof(uint32_t), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}

} // namespace

LowWord::LowWord() : m_word(nullptr) {
    for (uintptr_t address = firstCandidate; m_word == nullptr; address += step) {
        if (address == lastCandidate) {
            throw std::bad_alloc();
        }
        m_word = AllocateAt(address);
    }
}

LowWord::~LowWord() {
    VirtualFree(m_word, 0, MEM_RELEASE);
}

} // namespace kit
