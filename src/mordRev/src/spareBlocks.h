// Memory blocks that one event leaves for the next.
//
// A system can take large blocks back when they are freed, and clear them when they are allocated again; together this
// took longer than the decision of a large event.
#pragma once

#include <cstddef>

constexpr size_t blockSize = 65472; // 64 KiB with the overhead of an allocator
constexpr size_t mostSpareBlocks = 16;

// Returns a block of blockSize bytes, spare or new, which the caller owns until GiveBlock. Throws std::bad_alloc. Any
// thread may call. Takes no lock of this library.
void* TakeBlock();

// Takes back a block of TakeBlock: keeps it, or frees it if mostSpareBlocks are spare. Any thread may call, also
// another one than that of TakeBlock. Spare blocks are never freed; they remain when the library is unloaded.
void GiveBlock(void* block) noexcept;

// An allocator of one object in a block, for std::allocate_shared.
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
