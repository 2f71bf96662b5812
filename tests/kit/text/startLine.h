// Where several threads wait for each other, so that they go on at the same moment.
#pragma once

#include <atomic>
#include <cstddef>
#include <thread>

namespace kit {

// For one start. It asks instead of sleeping: std::barrier of GCC 12 for Windows now and then misses the call that
// would wake it, and then hangs for good.
class StartLine {
public:
    explicit StartLine(size_t threads) : m_missing(threads) {}

    void ArriveAndWait() {
        m_missing.fetch_sub(1);
        while (m_missing.load() != 0) {
            std::this_thread::yield();
        }
    }

private:
    std::atomic<size_t> m_missing;
};

} // namespace kit
