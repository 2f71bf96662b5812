#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "floor.h"
#include "measurements.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

constexpr Shape shape{8, 8};
constexpr uint32_t listSize = 1000;
constexpr uint32_t eventsOfAThread = 400; // a few milliseconds; both processors are sometimes free for this long

// A second processor counts as free while work that shares nothing gains this much by it. Each step keeps the
// multipliers busy, which two hardware threads of one core share; such threads do not count as two processors.
constexpr double gainByAFreeProcessor = 1.9;
constexpr uint32_t stepsOfSpareWork = 100000; // a fraction of a millisecond

constexpr int samples = 9;
constexpr int roundsOfASample = 12;
constexpr std::chrono::seconds patience{90};

using Clock = std::chrono::steady_clock;

// Returns the time of `work` on `count` threads, in nanoseconds, from their common start to the end of the last one.
double TimeOn(unsigned count, const std::function<void()>& work) {
    std::atomic<unsigned> waiting{count};
    std::vector<Clock::time_point> starts(count);
    std::vector<Clock::time_point> ends(count);
    const auto run = [&](unsigned i) {
        --waiting;
        while (waiting != 0) { // no lock, so that all begin at the same instant
        }
        starts[i] = Clock::now();
        work();
        ends[i] = Clock::now();
    };
    std::vector<std::thread> others;
    for (unsigned i = 1; i < count; ++i) {
        others.emplace_back(run, i);
    }
    run(0);
    for (std::thread& other : others) {
        other.join();
    }
    return std::chrono::duration<double, std::nano>(*std::max_element(ends.begin(), ends.end()) -
                                                    *std::min_element(starts.begin(), starts.end()))
        .count();
}

// Returns whether a second processor is free now.
class SecondProcessor {
public:
    bool IsFree() {
        const double one = TimeOn(1, m_spare);
        m_leastOnOne = m_leastOnOne == 0 ? one : std::min(m_leastOnOne, one);
        return 2 * m_leastOnOne / TimeOn(2, m_spare) >= gainByAFreeProcessor;
    }

private:
    std::atomic<uint_fast32_t> m_seen{0};
    const std::function<void()> m_spare = [this] {
        std::array<std::minstd_rand, 4> chains;
        for (uint32_t i = 0; i < stepsOfSpareWork; ++i) {
            for (std::minstd_rand& chain : chains) {
                chain();
            }
        }
        for (std::minstd_rand& chain : chains) {
            m_seen += chain();
        }
    };
    double m_leastOnOne = 0;
};

// One sample of the gain by a second thread: twice the least time on one thread, divided by the least time on two, both
// while a second processor was free.
class Gain {
public:
    Gain(std::string name, std::function<void()> work) : m_name(std::move(name)), m_work(std::move(work)) {}

    // A round of the sample; the last one prints it.
    void Round(SecondProcessor& second) {
        const double one = TimeOn(1, m_work);
        m_one = m_one == 0 ? one : std::min(m_one, one);
        if (!second.IsFree()) {
            return;
        }
        const double two = TimeOn(2, m_work);
        if (!second.IsFree()) {
            return;
        }
        m_two = m_two == 0 ? two : std::min(m_two, two);
        if (++m_rounds == roundsOfASample) {
            PrintFigure(m_name, 2 * m_one / m_two);
            ++m_samples;
            m_one = m_two = 0;
            m_rounds = 0;
        }
    }

    bool IsComplete() const { return m_samples == samples; }

private:
    const std::string m_name;
    const std::function<void()> m_work;
    double m_one = 0;
    double m_two = 0;
    int m_rounds = 0;
    int m_samples = 0;
};

} // namespace

void MeasureThreads(IMordRev& receiver) {
    receiver.SetAllowList(AllowListText(listSize).c_str());
    const Workload workload(shape);
    workload.Select();
    std::atomic<bool> wrong{false};
    std::atomic<size_t> seen{0};
    Gain events("Gain", [&] {
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            if (!workload.Decide(receiver)) {
                wrong = true;
            }
        }
    });
    Gain floors("GainFloor", [&] {
        size_t all = 0;
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            all += EventFloor(workload.Guids(), workload.Answer());
        }
        seen += all;
    });
    SecondProcessor second;
    const Clock::time_point end = Clock::now() + patience;
    while (Clock::now() < end && !(events.IsComplete() && floors.IsComplete())) {
        for (Gain* const gain : {&events, &floors}) {
            if (!gain->IsComplete()) {
                gain->Round(second);
            }
        }
    }
    if (wrong) {
        throw std::runtime_error("an event is not decided as expected");
    }
}

} // namespace bench
