#include "kit/heap/countedHeap.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

namespace {

constexpr int kept = 64;
thread_local bool keeping = false;
thread_local int failingNumber = -1;
thread_local int count = 0;
thread_local size_t sizes[kept];

std::atomic<size_t> failingSize{0}; // 0: none
std::atomic<int> delay{0};
std::atomic<long> blocks{0};

void* Allocate(size_t size) {
    size_t expected = failingSize;
    if (expected != 0 && size >= expected && failingSize.compare_exchange_strong(expected, 0)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(delay));
        throw std::bad_alloc();
    }
    if (keeping) {
        const int number = count++;
        if (number < kept) {
            sizes[number] = size;
        }
        if (number == failingNumber) {
            throw std::bad_alloc();
        }
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++blocks;
    return block;
}

void* AllocateOrNull(size_t size) {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void GiveBack(void* block) {
    if (block != nullptr) {
        --blocks;
        std::free(block);
    }
}

} // namespace

void* operator new(size_t size) {
    return Allocate(size);
}
void* operator new[](size_t size) {
    return Allocate(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return AllocateOrNull(size);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return AllocateOrNull(size);
}
void operator delete(void* block) noexcept {
    GiveBack(block);
}
void operator delete[](void* block) noexcept {
    GiveBack(block);
}
void operator delete(void* block, size_t) noexcept {
    GiveBack(block);
}
void operator delete[](void* block, size_t) noexcept {
    GiveBack(block);
}

namespace kit::allocations {

void Begin(int failing) {
    count = 0;
    failingNumber = failing;
    keeping = true;
}

std::vector<size_t> End() {
    keeping = false;
    return {sizes, sizes + std::min(count, kept)};
}

void FailNextOf(size_t size, int milliseconds) {
    delay = milliseconds;
    failingSize = size;
}

long BlocksHeld() {
    return blocks;
}

} // namespace kit::allocations
