#include "kit/heap/liveAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> live{0};

} // namespace

size_t LiveAllocations() {
    return live;
}

void* operator new(std::size_t size) {
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++live;
    return block;
}

void operator delete(void* block) noexcept {
    if (block != nullptr) {
        --live;
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    ::operator delete(block);
}

void* operator new[](std::size_t size) {
    return ::operator new(size);
}

void operator delete[](void* block) noexcept {
    ::operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    ::operator delete(block);
}
