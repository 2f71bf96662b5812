// The number of spare blocks, and their use before new ones are allocated.
#include "mordRev/src/spareBlocks.h"

#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "unit/mordRev/exhaustedMemory.h"
#include "unit/mordRev/spareBlocks.h"

namespace {

TEST(SpareBlocks, AreAMebibyteAtMost) {
    EXPECT_LE(mostSpareBlocks * blockSize, size_t{1} << 20);
}

TEST(SpareBlocks, AreKeptUpToTheirMaximumNumber) {
    const HeldSpareBlocks none;
    const long held = kit::BlocksHeld();
    std::vector<void*> blocks;
    for (size_t i = 0; i < mostSpareBlocks + 4; ++i) {
        blocks.push_back(TakeBlock());
    }
    const std::set<void*> distinct(blocks.begin(), blocks.end());
    EXPECT_EQ(distinct.size(), blocks.size());
    blocks.reserve(blocks.size() + 1);
    const long heldAtMost = kit::BlocksHeld();
    for (void* const block : blocks) {
        GiveBlock(block);
    }
    EXPECT_EQ(heldAtMost - kit::BlocksHeld(), 4);
    EXPECT_GT(kit::BlocksHeld(), held);
}

TEST(SpareBlocks, AreUsedBeforeNewOnesAreAllocated) {
    const HeldSpareBlocks none;
    std::vector<void*> blocks(mostSpareBlocks);
    for (void*& block : blocks) {
        block = TakeBlock();
    }
    const std::set<void*> given(blocks.begin(), blocks.end());
    for (void* const block : blocks) {
        GiveBlock(block);
    }
    const kit::AllocationCounter counter;
    for (void*& block : blocks) {
        block = TakeBlock();
    }
    EXPECT_EQ(counter.Calls(), 0U);
    void* const further = TakeBlock();
    EXPECT_EQ(counter.Calls(), 1U);
    EXPECT_EQ(counter.Bytes(), blockSize);
    EXPECT_EQ(given, std::set<void*>(blocks.begin(), blocks.end()));
    GiveBlock(further);
    for (void* const block : blocks) {
        GiveBlock(block);
    }
}

TEST(SpareBlocks, WithoutOneAndWithoutMemoryTakeBlockThrowsBadAlloc) {
    std::timed_mutex lock;
    exhausted::WarmUp(lock); // without it the runtime of Windows cannot throw
    const HeldSpareBlocks none;
    const exhausted::Failure failure = exhausted::FailOne(1, true, [] { GiveBlock(TakeBlock()); });
    EXPECT_TRUE(failure.thrown);
    EXPECT_EQ(failure.kind, kit::AllocationKind::Malloc);
    GiveBlock(TakeBlock());
    EXPECT_FALSE(exhausted::FailOne(1, true, [] { GiveBlock(TakeBlock()); }).thrown);
}

} // namespace
