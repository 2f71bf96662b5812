// The spare blocks of the process, in the hands of a test.
#pragma once

#include <vector>

#include "mordRev/src/spareBlocks.h"

// While it lives no block is spare, but for those that come back meanwhile.
class HeldSpareBlocks {
public:
    HeldSpareBlocks() { Take(); }
    ~HeldSpareBlocks() { Give(); }
    HeldSpareBlocks(const HeldSpareBlocks&) = delete;
    HeldSpareBlocks& operator=(const HeldSpareBlocks&) = delete;

    // Takes those that came back. The program holds as many blocks afterwards as before the first one came back.
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
