#include "mordRev/src/spareBlocks.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

// A place for one spare block. Each has a cache line, so that threads that use different places do not slow each other.
struct alignas(64) Place {
    std::atomic<void*> block = nullptr;
};

constinit std::array<Place, mostSpareBlocks> places;

static_assert((mostSpareBlocks & (mostSpareBlocks - 1)) == 0, "places are chosen by the low bits of a number");

// Where the calling thread begins to look. Threads differ by their stacks.
size_t FirstPlace() {
    const char local = 0;
    return reinterpret_cast<uintptr_t>(&local) / 65536 * 0x9E3779B1U >> 16;
}

} // namespace

void* TakeBlock() {
    const size_t first = FirstPlace();
    for (size_t i = 0; i < mostSpareBlocks; ++i) {
        std::atomic<void*>& place = places[(first + i) % mostSpareBlocks].block;
        if (place.load(std::memory_order_relaxed) != nullptr) {
            if (void* const block = place.exchange(nullptr, std::memory_order_acquire)) {
                return block;
            }
        }
    }
    void* const block = std::malloc(blockSize);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void GiveBlock(void* block) noexcept {
    const size_t first = FirstPlace();
    for (size_t i = 0; i < mostSpareBlocks; ++i) {
        std::atomic<void*>& place = places[(first + i) % mostSpareBlocks].block;
        void* none = nullptr;
        if (place.load(std::memory_order_relaxed) == nullptr &&
            place.compare_exchange_strong(none, block, std::memory_order_release, std::memory_order_relaxed)) {
            return;
        }
    }
    std::free(block);
}
