// Removes the spare blocks of the process for a test.
#pragma once

#include <vector>

#include "mordRev/src/spareBlocks.h"

// During its lifetime no block is spare, except those that are returned meanwhile.
class HeldSpareBlocks {
public:
    HeldSpareBlocks() { Take(); }
    ~HeldSpareBlocks() { Give(); }
    HeldSpareBlocks(const HeldSpareBlocks&) = delete;
    HeldSpareBlocks& operator=(const HeldSpareBlocks&) = delete;

    // Removes those that were returned. The program then holds as many blocks as before the first return.
    void TakeAgain() {
        Give();
        Take();
    }

private:
    void Take() {
        while (m_blocks.size() < mostSpareBlocks) {
            m_blocks.push_back(TakeBlock());
        }
    }
    void Give() {
        for (void* const block : m_blocks) {
            GiveBlock(block);
        }
        m_blocks.clear();
    }

    std::vector<void*> m_blocks;
};
