// Memory that events use one after the other.
//
// A system may take large blocks back when they are freed, and clear them when they are allocated again: both took
// longer than the decision of a large event. A few blocks are kept instead.
#pragma once

#include <cstddef>

constexpr size_t blockSize = 65472; // 64 KiB with what an allocator adds
constexpr size_t mostSpareBlocks = 16;

// Returns a block of blockSize bytes: a spare one, or a new one. Throws std::bad_alloc. Any thread may call; takes no
// lock of this library.
void* TakeBlock();

// Takes a block of TakeBlock back. It becomes spare, or is freed when mostSpareBlocks are spare. Any thread may call,
// also another one than that of TakeBlock. Spare blocks are never freed: they stay when the library is unloaded.
void GiveBlock(void* block) noexcept;

// Allocator of one object in a block, for std::allocate_shared.
template <typename T>
struct BlockAllocator {
    using value_type = T;

    BlockAllocator() = default;
    template <typename Other>
    explicit(false) BlockAllocator(const BlockAllocator<Other>&) noexcept {}

    T* allocate(size_t) {
        static_assert(sizeof(T) <= blockSize && alignof(T) <= alignof(std::max_align_t));
        return static_cast<T*>(TakeBlock());
    }
    void deallocate(T* object, size_t) noexcept { GiveBlock(object); }

    bool operator==(const BlockAllocator&) const { return true; }
};
