// Memory for many pieces that are freed together.
#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <type_traits>

// Pieces follow one another, first in memory of the owner and then in blocks (spareBlocks.h); a piece larger than a
// block has separate memory. The last piece is open: it grows until it is closed. Closed pieces do not move and stay
// until Clear or the destructor. For use by one thread at a time.
class BlockMemory {
public:
    // Begins in `first`, of `size` bytes, which must outlive the object and be aligned for its contents.
    BlockMemory(char* first, size_t size) : m_begin(first), m_end(first), m_limit(first + size) {}
    ~BlockMemory() { Clear(); }
    BlockMemory(const BlockMemory&) = delete;
    BlockMemory& operator=(const BlockMemory&) = delete;

    // Returns the end of the open piece, with room for `size` more bytes, which Add makes part of the piece. The piece
    // may move. Throws std::bad_alloc and changes nothing then.
    char* Room(size_t size) {
        if (static_cast<size_t>(m_limit - m_end) < size) {
            MoveToRoomFor(size);
        }
        return m_end;
    }

    // The number of bytes that Room returns without moving the piece.
    size_t RoomLeft() const { return static_cast<size_t>(m_limit - m_end); }

    // Appends the next `size` bytes of the room to the open piece.
    void Add(size_t size) { m_end += size; }

    // The beginning and the size of the open piece.
    char* Begin() const { return m_begin; }
    size_t Size() const { return static_cast<size_t>(m_end - m_begin); }

    // Closes the open piece and opens an empty one behind it.
    void Close() { m_begin = m_end; }

    // Frees all pieces, the open one too. The first memory is not used again.
    void Clear();

private:
    // At the start of each block and of the memory of each large piece. Its size keeps pieces aligned for pointers.
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

// Appends a value to the open piece, which holds only values of this type.
template <typename Item>
void AddItem(BlockMemory& memory, const Item& item) {
    static_assert(std::is_trivially_copyable_v<Item> && alignof(Item) <= alignof(void*), "pieces move as bytes");
    new (memory.Room(sizeof item)) Item(item);
    memory.Add(sizeof item);
}

// The values of the open piece, valid until it moves.
template <typename Item>
std::span<Item> ItemsOf(const BlockMemory& memory) {
    return {reinterpret_cast<Item*>(memory.Begin()), memory.Size() / sizeof(Item)};
}
