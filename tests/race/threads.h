// Threads that do one thing each, over and over, until the time is up.
#pragma once

#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

namespace race {

// How long a test races: MORDREV_RACE_SECONDS, or a second and a half.
inline std::chrono::milliseconds RaceTime() {
    const char* const seconds = std::getenv("MORDREV_RACE_SECONDS");
    const long long whole = seconds == nullptr ? 0 : std::atoll(seconds);
    return whole > 0 ? std::chrono::milliseconds(whole * 1000) : std::chrono::milliseconds(1500);
}

// Runs every step on a thread of its own, all from the same moment on. Goes on beyond the race time while `enough` is
// false, up to twenty times as long. The flags are relaxed on purpose: they put no order into what the threads do.
class Threads {
public:
    void Add(std::function<void()> step) { m_steps.push_back(std::move(step)); }

    void Race(const std::function<bool()>& enough = [] { return true; }) {
        std::atomic<bool> stop = false;
        std::barrier start(static_cast<std::ptrdiff_t>(m_steps.size() + 1));
        std::vector<std::thread> threads;
        for (const auto& step : m_steps) {
            threads.emplace_back([&start, &stop, &step] {
                start.arrive_and_wait();
                while (!stop.load(std::memory_order_relaxed)) {
                    step();
                    std::this_thread::yield();
                }
            });
        }
        start.arrive_and_wait();
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
