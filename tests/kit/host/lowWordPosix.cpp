#include <new>

#include <sys/mman.h>

#include "kit/host/lowWord.h"

namespace kit {

namespace {

constexpr uintptr_t firstCandidate = 0x20000000;
constexpr uintptr_t lastCandidate = 0x60000000;
constexpr uintptr_t step = 0x100000;

constexpr size_t pageSize = 4096;

// Returns null if `address` is not free: the system then chooses another address.
uint32_t* AllocateAt(uintptr_t address) {
    void* const wanted = reinterpret_cast<void*>(address);
    void* const page = mmap(wanted, pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == wanted) {
        return static_cast<uint32_t*>(page);
    }
    if (page != MAP_FAILED) {
        munmap(page, pageSize);
    }
    return nullptr;
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
    munmap(m_word, pageSize);
}

} // namespace kit
