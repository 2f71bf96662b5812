// Pieces of block memory: they grow, do not move once they are closed, and are all freed.
#include "mordRev/src/blockMemory.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "unit/mordRev/exhaustedMemory.h"
#include "unit/mordRev/spareBlocks.h"

namespace {

void Append(BlockMemory& memory, std::string_view text) {
    std::memcpy(memory.Room(text.size()), text.data(), text.size());
    memory.Add(text.size());
}

std::string_view Close(BlockMemory& memory) {
    const std::string_view piece(memory.Begin(), memory.Size());
    memory.Close();
    return piece;
}

TEST(BlockMemory, DoesNotMoveClosedPiecesOfAnySize) {
    alignas(void*) char first[100];
    BlockMemory memory(first, sizeof first);
    std::vector<std::pair<std::string, std::string_view>> pieces;
    const size_t sizes[] = {
        0, 1, 60, 60, 39, 1000, blockSize - 2000, 900, 5000, blockSize, 10, 3 * blockSize, 10, blockSize - 100, 10};
    for (const size_t size : sizes) {
        const std::string text(size, static_cast<char>('a' + pieces.size()));
        Append(memory, text);
        pieces.emplace_back(text, Close(memory));
    }
    for (const auto& [text, piece] : pieces) {
        EXPECT_EQ(piece, text);
    }
    EXPECT_EQ(pieces[1].second.data(), first);
}

TEST(BlockMemory, GrowsAPieceFromTheFirstMemoryToManyBlocks) {
    alignas(void*) char first[100];
    BlockMemory memory(first, sizeof first);
    std::vector<size_t> expected;
    for (size_t i = 0; i < 5 * blockSize / sizeof i; ++i) {
        AddItem(memory, i);
        expected.push_back(i);
    }
    const std::span<size_t> items = ItemsOf<size_t>(memory);
    EXPECT_EQ(std::vector<size_t>(items.begin(), items.end()), expected);
    memory.Close();
    EXPECT_EQ(memory.Size(), 0U);
    EXPECT_EQ(std::vector<size_t>(items.begin(), items.end()), expected);
}

TEST(BlockMemory, MovesAnOpenPieceWhenItHasNoRoom) {
    alignas(void*) char first[8];
    BlockMemory memory(first, sizeof first);
    Append(memory, "12345678");
    EXPECT_EQ(memory.Begin(), first);
    EXPECT_EQ(memory.RoomLeft(), 0U);
    Append(memory, "9");
    EXPECT_NE(memory.Begin(), first);
    EXPECT_EQ(Close(memory), "123456789");
}

TEST(BlockMemory, FreesEverything) {
    const HeldSpareBlocks none;
    GiveBlock(TakeBlock());
    const long held = kit::BlocksHeld();
    {
        BlockMemory memory(nullptr, 0);
        for (size_t i = 0; i < 3; ++i) {
            memory.Add((memory.Room(blockSize - 100), blockSize - 100)); // a block each
            memory.Close();
            memory.Add((memory.Room(blockSize), blockSize)); // separate memory
            memory.Close();
        }
        EXPECT_EQ(kit::BlocksHeld(), held + 5); // one block was spare
        memory.Clear();
        EXPECT_EQ(kit::BlocksHeld(), held + 2); // three blocks are spare
        EXPECT_EQ(memory.Size(), 0U);
        Append(memory, "again");
        EXPECT_EQ(Close(memory), "again");
    }
    EXPECT_EQ(kit::BlocksHeld(), held + 2);
}

TEST(BlockMemory, IsUnchangedWhenMemoryRunsOut) {
    std::timed_mutex lock;
    exhausted::WarmUp(lock); // without it the runtime of Windows cannot throw
    HeldSpareBlocks none;
    alignas(void*) char first[8];
    BlockMemory memory(first, sizeof first);
    Append(memory, "piece");
    for (const size_t size : {size_t{10}, 2 * blockSize}) {
        const auto failure = exhausted::FailOne(1, true, [&] { memory.Room(size); });
        EXPECT_TRUE(failure.thrown);
        EXPECT_EQ(std::string_view(memory.Begin(), memory.Size()), "piece");
        EXPECT_EQ(memory.Begin(), first);
    }
    EXPECT_THROW(memory.Room(static_cast<size_t>(-1) / 2), std::bad_alloc);
    EXPECT_THROW(memory.Room(static_cast<size_t>(-1) - 16), std::bad_alloc);
    Append(memory, " of text");
    EXPECT_EQ(Close(memory), "piece of text");
}

} // namespace
