#include "mordRev/src/blockMemory.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "mordRev/src/spareBlocks.h"

void BlockMemory::Clear() {
    while (m_last != nullptr) {
        Header* const header = m_last;
        m_last = header->previous;
        if (header->isBlock) {
            GiveBlock(header);
        } else {
            std::free(header);
        }
    }
    m_begin = m_end = m_limit = nullptr;
}

void BlockMemory::MoveToRoomFor(size_t size) {
    const size_t used = Size();
    size_t capacity = blockSize - sizeof(Header);
    const bool isBlock = size <= capacity && used <= capacity - size;
    void* memory = nullptr;
    if (isBlock) {
        memory = TakeBlock();
    } else {
        constexpr size_t most = static_cast<size_t>(-1) / 4;
        if (used > most || size > most) {
            throw std::bad_alloc();
        }
        // A piece that has grown before is likely to grow again.
        capacity = used == 0 ? size : 2 * (used + size);
        memory = std::malloc(sizeof(Header) + capacity);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
    }
    auto* const header = new (memory) Header{m_last, isBlock};
    auto* const begin = reinterpret_cast<char*>(header + 1);
    if (used != 0) {
        std::memcpy(begin, m_begin, used);
    }
    m_last = header;
    m_begin = begin;
    m_end = begin + used;
    m_limit = begin + capacity;
}
