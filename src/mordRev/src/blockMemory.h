// Memory for many pieces that go away together.
#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <type_traits>

// Pieces follow one another, in memory of the owner first and then in blocks (spareBlocks.h); a piece that is larger
// than a block has memory for itself. The last piece is open: it grows until it is closed. A closed piece is neither
// moved nor freed before all of them are. For one thread at a time.
class BlockMemory {
public:
    // Begins in `first`, of `size` bytes, which must outlive it and is aligned for what will stand in it.
    BlockMemory(char* first, size_t size) : m_begin(first), m_end(first), m_limit(first + size) {}
    ~BlockMemory() { Clear(); }
    BlockMemory(const BlockMemory&) = delete;
    BlockMemory& operator=(const BlockMemory&) = delete;

    // The end of the open piece, with room for `size` bytes more; they count once they are added. The piece may have
    // moved. Throws std::bad_alloc, with nothing changed.
    char* Room(size_t size) {
        if (static_cast<size_t>(m_limit - m_end) < size) {
            MoveToRoomFor(size);
        }
        return m_end;
    }

    // The size of the room that there is already.
    size_t RoomLeft() const { return static_cast<size_t>(m_limit - m_end); }

    // Counts `size` bytes of the room.
    void Add(size_t size) { m_end += size; }

    // The open piece: where it begins, and its size.
    char* Begin() const { return m_begin; }
    size_t Size() const { return static_cast<size_t>(m_end - m_begin); }

    // Closes it and opens an empty one behind it.
    void Close() { m_begin = m_end; }

    // Frees all pieces, the open one too. The first memory is not used again.
    void Clear();

private:
    // At the beginning of each block and of the memory of each large piece. Its size keeps pieces aligned for pointers.
    struct Header {
        Header* previous;
        bool isBlock;
    };

    void MoveToRoomFor(size_t size);

    Header* m_last = nullptr;
    char* m_begin;
    char* m_end;
    char* m_limit;
};

// Appends a value to the open piece, which holds values of its kind alone.
template <typename Item>
void AddItem(BlockMemory& memory, const Item& item) {
    static_assert(std::is_trivially_copyable_v<Item> && alignof(Item) <= alignof(void*), "pieces move as bytes");
    new (memory.Room(sizeof item)) Item(item);
    memory.Add(sizeof item);
}

// The values of the open piece. Good as long as it does not move.
template <typename Item>
std::span<Item> ItemsOf(const BlockMemory& memory) {
    return {reinterpret_cast<Item*>(memory.Begin()), memory.Size() / sizeof(Item)};
}
