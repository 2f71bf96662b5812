// Threads that do one thing each, over and over, until the time is up.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "kit/text/startLine.h"

namespace race {

// How long one test races: its part of the time for all tests of the program, which is MORDREV_RACE_SECONDS, of the
// environment or else of the build.
inline std::chrono::milliseconds RaceTime() {
    const char* const setting = std::getenv("MORDREV_RACE_SECONDS");
    const long long seconds = setting == nullptr ? 0 : std::atoll(setting);
    const long long whole = seconds > 0 ? seconds : MORDREV_RACE_SECONDS;
    return std::chrono::milliseconds(whole * 1000 / testing::UnitTest::GetInstance()->total_test_count());
}

// Runs every step on a separate thread, all from the same moment on. Goes on beyond the race time while `enough` is
// false, up to twenty times as long. The flags are relaxed on purpose: they put no order into what the threads do.
class Threads {
public:
    void Add(std::function<void()> step) { m_steps.push_back(std::move(step)); }

    void Race(const std::function<bool()>& enough = [] { return true; }) {
        std::atomic<bool> stop = false;
        kit::StartLine start(m_steps.size() + 1);
        std::vector<std::thread> threads;
        for (const auto& step : m_steps) {
            threads.emplace_back([&start, &stop, &step] {
                start.ArriveAndWait();
                while (!stop.load(std::memory_order_relaxed)) {
                    step();
                    std::this_thread::yield();
                }
            });
        }
        start.ArriveAndWait();
        const auto begin = std::chrono::steady_clock::now();
        const auto passed = [begin] { return std::chrono::steady_clock::now() - begin; };
        while (passed() < RaceTime() || (!enough() && passed() < 20 * RaceTime())) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        stop.store(true, std::memory_order_relaxed);
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

private:
    std::vector<std::function<void()>> m_steps;
};

// A count that puts no order among the threads that raise it.
class Tally {
public:
    void Raise() { m_count.fetch_add(1, std::memory_order_relaxed); }
    uint64_t Count() const { return m_count.load(std::memory_order_relaxed); }

private:
    std::atomic<uint64_t> m_count = 0;
};

} // namespace race
