// One step on several threads at once.
#pragma once

#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

#include "kit/text/startLine.h"

namespace firstUse {

constexpr size_t threadCount = 4;

// Runs `step` on several threads from the same moment on, and returns what each of them gave.
template <typename Result>
std::vector<Result> OnThreads(const std::function<Result()>& step) {
    kit::StartLine start(threadCount);
    std::vector<Result> results(threadCount);
    std::vector<std::thread> threads;
    for (Result& result : results) {
        threads.emplace_back([&start, &step, &result] {
            start.ArriveAndWait();
            result = step();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return results;
}

} // namespace firstUse
