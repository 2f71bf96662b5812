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
constexpr uint32_t eventsOfAThread = 400; // few milliseconds: now and then both processors are free for so long

// A second processor counts as free while work that shares nothing gains so much by it. Each step keeps the
// multipliers busy, which two hardware threads of one core share: they are no two processors.
constexpr double gainByAFreeProcessor = 1.9;
constexpr uint32_t stepsOfSpareWork = 100000; // a fraction of a millisecond

constexpr int wantedSamples = 100;
constexpr std::chrono::seconds patience{60};

using Clock = std::chrono::steady_clock;

// The time of `work` on `count` threads that begin together, in nanoseconds, until the last one ends.
double TimeOn(unsigned count, const std::function<void()>& work) {
    std::atomic<unsigned> waiting{count};
    std::vector<Clock::time_point> starts(count);
    std::vector<Clock::time_point> ends(count);
    const auto run = [&](unsigned i) {
        --waiting;
        while (waiting != 0) { // no lock: all shall begin in the same instant
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

// Tells whether a second processor is to be had right now.
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

// The least times of some work on one thread, and on two while there were two processors.
class OneAndTwo {
public:
    OneAndTwo(std::string what, std::function<void()> work) : m_what(std::move(what)), m_work(std::move(work)) {}

    bool HasEnough() const { return m_samples >= wantedSamples; }

    void Sample(SecondProcessor& second) {
        Keep(m_one, TimeOn(1, m_work));
        if (second.IsFree()) {
            const double two = TimeOn(2, m_work);
            if (second.IsFree()) {
                Keep(m_two, two);
                ++m_samples;
            }
        }
    }

    // Without a figure for two threads when there never were two processors.
    void Print() const {
        PrintFigure(FigureName("OneThread" + m_what, shape, listSize), m_one);
        if (m_samples != 0) {
            PrintFigure(FigureName("TwoThreads" + m_what, shape, listSize), m_two);
        }
    }

private:
    static void Keep(double& least, double taken) {
        taken /= eventsOfAThread;
        least = least == 0 ? taken : std::min(least, taken);
    }

    std::string m_what;
    std::function<void()> m_work;
    double m_one = 0;
    double m_two = 0;
    int m_samples = 0;
};

} // namespace

void MeasureThreads(IMordRev& receiver) {
    receiver.SetAllowList(AllowListText(listSize).c_str());
    const Workload workload(shape);
    workload.Select();
    std::atomic<bool> wrong{false};
    std::atomic<size_t> seen{0};
    OneAndTwo events("", [&] {
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            if (!workload.Decide(receiver)) {
                wrong = true;
            }
        }
    });
    OneAndTwo floors("Floor", [&] {
        size_t all = 0;
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            all += EventFloor(workload.Guids(), workload.Answer());
        }
        seen += all;
    });
    SecondProcessor second;
    const Clock::time_point end = Clock::now() + patience;
    while (Clock::now() < end && !(events.HasEnough() && floors.HasEnough())) {
        events.Sample(second);
        floors.Sample(second);
    }
    if (wrong) {
        throw std::runtime_error("an event is not decided as it has to be");
    }
    events.Print();
    floors.Print();
}

} // namespace bench
