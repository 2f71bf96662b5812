// A block has one owner, while other threads take and return blocks.
#include "mordRev/src/spareBlocks.h"

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Each thread signs its blocks and checks the signature before it returns them. More blocks are in use than are kept,
// so that blocks are also allocated and freed.
TEST(SpareBlocksThreads, NeverShareABlock) {
    constexpr size_t threads = 4;
    constexpr size_t blocksOfAThread = 6;
    static_assert(threads * blocksOfAThread > mostSpareBlocks);
    std::atomic<size_t> shared = 0;
    std::vector<std::thread> all;
    for (size_t thread = 1; thread <= threads; ++thread) {
        all.emplace_back([thread, &shared] {
            for (size_t round = 0; round < 20000; ++round) {
                void* blocks[blocksOfAThread];
                const size_t signature = thread * 1000000 + round;
                for (void*& block : blocks) {
                    block = TakeBlock();
                    std::memcpy(block, &signature, sizeof signature);
                }
                if (round % 64 == 0) {
                    std::this_thread::yield();
                }
                for (void* const block : blocks) {
                    size_t found = 0;
                    std::memcpy(&found, block, sizeof found);
                    shared += found == signature ? 0 : 1;
                    GiveBlock(block);
                }
            }
        });
    }
    for (std::thread& thread : all) {
        thread.join();
    }
    EXPECT_EQ(shared, 0U);
}

} // namespace
